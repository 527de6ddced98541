#pragma once

#include "Lanes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

// What SweptCoverage does with the sixty-four rows of a chunk at a time, with vector instructions for sixteen of them. The numbers are those of the loops over Lanes.

namespace TOLVGraphing::raster {

constexpr int kChunkRows = 64;
/// Places along x are in this part of a pixel.
constexpr int kPixel = 256;
constexpr int kRows = static_cast<int>(kLaneCount);
constexpr std::size_t kChunkBlocks = kChunkRows / kLaneCount;
/// To the left of everything.
constexpr std::int16_t kNowhere = INT16_MIN;

#ifdef TOLVGRAPHING_WIDE_LANES

#define TOLVGRAPHING_WIDE __attribute__((target("avx2")))

/// Sixteen places that begin at `start` and move by the slopes, in 1/65,536 pixel: never in memory, where what was written in halves takes long to be read as a whole.
TOLVGRAPHING_WIDE inline __m256i wideLanesAlong(int start, __m256i slopes)
{
    const __m256i steps = _mm256_setr_epi16(0, 1 << 8, 2 << 8, 3 << 8, 4 << 8, 5 << 8, 6 << 8, 7 << 8, 8 << 8, 9 << 8, 10 << 8, 11 << 8, 12 << 8, 13 << 8, 14 << 8, 15 << 8);
    return _mm256_add_epi16(_mm256_set1_epi16(static_cast<std::int16_t>(start)), _mm256_mulhi_epi16(steps, slopes));
}

TOLVGRAPHING_WIDE inline __m256i wideLevels(__m256i reach, const Lanes& gaps, __m256i lows, __m256i highs)
{
    const __m256i reached = _mm256_sub_epi16(_mm256_min_epi16(_mm256_max_epi16(reach, lows), highs), lows);
    const __m256i covered = _mm256_max_epi16(_mm256_sub_epi16(reached, _mm256_loadu_si256(reinterpret_cast<const __m256i*>(&gaps))), _mm256_setzero_si256());
    return _mm256_srli_epi16(_mm256_add_epi16(_mm256_mullo_epi16(covered, _mm256_set1_epi16(255)), _mm256_set1_epi16(128)), 8);
}

TOLVGRAPHING_WIDE inline void storeWideLevels(std::uint8_t* levels, __m256i first, __m256i second)
{
    // Packing goes by halves: the second and the third quarter change places.
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(levels), _mm256_permute4x64_epi64(_mm256_packus_epi16(first, second), 0xD8));
}

TOLVGRAPHING_WIDE inline void writeLevelsWide(std::uint8_t* levels, const Lanes* reach, const Lanes* gaps, std::int16_t low)
{
    const __m256i lows = _mm256_set1_epi16(low);
    const __m256i highs = _mm256_set1_epi16(static_cast<std::int16_t>(low + kPixel));
    for (int row = 0; row < kChunkRows; row += 2 * kRows, reach += 2, gaps += 2) {
        const __m256i first = wideLevels(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(reach)), gaps[0], lows, highs);
        const __m256i second = wideLevels(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(reach + 1)), gaps[1], lows, highs);
        storeWideLevels(levels + row, first, second);
    }
}

/// The same for a front that is one line.
TOLVGRAPHING_WIDE inline void writeLineLevelsWide(std::uint8_t* levels, int start, int slope, const Lanes* gaps, std::int16_t low)
{
    const __m256i lows = _mm256_set1_epi16(low);
    const __m256i highs = _mm256_set1_epi16(static_cast<std::int16_t>(low + kPixel));
    const __m256i slopes = _mm256_set1_epi16(static_cast<std::int16_t>(slope));
    for (int row = 0; row < kChunkRows; row += 2 * kRows, gaps += 2) {
        const __m256i first = wideLevels(wideLanesAlong((start + row * slope) >> 8, slopes), gaps[0], lows, highs);
        const __m256i second = wideLevels(wideLanesAlong((start + (row + kRows) * slope) >> 8, slopes), gaps[1], lows, highs);
        storeWideLevels(levels + row, first, second);
    }
}

/// The part of the pixel between two places in each lane.
TOLVGRAPHING_WIDE inline __m256i wideParts(__m256i from, __m256i to, __m256i lows, __m256i highs)
{
    const __m256i start = _mm256_min_epi16(_mm256_max_epi16(from, lows), highs);
    const __m256i end = _mm256_min_epi16(_mm256_max_epi16(to, lows), highs);
    return _mm256_max_epi16(_mm256_sub_epi16(end, start), _mm256_setzero_si256());
}

TOLVGRAPHING_WIDE inline void addPartsWide(Lanes* sums, const Lanes* from, const Lanes* to, int blocks, std::int16_t low)
{
    const __m256i lows = _mm256_set1_epi16(low);
    const __m256i highs = _mm256_set1_epi16(static_cast<std::int16_t>(low + kPixel));
    for (int i = 0; i < blocks; ++i) {
        const __m256i start = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from + i));
        const __m256i end = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(to + i));
        auto* sum = reinterpret_cast<__m256i*>(sums + i);
        _mm256_storeu_si256(sum, _mm256_add_epi16(_mm256_loadu_si256(sum), wideParts(start, end, lows, highs)));
    }
}

