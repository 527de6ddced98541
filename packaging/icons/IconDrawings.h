#pragma once

#include <TOLVGraphing/platform/graphics/DrawingContext.h>

#include <array>
#include <string>
#include <vector>

namespace TOLVGraphing::icons {

/// A sign of the programs: a drawing on a square whose side is kSide points.
struct Icon {
    /// The file's name without its suffix, by which a desktop asks for it.
    std::string name;
    /// The folder that icon themes keep such a sign in.
    std::string folder;
    void (*draw)(DrawingContext& context);
};

inline constexpr double kSide = 64.0;
/// In pixels: what is kept as images beside the vector file, for the program itself and for desktops that show images only.
inline constexpr std::array kImageSides{16, 24, 32, 48, 64, 128, 256};

/// The viewer: a tile with two axes and a curve in the band between its smallest and largest samples.
void drawProgram(DrawingContext& context);
/// Its document: the same graph on a sheet of paper with a folded corner.
void drawDocument(DrawingContext& context);

[[nodiscard]] std::vector<Icon> allIcons();

/// The file's bytes: the vector file for a side of 0, else an image of so many pixels a side. Transparent around the drawing.
[[nodiscard]] std::vector<std::byte> iconData(const Icon& icon, int side);
/// Where the file lies below the folder of all icons: "scalable/apps/NAME.svg", "32x32/apps/NAME.png".
[[nodiscard]] std::string iconPath(const Icon& icon, int side);

} // namespace TOLVGraphing::icons
