#pragma once

#include "KeyedArchive.h"
#include <TOLVMath/Export.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing {

class KeyedArchiver;
class KeyedUnarchiver;

/// An object that can be written to a keyed archive. Reading goes through a factory registered under the class name (ArchiveClassRegistration): mostly the class's static `initWithCoder`. Those pass over keys that they do not know and throw
/// ArchiveError for values of another kind.
class TOLV_EXPORT Codable {
public:
    virtual ~Codable();

    /// The name that the archive stores.
    [[nodiscard]] virtual std::string archiveClassName() const = 0;
    /// The names of the base classes, nearest first, without the root class.
    [[nodiscard]] virtual std::vector<std::string> archiveBaseClassNames() const { return {}; }
    /// Writes what the object has under keys of its own. What it throws leaves the archiving.
    virtual void encodeWithCoder(KeyedArchiver& coder) const = 0;
};

/// Collects the values of objects as they encode themselves. Numbers and texts are boxed: each stands as a value of its own under its key.
/// An object that is encoded several times is stored once.
class TOLV_EXPORT KeyedArchiver {
public:
    /// Encodes the object and everything that it reaches. Throws ArchiveError when an object contains itself or lies deeper than 256 objects in others. Never null.
    [[nodiscard]] static std::shared_ptr<ArchiveObject> archivedObject(const Codable& root);

    /// Stores a value (copied) under the key, in place of what was there. A double keeps its bits, NaN and infinities included; texts are UTF-8.
    void encodeDouble(double number, std::string_view key);
    void encodeInteger(std::int64_t number, std::string_view key);
    void encodeBool(bool flag, std::string_view key);
    void encodeString(const std::string& text, std::string_view key);
    /// Null stores "nothing" under the key, which reads back as an absent value. Objects are told apart by their address, so each has to live until the root
    /// has been archived: a copy made for the occasion would be taken for the next one at its place.
    void encodeObject(const Codable* object, std::string_view key);
    /// Stores the list; nulls in it are left out, and an empty list is stored as one. Addresses count as for `encodeObject`.
    void encodeObjects(const std::vector<std::shared_ptr<const Codable>>& objects, std::string_view key);

private:
    using Archived = std::map<const Codable*, std::shared_ptr<ArchiveObject>>;

    KeyedArchiver(ArchiveObject& target, Archived& archived, int depth) : m_target(target), m_archived(archived), m_depth(depth) {}
    static std::shared_ptr<ArchiveObject> archive(const Codable& object, Archived& archived, int depth);
    void store(ArchiveValue value, std::string_view key);

    ArchiveObject& m_target;
    Archived& m_archived;
    int m_depth;
};

/// Gives the values of one archived object back. A key that is absent, or that holds nothing, answers nothing; a value of the wrong kind throws ArchiveError.
/// Numbers stand in for each other: a whole number is read as a double (rounded beyond 2^53), a double without fraction below 9.2e18 as a whole number, a boolean as 1 or 0, and a whole number as a boolean (0 is false).
class TOLV_EXPORT KeyedUnarchiver {
public:
    /// How an object is made from its archived values; null when the values make none.
    using Factory = std::function<std::shared_ptr<Codable>(KeyedUnarchiver&)>;

    /// Makes the object and all that it reaches. Null for null, and when its values make none. For a class that is not registered the nearest of its base classes that is stands in. Throws ArchiveError on classes without one, values of the wrong kind, objects
    /// that contain themselves and nesting deeper than 256 objects.
    [[nodiscard]] static std::shared_ptr<Codable> unarchivedObject(const std::shared_ptr<ArchiveObject>& root);

    /// True when there is a value under the key and it is not nothing.
    [[nodiscard]] bool containsValueForKey(std::string_view key) const;
    /// The value under the key; nothing when there is none. Throws ArchiveError when it is of another kind.
    [[nodiscard]] std::optional<double> decodeDouble(std::string_view key) const;
    [[nodiscard]] std::optional<std::int64_t> decodeInteger(std::string_view key) const;
    [[nodiscard]] std::optional<bool> decodeBool(std::string_view key) const;
    [[nodiscard]] std::optional<std::string> decodeString(std::string_view key) const;

    /// The object under the key as `Type`, null when there is none. Throws ArchiveError when it is of another class; `expected` names the class for the text.
    template <typename Type>
    [[nodiscard]] std::shared_ptr<Type> decodeObject(std::string_view key, std::string_view expected)
    {
        return cast<Type>(decodeAnyObject(key), key, expected);
    }

    /// The objects of the list under the key as `Type`; nothing when there is no list. Throws ArchiveError when it is no list, or an element is of another class. Elements whose values make no object are left out.
    template <typename Type>
    [[nodiscard]] std::optional<std::vector<std::shared_ptr<Type>>> decodeObjects(std::string_view key, std::string_view expected)
    {
        const auto found = decodeAnyObjects(key, expected);
        if (!found)
            return std::nullopt;
        std::vector<std::shared_ptr<Type>> objects;
        for (const auto& object : *found)
            objects.push_back(cast<Type>(object, key, expected));
        return objects;
    }

    /// Registers how objects of a class are made, for the whole process; the last registration of a name holds. The factory (copied) may not be empty, and what it throws leaves the reading. Safe to call from any thread.
    static void registerClass(const std::string& className, Factory factory);

private:
    struct Reading;

    KeyedUnarchiver(const ArchiveObject& source, Reading& reading) : m_source(source), m_reading(reading) {}
    static std::shared_ptr<Codable> unarchive(const std::shared_ptr<ArchiveObject>& object, Reading& reading);
    [[nodiscard]] const ArchiveValue* value(std::string_view key) const;
    [[noreturn]] void throwUnexpected(const ArchiveValue& found, std::string_view key, std::string_view expected) const;
    [[noreturn]] void throwWrongClass(const Codable& found, std::string_view key, std::string_view expected) const;
    std::shared_ptr<Codable> decodeAnyObject(std::string_view key);
    std::optional<std::vector<std::shared_ptr<Codable>>> decodeAnyObjects(std::string_view key, std::string_view expected);

    template <typename Type>
    std::shared_ptr<Type> cast(const std::shared_ptr<Codable>& object, std::string_view key, std::string_view expected) const
    {
        auto typed = std::dynamic_pointer_cast<Type>(object);
        if (object && !typed)
            throwWrongClass(*object, key, expected);
        return typed;
    }

    const ArchiveObject& m_source;
    Reading& m_reading;
};

/// Registers a class for reading when it is constructed; each archivable class has one in its source file.
class TOLV_EXPORT ArchiveClassRegistration {
public:
    /// See KeyedUnarchiver::registerClass.
    ArchiveClassRegistration(const std::string& className, KeyedUnarchiver::Factory factory);
};

} // namespace TOLVGraphing
