#pragma once

#include <desktop/input/ByteSource.h>
#include <desktop/input/MeasurementTable.h>
#include <desktop/input/ReadSettings.h>

#include <TOLVMath/Export.h>

#include <string_view>

namespace TOLVGraphing::input {

/// Whether a file of this name (`scope.f32`, `SCOPE.F64`) has raw numbers, judged by the letters behind the last point. Nothing else can tell: any bytes are numbers.
[[nodiscard]] TOLV_EXPORT bool hasRawNumberSuffix(std::string_view fileName);

/// Reads a file of nothing but numbers: floats of four bytes in a file called .f32, of eight in any other, the lowest byte first.
///
/// settings.channelCount numbers make a row, one for each channel; a channel is a column without a name. The row number stands for x.
///
/// Throws MeasurementError where the length is not known (a pipe) or not that of whole rows, and where channelCount is not one of 1 to kMaximumChannelCount.
[[nodiscard]] MeasurementTable readRawNumbers(ByteSource& source, const ReadSettings& settings);

} // namespace TOLVGraphing::input
