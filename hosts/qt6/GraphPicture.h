#pragma once

#include <TOLVMath/Export.h>

#include <QImage>
#include <QSize>

#include <memory>

namespace TOLVGraphing {

class TOLVGraphView;

/// The last drawing of a view as device pixels, so that what lies above it can change without the graph being drawn again.
class TOLV_EXPORT GraphPicture {
public:
    /// What a picture is drawn for.
    struct Target {
        /// Device pixels.
        QSize size;
        /// Device pixels per point.
        double ratio = 1.0;
        /// Light on dark.
        bool isDark = false;

        friend bool operator==(const Target&, const Target&) = default;
    };

    /// The next update draws: the view asks for it, or the target is another one than last time.
    [[nodiscard]] bool needsUpdate(const TOLVGraphView& view, const Target& target) const;
    /// Draws the view if it asks for it or the target is another one than last time. True when it was drawn. A view that cannot be drawn for want of memory leaves an empty image.
    bool update(TOLVGraphView& view, const Target& target);
    /// Clear where the view draws no background.
    [[nodiscard]] const QImage& image() const { return m_image; }
    /// The next update draws.
    void invalidate() { m_isValid = false; }

private:
    QImage m_image;
    Target m_target;
    bool m_isValid = false;
};

} // namespace TOLVGraphing
