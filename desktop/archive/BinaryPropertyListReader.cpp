#include "BinaryPropertyListReader.h"

#include "PropertyListScalars.h"
#include "TOLVGraphing/platform/foundation/KeyedArchive.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TOLVGraphing::plist {

namespace {

constexpr std::string_view kMagic = "bplist00";
constexpr std::size_t kTrailerSize = 32;
constexpr unsigned kLongCount = 0xF;

/// What one object is: a leaf with a payload, or a container with references.
struct Layout {
    enum class Kind : unsigned char { Fixed, Bytes, Ascii, Utf16, Array, Dictionary };
    Kind kind = Kind::Fixed;
    /// Where the payload or the first reference is.
    std::uint64_t data = 0;
    std::uint64_t payload = 0;
    std::uint64_t references = 0;
    /// The leading references that have to name texts.
    std::uint64_t keys = 0;

    [[nodiscard]] bool isText() const { return kind == Kind::Ascii || kind == Kind::Utf16; }
};

/// What a reader's tree below one object amounts to.
struct Extent {
    std::uint64_t nodes = 0;
    std::uint64_t bytes = 0;
    std::size_t height = 0;
};

class BinaryReader {
public:
    BinaryReader(std::span<const std::byte> data, const ArchiveLimits& limits) : m_data(data), m_limits(limits) {}

    [[nodiscard]] Value run()
    {
        readTrailer();
        m_states.resize(m_count, State::Unseen);
        m_layouts.resize(m_count);
        m_extents.resize(m_count);
        walk();
        return valueOf(m_top);
    }

private:
    enum class State : unsigned char { Unseen, Open, Done };
    struct Step {
        std::uint64_t object;
        std::uint64_t next;
    };

    [[noreturn]] static void fail(const std::string& text) { throw ArchiveError("binary property list: " + text); }

    [[noreturn]] static void fail(std::uint64_t object, const std::string& text) { fail("value " + std::to_string(object) + ": " + text); }

    [[nodiscard]] unsigned byteAt(std::uint64_t offset) const { return std::to_integer<unsigned>(m_data[offset]); }

    /// A big-endian number; the caller has made sure that its bytes exist and are at most eight.
    [[nodiscard]] std::uint64_t numberAt(std::uint64_t offset, std::uint64_t size) const
    {
        std::uint64_t number = 0;
        for (std::uint64_t i = 0; i < size; ++i)
            number = number << 8U | byteAt(offset + i);
        return number;
    }

    [[nodiscard]] std::uint64_t offsetOf(std::uint64_t object) const { return numberAt(m_table + object * m_offsetSize, m_offsetSize); }

    void readTrailer();
    [[nodiscard]] Layout layoutOf(std::uint64_t object) const;
    [[nodiscard]] Layout fixedLayout(std::uint64_t object, std::uint64_t offset) const;
    [[nodiscard]] Layout countedLayout(std::uint64_t object, std::uint64_t offset, Layout::Kind kind, std::uint64_t size) const;
    [[nodiscard]] std::uint64_t readCount(std::uint64_t object, std::uint64_t& offset) const;
    void checkSpace(std::uint64_t object, std::uint64_t offset, std::uint64_t count, std::uint64_t size) const;
    void checkWholeNumber(std::uint64_t object, std::uint64_t offset, std::uint64_t size) const;
    void checkReference(std::uint64_t object, std::uint64_t offset, std::uint64_t size) const;
    void checkAscii(std::uint64_t object, std::uint64_t offset, std::uint64_t count) const;
    void checkUtf16(std::uint64_t object, std::uint64_t offset, std::uint64_t count) const;
    void chargeWork(const Layout& layout);
    void walk();
    void open(std::uint64_t object);
    void include(const Step& step, std::uint64_t child);
    [[nodiscard]] std::uint64_t childOf(const Layout& layout, std::uint64_t index) const;
    [[nodiscard]] Value valueOf(std::uint64_t object) const;
    [[nodiscard]] Value fixedValue(std::uint64_t offset) const;
    [[nodiscard]] std::string bytesOf(const Layout& layout) const;
    [[nodiscard]] std::string textOf(const Layout& layout) const;

