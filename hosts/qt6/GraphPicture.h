#pragma once

#include <TOLVMath/Export.h>

#include <QImage>
#include <QSize>

#include <memory>

namespace TOLVGraphing {

class TOLVGraphView;

/// The last drawing of a view as device pixels, so that what lies above it can change without the graph being drawn again. GraphWidget has one; it is for hosts with a widget of their own. Straight lines fall on whole device pixels.
///
/// The view is the caller's, its frame has the picture's size in points, and its origin comes out in the lower-left corner of the image. One view for one picture. Used from one thread.
class TOLV_EXPORT GraphPicture {
public:
    /// What a picture is drawn for. A value.
    struct Target {
        /// Device pixels; the picture is empty without any.
        QSize size;
        /// Device pixels per point, finite and above zero.
        double ratio = 1.0;
        /// Light on dark (see DarkContext).
        bool isDark = false;

        friend bool operator==(const Target&, const Target&) = default;
    };

    /// The next update draws: the view asks for it, or the target is another one than last time.
    [[nodiscard]] bool needsUpdate(const TOLVGraphView& view, const Target& target) const;
    /// Draws the view if it asks for it or the target is another one than last time. True when it was drawn. A size without pixels, and one that there is no memory for, leave an empty image. Throws
    /// what the view's drawing throws, and OutputError; the next update then draws again.
    bool update(TOLVGraphView& view, const Target& target);
    /// The last drawing, premultiplied, without a device pixel ratio of its own; clear where the view draws no background, empty before the first update.
    [[nodiscard]] const QImage& image() const { return m_image; }
    /// The next update draws, whatever the view says.
    void invalidate() { m_isValid = false; }

private:
    QImage m_image;
    Target m_target;
    bool m_isValid = false;
};

} // namespace TOLVGraphing
