#include "KeyedObjectWriter.h"

#include "ArchiveLimits.h"
#include "PropertyListScalars.h"

#include <utility>

namespace TOLVGraphing::plist {

OwnedNode KeyedObjectWriter::write(const std::shared_ptr<ArchiveObject>& root)
{
    m_objects.emplace_back(plist_new_string("$null"));
    const Number rootNumber = root ? numberOfObject(root, 1) : 0;
    OwnedNode objects(plist_new_array());
    for (OwnedNode& object : m_objects)
        plist_array_append_item(objects.get(), object.release());
    m_objects.clear();

    OwnedNode top(plist_new_dict());
    plist_dict_set_item(top.get(), "root", plist_new_uid(rootNumber));
    OwnedNode archive(plist_new_dict());
    plist_dict_set_item(archive.get(), "$version", plist_new_uint(100000));
    plist_dict_set_item(archive.get(), "$archiver", plist_new_string("NSKeyedArchiver"));
    plist_dict_set_item(archive.get(), "$top", top.release());
    plist_dict_set_item(archive.get(), "$objects", objects.release());
    return archive;
}

KeyedObjectWriter::Number KeyedObjectWriter::append(OwnedNode node)
{
    m_objects.push_back(std::move(node));
    return m_objects.size() - 1;
}

KeyedObjectWriter::Number KeyedObjectWriter::numberOf(const ArchiveValue& value, std::size_t depth)
{
    struct Visitor {
        KeyedObjectWriter& writer;
        std::size_t depth;

        Number operator()(std::monostate) const { return 0; }
        Number operator()(bool flag) const { return writer.append(OwnedNode(plist_new_bool(flag ? 1 : 0))); }
        Number operator()(std::int64_t number) const { return writer.append(OwnedNode(plist_new_uint(static_cast<std::uint64_t>(number)))); }
        Number operator()(double number) const { return writer.append(OwnedNode(plist_new_real(number))); }
        Number operator()(const std::string& text) const { return writer.numberOfText(text); }
        Number operator()(const std::shared_ptr<ArchiveObject>& object) const { return object ? writer.numberOfObject(object, depth) : 0; }
        Number operator()(const std::shared_ptr<ArchiveArray>& list) const { return list ? writer.numberOfList(list, depth) : 0; }
    };
    return std::visit(Visitor{*this, depth}, value);
}

KeyedObjectWriter::Number KeyedObjectWriter::numberOfText(const std::string& text)
{
    if (const auto known = m_texts.find(text); known != m_texts.end())
        return known->second;
    checkText(text, "text");
    const Number number = append(OwnedNode(plist_new_string(text.c_str())));
    m_texts.emplace(text, number);
    return number;
}

/// The place of an object or list, or null when it has been written already. A new one gets its number here, before those of its parts.
KeyedObjectWriter::Place* KeyedObjectWriter::placeFor(const void* value, std::size_t depth, const std::string& description)
{
    if (depth > ArchiveLimits().depth)
        throw ArchiveError(m_where + description + " is nested deeper than " + std::to_string(ArchiveLimits().depth) + " objects and lists");
    const auto [entry, isNew] = m_places.try_emplace(value);
    if (!isNew && !entry->second.isComplete)
        throw ArchiveError(m_where + description + " contains itself");
    if (!isNew)
        return nullptr;
    entry->second.number = append(nullptr);
    return &entry->second;
}

KeyedObjectWriter::Number KeyedObjectWriter::numberOfObject(const std::shared_ptr<ArchiveObject>& object, std::size_t depth)
{
    Place* place = placeFor(object.get(), depth, "an object of class " + object->className);
    if (!place)
        return m_places.at(object.get()).number;
    const std::string outside = m_where;
    OwnedNode dictionary(plist_new_dict());
    for (const auto& [key, value] : object->values) {
        m_where = object->className + " \"" + key + "\": ";
        checkText(key, "key");
        const std::string stored = key.starts_with('$') ? "$" + key : key;
        plist_dict_set_item(dictionary.get(), stored.c_str(), plist_new_uid(numberOf(value, depth + 1)));
    }
    m_where = object->className + ": ";
    plist_dict_set_item(dictionary.get(), "$class", plist_new_uid(numberOfClass(object->className, object->baseClassNames)));
    m_where = outside;
    m_objects[place->number] = std::move(dictionary);
    place->isComplete = true;
    return place->number;
}

KeyedObjectWriter::Number KeyedObjectWriter::numberOfList(const std::shared_ptr<ArchiveArray>& list, std::size_t depth)
{
    Place* place = placeFor(list.get(), depth, "a list");
    if (!place)
        return m_places.at(list.get()).number;
    OwnedNode elements(plist_new_array());
    for (const ArchiveValue& element : list->elements)
        plist_array_append_item(elements.get(), plist_new_uid(numberOf(element, depth + 1)));
    OwnedNode dictionary(plist_new_dict());
    plist_dict_set_item(dictionary.get(), "NS.objects", elements.release());
    plist_dict_set_item(dictionary.get(), "$class", plist_new_uid(numberOfClass("NSArray", {})));
    m_objects[place->number] = std::move(dictionary);
    place->isComplete = true;
    return place->number;
}

KeyedObjectWriter::Number KeyedObjectWriter::numberOfClass(const std::string& name, const std::vector<std::string>& baseNames)
{
    std::vector<std::string> chain{name};
    chain.insert(chain.end(), baseNames.begin(), baseNames.end());
    chain.emplace_back("NSObject");
    if (const auto known = m_classes.find(chain); known != m_classes.end())
        return known->second;
    OwnedNode classes(plist_new_array());
    for (const std::string& one : chain) {
        checkText(one, "class name");
        plist_array_append_item(classes.get(), plist_new_string(one.c_str()));
    }
    OwnedNode dictionary(plist_new_dict());
    plist_dict_set_item(dictionary.get(), "$classname", plist_new_string(name.c_str()));
    plist_dict_set_item(dictionary.get(), "$classes", classes.release());
    const Number number = append(std::move(dictionary));
    m_classes.emplace(std::move(chain), number);
    return number;
}

void KeyedObjectWriter::checkText(const std::string& text, std::string_view what) const
{
    if (!isStorableText(text))
        throw ArchiveError(m_where + "found a " + std::string(what) + " with a zero character or one that is not UTF-8, expected UTF-8");
}

} // namespace TOLVGraphing::plist
