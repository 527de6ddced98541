#pragma once

#include <cstddef>

#if !defined(TOLVGRAPHING_PORTABLE_LANES) && defined(__SSE2__)
#define TOLVGRAPHING_SSE_LANES
#include <emmintrin.h>
#endif

namespace TOLVGraphing {

/// Which of four lanes something holds for.
class LaneMask {
public:
#ifdef TOLVGRAPHING_SSE_LANES
    explicit LaneMask(__m128 lanes) : m_lanes(lanes) {}
    /// For no lane.
    LaneMask() : m_lanes(_mm_setzero_ps()) {}
    friend LaneMask operator|(LaneMask a, LaneMask b)
    {
        return LaneMask(_mm_or_ps(a.m_lanes, b.m_lanes));
    }
    friend LaneMask operator&(LaneMask a, LaneMask b)
    {
        return LaneMask(_mm_and_ps(a.m_lanes, b.m_lanes));
    }
    /// One bit for each lane, the lowest for the first.
    [[nodiscard]] unsigned bits() const
    {
        return static_cast<unsigned>(_mm_movemask_ps(m_lanes));
    }
#else
    explicit LaneMask(unsigned bits) : m_lanes(bits) {}
    LaneMask() : m_lanes(0) {}
    friend LaneMask operator|(LaneMask a, LaneMask b)
    {
        return LaneMask(a.m_lanes | b.m_lanes);
    }
    friend LaneMask operator&(LaneMask a, LaneMask b)
    {
        return LaneMask(a.m_lanes & b.m_lanes);
    }
    [[nodiscard]] unsigned bits() const
    {
        return m_lanes;
    }
#endif
    [[nodiscard]] bool isAny() const
    {
        return bits() != 0;
    }
    [[nodiscard]] bool isAll() const
    {
        return bits() == 0xF;
    }

private:
#ifdef TOLVGRAPHING_SSE_LANES
    __m128 m_lanes;
#else
    unsigned m_lanes;
#endif
};

/// Four single-precision numbers that are worked on at once. Comparisons with NaN are false. With TOLVGRAPHING_PORTABLE_LANES, or on processors without SSE2, plain loops do the same.
class FloatLanes {
public:
    static constexpr std::size_t kCount = 4;
    using Mask = LaneMask;

    /// As they are: there are no more lanes than these.
    [[nodiscard]] FloatLanes foldedToLesser() const { return *this; }
    [[nodiscard]] FloatLanes foldedToGreater() const { return *this; }

#ifdef TOLVGRAPHING_SSE_LANES
    explicit FloatLanes(float value) : m_lanes(_mm_set1_ps(value)) {}
    explicit FloatLanes(__m128 lanes) : m_lanes(lanes) {}
    [[nodiscard]] static FloatLanes load(const float* numbers)
    {
        return FloatLanes(_mm_loadu_ps(numbers));
    }
    void store(float* numbers) const
    {
        _mm_storeu_ps(numbers, m_lanes);
    }

    /// `candidate` where it is smaller than `best`, else `best`: a NaN candidate never wins.
    [[nodiscard]] static FloatLanes lesser(FloatLanes candidate, FloatLanes best)
    {
        return FloatLanes(_mm_min_ps(candidate.m_lanes, best.m_lanes));
    }
    /// `candidate` where it is larger than `best`, else `best`.
    [[nodiscard]] static FloatLanes greater(FloatLanes candidate, FloatLanes best)
    {
        return FloatLanes(_mm_max_ps(candidate.m_lanes, best.m_lanes));
    }
    /// The number where it is not below `floor`, else `other`.
    [[nodiscard]] static FloatLanes notBelowOr(FloatLanes number, FloatLanes floor, FloatLanes other)
    {
        const __m128 isHeld = _mm_cmpge_ps(number.m_lanes, floor.m_lanes);
        return FloatLanes(_mm_or_ps(_mm_and_ps(isHeld, number.m_lanes), _mm_andnot_ps(isHeld, other.m_lanes)));
    }
    friend FloatLanes operator+(FloatLanes a, FloatLanes b)
    {
        return FloatLanes(_mm_add_ps(a.m_lanes, b.m_lanes));
    }

