#pragma once

#include <cstdint>

namespace TOLVGraphing {

/// The kinds of file that a drawing becomes. PostScript is one page for a printer, EPS one for placing in a document.
enum class OutputKind : std::uint8_t { PDF, PostScript, EPS, SVG, PNG, TIFF };

/// PNG and TIFF; the others are vectors.
[[nodiscard]] constexpr bool isImage(OutputKind kind)
{
    return kind == OutputKind::PNG || kind == OutputKind::TIFF;
}

} // namespace TOLVGraphing
