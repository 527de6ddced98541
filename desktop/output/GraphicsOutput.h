#pragma once

#include "OutputError.h"
#include "TOLVGraphing/platform/geometry/Rect.h"
#include "TOLVGraphing/platform/graphics/Color.h"
#include "TOLVGraphing/platform/graphics/OutputKind.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing {

class DrawingContext;

/// What a drawing is written with. A value.
struct OutputSettings {
    /// The page in points: finite and above zero, at most 14,400 a side in PDF, PostScript, EPS and SVG. The sheet of PostScript and EPS is rounded up to whole points, with the exact size beside it as HiResBoundingBox.
    Size size{612.0, 396.0};
    /// Pixels per point of PNG and TIFF, finite and at least 0.000001; not looked at for other kinds. The image is rounded up to whole pixels, at least 1 and at most 32,767 a side and 268,435,456 in all.
    double scale = 2.0;
    /// Fills the page before anything is drawn. Absent leaves it transparent; images have an alpha channel then, as with a translucent one. Components are limited to 0...1.
    std::optional<Color> background = Color::whiteColor();
    /// Stored in PDF, PostScript, EPS, SVG, PNG and TIFF where it is not empty. UTF-8; other bytes are replaced.
    std::string title;
    /// The program that made the drawing, stored likewise.
    std::string creator = "TOLVGraphing";
};

/// Draws into the context, which is the current one meanwhile; the bounds are the page in points with its origin (0, 0) in the lower-left corner, y growing upwards. The context is valid during the call only. Not empty.
using OutputDrawing = std::function<void(DrawingContext& context, const Rect& bounds)>;

/// The kind that a file's suffix asks for in any letter case: .pdf .ps .eps .svg .png .tif .tiff. Nothing for any other. A name that is nothing else, such as ".pdf", is a suffix too.
[[nodiscard]] TOLV_EXPORT std::optional<OutputKind> outputKindForSuffix(const std::string& path);
/// The kind's name for messages: "PDF", "PostScript", "EPS", "SVG", "PNG", "TIFF".
[[nodiscard]] TOLV_EXPORT std::string toString(OutputKind kind);

/// Throws OutputError, which says what was asked for and what the limit is, where a drawing of this kind cannot have the size or the scale. Needs no memory for them.
TOLV_EXPORT void requirePossibleSize(OutputKind kind, const OutputSettings& settings);

/// Runs the drawing once, in the calling thread, and returns the file's bytes, one page. A graph with its labels in sight is drawn by a GraphSheet:
///
///     installDesktopTextSystem();
///     GraphSheet sheet(graph);
///     const auto bytes = renderToBytes(OutputKind::SVG, OutputSettings(), [&](DrawingContext&, const Rect& bounds) { sheet.drawInRect(bounds); });
///
/// Texts are always set by the desktop's text system; installDesktopTextSystem, called once at the start of the program, has them measured by it as well. May be called from several threads, each with a drawing of its own.
///
/// The same drawing and settings give the same bytes: no time and no name of a user is stored.
/// PostScript and EPS are collected in the folder for temporary files, which needs room for them. They know no translucency: paint::OpaqueContext replaces translucent areas by what shines through them, and translucent lines and texts by opaque ones.
/// In PNG and TIFF the lower-left corner of the page is exactly the lower-left corner of the image, alpha is not premultiplied, and the resolution (72 pixels per inch times the scale)
/// is stored. Errors of the drawing pass through; sizes outside the limits and failures of the libraries throw OutputError.
[[nodiscard]] TOLV_EXPORT std::vector<std::byte> renderToBytes(OutputKind kind, const OutputSettings& settings, const OutputDrawing& drawing);

/// Runs the drawing and replaces the file by its bytes as an AtomicFile does: the file is complete or as it was. Throws what `renderToBytes` throws, and FileError when the file cannot be written.
TOLV_EXPORT void writeToFile(const std::string& path, OutputKind kind, const OutputSettings& settings, const OutputDrawing& drawing);

} // namespace TOLVGraphing
