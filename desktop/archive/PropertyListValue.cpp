#include "PropertyListValue.h"

#include <algorithm>

namespace TOLVGraphing::plist {

const Value* valueIn(const Dictionary& dictionary, std::string_view key)
{
    const auto found = std::find_if(dictionary.begin(), dictionary.end(), [&](const Entry& entry) { return entry.key == key; });
    return found == dictionary.end() ? nullptr : &found->value;
}

std::string describe(const Value* value)
{
    struct Description {
        std::string operator()(bool) const { return "a boolean"; }
        std::string operator()(std::int64_t) const { return "a whole number"; }
        std::string operator()(double) const { return "a number"; }
        std::string operator()(const std::string&) const { return "a text"; }
        std::string operator()(const Data&) const { return "bytes"; }
        std::string operator()(const Date&) const { return "a date"; }
        std::string operator()(const Reference&) const { return "a reference"; }
        std::string operator()(const Array&) const { return "a list"; }
        std::string operator()(const Dictionary&) const { return "a dictionary"; }
    };
    return value ? std::visit(Description{}, value->content) : "nothing";
}

} // namespace TOLVGraphing::plist
