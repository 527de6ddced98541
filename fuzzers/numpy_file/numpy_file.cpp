#include "../support/FuzzTarget.h"
#include "../support/InputReader.h"
#include "../support/PrivateFolder.h"
#include "../support/Tables.h"

#include <desktop/input/MeasurementReader.h>

#include <array>
#include <cstring>

namespace TOLVGraphing::fuzzing {
namespace {

constexpr std::array<const char*, 11> kTypes = {"f4", "f8", "i1", "i2", "i4", "i8", "u1", "u2", "u4", "u8", "b1"};

template <typename Number>
float moved(const std::array<std::byte, 8>& bytes)
{
    Number number{};
    std::memcpy(&number, bytes.data(), sizeof number);
    return static_cast<float>(number);
}

/// An array that is made here, so that it is known what has to be read.
struct Array {
    std::string type;
    bool isBigEndian = false;
    bool isByColumns = false;
    std::size_t rowCount = 0;
    std::size_t columnCount = 0;
    std::string elements;

    explicit Array(InputReader& reader)
        : type(reader.oneOf(kTypes))
        , isBigEndian(reader.yes())
        , isByColumns(reader.yes())
        , rowCount(1 + reader.below(40))
        , columnCount(1 + reader.below(9))
    {
        const auto bytes = reader.bytes(rowCount * columnCount * size());
        elements.assign(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        elements.resize(rowCount * columnCount * size());
    }

    [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(type[1] - '0'); }

    [[nodiscard]] std::string file() const
    {
        std::string header = "{'descr': '" + std::string(isBigEndian ? ">" : "<") + type + "', 'fortran_order': " + (isByColumns ? "True" : "False") + ", 'shape': ("
            + std::to_string(rowCount) + ", " + std::to_string(columnCount) + "), }";
        header.resize((header.size() + 10 + 64) / 64 * 64 - 10, ' ');
        return std::string("\x93NUMPY\x01\x00", 8) + static_cast<char>(header.size()) + '\0' + header + elements;
    }

    /// A model of its own: the bytes turned around where the highest comes first, and moved as a whole.
    [[nodiscard]] float elementAt(std::size_t row, std::size_t column) const
    {
        const std::size_t place = isByColumns ? column * rowCount + row : row * columnCount + column;
        std::array<std::byte, 8> bytes{};
        for (std::size_t i = 0; i < size(); ++i)
            bytes[isBigEndian ? size() - 1 - i : i] = static_cast<std::byte>(elements[place * size() + i]);
        if (type == "f4")
            return moved<float>(bytes);
        if (type == "f8")
            return moved<double>(bytes);
        if (type == "b1")
            return bytes[0] == std::byte{0} ? 0.0F : 1.0F;
        if (type == "i1" || type == "u1")
            return type == "i1" ? moved<std::int8_t>(bytes) : moved<std::uint8_t>(bytes);
        if (type == "i2" || type == "u2")
            return type == "i2" ? moved<std::int16_t>(bytes) : moved<std::uint16_t>(bytes);
        if (type == "i4" || type == "u4")
            return type == "i4" ? moved<std::int32_t>(bytes) : moved<std::uint32_t>(bytes);
        return type == "i8" ? moved<std::int64_t>(bytes) : moved<std::uint64_t>(bytes);
    }
};

input::ReadSettings mapping(bool maps)
{
    input::ReadSettings settings;
    if (maps)
        settings.shortestMappedFile = 1;
    return settings;
}

Verdict tryMadeArray(const PrivateFolder& folder, InputReader& reader)
{
    const bool maps = reader.yes();
    const Array array(reader);
    const std::string content = array.file();
    const auto table = input::readMeasurements(folder.write("made.npy", std::as_bytes(std::span(content))), mapping(maps));
    requireSoundTable(table);
    require(table.columns.size() == array.columnCount && table.rowCount() == array.rowCount, "an array has the shape of its header");
    for (std::size_t column = 0; column < array.columnCount; ++column) {
        for (std::size_t row = 0; row < array.rowCount; ++row)
            require(areSame(table.columns[column].values[row], array.elementAt(row, column)), "elements become the nearest floats");
    }
    return Verdict::accepted;
}

/// The text of the error, or nothing with the table set.
std::string readInto(input::MeasurementTable& table, const std::string& path, bool maps)
{
    try {
        table = input::readMeasurements(path, mapping(maps));
        requireSoundTable(table);
        return {};
    } catch (const input::MeasurementError& error) {
        requireClearError(error, path, 0);
        return std::string(error.what()).substr(path.size());
    }
}

Verdict tryAnyFile(const PrivateFolder& folder, std::span<const std::byte> content)
{
    // Something else than the array's magic bytes would be another reader's.
    std::string bytes = "\x93NUMPY" + std::string(textOf(content));
    const std::string path = folder.write("any.npy", std::as_bytes(std::span(bytes)));
    input::MeasurementTable read;
    const std::string error = readInto(read, path, false);
    input::MeasurementTable mapped;
    require(readInto(mapped, path, true) == error && mapped == read, "mapped files are read like others");
    require(read.rowCount() * read.columns.size() <= bytes.size(), "an array has no more elements than bytes");
    if (bytes.size() <= Pipe::kMostBytes && !error.empty()) {
        input::MeasurementTable piped;
        require(!readInto(piped, Pipe(std::as_bytes(std::span(bytes))).path(), false).empty(), "what a file cannot have a pipe cannot have");
    }
    return error.empty() ? Verdict::accepted : Verdict::refused;
}

} // namespace

Verdict tryInput(std::span<const std::byte> input)
{
    static const PrivateFolder folder;
    InputReader reader(input);
    return reader.below(4) == 1 ? tryMadeArray(folder, reader) : tryAnyFile(folder, reader.rest());
}

} // namespace TOLVGraphing::fuzzing
