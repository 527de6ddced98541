#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing::testing_support {

/// One element of an XML document: its name, its attributes and the text between its start and the next tag, entities resolved.
struct XmlElement {
    std::string name;
    std::map<std::string, std::string> attributes;
    std::string text;

    [[nodiscard]] bool has(const std::string& attribute) const { return attributes.contains(attribute); }
    /// Throws std::runtime_error where the attribute is missing.
    [[nodiscard]] const std::string& attribute(const std::string& name) const;
    /// The number that the attribute starts with (units are passed over). Throws std::runtime_error where there is none.
    [[nodiscard]] double number(const std::string& name) const;
};

/// The elements of a document in the order of their start tags. Enough for documents of programs, which a real reader checks for being well formed: comments, declarations and end tags are
/// passed over. Throws std::runtime_error at a tag that does not end.
[[nodiscard]] std::vector<XmlElement> xmlElements(std::string_view document);

} // namespace TOLVGraphing::testing_support
