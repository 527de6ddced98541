#include <desktop/input/NumpyReader.h>

#include <desktop/input/ElementReader.h>
#include <desktop/input/MeasurementError.h>
#include <desktop/input/NumpyHeader.h>

#include <bit>

namespace TOLVGraphing::input {

MeasurementTable readNumpyArray(ByteSource& source, const ReadSettings& settings)
{
    const NumpyHeader header = readNumpyHeader(source);
    const std::uint64_t columnCount = header.shape.size() == 2 ? header.shape[1] : 1;
    if (columnCount > kMaximumColumnCount)
        throw MeasurementError(source.name(), 0, "an array of " + std::to_string(columnCount) + " columns", "expected at most " + std::to_string(kMaximumColumnCount));
    ElementLayout layout;
    layout.letter = header.elementLetter;
    layout.size = header.elementSize;
    layout.isBigEndian = header.byteOrder == '>' || (header.byteOrder == '=' && std::endian::native == std::endian::big);
    layout.isByColumns = header.isFortranOrder;
    layout.rowCount = header.shape[0];
    layout.columnCount = static_cast<std::size_t>(columnCount);
    MeasurementTable table;
    table.sourceName = source.name();
    table.format.kind = "npy " + header.version + " " + header.elementType;
    readElements(source, settings, layout, table);
    return table;
}

} // namespace TOLVGraphing::input
