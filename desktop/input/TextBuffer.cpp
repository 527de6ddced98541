#include <desktop/input/TextBuffer.h>

#include <desktop/input/MeasurementError.h>
#include <desktop/input/Utf8.h>

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

namespace TOLVGraphing::input {

namespace {

/// Fits a processor's second-level cache, and is long enough that the calls of the system do not count.
constexpr std::size_t kBlockLength = std::size_t{1} << 20;

bool looksLikeUtf16WithoutMark(std::string_view start)
{
    if (start.size() < 8)
        return false;
    std::size_t evenZeros = 0;
    std::size_t oddZeros = 0;
    for (std::size_t index = 0; index < start.size(); ++index) {
        if (start[index] == '\0')
            ++(index % 2 == 0 ? evenZeros : oddZeros);
    }
    std::size_t mostUnits = start.size() / 2 - start.size() / 8;
    return (evenZeros == 0 && oddZeros >= mostUnits) || (oddZeros == 0 && evenZeros >= mostUnits);
}

} // namespace

TextBuffer::TextBuffer(ByteSource& source) : m_source(source)
{
    detectEncoding();
    fill(1);
}

std::uint64_t TextBuffer::consumedBytes() const
{
    std::uint64_t waiting = m_end - m_begin;
    return m_source.bytesRead() > waiting ? m_source.bytesRead() - waiting : 0;
}

void TextBuffer::fill(std::size_t line)
{
    if (m_isAtEnd)
        return;
    if (m_end - m_begin > kMaximumLineLength)
        throw MeasurementError(m_source.name(), line, "a line of more than 16 MiB", "expected lines of text");
    reserve(m_end - m_begin + kBlockLength);
    std::size_t length = readText(m_bytes.get() + m_end, kBlockLength);
    m_end += length;
    // Decoding can leave less than was asked for, so only nothing at all is the end.
    if (length == 0) {
        m_isAtEnd = true;
        if (m_begin < m_end && m_bytes[m_end - 1] != '\n')
            m_bytes[m_end++] = '\n';
    }
    m_bytes[m_end] = '\0';
}

void TextBuffer::detectEncoding()
{
    std::string_view start = m_source.peek(64);
    using namespace std::string_view_literals;
    char mark[4];
    if (start.starts_with("\xEF\xBB\xBF"sv)) {
        m_source.read(mark, 3);
    } else if (start.starts_with("\xFF\xFE\0\0"sv) || start.starts_with("\0\0\xFE\xFF"sv)) {
        throw MeasurementError(m_source.name(), 1, "text in UTF-32", "expected UTF-8 or UTF-16");
    } else if (start.starts_with("\xFF\xFE"sv) || start.starts_with("\xFE\xFF"sv)) {
        m_encoding = start.front() == '\xFF' ? Encoding::LittleEndian16 : Encoding::BigEndian16;
        m_source.read(mark, 2);
    } else if (looksLikeUtf16WithoutMark(start)) {
        throw MeasurementError(m_source.name(), 1, "what looks like UTF-16 without a byte order mark", "expected UTF-8, or UTF-16 with a byte order mark");
    }
}

/// Moves the text to the front and makes room for this length of text, an added line end and the NUL behind it.
void TextBuffer::reserve(std::size_t length)
{
    std::size_t textLength = m_end - m_begin;
    if (length + 2 > m_capacity) {
        std::size_t capacity = std::max(length + 2, m_capacity * 2);
        auto bytes = std::make_unique_for_overwrite<char[]>(capacity);
        if (textLength > 0)
            std::memcpy(bytes.get(), begin(), textLength);
        m_bytes = std::move(bytes);
        m_capacity = capacity;
    } else if (textLength > 0) {
        std::memmove(m_bytes.get(), begin(), textLength);
    }
    m_begin = 0;
    m_end = textLength;
}

std::size_t TextBuffer::readText(char* target, std::size_t count)
{
    if (m_encoding == Encoding::Bytes)
        return m_source.read(target, count);
    // A unit of two bytes becomes at most three bytes; a pending half of a pair may add three more.
    std::size_t unitBytes = (count - 3) / 3 * 2 & ~std::size_t{1};
    auto units = std::make_unique_for_overwrite<char[]>(unitBytes);
    for (;;) {
        std::size_t length = m_source.read(units.get(), unitBytes);
        std::size_t decoded = length == 0 ? 0 : decode(units.get(), length, target);
        if (decoded > 0 || length == 0)
            return decoded;
    }
}

std::size_t TextBuffer::decode(const char* units, std::size_t unitBytes, char* target)
{
    constexpr unsigned replacement = 0xFFFD;
    char* position = target;
    // The odd last byte of a file that was cut is left out.
    for (std::size_t index = 0; index + 1 < unitBytes; index += 2) {
        unsigned first = static_cast<unsigned char>(units[index]);
        unsigned second = static_cast<unsigned char>(units[index + 1]);
        unsigned unit = m_encoding == Encoding::LittleEndian16 ? first | second << 8U : first << 8U | second;
        bool isHigh = unit >= 0xD800U && unit < 0xDC00U;
        bool isLow = unit >= 0xDC00U && unit < 0xE000U;
        if (m_pendingSurrogate != 0 && isLow) {
            position = appendUtf8(position, 0x10000U + ((m_pendingSurrogate - 0xD800U) << 10U) + (unit - 0xDC00U));
            m_pendingSurrogate = 0;
            continue;
        }
        if (m_pendingSurrogate != 0)
            position = appendUtf8(position, replacement);
        m_pendingSurrogate = isHigh ? unit : 0;
        if (!isHigh)
            position = appendUtf8(position, isLow ? replacement : unit);
    }
    return static_cast<std::size_t>(position - target);
}

} // namespace TOLVGraphing::input
