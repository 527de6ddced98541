#include "FontName.h"

#include <array>
#include <optional>

namespace TOLVGraphing::text {

namespace {

struct StyleWord {
    std::string_view word;
    int weight;
    bool isItalic;
};

// Longer words come before the words that they begin with.
constexpr std::array<StyleWord, 21> kStyleWords{{
    {"ultralight", 200, false},
    {"extralight", 200, false},
    {"ultrabold", 800, false},
    {"extrabold", 800, false},
    {"semibold", 600, false},
    {"demibold", 600, false},
    {"hairline", 100, false},
    {"regular", 400, false},
    {"oblique", 0, true},
    {"medium", 500, false},
    {"normal", 400, false},
    {"italic", 0, true},
    {"roman", 400, false},
    {"light", 300, false},
    {"heavy", 800, false},
    {"black", 900, false},
    {"thin", 100, false},
    {"book", 400, false},
    {"demi", 600, false},
    {"bold", 700, false},
    {"it", 0, true},
}};

std::string lowerWithoutBlanks(std::string_view text)
{
    std::string lower;
    for (const char character : text) {
        if (character >= 'A' && character <= 'Z')
            lower += static_cast<char>(character - 'A' + 'a');
        else if (character != ' ')
            lower += character;
    }
    return lower;
}

/// Reads the style words of an ending; nothing when a part of it is none.
std::optional<FontFace> styleFromEnding(std::string_view ending)
{
    const std::string lower = lowerWithoutBlanks(ending);
    std::string_view rest = lower;
    FontFace face;
    while (!rest.empty()) {
        const std::size_t before = rest.size();
        for (const StyleWord& style : kStyleWords) {
            if (!rest.starts_with(style.word))
                continue;
            if (style.weight != 0)
                face.weight = style.weight;
            face.isItalic = face.isItalic || style.isItalic;
            rest.remove_prefix(style.word.size());
            break;
        }
        if (rest.size() == before)
            return std::nullopt;
    }
    return face;
}

} // namespace

std::string toString(const FontFace& face)
{
    return face.family + " " + std::to_string(face.weight) + (face.isItalic ? " italic" : "");
}

FontFace faceFromFontName(std::string_view name)
{
    const std::size_t hyphen = name.rfind('-');
    if (hyphen != std::string_view::npos && hyphen > 0 && hyphen + 1 < name.size()) {
        if (std::optional<FontFace> face = styleFromEnding(name.substr(hyphen + 1))) {
            face->family = name.substr(0, hyphen);
            return *face;
        }
    }
    return {std::string(name), 400, false};
}

NamedFamily namedFamily(std::string_view family)
{
    const std::string lower = lowerWithoutBlanks(family);
    if (lower == "helveticaneue")
        return NamedFamily::HelveticaNeue;
    return lower == "helvetica" ? NamedFamily::Helvetica : NamedFamily::None;
}

} // namespace TOLVGraphing::text
