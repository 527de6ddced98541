#include "KeyedObjectReader.h"

#include "PropertyListScalars.h"

#include <algorithm>
#include <cstdlib>

namespace TOLVGraphing::plist {

namespace {

constexpr std::string_view kArchiverName = "NSKeyedArchiver";
constexpr std::uint64_t kVersion = 100000;
constexpr std::string_view kNullText = "$null";
constexpr std::string_view kRootClassName = "NSObject";
/// Objects are read recursively; no reader of objects goes deeper either.
constexpr std::size_t kGreatestDepth = 256;

plist_t entryIn(const std::vector<std::pair<std::string, plist_t>>& entries, std::string_view key)
{
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const auto& entry) { return entry.first == key; });
    return found == entries.end() ? nullptr : found->second;
}

bool isOfType(plist_t node, plist_type type)
{
    return node && plist_get_node_type(node) == type;
}

/// A node for error texts: what it is, and the text itself of a short one.
std::string found(plist_t node)
{
    if (isOfType(node, PLIST_STRING) && textOf(node).size() <= 40)
        return "the text \"" + std::string(textOf(node)) + "\"";
    return describe(node);
}

} // namespace

bool KeyedObjectReader::ClassChain::isOrDerivesFrom(std::string_view className) const
{
    return name == className || std::find(baseNames.begin(), baseNames.end(), className) != baseNames.end();
}

KeyedObjectReader::KeyedObjectReader(plist_t archive, const ArchiveLimits& limits)
    : m_limits{limits.bytes, limits.objects, std::min(limits.depth, kGreatestDepth)}
{
    if (!isOfType(archive, PLIST_DICT))
        fail("found " + describe(archive) + ", expected a dictionary with $archiver, $version, $top and $objects");
    const Entries entries = dictionaryEntries(archive);
    plist_t archiver = entryOfType(entries, "$archiver", PLIST_STRING, "the text \"NSKeyedArchiver\"");
    if (textOf(archiver) != kArchiverName)
        fail("found " + found(archiver) + " under \"$archiver\", expected the text \"NSKeyedArchiver\"");
    std::uint64_t version = 0;
    plist_get_uint_val(entryOfType(entries, "$version", PLIST_UINT, "the whole number 100000"), &version);
    if (version != kVersion)
        fail("found version " + std::to_string(static_cast<std::int64_t>(version)) + ", expected 100000");
    for (plist_t node : arrayElements(entryOfType(entries, "$objects", PLIST_ARRAY, "the list of objects")))
        m_slots.push_back({node, State::Unread, {}});
    if (m_slots.empty() || !isOfType(m_slots[0].node, PLIST_STRING) || textOf(m_slots[0].node) != kNullText)
        fail("found " + found(m_slots.empty() ? nullptr : m_slots[0].node) + " as the first of $objects, expected the text \"$null\"");
    const Entries top = dictionaryEntries(entryOfType(entries, "$top", PLIST_DICT, "a dictionary with the entry \"root\""));
    m_root = top.size() == 1 ? top[0].second : entryIn(top, "root");
    if (!m_root)
        fail("found " + std::to_string(top.size()) + " entries under \"$top\" and none of them \"root\", expected \"root\" or a single entry");
}

std::shared_ptr<ArchiveObject> KeyedObjectReader::readRoot()
{
    const auto reference = referenceIn(m_root);
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

plist_t KeyedObjectReader::entryOfType(const Entries& entries, std::string_view key, plist_type type, const std::string& expected) const
{
    plist_t node = entryIn(entries, key);
    if (!isOfType(node, type))
        fail("found " + found(node) + " under \"" + std::string(key) + "\", expected " + expected);
    return node;
}

std::optional<std::uint64_t> KeyedObjectReader::referenceIn(plist_t node) const
{
    std::uint64_t number = 0;
    if (isOfType(node, PLIST_UID)) {
        plist_get_uid_val(node, &number);
        return number;
    }
    // XML has no references of its own.
    if (!isOfType(node, PLIST_DICT) || plist_dict_get_size(node) != 1)
        return std::nullopt;
    plist_t written = plist_dict_get_item(node, "CF$UID");
    if (!isOfType(written, PLIST_UINT))
        return std::nullopt;
    plist_get_uint_val(written, &number);
    return number;
}

KeyedObjectReader::Reading KeyedObjectReader::readValue(plist_t node, std::size_t depth)
{
    if (const auto reference = referenceIn(node))
        return readReference(*reference, depth);
    chargeValues(1);
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t flag = 0;
        plist_get_bool_val(node, &flag);
        return {flag != 0, 0};
    }
    case PLIST_UINT: {
        std::uint64_t number = 0;
        plist_get_uint_val(node, &number);
        return {static_cast<std::int64_t>(number), 0};
    }
    case PLIST_REAL: {
        double number = 0.0;
        plist_get_real_val(node, &number);
        return {number, 0};
    }
    case PLIST_STRING:
        chargeBytes(textOf(node).size());
        return {std::string(textOf(node)), 0};
    case PLIST_DATA: {
        checkDepth(depth);
        std::uint64_t length = 0;
        const char* bytes = plist_get_data_ptr(node, &length);
        chargeBytes(length * 4 / 3);
        return boxed("NSData", "NS.bytes", base64FromBytes({bytes ? bytes : "", bytes ? length : 0}));
    }
    case PLIST_DATE:
        checkDepth(depth);
        return boxed("NSDate", "NS.time", dateValue(node));
    case PLIST_ARRAY: return readList(node, depth);
    default: return readObject(node, depth);
    }
}

ArchiveValue KeyedObjectReader::dateValue(plist_t date) const
{
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    plist_get_date_val(date, &seconds, &microseconds);
    const double fraction = static_cast<double>(microseconds) / 1e6;
    return static_cast<double>(seconds) + (seconds < 0 ? -fraction : fraction);
}

