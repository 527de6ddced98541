#include "KeyedArchiver.h"

#include <algorithm>
#include <cmath>
#include <mutex>
#include <utility>

namespace TOLVGraphing {

namespace {

constexpr int kMaximumDepth = 256;

struct ClassRegistry {
    std::mutex mutex;
    std::map<std::string, KeyedUnarchiver::Factory, std::less<>> factories;
};

ClassRegistry& classRegistry()
{
    static ClassRegistry registry;
    return registry;
}

/// Objects and lists that are null are nothing too.
bool isNothing(const ArchiveValue& value)
{
    const auto* object = std::get_if<std::shared_ptr<ArchiveObject>>(&value);
    const auto* list = std::get_if<std::shared_ptr<ArchiveArray>>(&value);
    return std::holds_alternative<std::monostate>(value) || (object && !*object) || (list && !*list);
}

std::optional<KeyedUnarchiver::Factory> factoryFor(const ArchiveObject& object)
{
    ClassRegistry& registry = classRegistry();
    const std::scoped_lock lock(registry.mutex);
    const auto direct = registry.factories.find(object.className);
    if (direct != registry.factories.end())
        return direct->second;
    // A class of a newer version or of a host: the nearest base class that is known stands in.
    for (const std::string& name : object.baseClassNames) {
        const auto base = registry.factories.find(name);
        if (base != registry.factories.end())
            return base->second;
    }
    return std::nullopt;
}

} // namespace

Codable::~Codable() = default;

std::shared_ptr<ArchiveObject> KeyedArchiver::archivedObject(const Codable& root)
{
    Archived archived;
    return archive(root, archived, 0);
}

std::shared_ptr<ArchiveObject> KeyedArchiver::archive(const Codable& object, Archived& archived, int depth)
{
    if (depth > kMaximumDepth)
        throw ArchiveError("an object of class " + object.archiveClassName() + " is nested deeper than 256 objects or contains itself");
    if (const auto known = archived.find(&object); known != archived.end())
        return known->second;
    auto target = std::make_shared<ArchiveObject>();
    target->className = object.archiveClassName();
    target->baseClassNames = object.archiveBaseClassNames();
    KeyedArchiver coder(*target, archived, depth);
    object.encodeWithCoder(coder);
    archived.emplace(&object, target);
    return target;
}

void KeyedArchiver::store(ArchiveValue value, std::string_view key)
{
    const auto known = std::find_if(m_target.values.begin(), m_target.values.end(), [&](const auto& entry) { return entry.first == key; });
    if (known != m_target.values.end())
        known->second = std::move(value);
    else
        m_target.values.emplace_back(std::string(key), std::move(value));
}

void KeyedArchiver::encodeDouble(double number, std::string_view key)
{
    store(number, key);
}

void KeyedArchiver::encodeInteger(std::int64_t number, std::string_view key)
{
    store(number, key);
}

void KeyedArchiver::encodeBool(bool flag, std::string_view key)
{
    store(flag, key);
}

void KeyedArchiver::encodeString(const std::string& text, std::string_view key)
{
    store(text, key);
}

void KeyedArchiver::encodeObject(const Codable* object, std::string_view key)
{
    if (object)
        store(archive(*object, m_archived, m_depth + 1), key);
    else
        store(std::monostate{}, key);
}

void KeyedArchiver::encodeObjects(const std::vector<std::shared_ptr<const Codable>>& objects, std::string_view key)
{
    auto array = std::make_shared<ArchiveArray>();
    for (const auto& object : objects) {
        if (object)
            array->elements.emplace_back(archive(*object, m_archived, m_depth + 1));
    }
    store(std::move(array), key);
}

/// What one reading keeps: the objects made so far, those being made, and how deep it is.
struct KeyedUnarchiver::Reading {
    std::map<const ArchiveObject*, std::shared_ptr<Codable>> made;
    std::set<const ArchiveObject*> beingMade;
};

std::shared_ptr<Codable> KeyedUnarchiver::unarchivedObject(const std::shared_ptr<ArchiveObject>& root)
{
    Reading reading;
    return root ? unarchive(root, reading) : nullptr;
}

std::shared_ptr<Codable> KeyedUnarchiver::unarchive(const std::shared_ptr<ArchiveObject>& object, Reading& reading)
{
    if (const auto known = reading.made.find(object.get()); known != reading.made.end())
        return known->second;
    if (static_cast<int>(reading.beingMade.size()) >= kMaximumDepth)
        throw ArchiveError("objects are nested deeper than 256 levels at an object of class " + object->className);
    if (!reading.beingMade.insert(object.get()).second)
        throw ArchiveError("an object of class " + object->className + " contains itself");
    const auto factory = factoryFor(*object);
    if (!factory)
        throw ArchiveError("found an object of the unknown class " + object->className + ", expected a class that can be read");
    KeyedUnarchiver coder(*object, reading);
    auto made = (*factory)(coder);
    reading.beingMade.erase(object.get());
    reading.made.emplace(object.get(), made);
    return made;
}

const ArchiveValue* KeyedUnarchiver::value(std::string_view key) const
{
    const ArchiveValue* found = m_source.find(key);
    return found && !isNothing(*found) ? found : nullptr;
}

void KeyedUnarchiver::throwUnexpected(const ArchiveValue& found, std::string_view key, std::string_view expected) const
{
    throw ArchiveError(m_source.className + " \"" + std::string(key) + "\": found " + describeArchiveValue(found) + ", expected " + std::string(expected));
}

void KeyedUnarchiver::throwWrongClass(const Codable& found, std::string_view key, std::string_view expected) const
{
    throw ArchiveError(m_source.className + " \"" + std::string(key) + "\": found an object of class " + found.archiveClassName() + ", expected " + std::string(expected));
}

bool KeyedUnarchiver::containsValueForKey(std::string_view key) const
{
    return value(key) != nullptr;
}

std::optional<double> KeyedUnarchiver::decodeDouble(std::string_view key) const
{
    const ArchiveValue* found = value(key);
    if (!found)
        return std::nullopt;
    if (const auto* number = std::get_if<double>(found))
        return *number;
    if (const auto* whole = std::get_if<std::int64_t>(found))
        return static_cast<double>(*whole);
    if (const auto* flag = std::get_if<bool>(found))
        return *flag ? 1.0 : 0.0;
    throwUnexpected(*found, key, "a number");
}

std::optional<std::int64_t> KeyedUnarchiver::decodeInteger(std::string_view key) const
{
    const ArchiveValue* found = value(key);
    if (!found)
        return std::nullopt;
    if (const auto* whole = std::get_if<std::int64_t>(found))
        return *whole;
    if (const auto* flag = std::get_if<bool>(found))
        return *flag ? 1 : 0;
    if (const auto* number = std::get_if<double>(found); number && std::trunc(*number) == *number && std::abs(*number) < 9.2e18)
        return static_cast<std::int64_t>(*number);
    throwUnexpected(*found, key, "a whole number");
}

std::optional<bool> KeyedUnarchiver::decodeBool(std::string_view key) const
{
    const ArchiveValue* found = value(key);
    if (!found)
        return std::nullopt;
    if (const auto* flag = std::get_if<bool>(found))
        return *flag;
    if (const auto* whole = std::get_if<std::int64_t>(found))
        return *whole != 0;
    throwUnexpected(*found, key, "a boolean");
}

std::optional<std::string> KeyedUnarchiver::decodeString(std::string_view key) const
{
    const ArchiveValue* found = value(key);
    if (!found)
        return std::nullopt;
    if (const auto* text = std::get_if<std::string>(found))
        return *text;
    throwUnexpected(*found, key, "a text");
}

std::shared_ptr<Codable> KeyedUnarchiver::decodeAnyObject(std::string_view key)
{
    const ArchiveValue* found = value(key);
    if (!found)
        return nullptr;
    if (const auto* object = std::get_if<std::shared_ptr<ArchiveObject>>(found))
        return unarchive(*object, m_reading);
    throwUnexpected(*found, key, "an object");
}

std::optional<std::vector<std::shared_ptr<Codable>>> KeyedUnarchiver::decodeAnyObjects(std::string_view key, std::string_view expected)
{
    const ArchiveValue* found = value(key);
    if (!found)
        return std::nullopt;
    const auto* array = std::get_if<std::shared_ptr<ArchiveArray>>(found);
    if (!array)
        throwUnexpected(*found, key, "a list of " + std::string(expected));
    std::vector<std::shared_ptr<Codable>> objects;
    for (const ArchiveValue& element : (*array)->elements) {
        const auto* object = std::get_if<std::shared_ptr<ArchiveObject>>(&element);
        if (!object || isNothing(element))
            throwUnexpected(element, key, "a list of " + std::string(expected));
        if (auto made = unarchive(*object, m_reading))
            objects.push_back(std::move(made));
    }
    return objects;
}

void KeyedUnarchiver::registerClass(const std::string& className, Factory factory)
{
    ClassRegistry& registry = classRegistry();
    const std::scoped_lock lock(registry.mutex);
    registry.factories[className] = std::move(factory);
}

ArchiveClassRegistration::ArchiveClassRegistration(const std::string& className, KeyedUnarchiver::Factory factory)
{
    KeyedUnarchiver::registerClass(className, std::move(factory));
}

} // namespace TOLVGraphing
