#include "Pictures.h"

#include <desktop/output/AtomicFile.h>
#include <desktop/output/FileError.h>
#include <desktop/output/GraphicsOutput.h>

#include <TOLVGraphing/views/GraphSheet.h>

namespace TOLVGraphing::app {

namespace {

OutputSettings outputSettings(const Options& options)
{
    OutputSettings settings;
    settings.size = options.size;
    settings.scale = options.scale;
    settings.title = options.title.value_or("");
    settings.creator = std::string("tolvgraph ") + TOLVGRAPHING_VERSION;
    return settings;
}

} // namespace

void writePicture(GraphSheet& sheet, const std::vector<FileSeries>& files, const Options& options, const std::string& path)
{
    const auto kind = outputKindForSuffix(path);
    if (!kind)
        throw FileError(path, "found a name without a known suffix, expected one that ends in .pdf, .ps, .eps, .svg, .png, .tif or .tiff");
    const auto bytes = renderToBytes(*kind, outputSettings(options), [&](DrawingContext&, const Rect& bounds) { sheet.drawInRect(bounds); });
    requireWholeFiles(files);
    writeFileAtomically(path, bytes);
}

void requirePossiblePictures(const Options& options)
{
    for (const std::string& output : options.outputs) {
        if (const auto kind = outputKindForSuffix(output))
            requirePossibleSize(*kind, outputSettings(options));
    }
}

} // namespace TOLVGraphing::app
