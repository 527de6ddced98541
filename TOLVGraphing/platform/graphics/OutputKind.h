#pragma once

#include <cstdint>

namespace TOLVGraphing {

/// The kinds of file that a drawing becomes. PostScript is one page for a printer, EPS one for placing in a document.
enum class OutputKind : std::uint8_t {
    PDF,        ///< vectors
    PostScript, ///< vectors, a page
    EPS,        ///< vectors, a picture for a document
    SVG,        ///< vectors; texts stay texts
    PNG,        ///< pixels
    TIFF,       ///< pixels
};

/// True for PNG and TIFF; the others are vectors.
[[nodiscard]] constexpr bool isImage(OutputKind kind)
{
    return kind == OutputKind::PNG || kind == OutputKind::TIFF;
}

} // namespace TOLVGraphing
