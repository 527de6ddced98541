#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#if defined(__SSE2__) && !defined(TOLVGRAPHING_PLAIN_LANES)
#define TOLVGRAPHING_VECTOR_LANES 1
#include <emmintrin.h>
#endif

#if defined(TOLVGRAPHING_VECTOR_LANES) && defined(__GNUC__)
#define TOLVGRAPHING_WIDE_LANES 1
#include <immintrin.h>
#endif

// Operations on sixteen numbers at a time, with vector instructions where every processor of the kind has them. TOLVGRAPHING_PLAIN_LANES compiles the loops instead, which
// give the same numbers.

namespace TOLVGraphing::raster {

/// False where the loops are compiled: what is built on lanes takes three times as long then as what it is an alternative to.
#ifdef TOLVGRAPHING_VECTOR_LANES
constexpr bool kHasVectorLanes = true;
#else
constexpr bool kHasVectorLanes = false;
#endif

constexpr std::size_t kLaneCount = 16;
/// Sixteen places along x, in 1/256 pixel.
struct alignas(16) Lanes : std::array<std::int16_t, kLaneCount> {};
/// The same before they are rounded.
struct alignas(16) Places : std::array<float, kLaneCount> {};

/// The side of the squares in which columns become rows.
constexpr std::size_t kSquare = 8;

inline std::int16_t largerOf(std::int16_t a, std::int16_t b)
{
    return a > b ? a : b;
}

inline std::int16_t smallerOf(std::int16_t a, std::int16_t b)
{
    return a < b ? a : b;
}

inline Lanes sameLanes(std::int16_t place)
{
    Lanes lanes;
    lanes.fill(place);
    return lanes;
}

#ifdef TOLVGRAPHING_VECTOR_LANES

#ifdef TOLVGRAPHING_WIDE_LANES

/// True when the processor has vector instructions for sixteen lanes at a time, which only functions that say so are compiled to.
inline bool hasWideVectors()
{
    static const bool hasThem = __builtin_cpu_supports("avx2") != 0;
    return hasThem;
}

#endif

namespace lanes {

constexpr std::size_t kHalf = kLaneCount / 2;

inline __m128i load(const Lanes& from, std::size_t half)
{
    return _mm_load_si128(reinterpret_cast<const __m128i*>(from.data() + half * kHalf));
}

inline void store(Lanes& to, std::size_t half, __m128i value)
{
    _mm_store_si128(reinterpret_cast<__m128i*>(to.data() + half * kHalf), value);
}

inline std::int16_t largest(__m128i value)
{
    value = _mm_max_epi16(value, _mm_srli_si128(value, 8));
    value = _mm_max_epi16(value, _mm_srli_si128(value, 4));
    value = _mm_max_epi16(value, _mm_srli_si128(value, 2));
    return static_cast<std::int16_t>(_mm_cvtsi128_si32(value));
}

inline std::int16_t smallest(__m128i value)
{
    value = _mm_min_epi16(value, _mm_srli_si128(value, 8));
    value = _mm_min_epi16(value, _mm_srli_si128(value, 4));
    value = _mm_min_epi16(value, _mm_srli_si128(value, 2));
    return static_cast<std::int16_t>(_mm_cvtsi128_si32(value));
}

inline __m128i within(__m128i value, __m128i low, __m128i high)
{
    return _mm_min_epi16(_mm_max_epi16(value, low), high);
}

/// The sum of eight numbers of which no four exceed 16 bits.
inline int sum(__m128i value)
{
    const __m128i pairs = _mm_madd_epi16(value, _mm_set1_epi16(1));
    const __m128i fours = _mm_add_epi32(pairs, _mm_srli_si128(pairs, 8));
    return _mm_cvtsi128_si32(_mm_add_epi32(fours, _mm_srli_si128(fours, 4)));
}

inline __m128i partBetween(const Lanes& from, const Lanes& to, std::size_t half, __m128i low, __m128i high)
{
    return _mm_max_epi16(_mm_sub_epi16(within(load(to, half), low, high), within(load(from, half), low, high)), _mm_setzero_si128());
}

} // namespace lanes

/// Places that begin at `start` and move from lane to lane by `slope` in 1/65,536 pixel.
inline Lanes lanesAlong(std::int16_t start, int slope)
{
    const __m128i first = _mm_set1_epi16(start);
    const __m128i slopes = _mm_set1_epi16(static_cast<std::int16_t>(slope));
    const __m128i steps = _mm_set_epi16(7 << 8, 6 << 8, 5 << 8, 4 << 8, 3 << 8, 2 << 8, 1 << 8, 0);
    Lanes result;
    lanes::store(result, 0, _mm_add_epi16(first, _mm_mulhi_epi16(steps, slopes)));
    lanes::store(result, 1, _mm_add_epi16(first, _mm_mulhi_epi16(_mm_add_epi16(steps, _mm_set1_epi16(8 << 8)), slopes)));
    return result;
}

/// True when a lane of `a` is larger than the one of `b`.
inline bool isAnyLarger(const Lanes& a, const Lanes& b)
{
    const __m128i first = _mm_cmpgt_epi16(lanes::load(a, 0), lanes::load(b, 0));
    const __m128i second = _mm_cmpgt_epi16(lanes::load(a, 1), lanes::load(b, 1));
    return _mm_movemask_epi8(_mm_or_si128(first, second)) != 0;
}

inline void raiseLanes(Lanes& raised, const Lanes& least)
{
    lanes::store(raised, 0, _mm_max_epi16(lanes::load(raised, 0), lanes::load(least, 0)));
    lanes::store(raised, 1, _mm_max_epi16(lanes::load(raised, 1), lanes::load(least, 1)));
}

inline std::int16_t largestLane(const Lanes& from)
{
    return lanes::largest(_mm_max_epi16(lanes::load(from, 0), lanes::load(from, 1)));
}

/// The smallest lane of `from` among those that are smaller than the one of `limits`; the largest number when there is none.
inline std::int16_t smallestLaneBelow(const Lanes& from, const Lanes& limits)
{
    const auto below = [&](std::size_t half) {
        const __m128i value = lanes::load(from, half);
        const __m128i isBelow = _mm_cmplt_epi16(value, lanes::load(limits, half));
        return _mm_or_si128(_mm_and_si128(isBelow, value), _mm_andnot_si128(isBelow, _mm_set1_epi16(INT16_MAX)));
    };
    return lanes::smallest(_mm_min_epi16(below(0), below(1)));
}

/// Adds how much of what lies between `low` and `high` is between two lanes, which is nothing where `from` is the larger one.
inline void addPartBetween(Lanes& sums, const Lanes& from, const Lanes& to, std::int16_t low, std::int16_t high)
{
    const __m128i lows = _mm_set1_epi16(low);
    const __m128i highs = _mm_set1_epi16(high);
    lanes::store(sums, 0, _mm_add_epi16(lanes::load(sums, 0), lanes::partBetween(from, to, 0, lows, highs)));
    lanes::store(sums, 1, _mm_add_epi16(lanes::load(sums, 1), lanes::partBetween(from, to, 1, lows, highs)));
}

/// The same for all lanes together, in 1/16.
inline int sumOfPartBetween(const Lanes& from, const Lanes& to, std::int16_t low, std::int16_t high)
{
    const __m128i lows = _mm_set1_epi16(low);
    const __m128i highs = _mm_set1_epi16(high);
    return lanes::sum(_mm_add_epi16(lanes::partBetween(from, to, 0, lows, highs), lanes::partBetween(from, to, 1, lows, highs)));
}

/// Writes how much of the pixel that begins at `low` the lanes reach, less the gaps, as levels from 0 to 255.
inline void writeLevels(std::uint8_t* levels, const Lanes& reach, const Lanes& gaps, std::int16_t low)
{
    const __m128i lows = _mm_set1_epi16(low);
    const __m128i highs = _mm_set1_epi16(static_cast<std::int16_t>(low + 256));
    const auto levelsOf = [&](std::size_t half) {
        const __m128i reached = _mm_sub_epi16(lanes::within(lanes::load(reach, half), lows, highs), lows);
        const __m128i covered = _mm_max_epi16(_mm_sub_epi16(reached, lanes::load(gaps, half)), _mm_setzero_si128());
        return _mm_srli_epi16(_mm_add_epi16(_mm_mullo_epi16(covered, _mm_set1_epi16(255)), _mm_set1_epi16(128)), 8);
    };
    _mm_storeu_si128(reinterpret_cast<__m128i*>(levels), _mm_packus_epi16(levelsOf(0), levelsOf(1)));
}

/// Keeps the lanes from `begin` to before `end`, where `from` is the smaller one; all others become the smallest number.
inline void keepLanes(Lanes& from, Lanes& to, int begin, int end)
{
    const __m128i nowhere = _mm_set1_epi16(INT16_MIN);
    const __m128i before = _mm_set1_epi16(static_cast<std::int16_t>(std::clamp(begin, -1, 16) - 1));
    const __m128i after = _mm_set1_epi16(static_cast<std::int16_t>(std::clamp(end, -1, 16)));
    for (std::size_t half = 0; half < 2; ++half) {
        const auto shift = static_cast<std::int16_t>(half * lanes::kHalf);
        const __m128i numbers = _mm_add_epi16(_mm_set_epi16(7, 6, 5, 4, 3, 2, 1, 0), _mm_set1_epi16(shift));
        const __m128i start = lanes::load(from, half);
        const __m128i stop = lanes::load(to, half);
        const __m128i isInside = _mm_and_si128(_mm_cmpgt_epi16(numbers, before), _mm_cmpgt_epi16(after, numbers));
        const __m128i isKept = _mm_and_si128(isInside, _mm_cmpgt_epi16(stop, start));
        lanes::store(from, half, _mm_or_si128(_mm_and_si128(isKept, start), _mm_andnot_si128(isKept, nowhere)));
        lanes::store(to, half, _mm_or_si128(_mm_and_si128(isKept, stop), _mm_andnot_si128(isKept, nowhere)));
    }
}

/// Turns columns of eight bytes each, `columnStride` apart, into rows.
inline void transposeSquare(const std::uint8_t* columns, std::size_t columnStride, std::uint8_t* rows, std::size_t rowStride)
{
    const auto column = [&](std::size_t i) { return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(columns + i * columnStride)); };
    const __m128i a = _mm_unpacklo_epi8(column(0), column(1));
    const __m128i b = _mm_unpacklo_epi8(column(2), column(3));
    const __m128i c = _mm_unpacklo_epi8(column(4), column(5));
    const __m128i d = _mm_unpacklo_epi8(column(6), column(7));
    const __m128i upperLeft = _mm_unpacklo_epi16(a, b);
    const __m128i lowerLeft = _mm_unpackhi_epi16(a, b);
    const __m128i upperRight = _mm_unpacklo_epi16(c, d);
    const __m128i lowerRight = _mm_unpackhi_epi16(c, d);
    const auto storeTwo = [&](std::size_t row, __m128i two) {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(rows + row * rowStride), two);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(rows + (row + 1) * rowStride), _mm_unpackhi_epi64(two, two));
    };
    storeTwo(0, _mm_unpacklo_epi32(upperLeft, upperRight));
    storeTwo(2, _mm_unpackhi_epi32(upperLeft, upperRight));
    storeTwo(4, _mm_unpacklo_epi32(lowerLeft, lowerRight));
    storeTwo(6, _mm_unpackhi_epi32(lowerLeft, lowerRight));
}

