#pragma once

#include <desktop/input/ByteSource.h>
#include <desktop/input/MeasurementTable.h>
#include <desktop/input/ReadSettings.h>

#include <cstddef>
#include <cstdint>

namespace TOLVGraphing::input {

/// How numbers lie in a binary file, one behind the other.
struct ElementLayout {
    /// 'f' with 2, 4 or 8 bytes, 'i' or 'u' with 1, 2, 4 or 8, 'b' with 1: floats, integers, truth values.
    char letter = 'f';
    std::size_t size = sizeof(float);
    bool isBigEndian = false;
    /// Whole columns follow one another, instead of whole rows.
    bool isByColumns = false;
    std::uint64_t rowCount = 0;
    /// At least one.
    std::size_t columnCount = 1;
};

/// Makes the next bytes of the source the table's columns, without names. Each element becomes the nearest float; NaN is a gap.
///
/// Floats of four bytes, the lowest first, that lie column by column in a long file are used there (see mapColumns()); all others are read.
///
/// Throws MeasurementError where the source is shorter than that: nothing is allocated for what it cannot contain.
void readElements(ByteSource& source, const ReadSettings& settings, const ElementLayout& layout, MeasurementTable& table);

} // namespace TOLVGraphing::input
