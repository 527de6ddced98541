#include "XmlPropertyListReader.h"

#include "PropertyListScalars.h"
#include "TOLVGraphing/platform/foundation/KeyedArchive.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TOLVGraphing::plist {

namespace {

constexpr std::string_view kSpaces = " \t\r\n";

struct Tag {
    std::string name;
    bool closes = false;
    bool isEmpty = false;
};

class XmlReader {
public:
    XmlReader(std::string_view text, const ArchiveLimits& limits) : m_text(text), m_limits(limits) {}

    Value run();

private:
    /// An array or a dictionary whose end has not been reached.
    struct Container {
        std::string name;
        Value value;
        std::optional<std::string> key;
        /// Those of a dictionary so far.
        std::set<std::string, std::less<>> keys;

        [[nodiscard]] bool isDictionary() const { return value.as<Dictionary>() != nullptr; }
    };

    [[noreturn]] void fail(const std::string& text) const;
    [[nodiscard]] bool startsWith(std::string_view token) const { return m_text.substr(m_at).starts_with(token); }
    void skipPast(std::string_view token, const std::string& what);
    void skipSpaces();
    void skipBetweenElements();
    void readDeclaration();
    void skipDocumentType();
    [[nodiscard]] Tag readTag();
    [[nodiscard]] std::string readText(const Tag& tag);
    void appendCharacter(std::string& text);
    void appendEntity(std::string& text);
    void readElement(const Tag& tag);
    [[nodiscard]] Value readLeaf(const Tag& tag);
    void readKey(const Tag& tag);
    void requirePlace();
    void attach(Value value);
    void close(const Tag& tag);