KeyedObjectReader::Reading KeyedObjectReader::boxed(const std::string& className, const std::string& key, ArchiveValue value) const
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
        return slot.reading;
    }
    slot.state = State::BeingRead;
    m_path.push_back(number);
    if (referenceIn(slot.node))
        fail("found a reference in the list of objects, expected an object");
    slot.reading = readValue(slot.node, depth);
    m_path.pop_back();
    slot.state = State::Read;
    return slot.reading;
}

KeyedObjectReader::Reading KeyedObjectReader::readList(plist_t array, std::size_t depth)
{
    checkDepth(depth);
    auto list = std::make_shared<ArchiveArray>();
    std::size_t height = 0;
    for (plist_t node : arrayElements(array)) {
        Reading element = readValue(node, depth + 1);
        height = std::max(height, element.height);
        list->elements.push_back(std::move(element.value));
    }
    return {std::move(list), height + 1};
}

KeyedObjectReader::Reading KeyedObjectReader::readObject(plist_t dictionary, std::size_t depth)
{
    checkDepth(depth);
    const Entries entries = dictionaryEntries(dictionary);
    plist_t classReference = entryIn(entries, "$class");
    if (!classReference)
        fail("found a dictionary without \"$class\", expected an object");
    const ClassChain& chain = readClass(classReference);
    if (chain.isOrDerivesFrom("NSArray"))
        return readElements(entries, "NS.objects", depth);
    if (chain.isOrDerivesFrom("NSDictionary"))
        return readDictionary(entries, depth);
    if (chain.isOrDerivesFrom("NSString"))
        return readString(entries, depth);
    auto object = std::make_shared<ArchiveObject>();
    object->className = chain.name;
    object->baseClassNames = chain.baseNames;
    chargeValues(chain.baseNames.size());
    for (const std::string& name : chain.baseNames)
        chargeBytes(name.size());
    std::size_t height = 0;
    for (const auto& [key, node] : entries) {
        if (key == "$class")
            continue;
        Reading reading = readValue(node, depth + 1);
        height = std::max(height, reading.height);
        // The writer put a "$" before keys that begin with one.
        object->values.emplace_back(key.starts_with("$$") ? key.substr(1) : key, std::move(reading.value));
    }
    return {std::move(object), height + 1};
}

KeyedObjectReader::Reading KeyedObjectReader::readElements(const Entries& entries, std::string_view key, std::size_t depth)
{
    plist_t node = entryOfType(entries, key, PLIST_ARRAY, "the list of elements");
    return readList(node, depth);
}

KeyedObjectReader::Reading KeyedObjectReader::readString(const Entries& entries, std::size_t depth)
{
    plist_t node = entryIn(entries, "NS.string");
    Reading text = node ? readValue(node, depth + 1) : Reading();
    if (!std::holds_alternative<std::string>(text.value))
        fail("found " + (node ? describeArchiveValue(text.value) : std::string("nothing")) + " under \"NS.string\", expected a text");
    return text;
}

KeyedObjectReader::Reading KeyedObjectReader::readDictionary(const Entries& entries, std::size_t depth)
{
    const Reading keys = readElements(entries, "NS.keys", depth);
    Reading values = readElements(entries, "NS.objects", depth);
    const auto& keyList = std::get<std::shared_ptr<ArchiveArray>>(keys.value)->elements;
    auto& valueList = std::get<std::shared_ptr<ArchiveArray>>(values.value)->elements;
    if (keyList.size() != valueList.size())
        fail("found " + std::to_string(keyList.size()) + " keys and " + std::to_string(valueList.size())
            + " objects in a dictionary, expected as many of both");
    auto object = std::make_shared<ArchiveObject>();
    object->className = "NSDictionary";
    for (std::size_t i = 0; i < keyList.size(); ++i) {
        const auto* key = std::get_if<std::string>(&keyList[i]);
        if (!key)
            fail("found " + describeArchiveValue(keyList[i]) + " as the key of a dictionary, expected a text");
        object->values.emplace_back(*key, std::move(valueList[i]));
    }
    return {std::move(object), values.height};
}

const KeyedObjectReader::ClassChain& KeyedObjectReader::readClass(plist_t reference)
{
    const auto number = referenceIn(reference);
    if (!number || *number >= m_slots.size())
        fail("found " + (number ? "a reference to object " + std::to_string(*number) : found(reference)) + " under \"$class\", expected a reference to one of "
            + std::to_string(m_slots.size()) + " objects");
    if (const auto known = m_classes.find(*number); known != m_classes.end())
        return known->second;
    plist_t node = m_slots[*number].node;
    if (!isOfType(node, PLIST_DICT))
        fail("found " + found(node) + " as the class, expected a dictionary with $classname and $classes");
    const Entries entries = dictionaryEntries(node);
    ClassChain chain;
    chain.name = textOf(entryOfType(entries, "$classname", PLIST_STRING, "the name of a class"));
    for (plist_t name : arrayElements(entryOfType(entries, "$classes", PLIST_ARRAY, "the list of the class and its base classes"))) {
        if (!isOfType(name, PLIST_STRING))
            fail("found " + found(name) + " in \"$classes\", expected the name of a class");
        chain.baseNames.emplace_back(textOf(name));
    }
    if (!chain.baseNames.empty() && chain.baseNames.front() == chain.name)
        chain.baseNames.erase(chain.baseNames.begin());
    if (!chain.baseNames.empty() && chain.baseNames.back() == kRootClassName)
        chain.baseNames.pop_back();
    return m_classes.emplace(*number, std::move(chain)).first->second;
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
