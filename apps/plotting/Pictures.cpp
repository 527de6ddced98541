#include "Pictures.h"

#include <desktop/output/FileError.h>
#include <desktop/output/GraphicsOutput.h>

#include <TOLVGraphing/views/GraphSheet.h>

namespace TOLVGraphing::app {

void writePicture(GraphSheet& sheet, const Options& options, const std::string& path)
{
    const auto kind = outputKindForSuffix(path);
    if (!kind)
        throw FileError(path, "found a name without a known suffix, expected one that ends in .pdf, .ps, .eps, .svg, .png, .tif or .tiff");
    OutputSettings settings;
    settings.size = options.size;
    settings.scale = options.scale;
    settings.title = options.title.value_or("");
    settings.creator = std::string("tolvgraph ") + TOLVGRAPHING_VERSION;
    writeToFile(path, *kind, settings, [&](DrawingContext&, const Rect& bounds) { sheet.drawInRect(bounds); });
}

} // namespace TOLVGraphing::app
