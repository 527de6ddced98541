#include "../support/FuzzTarget.h"
#include "../support/InputReader.h"
#include "../support/PrivateFolder.h"
#include "../support/Tables.h"

#include <TOLVMath/ExtremePyramid.h>
#include <desktop/input/MappedFile.h>
#include <desktop/input/MeasurementReader.h>

#include <cstring>
#include <memory>

namespace TOLVGraphing::fuzzing {
namespace {

/// How the bytes are to be read, from the first ones of the input.
struct Wish {
    bool isDouble = false;
    std::size_t channelCount = 1;
    bool isMapped = false;
    bool keepsExtremes = false;
    /// Where a byte of what was kept of the extremes is changed, and by what; nothing where that is 0.
    std::size_t damagedPlace = 0;
    std::uint8_t damage = 0;
    /// The length, as a part of 65,536, to which the file is cut after it was read.
    std::size_t cut = 0;

    explicit Wish(InputReader& reader)
        : isDouble(reader.yes())
        , channelCount(reader.yes() ? reader.below(8) : reader.number<std::uint16_t>())
        , isMapped(reader.yes())
        , keepsExtremes(reader.yes())
        , damagedPlace(reader.below(65536))
        , damage(reader.number<std::uint8_t>())
        , cut(reader.below(65536))
    {
    }

    [[nodiscard]] std::size_t numberBytes() const { return isDouble ? sizeof(double) : sizeof(float); }
    [[nodiscard]] std::size_t rowBytes() const { return numberBytes() * channelCount; }

    /// The number at a place of the bytes as a model of its own reads it: moved as a whole, where the machine has the lowest byte first.
    [[nodiscard]] float numberAt(std::span<const std::byte> content, std::size_t place) const
    {
        if (isDouble) {
            double number = 0.0;
            std::memcpy(&number, content.data() + place * sizeof number, sizeof number);
            return static_cast<float>(number);
        }
        float number = 0.0F;
        std::memcpy(&number, content.data() + place * sizeof number, sizeof number);
        return number;
    }
};

void requireNumbers(const input::MeasurementTable& table, std::span<const std::byte> content, const Wish& wish)
{
    requireSoundTable(table);
    require(table.columns.size() == wish.channelCount && table.rowCount() == content.size() / wish.rowBytes(), "all bytes become rows of the channels");
    for (std::size_t channel = 0; channel < wish.channelCount; ++channel) {
        const input::ColumnValues& values = table.columns[channel].values;
        for (std::size_t row = 0; row < values.size(); ++row)
            require(areSame(values[row], wish.numberAt(content, row * wish.channelCount + channel)), "numbers are those of the file");
    }
    const ExtremePyramid* pyramid = table.columns.front().values.pyramid();
    if (!pyramid)
        return;
    float least = std::numeric_limits<float>::infinity();
    float most = -least;
    for (const float value : table.columns.front().values) {
        least = value < least ? value : least;
        most = value > most ? value : most;
    }
    require(pyramid->extremes().areOfNothing() || (pyramid->extremes().minimum == least && pyramid->extremes().maximum == most), "the extremes are those of the numbers");
}

/// Damages the file in which extremes are kept.
void damageKept(const std::string& folder, const Wish& wish)
{
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        std::fstream file(entry.path(), std::ios::in | std::ios::out | std::ios::binary);
        const auto place = static_cast<std::streamoff>(wish.damagedPlace % std::max<std::uintmax_t>(entry.file_size(), 1));
        file.seekg(place);
        const int byte = file.get();
        file.clear();
        file.seekp(place);
        file.put(static_cast<char>(byte ^ wish.damage));
    }
}

/// Cuts the file that a table is mapped from, and looks at all of it.
void cutBeneath(const input::MeasurementTable& table, const std::string& path, std::size_t length, const Wish& wish)
{
    const auto mapped = table.mappedFile();
    require(mapped != nullptr, "a mapped table has a file");
    mapped->requireAllBytes(path);
    const std::size_t left = length * wish.cut / 65536;
    require(::truncate(path.c_str(), static_cast<off_t>(left)) == 0, "a file can be cut");
    for (const input::MeasurementColumn& column : table.columns)
        static_cast<void>(std::count_if(column.values.begin(), column.values.end(), [](float value) { return value > 0.0F; }));
    try {
        mapped->requireAllBytes(path);
        require(false, "a cut file is noticed");
    } catch (const input::MeasurementError& error) {
        requireClearError(error, path, 0);
    }
}

} // namespace

Verdict tryInput(std::span<const std::byte> input)
{
    static const PrivateFolder folder;
    InputReader reader(input);
    const Wish wish(reader);
    const auto content = reader.rest();
    const std::string path = folder.write(wish.isDouble ? "numbers.f64" : "numbers.f32", content);
    const std::string kept = folder.path("extremes");
    input::ReadSettings settings;
    settings.channelCount = wish.channelCount;
    settings.shortestMappedFile = wish.isMapped ? 1 : settings.shortestMappedFile;
    if (wish.keepsExtremes)
        settings.extremesFolder.emplace(kept, 1);
    const bool canBeRead = !content.empty() && wish.channelCount >= 1 && wish.channelCount <= input::kMaximumChannelCount && content.size() % wish.rowBytes() == 0;
    try {
        const input::MeasurementTable table = input::readMeasurements(path, settings);
        require(canBeRead, "only whole rows are read");
        requireNumbers(table, content, wish);
        if (wish.keepsExtremes) {
            damageKept(kept, wish);
            requireNumbers(input::readMeasurements(path, settings), content, wish);
            std::filesystem::remove_all(kept);
        }
        require((table.mappedFile() != nullptr) == (wish.isMapped && !wish.isDouble && wish.channelCount == 1), "single numbers of one channel are used where they lie");
        if (table.mappedFile())
            cutBeneath(table, path, content.size(), wish);
        return Verdict::accepted;
    } catch (const input::MeasurementError& error) {
        require(!canBeRead, "whole rows can be read");
        requireClearError(error, path, 0);
        return Verdict::refused;
    }
}

} // namespace TOLVGraphing::fuzzing
