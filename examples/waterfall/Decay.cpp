#include "Decay.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>
#include <numbers>
#include <stdexcept>

namespace {

using Spectrum = std::vector<std::complex<double>>;

constexpr double kPointsPerOctave = 48.0;
/// Levels are means over this part of an octave to either side.
constexpr double kHalfBand = 1.0 / 48.0;
constexpr double kSilence = 1e-30;

/// The discrete Fourier transform in place; the length is a power of two.
void transform(Spectrum& values)
{
    const std::size_t count = values.size();
    for (std::size_t i = 1, j = 0; i < count; ++i) {
        std::size_t bit = count >> 1U;
        for (; (j & bit) != 0; bit >>= 1U)
            j ^= bit;
        j ^= bit;
        if (i < j)
            std::swap(values[i], values[j]);
    }
    for (std::size_t half = 1; half < count; half *= 2) {
        for (std::size_t k = 0; k < half; ++k) {
            const auto turn = std::polar(1.0, -std::numbers::pi * static_cast<double>(k) / static_cast<double>(half));
            for (std::size_t i = k; i < count; i += 2 * half) {
                const auto upper = values[i + half] * turn;
                values[i + half] = values[i] - upper;
                values[i] += upper;
            }
        }
    }
}

/// Rises within the first twentieth of the window, so that the cut makes no spectrum of its own, and falls slowly.
double weight(double position)
{
    constexpr double kRise = 0.05;
    const double phase = position < kRise ? position / kRise - 1.0 : (position - kRise) / (1.0 - kRise);
    return 0.5 + 0.5 * std::cos(std::numbers::pi * phase);
}

double power(std::span<const float> samples)
{
    double sum = 0.0;
    for (const float sample : samples)
        sum += static_cast<double>(sample) * static_cast<double>(sample);
    return sum / static_cast<double>(std::max<std::size_t>(samples.size(), 1));
}

std::size_t startOfDecay(std::span<const float> samples, double sampleRate)
{
    const auto block = std::max<std::size_t>(static_cast<std::size_t>(sampleRate * 0.02), 1);
    const auto blockAt = [&](std::size_t index) { return samples.subspan(index, std::min(block, samples.size() - index)); };
    double loudest = 0.0;
    for (std::size_t i = 0; i < samples.size(); i += block)
        loudest = std::max(loudest, power(blockAt(i)));
    std::size_t start = 0;
    for (std::size_t i = 0; i < samples.size(); i += block) {
        if (power(blockAt(i)) >= loudest * std::pow(10.0, -1.2))
            start = i + block;
    }
    return std::min(start, samples.size());
}

/// The power of each frequency step of what begins at the sample; behind the end of the recording there is silence.
std::vector<double> powersFrom(std::span<const float> samples, std::size_t start, std::size_t windowLength)
{
    // Four times as many steps as needed leave nothing to interpolate but straight lines.
    Spectrum values(std::bit_ceil(windowLength) * 4);
    for (std::size_t i = 0; i < windowLength && start + i < samples.size(); ++i)
        values[i] = static_cast<double>(samples[start + i]) * weight(static_cast<double>(i) / static_cast<double>(windowLength));
    transform(values);
    std::vector<double> powers(values.size() / 2 + 1);
    std::transform(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(powers.size()), powers.begin(), [](const std::complex<double>& value) { return std::norm(value); });
    return powers;
}

/// The mean power of the steps around a frequency, at least the two next to it.
double meanPower(const std::vector<double>& powers, double step)
{
    const double last = static_cast<double>(powers.size() - 1);
    const auto first = static_cast<std::size_t>(std::clamp(std::floor(step * std::exp2(-kHalfBand)), 0.0, last));
    const auto end = static_cast<std::size_t>(std::clamp(std::ceil(step * std::exp2(kHalfBand)), 0.0, last));
    double sum = 0.0;
    for (std::size_t i = first; i <= end; ++i)
        sum += powers[i];
    return sum / static_cast<double>(end - first + 1);
}

/// Throws where there is nothing to take apart.
void requireDecay(std::span<const float> samples, double sampleRate, const DecaySettings& settings, std::size_t windowLength)
{
    if (windowLength < 2 || samples.size() < windowLength)
        throw std::runtime_error("the recording is too short: " + std::to_string(settings.window) + " s are needed at least");
    if (!(settings.lowest > 0.0 && settings.lowest < std::min(settings.highest, sampleRate / 2.0)))
        throw std::runtime_error("the lowest frequency has to be above 0, and below the highest and half the sampling rate");
    const double loudness = power(samples);
    if (!std::isfinite(loudness) || loudness < kSilence)
        throw std::runtime_error("the recording is silent or has samples that are no numbers");
}

/// The sample that the first slice begins with.
std::size_t firstSample(std::span<const float> samples, double sampleRate, const DecaySettings& settings, std::size_t windowLength)
{
    const std::size_t last = samples.size() - windowLength;
    if (!settings.start)
        return std::min(startOfDecay(samples, sampleRate), last);
    const double first = *settings.start * sampleRate;
    if (!(first >= 0.0 && first <= static_cast<double>(last)))
        throw std::runtime_error(
            "the decay cannot begin at " + std::to_string(*settings.start) + " s: expected 0 to " + std::to_string(static_cast<double>(last) / sampleRate) + " s");
    return static_cast<std::size_t>(first);
}

std::vector<float> equallySpacedFrequencies(double lowest, double highest)
{
    const double octaves = std::log2(highest / lowest);
    const auto steps = std::max<std::size_t>(static_cast<std::size_t>(std::ceil(octaves * kPointsPerOctave)), 1);
    std::vector<float> frequencies;
    for (std::size_t i = 0; i <= steps; ++i)
        frequencies.push_back(static_cast<float>(lowest * std::exp2(octaves * static_cast<double>(i) / static_cast<double>(steps))));
    return frequencies;
}

} // namespace

Decay cumulativeDecay(std::span<const float> samples, double sampleRate, const DecaySettings& settings)
{
    const auto windowLength = static_cast<std::size_t>(settings.window * sampleRate);
    requireDecay(samples, sampleRate, settings, windowLength);
    const std::size_t start = firstSample(samples, sampleRate, settings, windowLength);
    Decay decay{equallySpacedFrequencies(settings.lowest, std::min(settings.highest, sampleRate / 2.0)), {}};
    double reference = kSilence;
    for (std::size_t i = 0; i < settings.sliceCount; ++i) {
        const double time = settings.length * static_cast<double>(i) / static_cast<double>(std::max<std::size_t>(settings.sliceCount - 1, 1));
        const auto powers = powersFrom(samples, start + static_cast<std::size_t>(time * sampleRate), windowLength);
        const double stepsPerHertz = static_cast<double>((powers.size() - 1) * 2) / sampleRate;
        std::vector<double> means;
        for (const float frequency : decay.frequencies)
            means.push_back(meanPower(powers, static_cast<double>(frequency) * stepsPerHertz));
        if (i == 0)
            reference = std::max(*std::max_element(means.begin(), means.end()), kSilence);
        DecaySlice slice{time * 1000.0, {}};
        for (const double mean : means)
            slice.levels.push_back(static_cast<float>(10.0 * std::log10(std::max(mean / reference, kSilence))));
        decay.slices.push_back(std::move(slice));
    }
    return decay;
}