    std::span<const std::byte> m_data;
    const ArchiveLimits& m_limits;
    unsigned m_offsetSize = 0;
    unsigned m_referenceSize = 0;
    std::uint64_t m_count = 0;
    std::uint64_t m_top = 0;
    std::uint64_t m_table = 0;
    std::uint64_t m_workReferences = 0;
    std::uint64_t m_workBytes = 0;
    std::vector<State> m_states;
    std::vector<Layout> m_layouts;
    std::vector<Extent> m_extents;
    std::vector<Step> m_path;
};

void BinaryReader::readTrailer()
{
    if (m_data.size() < kMagic.size() + kTrailerSize)
        fail("found " + std::to_string(m_data.size()) + " bytes, expected at least " + std::to_string(kMagic.size() + kTrailerSize));
    const std::uint64_t trailer = m_data.size() - kTrailerSize;
    m_offsetSize = byteAt(trailer + 6);
    m_referenceSize = byteAt(trailer + 7);
    m_count = numberAt(trailer + 8, 8);
    m_top = numberAt(trailer + 16, 8);
    m_table = numberAt(trailer + 24, 8);
    if (m_offsetSize < 1 || m_offsetSize > 8 || m_referenceSize < 1 || m_referenceSize > 8)
        fail("found offsets of " + std::to_string(m_offsetSize) + " and references of " + std::to_string(m_referenceSize) + " bytes in the trailer, expected 1 to 8");
    if (m_count == 0)
        fail("found no values, expected at least one");
    if (m_count > m_limits.objects)
        fail("found " + std::to_string(m_count) + " values, expected at most " + std::to_string(m_limits.objects));
    if (m_table < kMagic.size() || m_table > trailer || m_count > (trailer - m_table) / m_offsetSize)
        fail("found the table of " + std::to_string(m_count) + " offsets at " + std::to_string(m_table) + ", expected it inside the " + std::to_string(m_data.size())
            + " bytes of the file");
    if (m_top >= m_count)
        fail("found value " + std::to_string(m_top) + " as the outermost one, expected one of " + std::to_string(m_count));
}

void BinaryReader::checkSpace(std::uint64_t object, std::uint64_t offset, std::uint64_t count, std::uint64_t size) const
{
    // The values lie before the table of offsets.
    if (offset > m_table || count > (m_table - offset) / size)
        fail(object,
            "found " + std::to_string(count) + " elements of " + std::to_string(size) + " bytes at " + std::to_string(offset) + ", expected them to end before "
                + std::to_string(m_table));
}

std::uint64_t BinaryReader::readCount(std::uint64_t object, std::uint64_t& offset) const
{
    const unsigned shortCount = byteAt(offset) & 0xFU;
    ++offset;
    if (shortCount != kLongCount)
        return shortCount;
    checkSpace(object, offset, 1, 1);
    const unsigned marker = byteAt(offset);
    if (marker < 0x10U || marker > 0x13U)
        fail(object, "found marker " + std::to_string(marker) + " for the count, expected a whole number of 1 to 8 bytes");
    const std::uint64_t size = std::uint64_t{1} << (marker & 0xFU);
    ++offset;
    checkSpace(object, offset, 1, size);
    const std::uint64_t count = numberAt(offset, size);
    offset += size;
    return count;
}

void BinaryReader::checkWholeNumber(std::uint64_t object, std::uint64_t offset, std::uint64_t size) const
{
    if (size < 16)
        return;
    const std::uint64_t high = numberAt(offset, 8);
    const bool negative = (byteAt(offset + 8) & 0x80U) != 0;
    if (high != (negative ? ~std::uint64_t{0} : 0))
        fail(object, "found a whole number beyond 64 bits with sign, expected a smaller one");
}

void BinaryReader::checkReference(std::uint64_t object, std::uint64_t offset, std::uint64_t size) const
{
    if (numberAt(offset, size) > 0xFFFFFFFFU)
        fail(object, "found a reference to object " + std::to_string(numberAt(offset, size)) + ", expected a number of 32 bits");
}

void BinaryReader::checkAscii(std::uint64_t object, std::uint64_t offset, std::uint64_t count) const
{
    const auto text = m_data.subspan(offset, count);
    const bool plain = std::all_of(text.begin(), text.end(), [](std::byte one) { return one != std::byte{0} && one < std::byte{0x80}; });
    if (!plain)
        fail(object, "found a text with a zero character or one that is not ASCII in a text of that kind");
}

void BinaryReader::checkUtf16(std::uint64_t object, std::uint64_t offset, std::uint64_t count) const
{
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::uint64_t unit = numberAt(offset + 2 * i, 2);
        if (unit == 0)
            fail(object, "found a zero character in a text, expected none");
        if ((unit & 0xF800U) != 0xD800U)
            continue;
        const bool pairs = unit < 0xDC00U && i + 1 < count && (numberAt(offset + 2 * (i + 1), 2) & 0xFC00U) == 0xDC00U;
        if (!pairs)
            fail(object, "found half of a surrogate pair in a text, expected both");
        ++i;
    }
}

