#pragma once

#include "TOLVGraphing/platform/foundation/KeyedArchive.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <plist/plist.h>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace TOLVGraphing::plist {

struct NodeDeleter {
    void operator()(void* node) const { plist_free(node); }
};

/// A tree that is going to be written, owned.
using OwnedNode = std::unique_ptr<void, NodeDeleter>;

/// Lays archived objects out as the property list of a keyed archive. One writer writes one archive.
class KeyedObjectWriter {
public:
    /// The whole tree. Throws ArchiveError when an object contains itself, is nested too deeply or has a text that cannot be stored.
    [[nodiscard]] OwnedNode write(const std::shared_ptr<ArchiveObject>& root);

private:
    using Number = std::uint64_t;

    /// Where an object or list stands in the list of objects.
    struct Place {
        Number number = 0;
        bool isComplete = false;
    };

    [[nodiscard]] Number numberOf(const ArchiveValue& value, std::size_t depth);
    [[nodiscard]] Number numberOfText(const std::string& text);
    [[nodiscard]] Number numberOfObject(const std::shared_ptr<ArchiveObject>& object, std::size_t depth);
    [[nodiscard]] Number numberOfList(const std::shared_ptr<ArchiveArray>& list, std::size_t depth);
    [[nodiscard]] Number numberOfClass(const std::string& name, const std::vector<std::string>& baseNames);
    [[nodiscard]] Number append(OwnedNode node);
    [[nodiscard]] Place* placeFor(const void* value, std::size_t depth, const std::string& description);
    void checkText(const std::string& text, std::string_view what) const;

    std::vector<OwnedNode> m_objects;
    std::unordered_map<const void*, Place> m_places;
    std::unordered_map<std::string, Number> m_texts;
    std::map<std::vector<std::string>, Number> m_classes;
    /// Where the writer is, for error texts: the class and key of the value at hand.
    std::string m_where;
};

} // namespace TOLVGraphing::plist
