#pragma once

#include "../graphics/Color.h"
#include "Font.h"
#include <TOLVMath/Export.h>

#include <memory>
#include <optional>

namespace TOLVGraphing {

/// How a text looks: each entry may be absent. A text without a font is set in Helvetica at 12 points, one without a colour in black.
struct TextAttributes {
    /// Nothing by default.
    std::optional<Font> font;
    std::optional<Color> foregroundColor;

    /// The font that the text is set in.
    [[nodiscard]] const Font& fontOrDefault() const
    {
        static const Font plain;
        return font ? *font : plain;
    }
    /// The colour that the text is drawn in.
    [[nodiscard]] Color foregroundColorOrDefault() const { return foregroundColor.value_or(Color::blackColor()); }

    friend bool operator==(const TextAttributes&, const TextAttributes&) = default;
};

/// Attributes that several owners share; they never change once shared, a new object takes their place.
using SharedTextAttributes = std::shared_ptr<const TextAttributes>;

/// Shared attributes with these entries.
[[nodiscard]] inline SharedTextAttributes makeTextAttributes(std::optional<Font> font, std::optional<Color> foregroundColor = std::nullopt)
{
    return std::make_shared<const TextAttributes>(TextAttributes{std::move(font), foregroundColor});
}

} // namespace TOLVGraphing
