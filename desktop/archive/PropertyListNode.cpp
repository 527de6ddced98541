#include "PropertyListNode.h"

#include <cstdint>
#include <cstdlib>

namespace TOLVGraphing::plist {

namespace {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

/// The length of the UTF-8 sequence at the start of the text, or 0 when there is no well-formed one.
std::size_t sequenceLength(std::string_view text)
{
    const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned>(static_cast<unsigned char>(text[i])) : 0U; };
    const auto continues = [&](std::size_t i) { return (byte(i) & 0xC0U) == 0x80U; };
    const unsigned first = byte(0);
    if (first < 0x80U)
        return 1;
    if (first >= 0xC2U && first < 0xE0U)
        return continues(1) ? 2 : 0;
    if (first >= 0xE0U && first < 0xF0U) {
        // Neither a longer form of a shorter sequence nor half of a surrogate pair.
        const bool allowed = (first != 0xE0U || byte(1) >= 0xA0U) && (first != 0xEDU || byte(1) < 0xA0U);
        return allowed && continues(1) && continues(2) ? 3 : 0;
    }
    if (first >= 0xF0U && first < 0xF5U) {
        const bool allowed = (first != 0xF0U || byte(1) >= 0x90U) && (first != 0xF4U || byte(1) < 0x90U);
        return allowed && continues(1) && continues(2) && continues(3) ? 4 : 0;
    }
    return 0;
}

} // namespace

std::vector<plist_t> arrayElements(plist_t array)
{
    std::vector<plist_t> elements;
    elements.reserve(plist_array_get_size(array));
    plist_array_iter iterator = nullptr;
    plist_array_new_iter(array, &iterator);
    const std::unique_ptr<void, FreeDeleter> owner(iterator);
    plist_t element = nullptr;
    for (plist_array_next_item(array, iterator, &element); element; plist_array_next_item(array, iterator, &element))
        elements.push_back(element);
    return elements;
}

std::vector<std::pair<std::string, plist_t>> dictionaryEntries(plist_t dictionary)
{
    std::vector<std::pair<std::string, plist_t>> entries;
    entries.reserve(plist_dict_get_size(dictionary));
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(dictionary, &iterator);
    const std::unique_ptr<void, FreeDeleter> owner(iterator);
    for (;;) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(dictionary, iterator, &key, &value);
        const std::unique_ptr<char, FreeDeleter> keyOwner(key);
        if (!value)
            return entries;
        entries.emplace_back(key ? key : "", value);
    }
}

std::string_view textOf(plist_t string)
{
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(string, &length);
    return text ? std::string_view(text, length) : std::string_view();
}

bool isStorableText(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t length = text.front() == '\0' ? 0 : sequenceLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

std::string describe(plist_t node)
{
    if (!node)
        return "nothing";
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: return "a boolean";
    case PLIST_UINT: return "a whole number";
    case PLIST_REAL: return "a number";
    case PLIST_STRING: return "a text";
    case PLIST_KEY: return "a key";
    case PLIST_ARRAY: return "a list";
    case PLIST_DICT: return "a dictionary";
    case PLIST_DATE: return "a date";
    case PLIST_DATA: return "bytes";
    case PLIST_UID: return "a reference";
    case PLIST_NONE: break;
    }
    return "an unknown value";
}

} // namespace TOLVGraphing::plist
