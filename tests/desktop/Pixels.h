#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

/// An image over white, three bytes a pixel (red, green, blue) in rows from the top.
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes;

    /// The red, green and blue of a pixel as "#rrggbb".
    [[nodiscard]] std::string colorAt(int x, int y) const;
};

/// Reads a PNG. Throws std::runtime_error where it cannot be read.
[[nodiscard]] Pixels pixelsOfPNG(std::span<const std::byte> bytes);
[[nodiscard]] Pixels pixelsOfPNGFile(const std::string& path);

/// How far two images are from each other.
struct PixelDifference {
    bool haveSameSize = false;
    /// The largest difference of a component, 0 to 255.
    int largest = 0;
    /// The pixels of which a component differs by more than the threshold.
    std::size_t differingCount = 0;
    /// The mean difference over all components.
    double mean = 0.0;

    /// For messages of failed tests.
    [[nodiscard]] std::string text() const;
};

[[nodiscard]] PixelDifference pixelDifference(const Pixels& one, const Pixels& other, int threshold);

} // namespace TOLVGraphing::testing_support