/// A line's place in a row in 1/65,536 pixel and how far it moves from row to row.
struct Slant {
    int start = 0;
    int slope = 0;
};

/// Adds what lies between two lines in a pixel.
TOLVGRAPHING_WIDE inline void addLinePartsWide(Lanes* sums, Slant from, Slant to, int blocks, std::int16_t low)
{
    const __m256i lows = _mm256_set1_epi16(low);
    const __m256i highs = _mm256_set1_epi16(static_cast<std::int16_t>(low + kPixel));
    const __m256i fromSlopes = _mm256_set1_epi16(static_cast<std::int16_t>(from.slope));
    const __m256i toSlopes = _mm256_set1_epi16(static_cast<std::int16_t>(to.slope));
    for (int i = 0; i < blocks; ++i) {
        const __m256i start = wideLanesAlong((from.start + i * kRows * from.slope) >> 8, fromSlopes);
        const __m256i end = wideLanesAlong((to.start + i * kRows * to.slope) >> 8, toSlopes);
        auto* sum = reinterpret_cast<__m256i*>(sums + i);
        _mm256_storeu_si256(sum, _mm256_add_epi16(_mm256_loadu_si256(sum), wideParts(start, end, lows, highs)));
    }
}

/// The smallest of sixteen numbers with a sign: that of eight without one is a single instruction.
TOLVGRAPHING_WIDE inline int smallestWide(__m256i numbers)
{
    const __m256i unsignedNumbers = _mm256_xor_si256(numbers, _mm256_set1_epi16(INT16_MIN));
    const __m128i eight = _mm_min_epu16(_mm256_castsi256_si128(unsignedNumbers), _mm256_extracti128_si256(unsignedNumbers, 1));
    return (_mm_cvtsi128_si32(_mm_minpos_epu16(eight)) & 0xFFFF) + INT16_MIN;
}

/// What rows of a chunk had for fronts, and what of it lies open now, as fronts and left sides of blocks of sixteen rows, of which those from the first to before the end are set.
struct Opening { // NOLINT(cppcoreguidelines-pro-type-member-init)
    std::array<Lanes, kChunkBlocks> fronts;
    std::array<Lanes, kChunkBlocks> lefts;
    int firstBlock = static_cast<int>(kChunkBlocks);
    int endBlock = 0;
    /// The left-most front that lies open.
    int least = INT16_MAX;
    /// True when a front is to the right of what covers it.
    bool isBehind = false;
};

/// Raises the fronts of the rows from `from` to before `end`, counted from the chunk's first, to the right line, and tells what the left one leaves open.
TOLVGRAPHING_WIDE inline void coverRowsWide(Lanes* fronts, int from, int end, Slant left, Slant right, Opening& opening)
{
    const __m256i nowhere = _mm256_set1_epi16(kNowhere);
    const __m256i leftSlopes = _mm256_set1_epi16(static_cast<std::int16_t>(left.slope));
    const __m256i rightSlopes = _mm256_set1_epi16(static_cast<std::int16_t>(right.slope));
    const __m256i numbers = _mm256_setr_epi16(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
    for (int block = from / kRows; block * kRows < end; ++block) {
        const int row = block * kRows;
        __m256i start = wideLanesAlong((left.start + row * left.slope) >> 8, leftSlopes);
        __m256i stop = wideLanesAlong((right.start + row * right.slope) >> 8, rightSlopes);
        if (row < from || row + kRows > end) {
            const __m256i before = _mm256_set1_epi16(static_cast<std::int16_t>(from - row - 1));
            const __m256i after = _mm256_set1_epi16(static_cast<std::int16_t>(end - row));
            const __m256i isInside = _mm256_and_si256(_mm256_cmpgt_epi16(numbers, before), _mm256_cmpgt_epi16(after, numbers));
            const __m256i isKept = _mm256_and_si256(isInside, _mm256_cmpgt_epi16(stop, start));
            start = _mm256_blendv_epi8(nowhere, start, isKept);
            stop = _mm256_blendv_epi8(nowhere, stop, isKept);
        }
        auto* const place = reinterpret_cast<__m256i*>(fronts + block);
        const __m256i front = _mm256_loadu_si256(place);
        const auto index = static_cast<std::size_t>(block);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(&opening.fronts[index]), front);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(&opening.lefts[index]), start);
        opening.isBehind = opening.isBehind || _mm256_movemask_epi8(_mm256_cmpgt_epi16(front, stop)) != 0;
        _mm256_storeu_si256(place, _mm256_max_epi16(front, stop));
        const __m256i isOpen = _mm256_cmpgt_epi16(start, front);
        if (_mm256_movemask_epi8(isOpen) == 0)
            continue;
        opening.least = std::min(opening.least, smallestWide(_mm256_blendv_epi8(_mm256_set1_epi16(INT16_MAX), front, isOpen)));
        opening.firstBlock = std::min(opening.firstBlock, block);
        opening.endBlock = block + 1;
    }
}

#endif

} // namespace TOLVGraphing::raster
