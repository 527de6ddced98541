#include "../support/FuzzTarget.h"
#include "../support/InputReader.h"
#include "../support/PrivateFolder.h"
#include "../support/Tables.h"

#include <desktop/input/ByteSource.h>
#include <desktop/input/SoundReader.h>

namespace TOLVGraphing::fuzzing {
namespace {

/// Few enough that a compressed sound of silence comes to its end soon.
constexpr std::uint64_t kMostValues = std::uint64_t{1} << 20;
/// The frames that the library is asked for at once may go beyond.
constexpr std::uint64_t kBlockValues = 16384 * 2;

std::string readInto(input::MeasurementTable& table, const std::string& path)
{
    try {
        input::ReadSettings settings;
        settings.mostSoundValues = kMostValues;
        input::ByteSource source(path);
        table = input::readSound(source, settings);
        requireSoundTable(table);
        return {};
    } catch (const input::MeasurementError& error) {
        requireClearError(error, path, 0);
        return std::string(error.what()).substr(path.size());
    }
}

void requireTimes(const input::MeasurementTable& table)
{
    require(table.sampleRate.has_value() && *table.sampleRate >= 1.0 && table.columns[0].name == "time", "a sound has times");
    for (std::size_t frame = 0; frame < table.rowCount(); ++frame)
        require(table.columns[0].values[frame] == static_cast<float>(static_cast<double>(frame) / *table.sampleRate), "times are those of the sampling rate");
}

} // namespace

Verdict tryInput(std::span<const std::byte> input)
{
    static const PrivateFolder folder;
    InputReader reader(input);
    const bool triesPipe = reader.yes();
    const auto content = reader.rest();
    input::MeasurementTable table;
    const std::string error = readInto(table, folder.write("sound", content));
    if (triesPipe && content.size() <= Pipe::kMostBytes) {
        input::MeasurementTable piped;
        const std::string pipeError = readInto(piped, Pipe(content).path());
        require(pipeError.empty() == error.empty() && piped.rowCount() == table.rowCount(), "a sound from a pipe is read like a file");
    }
    if (!error.empty())
        return Verdict::refused;
    requireTimes(table);
    const std::uint64_t values = std::uint64_t{table.rowCount()} * table.columns.size();
    require(
        values <= kMostValues + kBlockValues || values / input::kMaximumSoundValuesPerByte <= content.size() + kBlockValues, "a sound has no more values than its length allows");
    return Verdict::accepted;
}

} // namespace TOLVGraphing::fuzzing
