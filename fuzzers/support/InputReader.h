#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <vector>

namespace TOLVGraphing::fuzzing {

/// Numbers, choices and texts out of the bytes of an input, from its front. Once the bytes are used up everything is zero, the first choice or empty.
class InputReader {
public:
    explicit InputReader(std::span<const std::byte> input) : m_rest(input) {}

    [[nodiscard]] bool isEmpty() const { return m_rest.empty(); }

    /// The next bytes as a number, whichever its bits say: floating point numbers come as NaN, infinities and subnormal ones too. The first byte is the lowest.
    template <typename Number>
    requires std::integral<Number> || std::floating_point<Number>
    [[nodiscard]] Number number()
    {
        if constexpr (std::same_as<Number, float>) {
            return std::bit_cast<float>(number<std::uint32_t>());
        } else if constexpr (std::same_as<Number, double>) {
            return std::bit_cast<double>(number<std::uint64_t>());
        } else {
            std::uint64_t bits = 0;
            for (std::size_t i = 0; i < sizeof(Number); ++i)
                bits |= static_cast<std::uint64_t>(byte()) << (8 * i);
            return static_cast<Number>(bits);
        }
    }

    /// A whole number from 0 to below `end`, which is greater than 0; of one byte up to 256, of two up to 65,536, otherwise of four.
    [[nodiscard]] std::size_t below(std::size_t end)
    {
        if (end <= 256)
            return byte() % end;
        return (end <= 65536 ? number<std::uint16_t>() : number<std::uint32_t>()) % end;
    }

    [[nodiscard]] bool yes() { return (byte() & 1U) != 0; }

    template <typename Choices>
    [[nodiscard]] auto oneOf(const Choices& choices)
    {
        return *(std::begin(choices) + static_cast<std::ptrdiff_t>(below(std::size(choices))));
    }

    /// A double that may matter: by the first byte one of the numbers at which arithmetic changes, a small one with few digits, or any 64 bits.
    [[nodiscard]] double interestingDouble()
    {
        using Double = std::numeric_limits<double>;
        using Float = std::numeric_limits<float>;
        static constexpr double kEdges[] = {0.0, -0.0, 1.0, -1.0, 0.5, 1e-9, 1e9, 1e300, -1e300, Double::infinity(), -Double::infinity(), Double::quiet_NaN(), Double::max(),
            Double::lowest(), Double::min(), Double::denorm_min(), Double::epsilon(), static_cast<double>(Float::max()), static_cast<double>(Float::lowest()),
            static_cast<double>(Float::denorm_min()), 16777216.0, 2147483647.0, 4294967296.0, 9.2e18, 1.8e19};
        switch (below(4)) {
        case 0: return oneOf(kEdges);
        case 1: return static_cast<double>(number<std::int16_t>()) / 16.0;
        case 2: {
            // One after the other, whatever the compiler.
            const auto digits = static_cast<double>(number<std::int32_t>());
            return digits * std::pow(10.0, static_cast<double>(number<std::int8_t>() / 4));
        }
        default: return number<double>();
        }
    }

    /// The same for floats; doubles that no float comes near are infinite.
    [[nodiscard]] float interestingFloat()
    {
        if (yes())
            return number<float>();
        const double value = interestingDouble();
        constexpr auto kLargest = static_cast<double>(std::numeric_limits<float>::max());
        if (std::abs(value) > kLargest)
            return value < 0.0 ? -std::numeric_limits<float>::infinity() : std::numeric_limits<float>::infinity();
        return static_cast<float>(value);
    }

    [[nodiscard]] std::vector<float> floats(std::size_t count)
    {
        std::vector<float> result(count);
        std::generate(result.begin(), result.end(), [this] { return interestingFloat(); });
        return result;
    }

    /// The next `count` bytes, or as many as there are.
    [[nodiscard]] std::span<const std::byte> bytes(std::size_t count)
    {
        const std::span<const std::byte> taken = m_rest.first(std::min(count, m_rest.size()));
        m_rest = m_rest.subspan(taken.size());
        return taken;
    }

    [[nodiscard]] std::span<const std::byte> rest() { return bytes(m_rest.size()); }

    [[nodiscard]] std::string text(std::size_t longest)
    {
        const std::span<const std::byte> taken = bytes(below(longest + 1));
        return {reinterpret_cast<const char*>(taken.data()), taken.size()};
    }

private:
    [[nodiscard]] std::uint8_t byte()
    {
        const std::span<const std::byte> taken = bytes(1);
        return taken.empty() ? std::uint8_t{0} : std::to_integer<std::uint8_t>(taken.front());
    }

    std::span<const std::byte> m_rest;
};

/// The bytes of an input as text.
[[nodiscard]] inline std::string_view textOf(std::span<const std::byte> input)
{
    return {reinterpret_cast<const char*>(input.data()), input.size()};
}

} // namespace TOLVGraphing::fuzzing
