#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

/// The bytes of an npy array: version 1.0, a type such as "<f4", a shape such as "(3, 2)", and the elements.
[[nodiscard]] std::string npyFile(const std::string& type, const std::string& shape, const std::string& elements, bool isFortranOrder = false);

/// The bytes of numbers, each as `Element`, the lowest byte first or last.
template <typename Element>
[[nodiscard]] std::string elementBytes(const std::vector<double>& values, bool isBigEndian = false)
{
    std::string bytes;
    for (const double value : values) {
        const auto element = static_cast<Element>(value);
        const char* first = reinterpret_cast<const char*>(&element);
        for (std::size_t i = 0; i < sizeof element; ++i)
            bytes += first[isBigEndian ? sizeof element - 1 - i : i];
    }
    return bytes;
}

/// Writes a sound file with libsndfile; the format is one of its constants. The samples are interleaved, -1 to 1.
void writeSound(const std::string& path, int format, int sampleRate, int channels, const std::vector<float>& samples);

} // namespace TOLVGraphing::testing_support
