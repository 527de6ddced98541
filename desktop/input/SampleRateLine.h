#pragma once

#include <optional>
#include <string_view>

namespace TOLVGraphing::input {

/// The sampling rate in samples per second that a line before a table states, such as `"Sampling Frequency (Hz)=",500000000` or
/// `# Sample rate: 48 kHz`; nothing where the line is about something else or has no positive number behind those words.
[[nodiscard]] std::optional<double> statedSampleRate(std::string_view line);

} // namespace TOLVGraphing::input
