#pragma once

#include "../geometry/Point.h"
#include "../graphics/OutputKind.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace TOLVGraphing {

class DrawingContext;

/// Makes documents of drawings: what a desktop supplies for copying and printing.
class TOLV_EXPORT DocumentRenderer {
public:
    virtual ~DocumentRenderer();

    /// Runs the drawing with a context whose origin is the lower-left corner of a page of the size (points), y growing upwards, and answers the document's bytes. The page of an image is white, with two pixels a point. Throws what
    /// the drawing does, and what the desktop's writers throw for pages that they cannot make: sizes that are empty, too large or not finite. Runs on the caller's thread; renderers are safe to ask from several.
    [[nodiscard]] virtual std::vector<std::byte> render(OutputKind kind, const Size& size, const std::function<void(DrawingContext&)>& drawing) const = 0;
};

/// The renderer in force for the whole process, or null, the default: documents are then empty.
[[nodiscard]] TOLV_EXPORT std::shared_ptr<const DocumentRenderer> documentRenderer();
/// Installs a renderer (shared) for the process; null takes it away. Safe to call from any thread.
TOLV_EXPORT void setDocumentRenderer(std::shared_ptr<const DocumentRenderer> renderer);

} // namespace TOLVGraphing
