#include "PagePrinting.h"

#include "../output/AtomicFile.h"
#include "../output/GraphicsOutput.h"
#include "TOLVGraphing/platform/graphics/DrawingContext.h"
#include "TOLVGraphing/platform/graphics/GraphicsStateSaver.h"
#include "TOLVGraphing/platform/text/NumberText.h"

namespace TOLVGraphing {

namespace {

void requireRoom(const TOLVPrintView& view)
{
    const Size paper = view.printInfo().paperSize;
    if (view.bounds().isEmpty() || !view.bounds().valid())
        throw OutputError("cannot print \"" + view.printInfo().jobTitle + "\": the margins leave nothing of the sheet of " + shortestText(paper.width) + " x "
            + shortestText(paper.height) + " points");
}

} // namespace

std::vector<std::byte> dataOfPage(TOLVPrintView& view, OutputKind kind)
{
    requireRoom(view);
    const PrintInfo& info = view.printInfo();
    OutputSettings settings;
    settings.size = info.paperSize;
    settings.title = info.jobTitle;
    if (!isImage(kind))
        settings.background.reset();
    return renderToBytes(kind, settings, [&](DrawingContext& context, const Rect&) {
        const GraphicsStateSaver saver(context);
        AffineTransform toMargins;
        toMargins.translateXBy(info.leftMargin, info.bottomMargin);
        context.concatenateTransform(toMargins);
        view.displayInContext(context);
    });
}

void printPageToPDF(TOLVPrintView& view, const std::string& path)
{
    writeFileAtomically(path, dataOfPage(view, OutputKind::PDF));
}

void printPageToPostScript(TOLVPrintView& view, const std::string& path)
{
    writeFileAtomically(path, dataOfPage(view, OutputKind::PostScript));
}

} // namespace TOLVGraphing
