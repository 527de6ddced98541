#pragma once

#include <cstddef>
#include <span>
#include <string_view>

/// What a fuzzer of this project is: one function that is handed bytes. Built with the preset `fuzz` it is driven by libFuzzer; in every other build a plain program replays the saved inputs.
namespace TOLVGraphing::fuzzing {

/// What became of an input.
enum class Verdict {
    /// It was taken, and everything that must hold for it did.
    accepted,
    /// It was refused in the way that is promised for bad input: a clear error, or nothing.
    refused,
};

/// Each fuzzer defines it. Whatever leaves it as an exception, and whatever stops the program, is a finding.
[[nodiscard]] Verdict tryInput(std::span<const std::byte> input);

/// Stops the program with the text on standard error unless `holds`: the input at hand is a finding.
void require(bool holds, std::string_view whatMustHold);

} // namespace TOLVGraphing::fuzzing
