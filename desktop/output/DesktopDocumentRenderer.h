#pragma once

#include "OutputError.h"
#include "TOLVGraphing/platform/ui/DocumentRenderer.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// Makes the documents of views with the writers of files: the bytes that a view puts on a pasteboard are those that `renderToBytes` would write into a file of the kind.
///
/// PNG and TIFF have 2 pixels a point on a white page and store 144 pixels per inch, so that they paste at the view's size; the pages of the other kinds are clear where nothing is drawn. No title is stored. Throws OutputError for
/// a size that is not finite and above zero or beyond the limits of OutputSettings, and where the drawing library fails; errors of the drawing (not empty, run once in the calling thread) pass through. Safe to use from several threads.
class TOLV_EXPORT DesktopDocumentRenderer final : public DocumentRenderer {
public:
    [[nodiscard]] std::vector<std::byte> render(OutputKind kind, const Size& size, const std::function<void(DrawingContext&)>& drawing) const override;
};

/// Makes the documents of every view of the process from now on. Programs call it once at their start, besides `installDesktopTextSystem`. Any thread may call it.
TOLV_EXPORT void installDesktopDocumentRenderer();

} // namespace TOLVGraphing