Layout BinaryReader::layoutOf(std::uint64_t object) const
{
    const std::uint64_t offset = offsetOf(object);
    if (offset < kMagic.size() || offset >= m_table)
        fail(object, "found it at offset " + std::to_string(offset) + ", expected one between " + std::to_string(kMagic.size()) + " and " + std::to_string(m_table));
    switch (byteAt(offset) >> 4U) {
    case 0x4: return countedLayout(object, offset, Layout::Kind::Bytes, 1);
    case 0x5: return countedLayout(object, offset, Layout::Kind::Ascii, 1);
    case 0x6: return countedLayout(object, offset, Layout::Kind::Utf16, 2);
    case 0xA: return countedLayout(object, offset, Layout::Kind::Array, m_referenceSize);
    case 0xD: return countedLayout(object, offset, Layout::Kind::Dictionary, std::uint64_t{2} * m_referenceSize);
    default: return fixedLayout(object, offset);
    }
}

/// Booleans, numbers, dates and references: the marker says how many bytes follow.
Layout BinaryReader::fixedLayout(std::uint64_t object, std::uint64_t offset) const
{
    const unsigned marker = byteAt(offset);
    const unsigned low = marker & 0xFU;
    const bool isBoolean = marker == 0x08 || marker == 0x09;
    const bool isWholeNumber = marker >= 0x10 && marker <= 0x14;
    const bool isNumber = marker == 0x22 || marker == 0x23;
    const bool isDate = marker == 0x33;
    const bool isReference = marker >= 0x80 && marker <= 0x87;
    if (!isBoolean && !isWholeNumber && !isNumber && !isDate && !isReference)
        fail(object, "found marker " + std::to_string(marker) + ", expected a boolean, number, date, text, list, dictionary, reference or bytes");
    Layout layout;
    layout.data = offset + 1;
    if (isBoolean)
        return layout;
    layout.payload = isReference ? low + 1U : std::uint64_t{1} << low;
    checkSpace(object, layout.data, 1, layout.payload);
    if (isWholeNumber)
        checkWholeNumber(object, layout.data, layout.payload);
    if (isReference)
        checkReference(object, layout.data, layout.payload);
    return layout;
}

/// Bytes, texts, arrays and dictionaries: a count of elements, then these.
Layout BinaryReader::countedLayout(std::uint64_t object, std::uint64_t offset, Layout::Kind kind, std::uint64_t size) const
{
    const std::uint64_t count = readCount(object, offset);
    checkSpace(object, offset, count, size);
    Layout layout;
    layout.kind = kind;
    layout.data = offset;
    if (kind == Layout::Kind::Array) {
        layout.references = count;
    } else if (kind == Layout::Kind::Dictionary) {
        layout.references = 2 * count;
        layout.keys = count;
    } else {
        layout.payload = count * size;
    }
    return layout;
}

void BinaryReader::chargeWork(const Layout& layout)
{
    // Values may lie over one another in a file that was made for it, so the work is not bounded by the file's size.
    m_workReferences += layout.references;
    m_workBytes += layout.payload;
    if (m_workReferences > m_limits.objects)
        fail("found more than " + std::to_string(m_limits.objects) + " values, expected fewer");
    if (m_workBytes > m_limits.bytes)
        fail("found values of more than " + std::to_string(m_limits.bytes) + " bytes, expected fewer");
}

void BinaryReader::open(std::uint64_t object)
{
    if (m_path.size() >= kMaximumNesting)
        fail(object, "found more than " + std::to_string(kMaximumNesting) + " lists and dictionaries inside one another, expected fewer");
    const Layout layout = layoutOf(object);
    chargeWork(layout);
    if (layout.kind == Layout::Kind::Ascii)
        checkAscii(object, layout.data, layout.payload);
    if (layout.kind == Layout::Kind::Utf16)
        checkUtf16(object, layout.data, layout.payload / 2);
    m_layouts[object] = layout;
    m_states[object] = State::Open;
    m_extents[object] = {1, layout.payload, 1};
    m_path.push_back({object, 0});
}

void BinaryReader::include(const Step& step, std::uint64_t child)
{
    if (step.next < m_layouts[step.object].keys && !m_layouts[child].isText())
        fail(step.object, "found a key that is not a text, expected a text");
    Extent& whole = m_extents[step.object];
    const Extent& part = m_extents[child];
    whole.height = std::max(whole.height, part.height + 1);
    // Compared before adding, since sharing doubles the numbers with every level.
    if (part.nodes > m_limits.objects || whole.nodes > m_limits.objects - part.nodes)
        fail(step.object, "found more than " + std::to_string(m_limits.objects) + " values in it, shared ones repeated, expected fewer");
    if (part.bytes > m_limits.bytes || whole.bytes > m_limits.bytes - part.bytes)
        fail(step.object, "found more than " + std::to_string(m_limits.bytes) + " bytes in it, shared values repeated, expected fewer");
    if (whole.height > kMaximumNesting)
        fail(step.object, "found more than " + std::to_string(kMaximumNesting) + " lists and dictionaries inside one another, expected fewer");
    whole.nodes += part.nodes;
    whole.bytes += part.bytes;
}

