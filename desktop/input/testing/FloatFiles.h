#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace TOLVGraphing::input::testing {

/// Samples that look like noise, the same every time.
inline std::vector<float> noise(std::size_t count, std::uint32_t seed = 1)
{
    std::vector<float> samples(count);
    std::uint32_t state = seed;
    for (float& sample : samples) {
        state = state * 1664525U + 1013904223U;
        sample = static_cast<float>(static_cast<std::int32_t>(state >> 8U) - (1 << 23)) * 0x1p-20F;
    }
    return samples;
}

/// As they lie in memory.
inline std::string bytesOfFloats(const std::vector<float>& samples)
{
    return std::string(reinterpret_cast<const char*>(samples.data()), samples.size() * sizeof(float));
}

/// An npy file of floats, the lowest byte first, version 1.0; `padding` blanks stand behind the header's text.
inline std::string npyOfFloats(const std::vector<float>& samples, const std::string& shape, bool isFortranOrder = false, std::size_t padding = 0)
{
    std::string text = "{'descr': '<f4', 'fortran_order': " + std::string(isFortranOrder ? "True" : "False") + ", 'shape': " + shape + ", }";
    text.append(padding, ' ');
    text += '\n';
    std::string file("\x93NUMPY\1\0", 8);
    file += static_cast<char>(static_cast<unsigned char>(text.size() & 0xFFU));
    file += static_cast<char>(static_cast<unsigned char>(text.size() >> 8U));
    return file + text + bytesOfFloats(samples);
}

/// The same with the elements on a multiple of 64 bytes, as the format recommends.
inline std::string alignedNpyOfFloats(const std::vector<float>& samples, const std::string& shape, bool isFortranOrder = false)
{
    const std::size_t start = npyOfFloats({}, shape, isFortranOrder).size();
    return npyOfFloats(samples, shape, isFortranOrder, (64 - start % 64) % 64);
}

} // namespace TOLVGraphing::input::testing
