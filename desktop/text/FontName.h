#pragma once

#include <string>
#include <string_view>

namespace TOLVGraphing::text {

/// A face as its family and style: weight 100...900, 400 is regular and 700 bold.
struct FontFace {
    std::string family;
    int weight = 400;
    bool isItalic = false;

    friend bool operator==(const FontFace&, const FontFace&) = default;
};

/// "FAMILY WEIGHT" or "FAMILY WEIGHT italic".
[[nodiscard]] std::string toString(const FontFace& face);

/// Takes a font's name apart: "Family-Bold", "Family-LightItalic" and the like give the style that the ending names, in any letter case.
/// A name whose ending is no known style is a family as a whole: "Noto-Mono" is the family "Noto-Mono", regular.
[[nodiscard]] FontFace faceFromFontName(std::string_view name);

/// The families of the faces that the library names itself.
enum class NamedFamily { None, HelveticaNeue, Helvetica };

/// Whether the family is one of the library's own, written with or without a blank.
[[nodiscard]] NamedFamily namedFamily(std::string_view family);

} // namespace TOLVGraphing::text
