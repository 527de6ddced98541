#include "Mutation.h"

#include <algorithm>
#include <array>
#include <utility>

namespace TOLVGraphing::fuzzing {
namespace {

constexpr std::array<std::uint64_t, 12> kNumbers = {0, 1, 0x7F, 0x80, 0xFF, 0x7FFF, 0xFFFF, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0x7FFFFFFFFFFFFFFF, 0xFFFFFFFFFFFFFFFF};

} // namespace

Mutation::Mutation(std::vector<Bytes> saved, std::uint64_t seed) : m_saved(std::move(saved)), m_state(seed) {}

std::size_t Mutation::below(std::size_t end)
{
    // A counter whose bits are mixed: every start gives a full cycle of numbers.
    m_state += 0x9E3779B97F4A7C15U;
    std::uint64_t mixed = m_state;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
    mixed ^= mixed >> 31U;
    return end == 0 ? 0 : static_cast<std::size_t>(mixed % end);
}

std::byte Mutation::randomByte()
{
    return static_cast<std::byte>(below(256));
}

Bytes Mutation::next(std::size_t longest)
{
    Bytes input = m_saved.empty() ? Bytes{} : m_saved[below(m_saved.size())];
    if (input.empty()) {
        input.resize(1 + below(64));
        std::ranges::generate(input, [this] { return randomByte(); });
    }
    for (std::size_t steps = 1 + below(4); steps > 0; --steps)
        damage(input);
    if (below(8) == 0)
        input.resize(below(input.size() + 1));
    input.resize(std::min(input.size(), longest));
    return input;
}

void Mutation::damage(Bytes& input)
{
    switch (below(6)) {
    case 0: return changeBytes(input);
    case 1: return removeBytes(input);
    case 2: return insertBytes(input);
    case 3: return repeatBytes(input);
    case 4: return overwriteNumber(input);
    default: return spliceOther(input);
    }
}

void Mutation::changeBytes(Bytes& input)
{
    if (input.empty())
        return;
    for (std::size_t count = 1 + below(4); count > 0; --count) {
        std::byte& changed = input[below(input.size())];
        changed = below(2) == 0 ? randomByte() : changed ^ static_cast<std::byte>(1U << below(8));
    }
}

void Mutation::removeBytes(Bytes& input)
{
    const std::size_t first = below(input.size());
    const std::size_t count = std::min(input.size() - first, 1 + below(16));
    const auto begin = input.begin() + static_cast<std::ptrdiff_t>(first);
    input.erase(begin, begin + static_cast<std::ptrdiff_t>(count));
}

void Mutation::insertBytes(Bytes& input)
{
    const auto place = static_cast<std::ptrdiff_t>(below(input.size() + 1));
    Bytes inserted(1 + below(8));
    std::ranges::generate(inserted, [this] { return randomByte(); });
    input.insert(input.begin() + place, inserted.begin(), inserted.end());
}

void Mutation::repeatBytes(Bytes& input)
{
    const std::size_t first = below(input.size());
    const std::size_t count = std::min(input.size() - first, 1 + below(64));
    const Bytes repeated(input.begin() + static_cast<std::ptrdiff_t>(first), input.begin() + static_cast<std::ptrdiff_t>(first + count));
    input.insert(input.begin() + static_cast<std::ptrdiff_t>(below(input.size() + 1)), repeated.begin(), repeated.end());
}

void Mutation::overwriteNumber(Bytes& input)
{
    const std::uint64_t number = kNumbers[below(kNumbers.size())];
    const std::size_t width = std::size_t{1} << below(4);
    const bool highestFirst = below(2) == 0;
    const std::size_t place = below(input.size());
    for (std::size_t i = 0; i < width && place + i < input.size(); ++i)
        input[place + i] = static_cast<std::byte>(number >> (8 * (highestFirst ? width - 1 - i : i)));
}

void Mutation::spliceOther(Bytes& input)
{
    if (m_saved.empty())
        return;
    const Bytes& other = m_saved[below(m_saved.size())];
    input.resize(below(input.size() + 1));
    input.insert(input.end(), other.begin() + static_cast<std::ptrdiff_t>(below(other.size())), other.end());
}

} // namespace TOLVGraphing::fuzzing