/// Raises the places to those of a line that is at `start` in the first lane.
inline void raisePlaces(Places& places, float start, float step)
{
    __m128 line = _mm_add_ps(_mm_set1_ps(start), _mm_mul_ps(_mm_set1_ps(step), _mm_set_ps(3.0F, 2.0F, 1.0F, 0.0F)));
    for (std::size_t i = 0; i < kLaneCount; i += 4, line = _mm_add_ps(line, _mm_set1_ps(4.0F * step)))
        _mm_store_ps(places.data() + i, _mm_max_ps(_mm_load_ps(places.data() + i), line));
}

/// Lowers the places to those of a line that is at `start` in the first lane.
inline void lowerPlaces(Places& places, float start, float step)
{
    __m128 line = _mm_add_ps(_mm_set1_ps(start), _mm_mul_ps(_mm_set1_ps(step), _mm_set_ps(3.0F, 2.0F, 1.0F, 0.0F)));
    for (std::size_t i = 0; i < kLaneCount; i += 4, line = _mm_add_ps(line, _mm_set1_ps(4.0F * step)))
        _mm_store_ps(places.data() + i, _mm_min_ps(_mm_load_ps(places.data() + i), line));
}

/// The places, of no more than 16 bits, rounded down.
inline Lanes roundedPlaces(const Places& places)
{
    // Rounding towards zero is rounding down once no place is negative.
    constexpr float kShift = 32768.0F;
    const auto rounded = [&](std::size_t i) {
        const __m128i whole = _mm_cvttps_epi32(_mm_add_ps(_mm_load_ps(places.data() + i), _mm_set1_ps(kShift)));
        return _mm_sub_epi32(whole, _mm_set1_epi32(32768));
    };
    Lanes result;
    lanes::store(result, 0, _mm_packs_epi32(rounded(0), rounded(4)));
    lanes::store(result, 1, _mm_packs_epi32(rounded(8), rounded(12)));
    return result;
}

