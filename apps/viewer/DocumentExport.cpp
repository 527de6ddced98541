#include "DocumentExport.h"

#include "GraphDocument.h"

#include <apps/plotting/Pictures.h>

#include <TOLVGraphing/graph/TOLVGraph.h>

#include <filesystem>
#include <system_error>
#include <vector>

namespace TOLVGraphing::app {

void exportDocument(const GraphDocument& document, const std::string& path, const Size& size, double scale)
{
    if (!document.hasData())
        throw DocumentError(path + ": found a document without data, expected one that shows measurements");
    for (const std::string& source : document.sourcePaths()) {
        std::error_code error;
        if (std::filesystem::equivalent(path, source, error))
            throw DocumentError(path + ": found one of the document's own sources, expected another name");
    }
    Options options = document.options();
    options.size = size;
    options.scale = scale;
    // A copy of a graph has no formatters of its own, so it is configured like the graph.
    const auto copy = document.graph()->copy();
    std::vector<std::string> notes;
    GraphSheet sheet = sheetOfGraph(copy, configureGraph(copy, document.files(), options, KeptView::everything(), notes), options);
    layoutSheet(sheet, options, {{}, size});
    writePicture(sheet, document.files(), options, path);
}

} // namespace TOLVGraphing::app
