#include <desktop/input/ElementReader.h>

#include <desktop/input/MappedColumns.h>
#include <desktop/input/MeasurementError.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

namespace TOLVGraphing::input {

namespace {

constexpr std::size_t kBlockLength = std::size_t{1} << 20;
/// Rows to make room for where the length of the source is not known.
constexpr std::uint64_t kFirstRows = std::uint64_t{1} << 20;

float floatOfHalf(std::uint16_t bits)
{
    float sign = (bits & 0x8000U) != 0 ? -1.0F : 1.0F;
    int exponent = (bits >> 10U) & 0x1F;
    auto fraction = static_cast<float>(bits & 0x3FFU);
    if (exponent == 0x1F)
        return fraction == 0.0F ? sign * std::numeric_limits<float>::infinity() : std::numeric_limits<float>::quiet_NaN();
    // Every half is exactly a float.
    return sign * (exponent == 0 ? std::ldexp(fraction, -24) : std::ldexp(fraction + 1024.0F, exponent - 25));
}

/// The unsigned integer of a size in bytes.
template <std::size_t size>
struct BitsOfSize;
template <>
struct BitsOfSize<1> {
    using Type = std::uint8_t;
};
template <>
struct BitsOfSize<2> {
    using Type = std::uint16_t;
};
template <>
struct BitsOfSize<4> {
    using Type = std::uint32_t;
};
template <>
struct BitsOfSize<8> {
    using Type = std::uint64_t;
};

template <typename Bits>
Bits bitsAt(const char* bytes, bool isBigEndian)
{
    Bits bits = 0;
    for (std::size_t index = 0; index < sizeof(Bits); ++index) {
        std::size_t place = isBigEndian ? index : sizeof(Bits) - 1 - index;
        bits = static_cast<Bits>(static_cast<std::uint64_t>(bits) << 8U | static_cast<unsigned char>(bytes[place]));
    }
    return bits;
}

/// Converts `count` elements that lie `stride` bytes apart and appends them.
using Conversion = void (*)(const char* bytes, std::size_t count, std::size_t stride, bool isBigEndian, std::vector<float>& values);

template <typename Element>
void convert(const char* bytes, std::size_t count, std::size_t stride, bool isBigEndian, std::vector<float>& values)
{
    using Bits = typename BitsOfSize<sizeof(Element)>::Type;
    for (std::size_t index = 0; index < count; ++index)
        values.push_back(static_cast<float>(std::bit_cast<Element>(bitsAt<Bits>(bytes + index * stride, isBigEndian))));
}

void convertHalves(const char* bytes, std::size_t count, std::size_t stride, bool isBigEndian, std::vector<float>& values)
{
    for (std::size_t index = 0; index < count; ++index)
        values.push_back(floatOfHalf(bitsAt<std::uint16_t>(bytes + index * stride, isBigEndian)));
}

void convertTruthValues(const char* bytes, std::size_t count, std::size_t stride, bool, std::vector<float>& values)
{
    for (std::size_t index = 0; index < count; ++index)
        values.push_back(bytes[index * stride] != 0 ? 1.0F : 0.0F);
}

Conversion conversionFor(const ElementLayout& layout)
{
    if (layout.letter == 'b')
        return convertTruthValues;
    bool isSigned = layout.letter == 'i';
    if (layout.letter == 'f')
        return layout.size == 2 ? convertHalves : layout.size == 4 ? convert<float> : convert<double>;
    switch (layout.size) {
    case 1: return isSigned ? convert<std::int8_t> : convert<std::uint8_t>;
    case 2: return isSigned ? convert<std::int16_t> : convert<std::uint16_t>;
    case 4: return isSigned ? convert<std::int32_t> : convert<std::uint32_t>;
    default: return isSigned ? convert<std::int64_t> : convert<std::uint64_t>;
    }
}

class ElementReader {
public:
    ElementReader(ByteSource& source, const ReadSettings& settings, const ElementLayout& layout, MeasurementTable& table)
        : m_source(source)
        , m_settings(settings)
        , m_layout(layout)
        , m_table(table)
    {
    }