void BinaryReader::walk()
{
    open(m_top);
    while (!m_path.empty()) {
        Step& step = m_path.back();
        const Layout& layout = m_layouts[step.object];
        if (step.next == layout.references) {
            m_states[step.object] = State::Done;
            m_path.pop_back();
            continue;
        }
        const std::uint64_t child = childOf(layout, step.next);
        if (child >= m_count)
            fail(step.object, "found a reference to value " + std::to_string(child) + ", expected one of " + std::to_string(m_count));
        if (m_states[child] == State::Open)
            fail(step.object, "found value " + std::to_string(child) + " inside itself, expected no circle");
        if (m_states[child] == State::Unseen) {
            open(child);
            continue;
        }
        include(step, child);
        ++step.next;
    }
}

std::uint64_t BinaryReader::childOf(const Layout& layout, std::uint64_t index) const
{
    return numberAt(layout.data + index * m_referenceSize, m_referenceSize);
}

// After the walk, which has checked all that these rely on.

std::string BinaryReader::bytesOf(const Layout& layout) const
{
    const auto bytes = m_data.subspan(layout.data, layout.payload);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string BinaryReader::textOf(const Layout& layout) const
{
    if (layout.kind == Layout::Kind::Ascii)
        return bytesOf(layout);
    std::string text;
    for (std::uint64_t at = layout.data; at < layout.data + layout.payload; at += 2) {
        auto code = static_cast<std::uint32_t>(numberAt(at, 2));
        if ((code & 0xF800U) == 0xD800U) {
            at += 2;
            code = 0x10000U + ((code & 0x3FFU) << 10U | static_cast<std::uint32_t>(numberAt(at, 2) & 0x3FFU));
        }
        appendCodePoint(text, code);
    }
    return text;
}

Value BinaryReader::fixedValue(std::uint64_t offset) const
{
    const unsigned marker = byteAt(offset);
    const unsigned low = marker & 0xFU;
    switch (marker >> 4U) {
    case 0x0: return {marker == 0x09};
    // Up to four bytes are without a sign; of sixteen the lower eight say everything.
    case 0x1: return {static_cast<std::int64_t>(marker == 0x14 ? numberAt(offset + 9, 8) : numberAt(offset + 1, std::uint64_t{1} << low))};
    case 0x2:
        return {marker == 0x22 ? static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(numberAt(offset + 1, 4)))) : std::bit_cast<double>(numberAt(offset + 1, 8))};
    case 0x3: return {Date{std::bit_cast<double>(numberAt(offset + 1, 8))}};
    default: return {Reference{numberAt(offset + 1, low + 1U)}};
    }
}

/// Recursive: nesting has been bounded.
Value BinaryReader::valueOf(std::uint64_t object) const
{
    const Layout& layout = m_layouts[object];
    switch (layout.kind) {
    case Layout::Kind::Fixed: return fixedValue(offsetOf(object));
    case Layout::Kind::Bytes: return {Data{bytesOf(layout)}};
    case Layout::Kind::Ascii:
    case Layout::Kind::Utf16: return {textOf(layout)};
    case Layout::Kind::Array: {
        Array elements;
        elements.reserve(layout.references);
        for (std::uint64_t i = 0; i < layout.references; ++i)
            elements.push_back(valueOf(childOf(layout, i)));
        return {std::move(elements)};
    }
    case Layout::Kind::Dictionary: break;
    }
    Dictionary entries;
    entries.reserve(layout.keys);
    for (std::uint64_t i = 0; i < layout.keys; ++i)
        entries.push_back({textOf(m_layouts[childOf(layout, i)]), valueOf(childOf(layout, layout.keys + i))});
    return {std::move(entries)};
}

} // namespace

Value readBinaryPropertyList(std::span<const std::byte> data, const ArchiveLimits& limits)
{
    if (data.size() > limits.bytes)
        throw ArchiveError("binary property list: found " + std::to_string(data.size()) + " bytes, expected at most " + std::to_string(limits.bytes));
    return BinaryReader(data, limits).run();
}

} // namespace TOLVGraphing::plist
