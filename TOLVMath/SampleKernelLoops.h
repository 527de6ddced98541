// The loops of SampleKernels for one kind of `Lanes`. Included once for each kind, inside of its own namespace, so it has neither guard nor includes.
// NOLINTBEGIN(misc-definitions-in-headers)

/// The extremes of many samples, lane by lane. There are two of each, so that the comparisons need not wait for one another.
template <bool IsFiltered>
class LaneExtremes {
public:
    /// The samples of one step.
    static constexpr std::size_t kStep = 16;

    explicit LaneExtremes(float floor) : m_floor(floor) {}

    void add(const float* samples)
    {
        for (std::size_t i = 0; i < kStep; i += 2 * Lanes::kCount) {
            const Lanes even = Lanes::load(samples + i);
            const Lanes odd = Lanes::load(samples + i + Lanes::kCount);
            m_evenMaximum = Lanes::greater(even, m_evenMaximum);
            m_oddMaximum = Lanes::greater(odd, m_oddMaximum);
            m_evenMinimum = Lanes::lesser(held(even), m_evenMinimum);
            m_oddMinimum = Lanes::lesser(held(odd), m_oddMinimum);
        }
    }

    [[nodiscard]] FloatLanes minimum() const { return Lanes::lesser(m_evenMinimum, m_oddMinimum).foldedToLesser(); }
    [[nodiscard]] FloatLanes maximum() const { return Lanes::greater(m_evenMaximum, m_oddMaximum).foldedToGreater(); }

private:
    Lanes held(Lanes samples) const
    {
        if constexpr (IsFiltered)
            return Lanes::notBelowOr(samples, m_floor, Lanes(kInfinity));
        else
            return samples;
    }

    Lanes m_floor;
    Lanes m_evenMinimum{kInfinity};
    Lanes m_oddMinimum{kInfinity};
    Lanes m_evenMaximum{-kInfinity};
    Lanes m_oddMaximum{-kInfinity};
};

template <bool IsFiltered>
Extremes extremesOfSamples(const float* samples, std::size_t count, float floor)
{
    constexpr std::size_t kStep = LaneExtremes<IsFiltered>::kStep;
    LaneExtremes<IsFiltered> lanes(floor);
    std::size_t i = 0;
    for (; i + kStep <= count; i += kStep) {
        prefetch(samples + i + kPrefetchDistance);
        lanes.add(samples + i);
    }
    Extremes result = extremesOfLanes(lanes.minimum(), lanes.maximum());
    for (; i < count; ++i) {
        const float sample = samples[i];
        result.minimum = sample < result.minimum && (!IsFiltered || sample >= floor) ? sample : result.minimum;
        result.maximum = sample > result.maximum ? sample : result.maximum;
    }
    return result;
}

template <bool IsFiltered>
bool extremesOfBlocks(const float* samples, std::size_t blockLength, std::size_t blockCount, float* extremes, float floor)
{
    constexpr std::size_t kStep = LaneExtremes<IsFiltered>::kStep;
    constexpr std::size_t kGroup = 16;
    typename Lanes::Mask nan;
    // Four blocks at a time, whose lanes are then joined across.
    for (std::size_t block = 0; block < blockCount; block += FloatLanes::kCount) {
        FloatLanes low[FloatLanes::kCount] = {FloatLanes(0.0F), FloatLanes(0.0F), FloatLanes(0.0F), FloatLanes(0.0F)};
        FloatLanes high[FloatLanes::kCount] = {FloatLanes(0.0F), FloatLanes(0.0F), FloatLanes(0.0F), FloatLanes(0.0F)};
        for (std::size_t k = 0; k < FloatLanes::kCount; ++k) {
            LaneExtremes<IsFiltered> lanes(floor);
            const float* first = samples + (block + k) * blockLength;
            for (std::size_t i = 0; i < blockLength; i += kStep) {
                prefetch(first + i + kPrefetchDistance);
                lanes.add(first + i);
                for (std::size_t lane = 0; lane < kStep; lane += 2 * Lanes::kCount)
                    nan = nan | Lanes::whereEitherNaN(Lanes::load(first + i + lane), Lanes::load(first + i + lane + Lanes::kCount));
            }
            low[k] = lanes.minimum();
            high[k] = lanes.maximum();
        }
        FloatLanes::transpose(low[0], low[1], low[2], low[3]);
        FloatLanes::transpose(high[0], high[1], high[2], high[3]);
        float* place = extremes + block / kGroup * 2 * kGroup + block % kGroup;
        FloatLanes::lesser(FloatLanes::lesser(low[0], low[1]), FloatLanes::lesser(low[2], low[3])).store(place);
        FloatLanes::greater(FloatLanes::greater(high[0], high[1]), FloatLanes::greater(high[2], high[3])).store(place + kGroup);
    }
    return nan.isAny();
}

bool ascend(const float* samples, std::size_t count)
{
    constexpr std::size_t kStep = 32;
    std::size_t i = 0;
    for (; i + kStep <= count; i += kStep) {
        const float* at = samples + i;
        prefetch(at + kPrefetchDistance);
        prefetch(at + kPrefetchDistance + kStep / 2);
        typename Lanes::Mask holds = Lanes::whereNotAbove(Lanes::load(at), Lanes::load(at + 1));
        for (std::size_t lane = Lanes::kCount; lane < kStep; lane += Lanes::kCount)
            holds = holds & Lanes::whereNotAbove(Lanes::load(at + lane), Lanes::load(at + lane + 1));
        if (!holds.isAll())
            return false;
    }
    for (; i < count; ++i) {
        if (!(samples[i] <= samples[i + 1]))
            return false;
    }
    return true;
}

constexpr SampleKernels kKernels = {
    [](const float* samples, std::size_t count) { return extremesOfSamples<false>(samples, count, 0.0F); },
    [](const float* samples, std::size_t count, float floor) { return extremesOfSamples<true>(samples, count, floor); },
    [](const float* samples, std::size_t length, std::size_t count, float* extremes) { return extremesOfBlocks<false>(samples, length, count, extremes, 0.0F); },
    [](const float* samples, std::size_t length, std::size_t count, float* extremes, float floor) { return extremesOfBlocks<true>(samples, length, count, extremes, floor); },
    ascend,
};
// NOLINTEND(misc-definitions-in-headers)
