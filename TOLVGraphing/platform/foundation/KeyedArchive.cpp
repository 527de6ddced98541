#include "KeyedArchive.h"

namespace TOLVGraphing {

const ArchiveValue* ArchiveObject::find(std::string_view key) const
{
    for (const auto& [name, value] : values) {
        if (name == key)
            return &value;
    }
    return nullptr;
}

std::string describeArchiveValue(const ArchiveValue& value)
{
    struct Description {
        std::string operator()(std::monostate) const { return "nothing"; }
        std::string operator()(bool) const { return "a boolean"; }
        std::string operator()(std::int64_t) const { return "a whole number"; }
        std::string operator()(double) const { return "a number"; }
        std::string operator()(const std::string&) const { return "a text"; }
        std::string operator()(const std::shared_ptr<ArchiveObject>& object) const { return object ? "an object of class " + object->className : "nothing"; }
        std::string operator()(const std::shared_ptr<ArchiveArray>& list) const { return list ? "a list" : "nothing"; }
    };
    return std::visit(Description{}, value);
}

} // namespace TOLVGraphing