    void read();

private:
    void checkSize() const;
    /// The elements are floats already, whole columns of them.
    bool areFloatColumns() const { return m_layout.letter == 'f' && m_layout.size == sizeof(float) && !m_layout.isBigEndian && m_isByColumns; }
    void convertElements();
    [[noreturn]] void fail(std::string found, std::string expected) const { throw MeasurementError(m_source.name(), 0, std::move(found), std::move(expected)); }

    ByteSource& m_source;
    const ReadSettings& m_settings;
    const ElementLayout& m_layout;
    MeasurementTable& m_table;
    /// With one column, too, whole columns follow one another.
    bool m_isByColumns = m_layout.isByColumns || m_layout.columnCount == 1;
};

void ElementReader::read()
{
    checkSize();
    m_table.columns.resize(m_layout.columnCount);
    for (std::size_t index = 0; index < m_layout.columnCount; ++index)
        m_table.columns[index].number = index + 1;
    if (!areFloatColumns() || !mapColumns(m_source, m_settings, m_layout.rowCount, m_table))
        convertElements();
    m_source.finish();
}

void ElementReader::checkSize() const
{
    std::uint64_t rowBytes = m_layout.size * m_layout.columnCount;
    if (m_layout.rowCount > std::numeric_limits<std::uint64_t>::max() / rowBytes)
        fail("an array of " + std::to_string(m_layout.rowCount) + " rows", "expected one that fits the memory");
    if (!m_source.totalBytes())
        return;
    std::uint64_t available = *m_source.totalBytes() - std::min(*m_source.totalBytes(), m_source.bytesRead());
    if (m_layout.rowCount * rowBytes > available) {
        fail(std::to_string(available) + " bytes of elements",
            "expected " + std::to_string(m_layout.rowCount * rowBytes) + " for " + std::to_string(m_layout.rowCount) + " rows of " + std::to_string(m_layout.columnCount)
                + " columns");
    }
}

void ElementReader::convertElements()
{
    const Conversion conversion = conversionFor(m_layout);
    const std::size_t columnsPerPass = m_isByColumns ? 1 : m_layout.columnCount;
    const std::size_t unitBytes = m_layout.size * columnsPerPass;
    const std::size_t unitsPerBlock = std::max<std::size_t>(kBlockLength / unitBytes, 1);
    std::vector<char> block(unitsPerBlock * unitBytes);
    std::vector<std::vector<float>> columns(m_layout.columnCount);
    for (std::vector<float>& values : columns) {
        if (m_source.totalBytes() || m_layout.rowCount <= kFirstRows / m_layout.columnCount)
            values.reserve(static_cast<std::size_t>(m_layout.rowCount));
    }
    for (std::size_t first = 0; first < m_layout.columnCount; first += columnsPerPass) {
        for (std::uint64_t done = 0; done < m_layout.rowCount;) {
            auto units = static_cast<std::size_t>(std::min<std::uint64_t>(unitsPerBlock, m_layout.rowCount - done));
            if (m_source.read(block.data(), units * unitBytes) < units * unitBytes)
                fail("the end of the file within the elements", "expected " + std::to_string(m_layout.rowCount) + " rows of " + std::to_string(m_layout.columnCount) + " columns");
            for (std::size_t part = 0; part < columnsPerPass; ++part)
                conversion(block.data() + part * m_layout.size, units, unitBytes, m_layout.isBigEndian, columns[first + part]);
            done += units;
        }
    }
    for (std::size_t index = 0; index < m_layout.columnCount; ++index) {
        MeasurementColumn& column = m_table.columns[index];
        column.gapCount = static_cast<std::size_t>(std::count_if(columns[index].begin(), columns[index].end(), [](float value) { return std::isnan(value); }));
        column.values = std::move(columns[index]);
    }
}

} // namespace

void readElements(ByteSource& source, const ReadSettings& settings, const ElementLayout& layout, MeasurementTable& table)
{
    ElementReader(source, settings, layout, table).read();
}

} // namespace TOLVGraphing::input