#else

inline Lanes lanesAlong(std::int16_t start, int slope)
{
    Lanes result;
    for (std::size_t i = 0; i < kLaneCount; ++i)
        result[i] = static_cast<std::int16_t>(start + ((static_cast<int>(i) * 256 * slope) >> 16));
    return result;
}

inline bool isAnyLarger(const Lanes& a, const Lanes& b)
{
    bool isAny = false;
    for (std::size_t i = 0; i < kLaneCount; ++i)
        isAny = isAny || a[i] > b[i];
    return isAny;
}

inline void raiseLanes(Lanes& raised, const Lanes& least)
{
    for (std::size_t i = 0; i < kLaneCount; ++i)
        raised[i] = largerOf(raised[i], least[i]);
}

inline std::int16_t largestLane(const Lanes& from)
{
    return *std::max_element(from.begin(), from.end());
}

inline std::int16_t smallestLaneBelow(const Lanes& from, const Lanes& limits)
{
    std::int16_t smallest = INT16_MAX;
    for (std::size_t i = 0; i < kLaneCount; ++i)
        smallest = from[i] < limits[i] ? smallerOf(smallest, from[i]) : smallest;
    return smallest;
}

inline std::int16_t partBetween(std::int16_t from, std::int16_t to, std::int16_t low, std::int16_t high)
{
    return largerOf(static_cast<std::int16_t>(std::clamp(to, low, high) - std::clamp(from, low, high)), 0);
}

