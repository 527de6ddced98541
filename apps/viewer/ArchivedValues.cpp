#include "ArchivedValues.h"

#include <TOLVGraphing/platform/text/NumberText.h>

#include <utility>
#include <variant>

namespace TOLVGraphing::app {

namespace {

using ObjectPointer = std::shared_ptr<ArchiveObject>;
using ListPointer = std::shared_ptr<ArchiveArray>;

std::string between(double least, double most)
{
    return "a number from " + shortestText(least) + " to " + shortestText(most);
}

} // namespace

ArchivedValues::ArchivedValues(std::shared_ptr<const ArchiveObject> object, std::string where, std::string_view className) : m_object(std::move(object)), m_where(std::move(where))
{
    if (m_object->className == className)
        return;
    const std::string name = m_where.empty() ? "the archive" : m_where;
    throw ArchiveError(name + ": found an object of class " + m_object->className + ", expected one of class " + std::string(className));
}

std::string ArchivedValues::wayTo(std::string_view key) const
{
    return (m_where.empty() ? "" : m_where + ".") + std::string(key);
}

void ArchivedValues::fail(std::string_view key, const std::string& found, const std::string& expected) const
{
    throw ArchiveError(wayTo(key) + ": found " + found + ", expected " + expected);
}

void ArchivedValues::failType(const ArchiveValue* found, std::string_view key, const std::string& expected) const
{
    fail(key, found ? describeArchiveValue(*found) : "nothing", expected);
}

const ArchiveValue* ArchivedValues::find(std::string_view key) const
{
    const ArchiveValue* found = m_object->find(key);
    return found && !std::holds_alternative<std::monostate>(*found) ? found : nullptr;
}

const std::string& ArchivedValues::textIn(const ArchiveValue* value, std::string_view key) const
{
    const auto* text = value ? std::get_if<std::string>(value) : nullptr;
    if (!text)
        failType(value, key, "a text");
    if (text->size() > kLongestText)
        fail(key, "a text of " + std::to_string(text->size()) + " bytes", "at most " + std::to_string(kLongestText));
    return *text;
}

double ArchivedValues::numberIn(const ArchiveValue* value, std::string_view key, double least, double most) const
{
    const auto* number = value ? std::get_if<double>(value) : nullptr;
    const auto* whole = value ? std::get_if<std::int64_t>(value) : nullptr;
    if (!number && !whole)
        failType(value, key, between(least, most));
    const double result = number ? *number : static_cast<double>(*whole);
    if (!(result >= least && result <= most))
        fail(key, shortestText(result), between(least, most));
    return result;
}

const ArchiveArray& ArchivedValues::list(std::string_view key, const std::string& expected, std::size_t mostCount) const
{
    const ArchiveValue* value = find(key);
    const auto* list = value ? std::get_if<ListPointer>(value) : nullptr;
    if (!list)
        failType(value, key, expected);
    if ((*list)->elements.size() > mostCount)
        fail(key, "a list of " + std::to_string((*list)->elements.size()), "at most " + std::to_string(mostCount));
    return **list;
}

const std::string& ArchivedValues::text(std::string_view key) const
{
    return textIn(find(key), key);
}

std::optional<std::string> ArchivedValues::optionalText(std::string_view key) const
{
    return has(key) ? std::optional(text(key)) : std::nullopt;
}

bool ArchivedValues::flag(std::string_view key) const
{
    const ArchiveValue* value = find(key);
    const auto* flag = value ? std::get_if<bool>(value) : nullptr;
    if (!flag)
        failType(value, key, "a boolean");
    return *flag;
}

double ArchivedValues::number(std::string_view key, double least, double most) const
{
    return numberIn(find(key), key, least, most);
}

std::int64_t ArchivedValues::wholeNumber(std::string_view key, std::int64_t least) const
{
    const ArchiveValue* value = find(key);
    const auto* number = value ? std::get_if<std::int64_t>(value) : nullptr;
    if (!number)
        failType(value, key, "a whole number");
    if (*number < least)
        fail(key, std::to_string(*number), "a whole number of at least " + std::to_string(least));
    return *number;
}

std::vector<std::string> ArchivedValues::texts(std::string_view key) const
{
    std::vector<std::string> result;
    for (const ArchiveValue& element : list(key, "a list of texts", kLongestList).elements)
        result.push_back(textIn(&element, key));
    return result;
}

std::vector<double> ArchivedValues::numbers(std::string_view key, double least, double most) const
{
    std::vector<double> result;
    for (const ArchiveValue& element : list(key, "a list of numbers", kLongestList).elements)
        result.push_back(numberIn(&element, key, least, most));
    return result;
}

std::shared_ptr<ArchiveObject> ArchivedValues::anyObject(std::string_view key) const
{
    const ArchiveValue* value = find(key);
    const auto* object = value ? std::get_if<ObjectPointer>(value) : nullptr;
    if (!object)
        failType(value, key, "an object");
    return *object;
}

ArchivedValues ArchivedValues::object(std::string_view key, std::string_view className) const
{
    return {anyObject(key), wayTo(key), className};
}

std::vector<ArchivedValues> ArchivedValues::objects(std::string_view key, std::string_view className, std::size_t mostCount) const
{
    std::vector<ArchivedValues> result;
    for (const ArchiveValue& element : list(key, "a list of objects", mostCount).elements) {
        const auto* object = std::get_if<ObjectPointer>(&element);
        if (!object)
            failType(&element, key, "a list of objects");
        result.emplace_back(*object, wayTo(key) + "[" + std::to_string(result.size()) + "]", className);
    }
    return result;
}

} // namespace TOLVGraphing::app
