#include <desktop/input/MeasurementReader.h>

#include <desktop/input/ByteSource.h>
#include <desktop/input/DelimitedTextReader.h>
#include <desktop/input/NumpyReader.h>
#include <desktop/input/RawNumberReader.h>
#include <desktop/input/SoundReader.h>

#include <new>
#include <stdexcept>
#include <string_view>

namespace TOLVGraphing::input {

namespace {

using namespace std::string_view_literals;

struct ForeignKind {
    std::string_view magic;
    const char* name;
};

/// Binary files that are likely to be tried, so that the message can name them.
constexpr ForeignKind kForeignKinds[] = {
    {"\x1F\x8B"sv, "a gzip-compressed file"},
    {"BZh"sv, "a bzip2-compressed file"},
    {"\xFD"
     "7zXZ"sv,
        "an xz-compressed file"},
    {"\x28\xB5\x2F\xFD"sv, "a zstd-compressed file"},
    {"PK\3\4"sv, "a zip archive (a spreadsheet or an npz file, perhaps)"},
    {"\xD0\xCF\x11\xE0"sv, "an old spreadsheet or document file"},
    {"%PDF-"sv, "a PDF file"},
    {"\x89PNG"sv, "a PNG image"},
    {"\xFF\xD8\xFF"sv, "a JPEG image"},
    {"\x89HDF"sv, "an HDF5 file"},
    {"MATLAB 5.0 MAT"sv, "a MAT-file"},
    {"SQLite format 3"sv, "a database file"},
    {"\x7F"
     "ELF"sv,
        "a program"},
};

MeasurementTable readByKind(ByteSource& source, const ReadSettings& settings)
{
    std::string_view start = source.peek(32);
    if (start.empty())
        throw MeasurementError(source.name(), 0, "an empty file", "expected a table of numbers, an npy array or a sound file");
    // Raw numbers may start like anything.
    if (hasRawNumberSuffix(source.name()))
        return readRawNumbers(source, settings);
    if (start.starts_with("\x93NUMPY"))
        return readNumpyArray(source, settings);
    if (hasSoundMagic(start))
        return readSound(source, settings);
    for (const ForeignKind& kind : kForeignKinds) {
        if (start.starts_with(kind.magic))
            throw MeasurementError(source.name(), 0, kind.name, "expected a table of numbers, an npy array or a sound file");
    }
    if (source.name().ends_with(".npy"))
        return readNumpyArray(source, settings);
    if (hasSoundSuffix(source.name()))
        return readSound(source, settings);
    return readDelimitedText(source, settings);
}

} // namespace

MeasurementTable readMeasurements(const std::string& path, const ReadSettings& settings)
{
    try {
        ByteSource source(path, settings.progress, settings.mostPipedBytes);
        return readByKind(source, settings);
    } catch (const std::bad_alloc&) {
        throw MeasurementError(path, 0, "a table too large for the memory", "expected a smaller one");
    } catch (const std::length_error&) {
        throw MeasurementError(path, 0, "a table too large for the memory", "expected a smaller one");
    }
}

} // namespace TOLVGraphing::input
