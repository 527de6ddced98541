#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TOLVGraphing::testing_support {

/// A text that is no JSON, or a value that is not of the kind asked for. The text names the place in the first case and the value in the second.
class JsonError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// One JSON value, read strictly: no comments, no trailing commas, no duplicate keys, nothing behind the value, at most 200 levels. A number keeps the text it was written as, so
/// nothing is lost before a test decides how wide it is.
class Json {
public:
    enum class Kind : std::uint8_t { Null, Boolean, Number, Text, List, Object };
    using Member = std::pair<std::string, Json>;

    /// Null.
    Json() = default;
    /// Reads a whole text; throws JsonError "LINE:COLUMN: what was expected".
    [[nodiscard]] static Json parse(std::string_view text);

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] bool isNull() const { return m_kind == Kind::Null; }
    [[nodiscard]] bool isList() const { return m_kind == Kind::List; }
    [[nodiscard]] bool isObject() const { return m_kind == Kind::Object; }
    /// True for a number and for the texts that stand in a number's place.
    [[nodiscard]] bool isNumber() const;
    [[nodiscard]] bool boolean() const;
    [[nodiscard]] const std::string& text() const;

    /// The double nearest to the number as written; "NaN", "Infinity" and "-Infinity" are numbers too.
    [[nodiscard]] double number() const;
    /// The same narrowed to single precision.
    [[nodiscard]] float singleNumber() const { return static_cast<float>(number()); }
    /// A whole number without a decimal point or exponent.
    [[nodiscard]] std::int64_t integer() const;
    [[nodiscard]] std::uint64_t unsignedInteger() const;
    /// A number as it was written.
    [[nodiscard]] const std::string& numberText() const;

    /// The elements of a list.
    [[nodiscard]] const std::vector<Json>& elements() const;
    /// The number of elements of a list.
    [[nodiscard]] std::size_t size() const { return elements().size(); }
    [[nodiscard]] const Json& operator[](std::size_t index) const;
    /// The same, so that a literal 0 is no null pointer.
    [[nodiscard]] const Json& operator[](int index) const { return (*this)[static_cast<std::size_t>(index)]; }

    /// The members of an object in the order written.
    [[nodiscard]] const std::vector<Member>& members() const;
    /// The member of an object, or null (the pointer) when it has none of that key.
    [[nodiscard]] const Json* find(std::string_view key) const;
    /// The member of an object, which has to be there.
    [[nodiscard]] const Json& operator[](std::string_view key) const;
    [[nodiscard]] const Json& operator[](const char* key) const { return (*this)[std::string_view(key)]; }

private:
    friend class JsonReader;

    void require(Kind kind) const;

    Kind m_kind = Kind::Null;
    bool m_boolean = false;
    /// The characters of a text or the digits of a number.
    std::string m_text;
    std::vector<Json> m_elements;
    std::vector<Member> m_members;
};

} // namespace TOLVGraphing::testing_support
