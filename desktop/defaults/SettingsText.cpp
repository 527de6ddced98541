#include "SettingsText.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>

namespace TOLVGraphing::defaults {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kHexadecimalDigits = "0123456789ABCDEF";
constexpr std::uint32_t kLastCharacter = 0x10FFFF;
constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD";

bool isBlank(char character)
{
    return character == ' ' || character == '\t' || character == '\r';
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool isGeneral(std::string_view header)
{
    static constexpr std::string_view name = "[general]";
    return std::equal(header.begin(), header.end(), name.begin(), name.end(),
        [](char character, char expected) { return (character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character) == expected; });
}

bool isPlainInKey(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') || (character >= '0' && character <= '9') || character == '_' || character == '.'
        || character == '-';
}

bool isHexadecimalDigit(char character)
{
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'f') || (character >= 'A' && character <= 'F');
}

/// The number of the hexadecimal digits; the last representable one for longer ones.
std::uint32_t hexadecimalNumber(std::string_view digits)
{
    std::uint32_t number = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    return result.ec == std::errc() ? number : UINT32_MAX;
}

std::string writtenKey(std::string_view key)
{
    std::string text;
    for (const char character : key) {
        if (isPlainInKey(character)) {
            text += character;
        } else {
            const auto byte = static_cast<unsigned char>(character);
            text += {'%', kHexadecimalDigits[byte / 16U], kHexadecimalDigits[byte % 16U]};
        }
    }
    return text;
}

std::string readKey(std::string_view text)
{
    std::string key;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 2 < text.size() && isHexadecimalDigit(text[i + 1]) && isHexadecimalDigit(text[i + 2])) {
            key += static_cast<char>(hexadecimalNumber(text.substr(i + 1, 2)));
            i += 2;
        } else {
            key += text[i];
        }
    }
    return key;
}

std::string writtenValue(std::string_view value)
{
    static constexpr std::string_view quoted = ";,=\"";
    const bool needsQuotes = value.find_first_of(quoted) != std::string_view::npos || trimmed(value).size() != value.size();
    std::string text;
    bool followsNumber = false;
    for (const char character : value) {
        const auto byte = static_cast<unsigned char>(character);
        // A digit behind an escaped number would be read as a part of it.
        const bool needsNumber = byte < 0x20U || byte == 0x7FU || (followsNumber && isHexadecimalDigit(character));
        followsNumber = false;
        if (character == '\n') {
            text += "\\n";
        } else if (character == '\r') {
            text += "\\r";
        } else if (character == '\t') {
            text += "\\t";
        } else if (needsNumber) {
            text += {'\\', 'x', kHexadecimalDigits[byte / 16U], kHexadecimalDigits[byte % 16U]};
            followsNumber = true;
        } else {
            if (character == '\\' || character == '"')
                text += '\\';
            text += character;
        }
    }
    return needsQuotes ? '"' + text + '"' : text;
}

void appendCharacter(std::string& text, std::uint32_t code)
{
    const auto add = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
    const auto addFollowing = [&](unsigned shift) { add(0x80U | (code >> shift & 0x3FU)); };
    if (code > kLastCharacter || (code >= 0xD800 && code <= 0xDFFF)) {
        text += kReplacementCharacter;
    } else if (code < 0x80) {
        add(code);
    } else if (code < 0x800) {
        add(0xC0U | code >> 6U);
        addFollowing(0);
    } else if (code < 0x10000) {
        add(0xE0U | code >> 12U);
        addFollowing(6);
        addFollowing(0);
    } else {
        add(0xF0U | code >> 18U);
        addFollowing(12);
        addFollowing(6);
        addFollowing(0);
    }
}

/// Reads what stands behind a '\' and removes it from the text.
void appendEscaped(std::string& value, std::string_view& text)
{
    static constexpr std::string_view letters = "nrt";
    static constexpr std::string_view meanings = "\n\r\t";
    const char kind = text.front();
    text.remove_prefix(1);
    if (kind == 'x') {
        const auto* const end = std::find_if_not(text.begin(), text.end(), isHexadecimalDigit);
        const auto length = static_cast<std::size_t>(end - text.begin());
        appendCharacter(value, hexadecimalNumber(text.substr(0, length)));
        text.remove_prefix(length);
        return;
    }
    const std::size_t index = letters.find(kind);
    value += index == std::string_view::npos ? kind : meanings[index];
}

