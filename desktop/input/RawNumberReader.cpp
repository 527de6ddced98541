#include <desktop/input/RawNumberReader.h>

#include <desktop/input/ElementReader.h>
#include <desktop/input/MeasurementError.h>

#include <algorithm>
#include <string>

namespace TOLVGraphing::input {

namespace {

/// The letters behind the last point, none of them large.
std::string suffixOf(std::string_view fileName)
{
    std::string suffix(fileName.substr(std::min(fileName.find_last_of('.'), fileName.size())));
    for (char& character : suffix)
        character = character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character;
    return suffix;
}

std::string counted(std::uint64_t count, const std::string& noun)
{
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

} // namespace

bool hasRawNumberSuffix(std::string_view fileName)
{
    const std::string suffix = suffixOf(fileName);
    return suffix == ".f32" || suffix == ".f64";
}

MeasurementTable readRawNumbers(ByteSource& source, const ReadSettings& settings)
{
    const auto fail = [&source](const std::string& found, const std::string& expected) { throw MeasurementError(source.name(), 0, found, expected); };
    ElementLayout layout;
    layout.size = suffixOf(source.name()) == ".f32" ? sizeof(float) : sizeof(double);
    layout.columnCount = settings.channelCount;
    if (settings.channelCount < 1 || settings.channelCount > kMaximumChannelCount)
        fail(counted(settings.channelCount, "channel"), "expected 1 to " + std::to_string(kMaximumChannelCount));
    if (!source.totalBytes())
        fail("raw numbers from a pipe", "expected a file, whose length says how many there are");
    const std::uint64_t rowBytes = layout.size * layout.columnCount;
    if (*source.totalBytes() % rowBytes != 0)
        fail(counted(*source.totalBytes(), "byte"),
            "expected a multiple of " + std::to_string(rowBytes) + ", " + std::to_string(layout.size) + " bytes for each of " + counted(layout.columnCount, "channel"));
    layout.rowCount = *source.totalBytes() / rowBytes;
    MeasurementTable table;
    table.sourceName = source.name();
    table.areColumnsChannels = true;
    table.format.kind = "raw " + std::string(layout.size == sizeof(float) ? "single" : "double") + " precision, " + counted(layout.columnCount, "channel");
    readElements(source, settings, layout, table);
    return table;
}

} // namespace TOLVGraphing::input
