#include "Json.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <system_error>

namespace TOLVGraphing::testing_support {

namespace {

constexpr int kMaximumDepth = 200;

const char* nameOf(Json::Kind kind)
{
    switch (kind) {
    case Json::Kind::Null: return "null";
    case Json::Kind::Boolean: return "a boolean";
    case Json::Kind::Number: return "a number";
    case Json::Kind::Text: return "a text";
    case Json::Kind::List: return "a list";
    case Json::Kind::Object: return "an object";
    }
    return "";
}

std::optional<double> specialNumber(const std::string& text)
{
    if (text == "NaN")
        return std::numeric_limits<double>::quiet_NaN();
    if (text == "Infinity")
        return std::numeric_limits<double>::infinity();
    if (text == "-Infinity")
        return -std::numeric_limits<double>::infinity();
    return std::nullopt;
}

template <typename Integer>
Integer integerOf(const std::string& digits)
{
    Integer result = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, result);
    if (error != std::errc() || stop != end)
        throw JsonError(digits + " is not a whole number in range");
    return result;
}

void appendUtf8(std::string& text, std::uint32_t code)
{
    const auto add = [&](std::uint32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (code < 0x80U) {
        add(code);
    } else if (code < 0x800U) {
        add(0xC0U | (code >> 6U));
        add(0x80U | (code & 0x3FU));
    } else if (code < 0x10000U) {
        add(0xE0U | (code >> 12U));
        add(0x80U | ((code >> 6U) & 0x3FU));
        add(0x80U | (code & 0x3FU));
    } else {
        add(0xF0U | (code >> 18U));
        add(0x80U | ((code >> 12U) & 0x3FU));
        add(0x80U | ((code >> 6U) & 0x3FU));
        add(0x80U | (code & 0x3FU));
    }
}

} // namespace

/// A descent over the text, one value at a time.
class JsonReader {
public:
    explicit JsonReader(std::string_view text) : m_text(text) {}

    Json readAll()
    {
        Json value = readValue(0);
        skipBlanks();
        if (m_at != m_text.size())
            fail("the end of the text");
        return value;
    }

private:
    [[noreturn]] void fail(const std::string& expected) const
    {
        const auto before = m_text.substr(0, m_at);
        const auto line = std::count(before.begin(), before.end(), '\n') + 1;
        const std::size_t lineStart = before.rfind('\n');
        const std::size_t column = lineStart == std::string_view::npos ? m_at + 1 : m_at - lineStart;
        throw JsonError(std::to_string(line) + ":" + std::to_string(column) + ": expected " + expected);
    }

    [[nodiscard]] char peek() const { return m_at < m_text.size() ? m_text[m_at] : '\0'; }

    void skipBlanks()
    {
        while (m_at < m_text.size() && std::string_view(" \t\r\n").find(m_text[m_at]) != std::string_view::npos)
            ++m_at;
    }

    bool take(std::string_view token)
    {
        if (m_text.substr(m_at, token.size()) != token)
            return false;
        m_at += token.size();
        return true;
    }

    void require(std::string_view token)
    {
        skipBlanks();
        if (!take(token))
            fail("\"" + std::string(token) + "\"");
    }

    Json readValue(int depth)
    {
        if (depth > kMaximumDepth)
            fail("fewer levels");
        skipBlanks();
        Json value;
        switch (peek()) {
        case '{': readObject(value, depth); break;
        case '[': readList(value, depth); break;
        case '"':
            value.m_kind = Json::Kind::Text;
            value.m_text = readText();
            break;
        case 't':
        case 'f': readBoolean(value); break;
        case 'n':
            if (!take("null"))
                fail("a value");
            break;
        default: readNumber(value); break;
        }
        return value;
    }

    void readBoolean(Json& value)
    {
        value.m_kind = Json::Kind::Boolean;
        if (take("true"))
            value.m_boolean = true;
        else if (!take("false"))
            fail("a value");
    }

    void takeDigits()
    {
        if (peek() < '0' || peek() > '9')
            fail("a digit");
        while (peek() >= '0' && peek() <= '9')
            ++m_at;
    }

    void readNumber(Json& value)
    {
        const std::size_t start = m_at;
        take("-");
        if (!take("0"))
            takeDigits();
        if (take("."))
            takeDigits();
        if (take("e") || take("E")) {
            if (!take("+"))
                take("-");
            takeDigits();
        }
        value.m_kind = Json::Kind::Number;
        value.m_text = std::string(m_text.substr(start, m_at - start));
    }

