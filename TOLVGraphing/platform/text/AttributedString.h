#pragma once

#include "../geometry/Point.h"
#include "../geometry/Rect.h"
#include "TextAttributes.h"
#include <TOLVMath/Export.h>

#include <string>

namespace TOLVGraphing {

/// A text in UTF-8 with one set of attributes for its whole length. A value. Newlines start new lines. Bytes that are not UTF-8 are kept; a desktop writes a replacement character for them.
class TOLV_EXPORT AttributedString {
public:
    /// No text, plain.
    AttributedString() = default;
    /// Copied.
    explicit AttributedString(std::string string, TextAttributes attributes = {});
    /// Shared, which makes copies cheap. With absent attributes (null) the text is plain.
    AttributedString(std::string string, SharedTextAttributes attributes);

    /// The text.
    [[nodiscard]] const std::string& string() const { return m_string; }
    /// Those of a plain text, without entries, where there are none.
    [[nodiscard]] const TextAttributes& attributes() const;
    /// Sets the text's colour over its whole length; nothing is black. Other texts that share the attributes keep theirs.
    void setForegroundColor(const std::optional<Color>& color);

    /// The typographic width of the longest line and the height of all lines, in points, as the installed text system measures them. An empty text has the height of one line; a desktop gives a text whose font size is not finite and
    /// above 0 no size.
    [[nodiscard]] Size size() const;
    /// Draws into the current context with the lower-left corner of the line box at the point, in flipped coordinates with the upper-left one; nothing happens without a context, and backends draw nothing at a point that is not finite.
    void drawAtPoint(Point point) const;
    /// Draws into the current context with the upper-left corner of the text in that of the rectangle. Nothing is wrapped or cut off.
    void drawInRect(const Rect& rect) const;

    friend bool operator==(const AttributedString& one, const AttributedString& other) { return one.m_string == other.m_string && one.attributes() == other.attributes(); }

private:
    std::string m_string;
    /// Null for a plain text.
    SharedTextAttributes m_attributes;
};

} // namespace TOLVGraphing
