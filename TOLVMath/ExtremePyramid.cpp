#include "ExtremePyramid.h"

#include "LaneExtremes.h"
#include "SampleKernels.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace TOLVGraphing {

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr std::size_t kLanes = FloatLanes::kCount;

/// Calls the function for each level of so many samples with its entries and the groups that they are kept in.
template <typename Function>
void forEachLevel(std::size_t sampleCount, unsigned blockShift, const Function& function)
{
    std::size_t entries = std::max<std::size_t>(1, (sampleCount + (std::size_t{1} << blockShift) - 1) >> blockShift);
    std::size_t groups = 0;
    do {
        groups = (entries + ExtremePyramid::kFan - 1) >> ExtremePyramid::kFanShift;
        function(entries, groups);
        entries = groups;
    } while (groups > 1);
}

} // namespace

Extremes extremesOf(std::span<const float> samples, float floor)
{
    const SampleKernels& kernels = SampleKernels::best();
    return floor > -kInfinity ? kernels.extremesAbove(samples.data(), samples.size(), floor) : kernels.extremes(samples.data(), samples.size());
}

ExtremePyramid::ExtremePyramid(std::span<const float> samples, unsigned blockShift, float floor)
    : m_sampleCount(samples.size())
    , m_blockShift(std::max(blockShift, kSmallestBlockShift))
{
    layOut();
    // Every number is written below; zeroing them first would touch the memory twice.
    auto numbers = std::unique_ptr<float[]>(new float[m_numberCount]);
    findBlocks(numbers.get(), samples, floor);
    for (std::size_t level = 1; level < m_levelCount; ++level)
        findLevel(numbers.get(), level);
    const float* kept = numbers.get();
    m_numbers = std::shared_ptr<const float>(std::shared_ptr<const float[]>(std::move(numbers)), kept);
    findExtremes();
}

ExtremePyramid::ExtremePyramid(std::shared_ptr<const void> owner, const float* numbers, std::size_t sampleCount, unsigned blockShift, bool hasNaN)
    : m_sampleCount(sampleCount)
    , m_blockShift(std::max(blockShift, kSmallestBlockShift))
    , m_hasNaN(hasNaN)
    , m_numbers(std::move(owner), numbers)
{
    layOut();
    findExtremes();
}

ExtremePyramid::~ExtremePyramid() = default;

std::size_t ExtremePyramid::numberCountFor(std::size_t sampleCount, unsigned blockShift)
{
    std::size_t numbers = 0;
    forEachLevel(sampleCount, blockShift, [&](std::size_t, std::size_t groups) { numbers += groups * 2 * kFan; });
    return numbers;
}

void ExtremePyramid::layOut()
{
    forEachLevel(m_sampleCount, m_blockShift, [this](std::size_t entries, std::size_t groups) {
        m_counts[m_levelCount] = entries;
        m_offsets[m_levelCount] = m_numberCount;
        ++m_levelCount;
        m_numberCount += groups * 2 * kFan;
    });
}

void ExtremePyramid::set(float* numbers, std::size_t level, std::size_t index, const Extremes& extremes) const
{
    float* minimum = numbers + placeOf(level, index);
    minimum[0] = extremes.minimum;
    minimum[kFan] = extremes.maximum;
}

void ExtremePyramid::findBlocks(float* numbers, std::span<const float> samples, float floor)
{
    const std::size_t length = std::size_t{1} << m_blockShift;
    const std::size_t found = (samples.size() >> m_blockShift) & ~(kLanes - 1);
    const SampleKernels& kernels = SampleKernels::best();
    m_hasNaN = floor > -kInfinity ? kernels.blockExtremesAbove(samples.data(), length, found, numbers, floor) : kernels.blockExtremes(samples.data(), length, found, numbers);
    const std::size_t padded = ((m_counts[0] + kFan - 1) >> kFanShift) << kFanShift;
    for (std::size_t block = found; block < padded; ++block) {
        const std::size_t from = std::min(block << m_blockShift, samples.size());
        const auto part = samples.subspan(from, std::min(length, samples.size() - from));
        const Extremes extremes = extremesOf(part, floor);
        m_hasNaN = m_hasNaN || std::any_of(part.begin(), part.end(), [](float sample) { return std::isnan(sample); });
        set(numbers, 0, block, extremes);
    }
}

void ExtremePyramid::findLevel(float* numbers, std::size_t level)
{
    const std::size_t padded = ((m_counts[level] + kFan - 1) >> kFanShift) << kFanShift;
    for (std::size_t index = 0; index < padded; ++index) {
        Extremes found;
        if (index < m_counts[level]) {
            const float* group = numbers + placeOf(level - 1, index << kFanShift);
            FloatLanes minimum(kInfinity);
            FloatLanes maximum(-kInfinity);
            for (std::size_t i = 0; i < kFan; i += kLanes) {
                minimum = FloatLanes::lesser(FloatLanes::load(group + i), minimum);
                maximum = FloatLanes::greater(FloatLanes::load(group + kFan + i), maximum);
            }
            found = extremesOfLanes(minimum, maximum);
        }
        set(numbers, level, index, found);
    }
}

Extremes ExtremePyramid::extremesOfEntries(std::size_t level, std::size_t from, std::size_t end) const
{
    Extremes result;
    while (from < end && from % kLanes != 0)
        result.add(entry(level, from++));
    if (from + kLanes <= end) {
        FloatLanes minimum(kInfinity);
        FloatLanes maximum(-kInfinity);
        for (; from + kLanes <= end; from += kLanes) {
            const float* place = minimumOf(level, from);
            minimum = FloatLanes::lesser(FloatLanes::load(place), minimum);
            maximum = FloatLanes::greater(FloatLanes::load(place + kFan), maximum);
        }
        result.add(extremesOfLanes(minimum, maximum));
    }
    while (from < end)
        result.add(entry(level, from++));
    return result;
}

Extremes ExtremePyramid::extremesInRange(std::span<const float> samples, std::size_t from, std::size_t end) const
{
    const auto ofSamples = [&](std::size_t first, std::size_t last) { return extremesOf(samples.subspan(first, last - first)); };
    std::size_t first = (from + (std::size_t{1} << m_blockShift) - 1) >> m_blockShift;
    std::size_t last = end >> m_blockShift;
    if (first >= last)
        return ofSamples(from, std::max(from, end));
    Extremes result = ofSamples(from, first << m_blockShift);
    result.add(ofSamples(last << m_blockShift, end));
    // Up the levels: what does not fill an entry of the next one is taken from this one.
    for (std::size_t level = 0;; ++level) {
        const std::size_t nextFirst = (first + kFan - 1) >> kFanShift;
        const std::size_t nextLast = last >> kFanShift;
        if (level + 1 == m_levelCount || nextFirst >= nextLast) {
            result.add(extremesOfEntries(level, first, last));
            return result;
        }
        result.add(extremesOfEntries(level, first, nextFirst << kFanShift));
        result.add(extremesOfEntries(level, nextLast << kFanShift, last));
        first = nextFirst;
        last = nextLast;
    }
}

} // namespace TOLVGraphing
