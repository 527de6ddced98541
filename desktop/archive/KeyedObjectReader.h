#pragma once

#include "ArchiveLimits.h"
#include "PropertyListNode.h"
#include "TOLVGraphing/platform/foundation/KeyedArchive.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing::plist {

/// Turns the property list of a keyed archive into archived objects. What several references name is made once and shared.
class KeyedObjectReader {
public:
    /// The tree has to outlive the reader. Throws ArchiveError when it has not the outline of a keyed archive.
    KeyedObjectReader(plist_t archive, const ArchiveLimits& limits);

    /// The object under "root" or, without that, the only one in "$top". Null for an archive of nothing.
    [[nodiscard]] std::shared_ptr<ArchiveObject> readRoot();

private:
    using Entries = std::vector<std::pair<std::string, plist_t>>;
    enum class State : unsigned char { Unread, BeingRead, Read };

    /// A value and the number of objects and lists from it down to its deepest part, itself included; zero for scalars.
    struct Reading {
        ArchiveValue value;
        std::size_t height = 0;
    };
    struct Slot {
        plist_t node = nullptr;
        State state = State::Unread;
        Reading reading;
    };
    struct ClassChain {
        std::string name;
        std::vector<std::string> baseNames;

        [[nodiscard]] bool isOrDerivesFrom(std::string_view className) const;
    };

    [[noreturn]] void fail(const std::string& text) const;
    [[nodiscard]] plist_t entryOfType(const Entries& entries, std::string_view key, plist_type type, const std::string& expected) const;
    [[nodiscard]] std::optional<std::uint64_t> referenceIn(plist_t node) const;
    [[nodiscard]] Reading readValue(plist_t node, std::size_t depth);
    [[nodiscard]] Reading readReference(std::uint64_t number, std::size_t depth);
    [[nodiscard]] Reading readList(plist_t array, std::size_t depth);
    [[nodiscard]] Reading readObject(plist_t dictionary, std::size_t depth);
    [[nodiscard]] Reading readString(const Entries& entries, std::size_t depth);
    [[nodiscard]] Reading readDictionary(const Entries& entries, std::size_t depth);
    [[nodiscard]] Reading readElements(const Entries& entries, std::string_view key, std::size_t depth);
    [[nodiscard]] const ClassChain& readClass(plist_t reference);
    [[nodiscard]] Reading boxed(const std::string& className, const std::string& key, ArchiveValue value) const;
    [[nodiscard]] ArchiveValue dateValue(plist_t date) const;
    void checkDepth(std::size_t depth) const;
    void chargeValues(std::size_t count);
    void chargeBytes(std::size_t count);

    const ArchiveLimits m_limits;
    std::vector<Slot> m_slots;
    std::map<std::uint64_t, ClassChain> m_classes;
    plist_t m_root = nullptr;
    /// The objects being read, outermost first: where errors are.
    std::vector<std::uint64_t> m_path;
    std::size_t m_values = 0;
    std::size_t m_bytes = 0;
};

} // namespace TOLVGraphing::plist
