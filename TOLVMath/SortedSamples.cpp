#include "SortedSamples.h"

#include "FloatLanes.h"
#include "SampleKernels.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

namespace TOLVGraphing {

namespace {

constexpr std::size_t kLanes = FloatLanes::kCount;
constexpr std::size_t kStep = SortedSamples::kWindow;
constexpr std::size_t kSkip = std::size_t{1} << SortedSamples::kSkipShift;

/// Of kStep ascending samples the number that are not above the value.
std::size_t countNotAbove(const float* samples, FloatLanes value)
{
    unsigned mask = 0;
    for (std::size_t i = 0; i < kStep; i += kLanes)
        mask |= FloatLanes::whereNotAbove(FloatLanes::load(samples + i), value).bits() << i;
    // They ascend: no sample that is above the value comes before one that is not.
    return static_cast<std::size_t>(std::countr_one(mask));
}

/// The first index from `low` to `high` whose sample is above the value, searched outwards from `guess` in growing steps.
std::size_t gallop(const float* samples, float value, std::size_t low, std::size_t high, std::size_t guess, std::size_t firstStep)
{
    guess = std::clamp(guess, low, high);
    std::size_t step = firstStep;
    if (guess < high && !(samples[guess] > value)) {
        low = guess + 1;
        while (low + step < high && !(samples[low + step] > value)) {
            low += step + 1;
            step *= 2;
        }
        high = std::min(high, low + step);
    } else {
        high = guess;
        while (high > low && high - low > step && samples[high - step] > value) {
            high -= step;
            step *= 2;
        }
        low = high - low > step ? high - step : low;
    }
    return static_cast<std::size_t>(std::upper_bound(samples + low, samples + high, value) - samples);
}

/// The answer when it lies within a few samples of the guess; `end` + 1 otherwise.
std::size_t firstAboveNear(const float* samples, float value, std::size_t from, std::size_t end, std::size_t guess)
{
    if (end - from < kStep)
        return static_cast<std::size_t>(std::upper_bound(samples + from, samples + end, value) - samples);
    const std::size_t window = std::clamp(guess, from + kStep / 2, end - kStep / 2) - kStep / 2;
    const std::size_t count = countNotAbove(samples + window, FloatLanes(value));
    const bool isWithin = (count > 0 || window == from) && (count < kStep || window + kStep == end);
    return isWithin ? window + count : end + 1;
}

} // namespace

bool isAscending(std::span<const float> samples)
{
    if (samples.empty())
        return true;
    if (std::isnan(samples[0]))
        return false;
    return SampleKernels::best().ascend(samples.data(), samples.size() - 1);
}

std::unique_ptr<const SortedSamples> SortedSamples::of(std::span<const float> samples)
{
    std::vector<float> skipTable;
    skipTable.reserve((samples.size() + kSkip - 1) / kSkip);
    const SampleKernels& kernels = SampleKernels::best();
    for (std::size_t i = 0; i < samples.size(); i += kSkip) {
        skipTable.push_back(samples[i]);
        // Up to the first sample of the next part, so that nothing is left out between them.
        if (!kernels.ascend(samples.data() + i, std::min(kSkip, samples.size() - 1 - i)))
            return nullptr;
    }
    // A single sample has no next one to be compared with.
    if (samples.size() == 1 && std::isnan(samples[0]))
        return nullptr;
    return std::unique_ptr<const SortedSamples>(new SortedSamples(samples, std::move(skipTable)));
}

SortedSamples::SortedSamples(std::span<const float> samples, std::vector<float> skipTable) : m_samples(samples), m_skipTable(std::move(skipTable)) {}

std::size_t SortedSamples::firstAbove(float value, std::size_t from, std::size_t end, std::size_t guess) const
{
    const std::size_t near = firstAboveNear(m_samples.data(), value, from, end, guess);
    if (near <= end)
        return near;
    // The table's entries before `from` or from `end` on are no concern: the answer is limited to the range in the end.
    const std::size_t last = std::min((end + kSkip - 1) >> kSkipShift, m_skipTable.size());
    const std::size_t entry = gallop(m_skipTable.data(), value, from >> kSkipShift, last, guess >> kSkipShift, 1);
    // The entry before has a sample that is not above the value, so the answer lies behind it, up to the entry itself.
    std::size_t low = entry > 0 ? (entry - 1) << kSkipShift : 0;
    std::size_t high = std::min(entry << kSkipShift, m_samples.size());
    low = std::clamp(low, from, end);
    high = std::clamp(high, low, end);
    return static_cast<std::size_t>(std::upper_bound(m_samples.data() + low, m_samples.data() + high, value) - m_samples.data());
}

std::size_t firstSampleAbove(std::span<const float> samples, float value, std::size_t from, std::size_t end, std::size_t guess)
{
    const std::size_t near = firstAboveNear(samples.data(), value, from, end, guess);
    return near <= end ? near : gallop(samples.data(), value, from, end, guess, kStep);
}

} // namespace TOLVGraphing