    [[nodiscard]] static LaneMask whereBelow(FloatLanes a, FloatLanes b)
    {
        return LaneMask(_mm_cmplt_ps(a.m_lanes, b.m_lanes));
    }
    [[nodiscard]] static LaneMask whereNotAbove(FloatLanes a, FloatLanes b)
    {
        return LaneMask(_mm_cmple_ps(a.m_lanes, b.m_lanes));
    }
    [[nodiscard]] static LaneMask whereEitherNaN(FloatLanes a, FloatLanes b)
    {
        return LaneMask(_mm_cmpunord_ps(a.m_lanes, b.m_lanes));
    }

    /// Four rows become four columns.
    static void transpose(FloatLanes& a, FloatLanes& b, FloatLanes& c, FloatLanes& d)
    {
        _MM_TRANSPOSE4_PS(a.m_lanes, b.m_lanes, c.m_lanes, d.m_lanes);
    }

private:
    __m128 m_lanes;
#else
    explicit FloatLanes(float value) : m_lanes{value, value, value, value} {}
    [[nodiscard]] static FloatLanes load(const float* numbers)
    {
        return combined(FloatLanes(0.0F), FloatLanes(0.0F), [&](std::size_t i, float, float) { return numbers[i]; });
    }
    void store(float* numbers) const
    {
        for (std::size_t i = 0; i < kCount; ++i)
            numbers[i] = m_lanes[i];
    }

    [[nodiscard]] static FloatLanes lesser(FloatLanes candidate, FloatLanes best)
    {
        return combined(candidate, best, [](std::size_t, float a, float b) { return a < b ? a : b; });
    }
    [[nodiscard]] static FloatLanes greater(FloatLanes candidate, FloatLanes best)
    {
        return combined(candidate, best, [](std::size_t, float a, float b) { return a > b ? a : b; });
    }
    [[nodiscard]] static FloatLanes notBelowOr(FloatLanes number, FloatLanes floor, FloatLanes other)
    {
        return combined(number, floor, [&](std::size_t i, float a, float b) { return a >= b ? a : other.m_lanes[i]; });
    }
    friend FloatLanes operator+(FloatLanes a, FloatLanes b)
    {
        return combined(a, b, [](std::size_t, float p, float q) { return p + q; });
    }

    [[nodiscard]] static LaneMask whereBelow(FloatLanes a, FloatLanes b)
    {
        return where(a, b, [](float p, float q) { return p < q; });
    }
    [[nodiscard]] static LaneMask whereNotAbove(FloatLanes a, FloatLanes b)
    {
        return where(a, b, [](float p, float q) { return p <= q; });
    }
    [[nodiscard]] static LaneMask whereEitherNaN(FloatLanes a, FloatLanes b)
    {
        return where(a, b, [](float p, float q) { return p != p || q != q; });
    }

    static void transpose(FloatLanes& a, FloatLanes& b, FloatLanes& c, FloatLanes& d)
    {
        FloatLanes* const rows[kCount] = {&a, &b, &c, &d};
        for (std::size_t i = 0; i < kCount; ++i) {
            for (std::size_t k = i + 1; k < kCount; ++k) {
                const float upper = rows[i]->m_lanes[k];
                rows[i]->m_lanes[k] = rows[k]->m_lanes[i];
                rows[k]->m_lanes[i] = upper;
            }
        }
    }

private:
    template <typename Operation>
    static FloatLanes combined(FloatLanes a, FloatLanes b, Operation operation)
    {
        for (std::size_t i = 0; i < kCount; ++i)
            a.m_lanes[i] = operation(i, a.m_lanes[i], b.m_lanes[i]);
        return a;
    }
    template <typename Holds>
    static LaneMask where(FloatLanes a, FloatLanes b, Holds holds)
    {
        unsigned mask = 0;
        for (std::size_t i = 0; i < kCount; ++i)
            mask |= static_cast<unsigned>(holds(a.m_lanes[i], b.m_lanes[i])) << i;
        return LaneMask(mask);
    }

    float m_lanes[kCount];
#endif
};

} // namespace TOLVGraphing
