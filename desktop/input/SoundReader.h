#pragma once

#include <desktop/input/ByteSource.h>
#include <desktop/input/MeasurementTable.h>
#include <desktop/input/ReadSettings.h>

#include <string_view>

namespace TOLVGraphing::input {

/// Whether a file with this name (`song.FLAC`) is meant to be a sound file, judged by the letters behind the last point.
[[nodiscard]] bool hasSoundSuffix(std::string_view fileName);
/// Whether the first bytes of a file (16 are enough) are those of a sound file.
[[nodiscard]] bool hasSoundMagic(std::string_view start);

/// Reads a sound file (wav, flac, aiff, ogg and what else libsndfile knows).
///
/// The first column is "time" in seconds: frame number divided by the sampling rate in double, rounded once to float. One column per
/// channel follows: the file's base name for one channel (or "channel 1" from standard input), "left" and "right" for two, otherwise
/// "channel N". Integer samples are scaled to -1 to 1 (exactly, up to 24 bits); float samples are as they are in the file.
///
/// A source of unknown length (a pipe) is first read into memory.
///
/// Throws MeasurementError where the file cannot be decoded to its end, has no frames, more than kMaximumColumnCount - 1 channels
/// or far more frames than its bytes should have (see kMaximumSoundValues).
[[nodiscard]] MeasurementTable readSound(ByteSource& source, const ReadSettings& settings);

} // namespace TOLVGraphing::input
