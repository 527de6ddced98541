#pragma once

#include <cstdint>
#include <random>

namespace TOLVGraphing::testing_support {

/// Numbers that look random and are the same in every run on every machine.
class Generated {
public:
    explicit Generated(std::uint32_t seed) : m_engine(seed) {}

    /// A whole number from 0 to below `end`.
    [[nodiscard]] std::uint32_t whole(std::uint32_t end) { return static_cast<std::uint32_t>(m_engine() % end); }
    /// One of 4,000 numbers from `low` to below `high`.
    [[nodiscard]] double number(double low, double high) { return low + (high - low) * static_cast<double>(whole(4000)) / 4000.0; }

private:
    std::mt19937 m_engine;
};

} // namespace TOLVGraphing::testing_support
