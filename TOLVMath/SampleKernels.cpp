#include "SampleKernels.h"

#include "LaneExtremes.h"
#include "Prefetch.h"

#include <array>
#include <limits>

#if defined(TOLVGRAPHING_SSE_LANES) && defined(__GNUC__) && !defined(__clang__)
#define TOLVGRAPHING_WIDE_KERNELS
#include <immintrin.h>
#endif

namespace TOLVGraphing {

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

} // namespace

namespace {
namespace four {

using Lanes = FloatLanes;
#include "SampleKernelLoops.h"

} // namespace four
} // namespace

#ifdef TOLVGRAPHING_WIDE_KERNELS

// From here on functions may use the wide instructions; they are called only where the processor has them.
#pragma GCC push_options
#pragma GCC target("avx2")

namespace {
namespace eight {

/// As FloatLanes, with twice as many.
class Lanes {
public:
    static constexpr std::size_t kCount = 8;

    class Mask {
    public:
        Mask() : m_lanes(_mm256_setzero_ps()) {}
        explicit Mask(__m256 lanes) : m_lanes(lanes) {}
        Mask operator|(Mask other) const { return Mask(_mm256_or_ps(m_lanes, other.m_lanes)); }
        Mask operator&(Mask other) const { return Mask(_mm256_and_ps(m_lanes, other.m_lanes)); }
        [[nodiscard]] bool isAny() const { return _mm256_movemask_ps(m_lanes) != 0; }
        [[nodiscard]] bool isAll() const { return _mm256_movemask_ps(m_lanes) == 0xFF; }

    private:
        __m256 m_lanes;
    };

    Lanes(float value) : m_lanes(_mm256_set1_ps(value)) {}
    [[nodiscard]] static Lanes load(const float* numbers) { return Lanes(_mm256_loadu_ps(numbers)); }
    [[nodiscard]] static Lanes lesser(Lanes candidate, Lanes best) { return Lanes(_mm256_min_ps(candidate.m_lanes, best.m_lanes)); }
    [[nodiscard]] static Lanes greater(Lanes candidate, Lanes best) { return Lanes(_mm256_max_ps(candidate.m_lanes, best.m_lanes)); }
    [[nodiscard]] static Lanes notBelowOr(Lanes number, Lanes floor, Lanes other)
    {
        return Lanes(_mm256_blendv_ps(other.m_lanes, number.m_lanes, _mm256_cmp_ps(number.m_lanes, floor.m_lanes, _CMP_GE_OQ)));
    }
    [[nodiscard]] static Mask whereNotAbove(Lanes a, Lanes b) { return Mask(_mm256_cmp_ps(a.m_lanes, b.m_lanes, _CMP_LE_OQ)); }
    [[nodiscard]] static Mask whereEitherNaN(Lanes a, Lanes b) { return Mask(_mm256_cmp_ps(a.m_lanes, b.m_lanes, _CMP_UNORD_Q)); }
    [[nodiscard]] FloatLanes foldedToLesser() const { return FloatLanes::lesser(FloatLanes(_mm256_castps256_ps128(m_lanes)), FloatLanes(_mm256_extractf128_ps(m_lanes, 1))); }
    [[nodiscard]] FloatLanes foldedToGreater() const { return FloatLanes::greater(FloatLanes(_mm256_castps256_ps128(m_lanes)), FloatLanes(_mm256_extractf128_ps(m_lanes, 1))); }

private:
    explicit Lanes(__m256 lanes) : m_lanes(lanes) {}

    __m256 m_lanes;
};

#include "SampleKernelLoops.h"

} // namespace eight
} // namespace

#pragma GCC pop_options

#endif

std::span<const SampleKernels> SampleKernels::all()
{
#ifdef TOLVGRAPHING_WIDE_KERNELS
    static constexpr std::array kinds = {four::kKernels, eight::kKernels};
    return std::span(kinds).first(__builtin_cpu_supports("avx2") ? 2 : 1);
#else
    static constexpr std::array kinds = {four::kKernels};
    return kinds;
#endif
}

const SampleKernels& SampleKernels::best()
{
    static const SampleKernels& kernels = all().back();
    return kernels;
}

} // namespace TOLVGraphing
