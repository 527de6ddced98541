#include "KeyedObjectReader.h"

#include "PropertyListScalars.h"

#include <algorithm>

namespace TOLVGraphing::plist {

namespace {

constexpr std::string_view kArchiverName = "NSKeyedArchiver";
constexpr std::int64_t kVersion = 100000;
constexpr std::string_view kNullText = "$null";
constexpr std::string_view kRootClassName = "NSObject";
/// Objects are read recursively; no reader of objects goes deeper either.
constexpr std::size_t kGreatestDepth = 256;
/// Every object carries the name of its class, and error texts tell it.
constexpr std::size_t kLongestClassName = 1024;

/// A value for error texts: what it is, and the text itself of a short one.
std::string found(const Value* value)
{
    const auto* text = value ? value->as<std::string>() : nullptr;
    return text && text->size() <= 40 ? "the text \"" + *text + "\"" : describe(value);
}

} // namespace

KeyedObjectReader::KeyedObjectReader(const Value& archive, const ArchiveLimits& limits) : m_limits{limits.bytes, limits.objects, std::min(limits.depth, kGreatestDepth)}
{
    const auto* entries = archive.as<Dictionary>();
    if (!entries)
        fail("found " + describe(&archive) + ", expected a dictionary with $archiver, $version, $top and $objects");
    requireDistinctKeys(*entries);
    if (entryOfType<std::string>(*entries, "$archiver", R"(the text "NSKeyedArchiver")") != kArchiverName)
        fail("found " + found(valueIn(*entries, "$archiver")) + R"( under "$archiver", expected the text "NSKeyedArchiver")");
    if (const auto version = entryOfType<std::int64_t>(*entries, "$version", "the whole number 100000"); version != kVersion)
        fail("found version " + std::to_string(version) + ", expected 100000");
    for (const Value& value : entryOfType<Array>(*entries, "$objects", "the list of objects"))
        m_slots.push_back({&value, State::Unread, {}});
    const auto* null = m_slots.empty() ? nullptr : m_slots[0].value->as<std::string>();
    if (!null || *null != kNullText)
        fail("found " + found(m_slots.empty() ? nullptr : m_slots[0].value) + " as the first of $objects, expected the text \"$null\"");
    const auto& top = entryOfType<Dictionary>(*entries, "$top", R"(a dictionary with the entry "root")");
    requireDistinctKeys(top);
    m_root = top.size() == 1 ? &top[0].value : valueIn(top, "root");
    if (!m_root)
        fail("found " + std::to_string(top.size()) + R"( entries under "$top" and none of them "root", expected "root" or a single entry)");
}

std::shared_ptr<ArchiveObject> KeyedObjectReader::readRoot()
{
    const auto reference = referenceIn(*m_root);
    if (!reference)
        fail("found " + describe(m_root) + " as the root, expected a reference to an object");
    Reading root = readReference(*reference, 1);
    if (std::holds_alternative<std::monostate>(root.value))
        return nullptr;
    if (auto* object = std::get_if<std::shared_ptr<ArchiveObject>>(&root.value))
        return *object;
    if (std::holds_alternative<std::shared_ptr<ArchiveArray>>(root.value))
        return std::get<std::shared_ptr<ArchiveObject>>(boxed("NSArray", "NS.objects", std::move(root.value)).value);
    fail("found " + describeArchiveValue(root.value) + " as the root, expected an object");
}

void KeyedObjectReader::fail(const std::string& text) const
{
    throw ArchiveError(m_path.empty() ? "keyed archive: " + text : "keyed archive, object " + std::to_string(m_path.back()) + ": " + text);
}

template <typename Type>
const Type& KeyedObjectReader::entryOfType(const Dictionary& entries, std::string_view key, const std::string& expected) const
{
    const Value* value = valueIn(entries, key);
    const auto* content = value ? value->as<Type>() : nullptr;
    if (!content)
        fail("found " + found(value) + " under \"" + std::string(key) + "\", expected " + expected);
    return *content;
}

void KeyedObjectReader::requireDistinctKeys(const Dictionary& entries) const
{
    std::vector<std::string_view> keys;
    keys.reserve(entries.size());
    for (const Entry& entry : entries)
        keys.emplace_back(entry.key);
    requireDistinct(std::move(keys));
}

void KeyedObjectReader::requireDistinct(std::vector<std::string_view> keys) const
{
    std::sort(keys.begin(), keys.end());
    if (const auto twice = std::adjacent_find(keys.begin(), keys.end()); twice != keys.end())
        fail("found the key \"" + std::string(beginningOf(*twice)) + "\" twice in one dictionary, expected it once");
}

std::optional<std::uint64_t> KeyedObjectReader::referenceIn(const Value& value)
{
    if (const auto* reference = value.as<Reference>())
        return reference->number;
    // XML has no references of its own.
    const auto* entries = value.as<Dictionary>();
    if (!entries || entries->size() != 1 || entries->front().key != "CF$UID")
        return std::nullopt;
    const auto* number = entries->front().value.as<std::int64_t>();
    return number ? std::optional(static_cast<std::uint64_t>(*number)) : std::nullopt;
}

KeyedObjectReader::Reading KeyedObjectReader::readValue(const Value& value, std::size_t depth)
{
    if (const auto reference = referenceIn(value))
        return readReference(*reference, depth);
    chargeValues(1);
    struct Visitor {
        KeyedObjectReader& reader;
        std::size_t depth;

        Reading operator()(bool flag) const { return {flag, 0}; }
        Reading operator()(std::int64_t number) const { return {number, 0}; }
        Reading operator()(double number) const { return {number, 0}; }
        Reading operator()(const std::string& text) const
        {
            reader.chargeBytes(text.size());
            return {text, 0};
        }
        Reading operator()(const Data& data) const
        {
            reader.checkDepth(depth);
            reader.chargeBytes(data.bytes.size() / 3 * 4 + 4);
            return boxed("NSData", "NS.bytes", base64FromBytes(data.bytes));
        }
        Reading operator()(const Date& date) const
        {
            reader.checkDepth(depth);
            return boxed("NSDate", "NS.time", date.seconds);
        }
        Reading operator()(const Array& list) const { return reader.readList(list, depth); }
        Reading operator()(const Dictionary& dictionary) const { return reader.readObject(dictionary, depth); }
        /// References have been followed above.
        Reading operator()(const Reference&) const { return {}; }
    };
    return std::visit(Visitor{*this, depth}, value.content);
}

KeyedObjectReader::Reading KeyedObjectReader::boxed(const std::string& className, const std::string& key, ArchiveValue value)
{
    auto object = std::make_shared<ArchiveObject>();
    object->className = className;
    object->values.emplace_back(key, std::move(value));
    return {std::move(object), 1};
}

KeyedObjectReader::Reading KeyedObjectReader::readReference(std::uint64_t number, std::size_t depth)
{
    if (number >= m_slots.size())
        fail("found a reference to object " + std::to_string(number) + ", expected one of " + std::to_string(m_slots.size()));
    chargeValues(1);
    if (number == 0)
        return {};
    Slot& slot = m_slots[number];
    if (slot.state == State::BeingRead)
        fail("found object " + std::to_string(number) + " inside itself, expected no circle");
    if (slot.state == State::Read) {
        // A shared object is reached at another depth here than where it was read.
        if (slot.reading.height > 0)
            checkDepth(depth + slot.reading.height - 1);
        if (const auto* text = std::get_if<std::string>(&slot.reading.value))
            chargeBytes(text->size());
        return copyOf(slot.reading);
    }
    slot.state = State::BeingRead;
    m_path.push_back(number);
    if (referenceIn(*slot.value))
        fail("found a reference in the list of objects, expected an object");
    slot.reading = readValue(*slot.value, depth);
    m_path.pop_back();
    slot.state = State::Read;
    return copyOf(slot.reading);
}

/// A text is copied before it becomes a value: a variant of these types that is itself being copied when memory runs out takes itself for complete, and destroys what it does not hold.
KeyedObjectReader::Reading KeyedObjectReader::copyOf(const Reading& reading)
{
    if (const auto* text = std::get_if<std::string>(&reading.value))
        return {std::string(*text), reading.height};
    return reading;
}

KeyedObjectReader::Reading KeyedObjectReader::readList(const Array& array, std::size_t depth)
{
    checkDepth(depth);
    auto list = std::make_shared<ArchiveArray>();
    list->elements.reserve(array.size());
    std::size_t height = 0;
    for (const Value& value : array) {
        Reading element = readValue(value, depth + 1);
        height = std::max(height, element.height);
        list->elements.push_back(std::move(element.value));
    }
    return {std::move(list), height + 1};
}

KeyedObjectReader::Reading KeyedObjectReader::readObject(const Dictionary& entries, std::size_t depth)
{
    checkDepth(depth);
    const Value* classReference = valueIn(entries, "$class");
    if (!classReference)
        fail("found a dictionary without \"$class\", expected an object");
    requireDistinctKeys(entries);
    const ClassChain& chain = readClass(*classReference);
    switch (chain.kind) {
    case ClassChain::Kind::Elements: return readElements(entries, "NS.objects", depth);
    case ClassChain::Kind::Entries: return readDictionary(entries, depth);
    case ClassChain::Kind::Text: return readString(entries, depth);
    case ClassChain::Kind::Plain: break;
    }
    auto object = std::make_shared<ArchiveObject>();
    chargeValues(chain.baseNames.size());
    chargeBytes(chain.bytes);
    object->className = chain.name;
    object->baseClassNames = chain.baseNames;
    object->values.reserve(entries.size() - 1);
    std::size_t height = 0;
    for (const auto& [key, value] : entries) {
        if (key == "$class")
            continue;
        Reading reading = readValue(value, depth + 1);
        height = std::max(height, reading.height);
        // The writer put a "$" before keys that begin with one.
        object->values.emplace_back(key.starts_with("$$") ? key.substr(1) : key, std::move(reading.value));
    }
    requireDistinctKeys(*object);
    return {std::move(object), height + 1};
}

void KeyedObjectReader::requireDistinctKeys(const ArchiveObject& object) const
{
    std::vector<std::string_view> keys;
    keys.reserve(object.values.size());
    for (const auto& entry : object.values)
        keys.emplace_back(entry.first);
    requireDistinct(std::move(keys));
}

KeyedObjectReader::Reading KeyedObjectReader::readElements(const Dictionary& entries, std::string_view key, std::size_t depth)
{
    return readList(entryOfType<Array>(entries, key, "the list of elements"), depth);
}

KeyedObjectReader::Reading KeyedObjectReader::readString(const Dictionary& entries, std::size_t depth)
{
    const Value* value = valueIn(entries, "NS.string");
    Reading text = value ? readValue(*value, depth + 1) : Reading();
    if (!std::holds_alternative<std::string>(text.value))
        fail("found " + (value ? describeArchiveValue(text.value) : std::string("nothing")) + " under \"NS.string\", expected a text");
    return text;
}

KeyedObjectReader::Reading KeyedObjectReader::readDictionary(const Dictionary& entries, std::size_t depth)
{
    const Reading keys = readElements(entries, "NS.keys", depth);
    Reading values = readElements(entries, "NS.objects", depth);
    const auto& keyList = std::get<std::shared_ptr<ArchiveArray>>(keys.value)->elements;
    auto& valueList = std::get<std::shared_ptr<ArchiveArray>>(values.value)->elements;
    if (keyList.size() != valueList.size())
        fail("found " + std::to_string(keyList.size()) + " keys and " + std::to_string(valueList.size()) + " objects in a dictionary, expected as many of both");
    auto object = std::make_shared<ArchiveObject>();
    object->className = "NSDictionary";
    for (std::size_t i = 0; i < keyList.size(); ++i) {
        const auto* key = std::get_if<std::string>(&keyList[i]);
        if (!key)
            fail("found " + describeArchiveValue(keyList[i]) + " as the key of a dictionary, expected a text");
        object->values.emplace_back(*key, std::move(valueList[i]));
    }
    requireDistinctKeys(*object);
    return {std::move(object), values.height};
}

const std::string& KeyedObjectReader::shortName(const std::string& name) const
{
    if (name.size() > kLongestClassName)
        fail("found the name of a class with " + std::to_string(name.size()) + " bytes, expected at most " + std::to_string(kLongestClassName));
    return name;
}

const KeyedObjectReader::ClassChain& KeyedObjectReader::readClass(const Value& reference)
{
    const auto number = referenceIn(reference);
    if (!number || *number >= m_slots.size())
        fail("found " + (number ? "a reference to object " + std::to_string(*number) : found(&reference)) + " under \"$class\", expected a reference to one of "
            + std::to_string(m_slots.size()) + " objects");
    if (const auto known = m_classes.find(*number); known != m_classes.end())
        return known->second;
    const auto* entries = m_slots[*number].value->as<Dictionary>();
    if (!entries)
        fail("found " + found(m_slots[*number].value) + " as the class, expected a dictionary with $classname and $classes");
    ClassChain chain;
    chain.name = shortName(entryOfType<std::string>(*entries, "$classname", "the name of a class"));
    for (const Value& value : entryOfType<Array>(*entries, "$classes", "the list of the class and its base classes")) {
        const auto* name = value.as<std::string>();
        if (!name)
            fail("found " + found(&value) + " in \"$classes\", expected the name of a class");
        chain.baseNames.push_back(shortName(*name));
    }
    if (!chain.baseNames.empty() && chain.baseNames.front() == chain.name)
        chain.baseNames.erase(chain.baseNames.begin());
    if (!chain.baseNames.empty() && chain.baseNames.back() == kRootClassName)
        chain.baseNames.pop_back();
    chain.summarize();
    return m_classes.emplace(*number, std::move(chain)).first->second;
}

/// Once for the class and not for each of its objects: a chain may be long.
void KeyedObjectReader::ClassChain::summarize()
{
    const auto isOrDerivesFrom = [this](std::string_view className) { return name == className || std::find(baseNames.begin(), baseNames.end(), className) != baseNames.end(); };
    if (isOrDerivesFrom("NSArray"))
        kind = Kind::Elements;
    else if (isOrDerivesFrom("NSDictionary"))
        kind = Kind::Entries;
    else if (isOrDerivesFrom("NSString"))
        kind = Kind::Text;
    bytes = name.size();
    for (const std::string& one : baseNames)
        bytes += one.size();
}

void KeyedObjectReader::checkDepth(std::size_t depth) const
{
    if (depth > m_limits.depth)
        fail("found more than " + std::to_string(m_limits.depth) + " objects and lists inside one another, expected fewer");
}

void KeyedObjectReader::chargeValues(std::size_t count)
{
    m_values += count;
    if (m_values > m_limits.objects)
        fail("found more than " + std::to_string(m_limits.objects) + " values, expected fewer");
}

void KeyedObjectReader::chargeBytes(std::size_t count)
{
    m_bytes += count;
    if (m_bytes > m_limits.bytes)
        fail("found more than " + std::to_string(m_limits.bytes) + " bytes of text, expected fewer");
}

} // namespace TOLVGraphing::plist
