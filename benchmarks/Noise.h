#pragma once

#include <cstdint>

namespace TOLVGraphing::benchmarking {

/// Numbers that look random and are the same in every run, and in the programs that other libraries are measured with.
class Noise {
public:
    explicit Noise(std::uint64_t seed = 0) : m_state(88172645463325252U + seed) {}

    /// From 0 to below 1.
    double next()
    {
        m_state ^= m_state << 13U;
        m_state ^= m_state >> 7U;
        m_state ^= m_state << 17U;
        return static_cast<double>(m_state >> 11U) * 0x1p-53;
    }

private:
    std::uint64_t m_state;
};

} // namespace TOLVGraphing::benchmarking