std::string readValue(std::string_view text)
{
    std::string value;
    while (!text.empty()) {
        const char character = text.front();
        text.remove_prefix(1);
        if (character == '\\' && !text.empty())
            appendEscaped(value, text);
        else if (character != '"')
            value += character;
    }
    return value;
}

} // namespace

SettingsText::SettingsText(std::string_view text)
{
    bool isInGeneral = true;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        m_lines.push_back({std::string(text.substr(start, end - start)), std::nullopt, {}});
        readLine(m_lines.back(), isInGeneral);
        start = end + 1;
    }
}

void SettingsText::readLine(Line& line, bool& isInGeneral)
{
    std::string_view content = line.text;
    if (m_lines.size() == 1 && content.starts_with(kByteOrderMark))
        content.remove_prefix(kByteOrderMark.size());
    content = trimmed(content);
    if (content.empty() || content.front() == ';' || content.front() == '#')
        return;
    if (content.front() == '[' && content.back() == ']') {
        isInGeneral = isGeneral(content);
        if (isInGeneral)
            m_endOfGeneral = m_lines.size();
        return;
    }
    if (!isInGeneral)
        return;
    const std::size_t sign = content.find('=');
    if (sign == std::string_view::npos || sign == 0) {
        m_problems.push_back({m_lines.size(), "expected key=value"});
        return;
    }
    line.key = readKey(trimmed(content.substr(0, sign)));
    line.value = readValue(trimmed(content.substr(sign + 1)));
    m_endOfGeneral = m_lines.size();
}

std::size_t SettingsText::lineOfKey(std::string_view key) const
{
    const auto last = std::find_if(m_lines.rbegin(), m_lines.rend(), [&](const Line& line) { return line.key == key; });
    return static_cast<std::size_t>(std::distance(last, m_lines.rend()));
}

std::optional<std::string> SettingsText::valueForKey(std::string_view key) const
{
    const std::size_t line = lineOfKey(key);
    return line == 0 ? std::nullopt : std::optional(m_lines[line - 1].value);
}

void SettingsText::setValue(std::string_view value, std::string_view key)
{
    const std::string written = writtenKey(key) + "=" + writtenValue(value);
    if (const std::size_t line = lineOfKey(key); line != 0) {
        std::string& text = m_lines[line - 1].text;
        const bool endsInReturn = text.ends_with('\r');
        const bool hasMark = line == 1 && text.starts_with(kByteOrderMark);
        text = (hasMark ? std::string(kByteOrderMark) : std::string()) + written + (endsInReturn ? "\r" : "");
    } else {
        addLine(written);
    }
    *this = SettingsText(this->text());
}

void SettingsText::addLine(const std::string& text)
{
    if (!m_endOfGeneral) {
        // Before the empty line that stands for the '\n' at the end of the file.
        const bool isEmpty = m_lines.size() == 1 && m_lines.front().text.empty();
        auto end = m_lines.back().text.empty() ? m_lines.end() - 1 : m_lines.end();
        if (!isEmpty)
            end = m_lines.insert(end, Line()) + 1;
        end = m_lines.insert(end, Line{"[General]", std::nullopt, {}});
        m_endOfGeneral = static_cast<std::size_t>(end - m_lines.begin()) + 1;
    }
    m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(*m_endOfGeneral), Line{text, std::nullopt, {}});
    if (!m_lines.back().text.empty())
        m_lines.emplace_back();
}

std::string SettingsText::text() const
{
    std::string text;
    for (std::size_t i = 0; i < m_lines.size(); ++i)
        text += (i ? "\n" : "") + m_lines[i].text;
    return text;
}

} // namespace TOLVGraphing::defaults
