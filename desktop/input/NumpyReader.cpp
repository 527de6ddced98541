#include <desktop/input/NumpyReader.h>

#include <desktop/input/MeasurementError.h>
#include <desktop/input/NumpyHeader.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

namespace TOLVGraphing::input {

namespace {

constexpr std::size_t kBlockLength = std::size_t { 1 } << 20;
/// Rows to make room for where the length of the source is not known.
constexpr std::uint64_t kFirstRows = std::uint64_t { 1 } << 20;

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
template<std::size_t size> struct BitsOfSize;
template<> struct BitsOfSize<1> {
    using Type = std::uint8_t;
};
template<> struct BitsOfSize<2> {
    using Type = std::uint16_t;
};
template<> struct BitsOfSize<4> {
    using Type = std::uint32_t;
};
template<> struct BitsOfSize<8> {
    using Type = std::uint64_t;
};

template<typename Bits> Bits bitsAt(const char* bytes, bool isBigEndian)
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

template<typename Element> void convert(const char* bytes, std::size_t count, std::size_t stride, bool isBigEndian, std::vector<float>& values)
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

Conversion conversionFor(const NumpyHeader& header)
{
    if (header.elementLetter == 'b')
        return convertTruthValues;
    bool isSigned = header.elementLetter == 'i';
    if (header.elementLetter == 'f')
        return header.elementSize == 2 ? convertHalves : header.elementSize == 4 ? convert<float> : convert<double>;
    switch (header.elementSize) {
    case 1:
        return isSigned ? convert<std::int8_t> : convert<std::uint8_t>;
    case 2:
        return isSigned ? convert<std::int16_t> : convert<std::uint16_t>;
    case 4:
        return isSigned ? convert<std::int32_t> : convert<std::uint32_t>;
    default:
        return isSigned ? convert<std::int64_t> : convert<std::uint64_t>;
    }
}

class NumpyReader {
public:
    explicit NumpyReader(ByteSource& source)
        : m_source(source)
        , m_header(readNumpyHeader(source))
    {
    }

    MeasurementTable read();

private:
    void checkSize() const;
    void startTable();
    void readElements();
    [[noreturn]] void fail(std::string found, std::string expected) const { throw MeasurementError(m_source.name(), 0, std::move(found), std::move(expected)); }

    ByteSource& m_source;
    NumpyHeader m_header;
    MeasurementTable m_table;
    std::uint64_t m_rowCount = 0;
    std::size_t m_columnCount = 1;
};

MeasurementTable NumpyReader::read()
{
    m_rowCount = m_header.shape[0];
    std::uint64_t columnCount = m_header.shape.size() == 2 ? m_header.shape[1] : 1;
    if (columnCount > kMaximumColumnCount)
        fail("an array of " + std::to_string(columnCount) + " columns", "expected at most " + std::to_string(kMaximumColumnCount));
    m_columnCount = static_cast<std::size_t>(columnCount);
    checkSize();
    startTable();
    readElements();
    m_source.finish();
    for (MeasurementColumn& column : m_table.columns)
        column.gapCount = static_cast<std::size_t>(std::count_if(column.values.begin(), column.values.end(), [](float value) { return std::isnan(value); }));
    return std::move(m_table);
}

void NumpyReader::checkSize() const
{
    std::uint64_t rowBytes = m_header.elementSize * m_columnCount;
    if (m_rowCount > std::numeric_limits<std::uint64_t>::max() / rowBytes)
        fail("an array of " + std::to_string(m_rowCount) + " rows", "expected one that fits the memory");
    if (!m_source.totalBytes())
        return;
    std::uint64_t available = *m_source.totalBytes() - std::min(*m_source.totalBytes(), m_source.bytesRead());
    if (m_rowCount * rowBytes > available)
        fail(std::to_string(available) + " bytes of elements", "expected " + std::to_string(m_rowCount * rowBytes) + " for " + std::to_string(m_rowCount) + " rows of " + std::to_string(m_columnCount) + " columns");
}

void NumpyReader::startTable()
{
    m_table.sourceName = m_source.name();
    m_table.format.kind = "npy " + m_header.version + " " + m_header.elementType;
    m_table.columns.resize(m_columnCount);
    for (std::size_t index = 0; index < m_columnCount; ++index) {
        m_table.columns[index].number = index + 1;
        if (m_source.totalBytes() || m_rowCount <= kFirstRows / m_columnCount)
            m_table.columns[index].values.reserve(static_cast<std::size_t>(m_rowCount));
    }
}

void NumpyReader::readElements()
{
    // In Fortran order, and with one column, whole columns follow one another.
    bool isByColumns = m_header.isFortranOrder || m_columnCount == 1;
    bool isBigEndian = m_header.byteOrder == '>' || (m_header.byteOrder == '=' && std::endian::native == std::endian::big);
    Conversion conversion = conversionFor(m_header);
    std::size_t unitBytes = m_header.elementSize * (isByColumns ? 1 : m_columnCount);
    std::size_t unitsPerBlock = std::max<std::size_t>(kBlockLength / unitBytes, 1);
    std::vector<char> block(unitsPerBlock * unitBytes);
    std::size_t passes = isByColumns ? m_columnCount : 1;
    for (std::size_t pass = 0; pass < passes; ++pass) {
        for (std::uint64_t done = 0; done < m_rowCount;) {
            auto units = static_cast<std::size_t>(std::min<std::uint64_t>(unitsPerBlock, m_rowCount - done));
            if (m_source.read(block.data(), units * unitBytes) < units * unitBytes)
                fail("the end of the file within the elements", "expected " + std::to_string(m_rowCount) + " rows of " + std::to_string(m_columnCount) + " columns");
            for (std::size_t part = 0; part < (isByColumns ? 1 : m_columnCount); ++part)
                conversion(block.data() + part * m_header.elementSize, units, unitBytes, isBigEndian, m_table.columns[pass + part].values);
            done += units;
        }
    }
}

} // namespace

MeasurementTable readNumpyArray(ByteSource& source, const ReadSettings&)
{
    return NumpyReader(source).read();
}

} // namespace TOLVGraphing::input
