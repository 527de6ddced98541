#include <desktop/input/NumpyHeader.h>

#include <desktop/input/MeasurementError.h>

#include <charconv>
#include <string_view>
#include <system_error>
#include <utility>

namespace TOLVGraphing::input {

namespace {

constexpr std::size_t kLongestHeader = std::size_t{1} << 20;
constexpr const char* kSupportedTypes = "expected f2, f4, f8, i1 to i8, u1 to u8 or b1";

class NumpyHeaderReader {
public:
    explicit NumpyHeaderReader(ByteSource& source) : m_source(source) {}

    NumpyHeader read();

private:
    void readPrefix();
    void parseElementType();
    void parseOrder();
    void parseShape();
    std::string_view valueOf(std::string_view key) const;
    [[noreturn]] void fail(std::string found, std::string expected) const { throw MeasurementError(m_source.name(), 0, std::move(found), std::move(expected)); }

    ByteSource& m_source;
    NumpyHeader m_header;
    std::string m_text;
};

NumpyHeader NumpyHeaderReader::read()
{
    readPrefix();
    parseElementType();
    parseOrder();
    parseShape();
    return m_header;
}

/// The magic bytes, the version, the length of the text and the text.
void NumpyHeaderReader::readPrefix()
{
    char bytes[12] = {};
    auto byteAt = [&bytes](std::size_t index) { return static_cast<std::size_t>(static_cast<unsigned char>(bytes[index])); };
    if (m_source.read(bytes, 8) < 8 || std::string_view(bytes, 6) != std::string_view("\x93NUMPY", 6))
        fail("a file that does not start like an npy array", "expected the bytes \\x93NUMPY and a version");
    std::size_t major = byteAt(6);
    m_header.version = std::to_string(major) + "." + std::to_string(byteAt(7));
    if (major < 1 || major > 3)
        fail("npy version " + m_header.version, "expected 1.0 to 3.0");
    std::size_t lengthBytes = major == 1 ? 2 : 4;
    if (m_source.read(bytes + 8, lengthBytes) < lengthBytes)
        fail("the end of the file within the npy header", "expected the length of the header");
    std::size_t length = byteAt(8) | byteAt(9) << 8U;
    if (lengthBytes == 4)
        length |= byteAt(10) << 16U | byteAt(11) << 24U;
    if (length > kLongestHeader)
        fail("an npy header of " + std::to_string(length) + " bytes", "expected at most 1 MiB");
    m_text.resize(length);
    if (m_source.read(m_text.data(), length) < length)
        fail("the end of the file within the npy header", "expected " + std::to_string(length) + " bytes of header");
}

/// What follows `'key':`, from its first character to the end of the header; empty where the key is missing.
std::string_view NumpyHeaderReader::valueOf(std::string_view key) const
{
    std::string_view text = m_text;
    for (char quote : {'\'', '"'}) {
        std::string quoted = quote + std::string(key) + quote;
        std::size_t place = text.find(quoted);
        if (place == std::string_view::npos)
            continue;
        std::size_t value = text.find_first_not_of(" \t", place + quoted.size());
        if (value == std::string_view::npos || text[value] != ':')
            continue;
        value = text.find_first_not_of(" \t", value + 1);
        if (value != std::string_view::npos)
            return text.substr(value);
    }
    return {};
}

void NumpyHeaderReader::parseElementType()
{
    std::string_view value = valueOf("descr");
    if (value.empty())
        fail("an npy header without 'descr'", "expected the element type");
    if (value.front() == '[')
        fail("structured elements " + quotedExcerpt(value.substr(0, value.find(']') + 1)), kSupportedTypes);
    std::size_t closing = value.find(value.front(), 1);
    if ((value.front() != '\'' && value.front() != '"') || closing == std::string_view::npos)
        fail("the element type " + quotedExcerpt(value), kSupportedTypes);
    std::string_view type = value.substr(1, closing - 1);
    m_header.elementType = type;
    if (type == "?")
        type = "|b1";
    if (!type.empty() && std::string_view("<>|=").find(type.front()) != std::string_view::npos) {
        m_header.byteOrder = type.front();
        type.remove_prefix(1);
    }
    constexpr std::string_view supported[] = {"f2", "f4", "f8", "i1", "i2", "i4", "i8", "u1", "u2", "u4", "u8", "b1"};
    for (std::string_view candidate : supported) {
        if (type != candidate)
            continue;
        m_header.elementLetter = candidate[0];
        m_header.elementSize = static_cast<std::size_t>(candidate[1] - '0');
        return;
    }
    fail("elements of the type " + quotedExcerpt(m_header.elementType), kSupportedTypes);
}

void NumpyHeaderReader::parseOrder()
{
    std::string_view value = valueOf("fortran_order");
    if (!value.starts_with("True") && !value.starts_with("False"))
        fail("an npy header without 'fortran_order'", "expected True or False");
    m_header.isFortranOrder = value.starts_with("True");
}

void NumpyHeaderReader::parseShape()
{
    std::string_view value = valueOf("shape");
    std::size_t closing = value.find(')');
    if (value.empty() || value.front() != '(' || closing == std::string_view::npos)
        fail("an npy header without 'shape'", "expected numbers in parentheses");
    std::string shapeText(value.substr(0, closing + 1));
    const char* position = value.data() + 1;
    const char* end = value.data() + closing;
    auto skip = [&](char character) {
        while (position < end && (*position == ' ' || *position == character))
            ++position;
    };
    for (skip(' '); position < end; skip(',')) {
        std::uint64_t length = 0;
        auto result = std::from_chars(position, end, length);
        if (result.ec != std::errc())
            fail("the shape " + quotedExcerpt(shapeText), "expected numbers in parentheses");
        m_header.shape.push_back(length);
        // Files of old may mark long integers.
        position = result.ptr < end && *result.ptr == 'L' ? result.ptr + 1 : result.ptr;
        if (position < end && *position != ',' && *position != ' ')
            fail("the shape " + quotedExcerpt(shapeText), "expected numbers in parentheses");
    }
    if (m_header.shape.empty() || m_header.shape.size() > 2)
        fail("an array of the shape " + quotedExcerpt(shapeText), "expected one dimension, or two (rows and columns)");
    for (std::uint64_t length : m_header.shape) {
        if (length == 0)
            fail("an array of the shape " + quotedExcerpt(shapeText) + " without elements", "expected at least one row and one column");
    }
}

} // namespace

NumpyHeader readNumpyHeader(ByteSource& source)
{
    return NumpyHeaderReader(source).read();
}

} // namespace TOLVGraphing::input
