#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace TOLVGraphing::fuzzing {

using Bytes = std::vector<std::byte>;

/// Inputs made of saved ones by damaging them: bytes changed, removed, inserted, repeated, overwritten by numbers at which sizes overflow, cut off, or taken over from another input.
/// The same seed gives the same inputs in every run on every machine.
class Mutation {
public:
    /// The saved inputs are copied; with none, or with empty ones only, inputs start from random bytes.
    Mutation(std::vector<Bytes> saved, std::uint64_t seed);

    /// An input of at most `longest` bytes.
    [[nodiscard]] Bytes next(std::size_t longest);

private:
    /// A whole number from 0 to below `end`; 0 for 0.
    std::size_t below(std::size_t end);
    std::byte randomByte();
    void damage(Bytes& input);
    void changeBytes(Bytes& input);
    void removeBytes(Bytes& input);
    void insertBytes(Bytes& input);
    void repeatBytes(Bytes& input);
    void overwriteNumber(Bytes& input);
    void spliceOther(Bytes& input);

    std::vector<Bytes> m_saved;
    std::uint64_t m_state;
};

} // namespace TOLVGraphing::fuzzing
