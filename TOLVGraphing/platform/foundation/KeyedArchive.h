#pragma once

#include <TOLVMath/Export.h>

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace TOLVGraphing {

struct ArchiveObject;

struct ArchiveArray;

/// One value of an archive: nothing, a boolean, a whole number, a double (kept to the last bit), a text in UTF-8, an object or a list.
/// Objects and lists are shared: one that is reached on several ways is one object again after reading. One that is null counts as nothing.
using ArchiveValue = std::variant<std::monostate, bool, std::int64_t, double, std::string, std::shared_ptr<ArchiveObject>, std::shared_ptr<ArchiveArray>>;

/// A list inside an archive.
struct ArchiveArray {
    /// In order.
    std::vector<ArchiveValue> elements;
};

/// An archived object: its class, the classes that one derives from (nearest first, without the root class), and its values by key in the order written.
struct TOLV_EXPORT ArchiveObject {
    /// The class's name.
    std::string className;
    /// Nearest first, without the root class.
    std::vector<std::string> baseClassNames;
    /// In the order written; no key is there twice.
    std::vector<std::pair<std::string, ArchiveValue>> values;

    /// The value under the key, or null when there is none; valid until the values change. An absent key and "nothing" under a key differ here.
    [[nodiscard]] const ArchiveValue* find(std::string_view key) const;
};

/// An archive that cannot be read as what it should hold. The text says where, what was found and what was expected.
class ArchiveError : public std::runtime_error {
public:
    /// With its text, which `what()` gives back.
    using std::runtime_error::runtime_error;
};

/// "a text", "a whole number", "an object of class TOLVMarker", ...: how error texts name a value.
[[nodiscard]] TOLV_EXPORT std::string describeArchiveValue(const ArchiveValue& value);

} // namespace TOLVGraphing