    std::uint32_t readHexadecimal()
    {
        std::uint32_t code = 0;
        const char* first = m_text.data() + m_at;
        if (m_at + 4 > m_text.size() || std::from_chars(first, first + 4, code, 16).ptr != first + 4)
            fail("four hexadecimal digits");
        m_at += 4;
        return code;
    }

    void readEscape(std::string& text)
    {
        static constexpr std::string_view kLetters = "\"\\/bfnrt";
        static constexpr std::string_view kCharacters = "\"\\/\b\f\n\r\t";
        const std::size_t letter = kLetters.find(peek());
        if (m_at < m_text.size() && letter != std::string_view::npos) {
            text += kCharacters[letter];
            ++m_at;
            return;
        }
        if (!take("u"))
            fail("an escape");
        std::uint32_t code = readHexadecimal();
        if (code >= 0xDC00U && code < 0xE000U)
            fail("the first half of a surrogate pair");
        if (code >= 0xD800U && code < 0xDC00U) {
            const std::uint32_t second = take("\\u") ? readHexadecimal() : 0;
            if (second < 0xDC00U || second >= 0xE000U)
                fail("the second half of a surrogate pair");
            code = 0x10000U + ((code - 0xD800U) << 10U) + (second - 0xDC00U);
        }
        appendUtf8(text, code);
    }

    std::string readText()
    {
        std::string text;
        ++m_at;
        while (!take("\"")) {
            if (m_at >= m_text.size() || static_cast<unsigned char>(peek()) < 0x20U)
                fail("a closing quotation mark");
            if (take("\\"))
                readEscape(text);
            else
                text += m_text[m_at++];
        }
        return text;
    }

    void readList(Json& value, int depth)
    {
        value.m_kind = Json::Kind::List;
        require("[");
        skipBlanks();
        if (take("]"))
            return;
        for (;;) {
            value.m_elements.push_back(readValue(depth + 1));
            skipBlanks();
            if (take("]"))
                return;
            require(",");
        }
    }

    void readObject(Json& value, int depth)
    {
        value.m_kind = Json::Kind::Object;
        require("{");
        skipBlanks();
        if (take("}"))
            return;
        for (;;) {
            skipBlanks();
            if (peek() != '"')
                fail("a key");
            std::string key = readText();
            if (value.find(key))
                fail("another key than \"" + key + "\" a second time");
            require(":");
            Json member = readValue(depth + 1);
            value.m_members.emplace_back(std::move(key), std::move(member));
            skipBlanks();
            if (take("}"))
                return;
            require(",");
        }
    }

    std::string_view m_text;
    std::size_t m_at = 0;
};

Json Json::parse(std::string_view text)
{
    return JsonReader(text).readAll();
}

void Json::require(Kind kind) const
{
    if (m_kind != kind)
        throw JsonError(std::string("found ") + nameOf(m_kind) + " where " + nameOf(kind) + " was expected");
}

bool Json::isNumber() const
{
    return m_kind == Kind::Number || (m_kind == Kind::Text && specialNumber(m_text));
}

bool Json::boolean() const
{
    require(Kind::Boolean);
    return m_boolean;
}

const std::string& Json::text() const
{
    require(Kind::Text);
    return m_text;
}

const std::string& Json::numberText() const
{
    require(Kind::Number);
    return m_text;
}

double Json::number() const
{
    if (m_kind == Kind::Text) {
        if (const auto special = specialNumber(m_text))
            return *special;
    }
    require(Kind::Number);
    double result = 0.0;
    const char* end = m_text.data() + m_text.size();
    const auto [stop, error] = std::from_chars(m_text.data(), end, result);
    if (error != std::errc() || stop != end)
        throw JsonError(m_text + " is out of a double's range");
    return result;
}

std::int64_t Json::integer() const
{
    return integerOf<std::int64_t>(numberText());
}

std::uint64_t Json::unsignedInteger() const
{
    return integerOf<std::uint64_t>(numberText());
}

const std::vector<Json>& Json::elements() const
{
    require(Kind::List);
    return m_elements;
}

const Json& Json::operator[](std::size_t index) const
{
    if (index >= size())
        throw JsonError("a list of " + std::to_string(size()) + " has no element " + std::to_string(index));
    return m_elements[index];
}

const std::vector<Json::Member>& Json::members() const
{
    require(Kind::Object);
    return m_members;
}

const Json* Json::find(std::string_view key) const
{
    const auto& all = members();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Member& member) { return member.first == key; });
    return found == all.end() ? nullptr : &found->second;
}

const Json& Json::operator[](std::string_view key) const
{
    const Json* found = find(key);
    if (!found)
        throw JsonError("there is no \"" + std::string(key) + "\"");
    return *found;
}

} // namespace TOLVGraphing::testing_support