inline void addPartBetween(Lanes& sums, const Lanes& from, const Lanes& to, std::int16_t low, std::int16_t high)
{
    for (std::size_t i = 0; i < kLaneCount; ++i)
        sums[i] = static_cast<std::int16_t>(sums[i] + partBetween(from[i], to[i], low, high));
}

inline int sumOfPartBetween(const Lanes& from, const Lanes& to, std::int16_t low, std::int16_t high)
{
    int sum = 0;
    for (std::size_t i = 0; i < kLaneCount; ++i)
        sum += partBetween(from[i], to[i], low, high);
    return sum;
}

inline void writeLevels(std::uint8_t* levels, const Lanes& reach, const Lanes& gaps, std::int16_t low)
{
    for (std::size_t i = 0; i < kLaneCount; ++i) {
        const int reached = std::clamp(static_cast<int>(reach[i]) - low, 0, 256);
        levels[i] = static_cast<std::uint8_t>((std::max(reached - gaps[i], 0) * 255 + 128) >> 8);
    }
}

inline void keepLanes(Lanes& from, Lanes& to, int begin, int end)
{
    for (int i = 0; i < static_cast<int>(kLaneCount); ++i) {
        const auto lane = static_cast<std::size_t>(i);
        const bool isKept = i >= begin && i < end && from[lane] < to[lane];
        from[lane] = isKept ? from[lane] : INT16_MIN;
        to[lane] = isKept ? to[lane] : INT16_MIN;
    }
}

inline void transposeSquare(const std::uint8_t* columns, std::size_t columnStride, std::uint8_t* rows, std::size_t rowStride)
{
    for (std::size_t row = 0; row < kSquare; ++row) {
        for (std::size_t column = 0; column < kSquare; ++column)
            rows[row * rowStride + column] = columns[column * columnStride + row];
    }
}

inline void raisePlaces(Places& places, float start, float step)
{
    for (std::size_t i = 0; i < kLaneCount; ++i)
        places[i] = std::max(start + step * static_cast<float>(static_cast<int>(i % 4)) + static_cast<float>(static_cast<int>(i / 4)) * (4.0F * step), places[i]);
}

inline void lowerPlaces(Places& places, float start, float step)
{
    for (std::size_t i = 0; i < kLaneCount; ++i)
        places[i] = std::min(start + step * static_cast<float>(static_cast<int>(i % 4)) + static_cast<float>(static_cast<int>(i / 4)) * (4.0F * step), places[i]);
}

inline Lanes roundedPlaces(const Places& places)
{
    Lanes result;
    for (std::size_t i = 0; i < kLaneCount; ++i)
        result[i] = static_cast<std::int16_t>(static_cast<int>(places[i] + 32768.0F) - 32768);
    return result;
}

#endif

} // namespace TOLVGraphing::raster
