#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace TOLVGraphing::plist {

/// How deep arrays and dictionaries may be nested in a property list itself. In a keyed archive they hardly are: its objects refer to one another by number.
inline constexpr std::size_t kMaximumNesting = 64;

struct Entry;
struct Value;

struct Data {
    std::string bytes;
};

struct Date {
    /// Since the start of 2001.
    double seconds = 0.0;
};

/// A reference to an object of a keyed archive by its number.
struct Reference {
    std::uint64_t number = 0;
};

using Array = std::vector<Value>;
/// In the order of the file.
using Dictionary = std::vector<Entry>;

/// One value of a property list that was read, with all that is in it. Texts are UTF-8 without zero characters; nothing is nested deeper than kMaximumNesting.
struct Value {
    std::variant<bool, std::int64_t, double, std::string, Data, Date, Reference, Array, Dictionary> content;

    /// Null when it is something else.
    template <typename Type>
    [[nodiscard]] const Type* as() const
    {
        return std::get_if<Type>(&content);
    }
};

struct Entry {
    std::string key;
    Value value;
};

/// The value under the key, or null when there is none.
[[nodiscard]] const Value* valueIn(const Dictionary& dictionary, std::string_view key);

/// "a text", "a list", "a reference", ...: how error texts name a value; "nothing" for null.
[[nodiscard]] std::string describe(const Value* value);

} // namespace TOLVGraphing::plist
