#pragma once

#include <memory>
#include <plist/plist.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TOLVGraphing::plist {

struct NodeDeleter {
    void operator()(void* node) const { plist_free(node); }
};

/// A property list tree that is owned.
using OwnedNode = std::unique_ptr<void, NodeDeleter>;

/// The elements of an array in order; they belong to the array.
[[nodiscard]] std::vector<plist_t> arrayElements(plist_t array);
/// The entries of a dictionary in order; the values belong to the dictionary.
[[nodiscard]] std::vector<std::pair<std::string, plist_t>> dictionaryEntries(plist_t dictionary);

/// The text of a string node.
[[nodiscard]] std::string_view textOf(plist_t string);

/// True when the bytes are well-formed UTF-8 without a zero character, which is what a property list can keep.
[[nodiscard]] bool isStorableText(std::string_view text);

/// "a text", "a list", "a reference", ...: how error texts name a node; "nothing" for null.
[[nodiscard]] std::string describe(plist_t node);

} // namespace TOLVGraphing::plist
