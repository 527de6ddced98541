#pragma once

#include "ArchiveLimits.h"
#include "PropertyListValue.h"
#include "TOLVGraphing/platform/foundation/KeyedArchive.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing::plist {

/// Turns the property list of a keyed archive into archived objects. What several references name is made once and shared.
class KeyedObjectReader {
public:
    /// The tree has to outlive the reader. Throws ArchiveError when it has not the outline of a keyed archive.
    KeyedObjectReader(const Value& archive, const ArchiveLimits& limits);

    /// The object under "root" or, without that, the only one in "$top". Null for an archive of nothing.
    [[nodiscard]] std::shared_ptr<ArchiveObject> readRoot();

private:
    enum class State : unsigned char { Unread, BeingRead, Read };

    /// A value and the number of objects and lists from it down to its deepest part, itself included; zero for scalars.
    struct Reading {
        ArchiveValue value;
        std::size_t height = 0;
    };
    struct Slot {
        const Value* value = nullptr;
        State state = State::Unread;
        Reading reading;
    };
    struct ClassChain {
        /// What objects of the class are read as.
        enum class Kind : unsigned char { Plain, Elements, Entries, Text };

        std::string name;
        std::vector<std::string> baseNames;
        Kind kind = Kind::Plain;
        /// Of all names together.
        std::size_t bytes = 0;

        /// Sets the kind and the bytes.
        void summarize();
    };

    [[noreturn]] void fail(const std::string& text) const;
    template <typename Type>
    [[nodiscard]] const Type& entryOfType(const Dictionary& entries, std::string_view key, const std::string& expected) const;
    void requireDistinctKeys(const Dictionary& entries) const;
    void requireDistinctKeys(const ArchiveObject& object) const;
    void requireDistinct(std::vector<std::string_view> keys) const;
    [[nodiscard]] static std::optional<std::uint64_t> referenceIn(const Value& value);
    [[nodiscard]] const std::string& shortName(const std::string& name) const;
    [[nodiscard]] Reading readValue(const Value& value, std::size_t depth);
    [[nodiscard]] Reading readReference(std::uint64_t number, std::size_t depth);
    [[nodiscard]] static Reading copyOf(const Reading& reading);
    [[nodiscard]] Reading readList(const Array& array, std::size_t depth);
    [[nodiscard]] Reading readObject(const Dictionary& entries, std::size_t depth);
    [[nodiscard]] Reading readString(const Dictionary& entries, std::size_t depth);
    [[nodiscard]] Reading readDictionary(const Dictionary& entries, std::size_t depth);
    [[nodiscard]] Reading readElements(const Dictionary& entries, std::string_view key, std::size_t depth);
    [[nodiscard]] const ClassChain& readClass(const Value& reference);
    [[nodiscard]] static Reading boxed(const std::string& className, const std::string& key, ArchiveValue value);
    void checkDepth(std::size_t depth) const;
    void chargeValues(std::size_t count);
    void chargeBytes(std::size_t count);

    const ArchiveLimits m_limits;
    std::vector<Slot> m_slots;
    std::map<std::uint64_t, ClassChain> m_classes;
    const Value* m_root = nullptr;
    /// The objects being read, outermost first: where errors are.
    std::vector<std::uint64_t> m_path;
    std::size_t m_values = 0;
    std::size_t m_bytes = 0;
};

} // namespace TOLVGraphing::plist
