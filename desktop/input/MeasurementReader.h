#pragma once

#include <desktop/input/MeasurementError.h>
#include <desktop/input/MeasurementTable.h>
#include <desktop/input/ReadSettings.h>
#include <TOLVMath/Export.h>

#include <string>

namespace TOLVGraphing::input {

/// Reads a measurement file: delimited text, an npy array, a sound file or raw numbers.
///
/// `path` may be `-` for standard input. The first bytes decide the kind of file, and only where they do not, the letters behind the last
/// point (a file called .npy or .wav that is none is an error); everything else is text. Files called .f32 or .f64 are raw numbers, whatever
/// they start with. See readDelimitedText(), readNumpyArray(), readSound() and readRawNumbers() for what each reader makes of the file.
///
/// Throws MeasurementError where the file is missing, unreadable, a directory, empty, of an unknown binary kind, broken or too large for
/// the memory, and ReadingCancelled where the progress callback answers false.
[[nodiscard]] TOLV_EXPORT MeasurementTable readMeasurements(const std::string& path, const ReadSettings& settings = {});

} // namespace TOLVGraphing::input