    std::string_view m_text;
    const ArchiveLimits& m_limits;
    std::size_t m_at = 0;
    std::size_t m_elements = 0;
    std::optional<Value> m_root;
    std::vector<Container> m_open;
};

void XmlReader::fail(const std::string& text) const
{
    const auto lines = std::count(m_text.begin(), m_text.begin() + static_cast<std::ptrdiff_t>(std::min(m_at, m_text.size())), '\n');
    throw ArchiveError("XML property list, line " + std::to_string(lines + 1) + ": " + text);
}

void XmlReader::skipPast(std::string_view token, const std::string& what)
{
    const std::size_t found = m_text.find(token, m_at);
    if (found == std::string_view::npos)
        fail("found no end of " + what + ", expected " + std::string(token));
    m_at = found + token.size();
}

void XmlReader::skipSpaces()
{
    m_at = std::min(m_text.find_first_not_of(kSpaces, m_at), m_text.size());
}

void XmlReader::skipBetweenElements()
{
    for (;;) {
        skipSpaces();
        if (startsWith("<!--"))
            skipPast("-->", "a comment");
        else if (startsWith("<?"))
            skipPast("?>", "a processing instruction");
        else
            return;
    }
}

/// The bytes have turned out to be UTF-8. A file that says it is something else would be read as what it is not.
void XmlReader::readDeclaration()
{
    if (!startsWith("<?xml") || kSpaces.find(m_text.substr(m_at + 5).substr(0, 1)) == std::string_view::npos)
        return;
    const std::size_t start = m_at;
    skipPast("?>", "the XML declaration");
    const std::string_view declaration = m_text.substr(start, m_at - start);
    const std::size_t name = declaration.find("encoding");
    const std::size_t open = name == std::string_view::npos ? name : declaration.find_first_of("\"'", name);
    if (open == std::string_view::npos)
        return;
    const std::size_t close = declaration.find(declaration[open], open + 1);
    std::string encoding(declaration.substr(open + 1, close == std::string_view::npos ? close : close - open - 1));
    const std::string found(beginningOf(encoding));
    std::transform(encoding.begin(), encoding.end(), encoding.begin(), [](char one) { return one >= 'a' && one <= 'z' ? static_cast<char>(one - 'a' + 'A') : one; });
    if (encoding != "UTF-8" && encoding != "UTF8" && encoding != "US-ASCII" && encoding != "ASCII")
        fail("found the encoding \"" + found + "\", expected UTF-8");
}

void XmlReader::skipDocumentType()
{
    if (!startsWith("<!DOCTYPE"))
        return;
    const std::size_t end = m_text.find_first_of("[>", m_at);
    if (end != std::string_view::npos && m_text[end] == '[')
        fail("found a document type with declarations of its own, expected none");
    skipPast(">", "the document type");
    skipBetweenElements();
}

Tag XmlReader::readTag()
{
    if (m_at >= m_text.size())
        fail("found the end of the file, expected an element");
    if (m_text[m_at] != '<')
        fail("found text between elements, expected an element");
    ++m_at;
    Tag tag;
    if (startsWith("/")) {
        tag.closes = true;
        ++m_at;
    }
    const std::size_t nameEnd = std::min(m_text.find_first_of(" \t\r\n/><", m_at), m_text.size());
    tag.name = beginningOf(m_text.substr(m_at, nameEnd - m_at));
    m_at = nameEnd;
    char quote = '\0';
    for (; m_at < m_text.size(); ++m_at) {
        const char character = m_text[m_at];
        if (quote != '\0') {
            quote = character == quote ? '\0' : quote;
        } else if (character == '"' || character == '\'') {
            quote = character;
        } else if (character == '<') {
            break;
        } else if (character == '>') {
            tag.isEmpty = !tag.closes && m_text[m_at - 1] == '/';
            ++m_at;
            return tag;
        }
    }
    fail("found no end of the tag " + tag.name + ", expected >");
}

void XmlReader::appendEntity(std::string& text)
{
    const std::size_t end = m_text.find(';', m_at);
    const std::string_view name = end == std::string_view::npos ? std::string_view() : m_text.substr(m_at + 1, end - m_at - 1);
    static constexpr std::pair<std::string_view, char> kNamed[] = {{"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};
    const auto* const named = std::find_if(std::begin(kNamed), std::end(kNamed), [&](const auto& one) { return one.first == name; });
    if (named != std::end(kNamed)) {
        text += named->second;
    } else {
        const bool isNumber = name.size() > 1 && name[0] == '#';
        const bool isHexadecimal = isNumber && name[1] == 'x';
        const std::string_view digits = name.substr(isHexadecimal ? 2 : (isNumber ? 1 : 0));
        std::uint32_t code = 0;
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), code, isHexadecimal ? 16 : 10);
        const bool isComplete = isNumber && read.ec == std::errc() && read.ptr == digits.data() + digits.size();
        if (!isComplete || !appendCodePoint(text, code))
            fail("found &" + std::string(beginningOf(name)) + ", expected &lt; &gt; &amp; &quot; &apos; or a numbered character such as &#233;");
    }
    m_at = end + 1;
}

void XmlReader::appendCharacter(std::string& text)
{
    const char character = m_text[m_at];
    if (character == '&') {
        appendEntity(text);
        return;
    }
    ++m_at;
    // Line ends are newlines, however the file was stored.
    if (character != '\r')
        text += character;
    else if (!startsWith("\n"))
        text += '\n';
}

std::string XmlReader::readText(const Tag& tag)
{
    std::string text;
    if (tag.isEmpty)
        return text;
    while (m_at < m_text.size()) {
        if (startsWith("<!--")) {
            skipPast("-->", "a comment");
        } else if (startsWith("<![CDATA[")) {
            const std::size_t start = m_at + 9;
            skipPast("]]>", "a CDATA section");
            text += m_text.substr(start, m_at - 3 - start);
        } else if (startsWith("<")) {
            const Tag end = readTag();
            if (!end.closes || end.name != tag.name)
                fail("found <" + end.name + "> in a " + tag.name + ", expected </" + tag.name + ">");
            return text;
        } else {
            appendCharacter(text);
        }
    }
    fail("found the end of the file, expected </" + tag.name + ">");
}

Value XmlReader::readLeaf(const Tag& tag)
{
    const std::string text = readText(tag);
    const auto reject = [&](const std::string& expected) { fail("found \"" + std::string(beginningOf(text)) + "\" in <" + tag.name + ">, expected " + expected); };
    if (tag.name == "string")
        return {text};
    if (tag.name == "integer") {
        const auto number = wholeNumberFromText(text);
        if (!number)
            reject("a whole number of 64 bits with sign");
        return {*number};
    }
    if (tag.name == "real") {
        const auto number = numberFromText(text);
        if (!number)
            reject("a number");
        return {*number};
    }
    if (tag.name == "data") {
        const auto bytes = bytesFromBase64(text);
        if (!bytes)
            reject("base64");
        return {Data{*bytes}};
    }
    if (tag.name == "date") {
        const auto seconds = secondsFromDate(text);
        if (!seconds)
            reject("a date such as 2013-03-18T09:30:00Z between 1933 and 2068");
        return {Date{static_cast<double>(*seconds)}};
    }
    if (tag.name != "true" && tag.name != "false")
        fail("found <" + tag.name + ">, expected dict, array, key, string, integer, real, true, false, data or date");
    if (text.find_first_not_of(kSpaces) != std::string::npos)
        reject("nothing");
    return {tag.name == "true"};
}

void XmlReader::readKey(const Tag& tag)
{
    if (m_open.empty() || !m_open.back().isDictionary() || m_open.back().key)
        fail("found a key, expected a value");
    m_open.back().key = readText(tag);
}

void XmlReader::attach(Value value)
{
    if (m_open.empty()) {
        m_root = std::move(value);
        return;
    }
    Container& container = m_open.back();
    if (auto* elements = std::get_if<Array>(&container.value.content)) {
        elements->push_back(std::move(value));
        return;
    }
    std::get<Dictionary>(container.value.content).push_back({*std::move(container.key), std::move(value)});
    container.key.reset();
}

/// Before a value is read: whether there may be one.
void XmlReader::requirePlace()
{
    if (m_open.empty()) {
        if (m_root)
            fail("found a second value, expected </plist>");
        return;
    }
    Container& container = m_open.back();
    if (!container.isDictionary())
        return;
    if (!container.key)
        fail("found a value, expected a key");
    if (!container.keys.insert(*container.key).second)
        fail("found the key \"" + std::string(beginningOf(*container.key)) + "\" twice in one dictionary, expected it once");
}

void XmlReader::readElement(const Tag& tag)
{
    if (++m_elements > m_limits.objects)
        fail("found more than " + std::to_string(m_limits.objects) + " elements, expected fewer");
    if (tag.name == "key") {
        readKey(tag);
        return;
    }
    const bool isArray = tag.name == "array";
    if (!isArray && tag.name != "dict") {
        Value leaf = readLeaf(tag);
        requirePlace();
        attach(std::move(leaf));
        return;
    }
    requirePlace();
    Value container = isArray ? Value{Array()} : Value{Dictionary()};
    if (tag.isEmpty) {
        attach(std::move(container));
        return;
    }
    if (m_open.size() >= kMaximumNesting)
        fail("found more than " + std::to_string(kMaximumNesting) + " arrays and dictionaries inside one another, expected fewer");
    m_open.push_back({tag.name, std::move(container), std::nullopt, {}});
}

void XmlReader::close(const Tag& tag)
{
    const std::string expected = m_open.empty() ? "plist" : m_open.back().name;
    if (tag.name != expected)
        fail("found </" + tag.name + ">, expected </" + expected + ">");
    if (m_open.empty())
        return;
    if (m_open.back().key)
        fail("found no value after the key \"" + std::string(beginningOf(*m_open.back().key)) + "\", expected one");
    Value complete = std::move(m_open.back().value);
    m_open.pop_back();
    attach(std::move(complete));
}

Value XmlReader::run()
{
    if (startsWith("\xEF\xBB\xBF"))
        m_at = 3;
    skipSpaces();
    readDeclaration();
    skipBetweenElements();
    skipDocumentType();
    const Tag start = readTag();
    if (start.name != "plist" || start.closes || start.isEmpty)
        fail("found <" + start.name + ">, expected <plist>");
    for (;;) {
        skipBetweenElements();
        const Tag tag = readTag();
        if (!tag.closes) {
            readElement(tag);
            continue;
        }
        const bool isLast = m_open.empty();
        close(tag);
        if (isLast)
            break;
    }
    if (!m_root)
        fail("found no value in <plist>, expected one");
    skipBetweenElements();
    if (m_at < m_text.size())
        fail("found something after </plist>, expected the end of the file");
    return *std::move(m_root);
}

} // namespace

Value readXmlPropertyList(std::span<const std::byte> data, const ArchiveLimits& limits)
{
    if (data.size() > limits.bytes)
        throw ArchiveError("XML property list: found " + std::to_string(data.size()) + " bytes, expected at most " + std::to_string(limits.bytes));
    const std::string_view text(reinterpret_cast<const char*>(data.data()), data.size());
    if (!isStorableText(text))
        throw ArchiveError("XML property list: found bytes that are not UTF-8 text, expected UTF-8");
    return XmlReader(text, limits).run();
}

} // namespace TOLVGraphing::plist
