#pragma once

#include <desktop/input/ByteSource.h>
#include <desktop/input/MeasurementTable.h>
#include <desktop/input/ReadSettings.h>

namespace TOLVGraphing::input {

/// Reads an array file of the npy format, versions 1.0 to 3.0.
///
/// One dimension is a table of one column. Of two dimensions the first counts the rows (samples) and the second the columns, always and in
/// either order of storage: an array of shape (2, 1000) is two rows of a thousand columns. Columns have no names.
///
/// Elements may be floats (f2, f4, f8), integers (i1 to i8, u1 to u8) and truth values (b1, as 0 and 1), in either byte order; each becomes
/// the nearest float. NaN is a gap. Columns of little-endian f4 that lie whole in a long file (one dimension, one column, or Fortran order) are
/// not copied but used there, see ReadSettings::shortestMappedFile.
///
/// Throws MeasurementError for anything else (other dimensions, structured and complex elements), an array without elements, more than
/// kMaximumColumnCount columns, and a file shorter than its shape needs: nothing is allocated for what the file cannot contain.
[[nodiscard]] MeasurementTable readNumpyArray(ByteSource& source, const ReadSettings& settings);

} // namespace TOLVGraphing::input
