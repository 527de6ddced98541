#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

/// How a recording is taken apart.
struct DecaySettings {
    /// Where the decay begins, in seconds. Where absent, it is the end of the last 20 ms whose level is within 12 dB of the loudest, but
    /// a window before the end of the recording at the latest.
    std::optional<double> start;
    /// From the first slice to the last, in seconds.
    double length = 0.16;
    std::size_t sliceCount = 41;
    /// What one slice sees, in seconds: from its time on, fading out.
    double window = 0.06;
    /// The frequencies, in hertz.
    double lowest = 80.0;
    double highest = 20000.0;
};

/// The spectrum of what is still to come at a time after the start.
struct DecaySlice {
    /// In milliseconds after the start.
    double time = 0.0;
    /// One level for each frequency, in decibels below the largest of the first slice.
    std::vector<float> levels;
};

/// A cumulative spectral decay: the first slice is the earliest.
struct Decay {
    /// In hertz, ascending, equally spaced on a logarithmic axis, up to half the sampling rate.
    std::vector<float> frequencies;
    std::vector<DecaySlice> slices;
};

/// Throws std::runtime_error for a recording that is shorter than a window, silent or not finite, and for a start and frequencies that it cannot have.
[[nodiscard]] Decay cumulativeDecay(std::span<const float> samples, double sampleRate, const DecaySettings& settings);
