#include "XmlElements.h"

#include <stdexcept>

namespace TOLVGraphing::testing_support {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string resolved(std::string_view text)
{
    static const std::map<std::string, std::string, std::less<>> entities{
        {"amp", "&"}, {"lt", "<"}, {"gt", ">"}, {"quot", "\""}, {"apos", "'"}, {"#13", "\r"}, {"#39", "'"}, {"#34", "\""}, {"#xb0", "\xC2\xB0"}};
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t end = text[i] == '&' ? text.find(';', i) : std::string_view::npos;
        if (end == std::string_view::npos) {
            plain += text[i];
            continue;
        }
        const auto known = entities.find(text.substr(i + 1, end - i - 1));
        if (known == entities.end())
            throw std::runtime_error("unknown entity " + std::string(text.substr(i, end - i + 1)));
        plain += known->second;
        i = end;
    }
    return plain;
}

/// Where the tag that starts at `start` ends: at a ">" outside of quotation marks.
std::size_t endOfTag(std::string_view document, std::size_t start)
{
    char quote = '\0';
    for (std::size_t i = start; i < document.size(); ++i) {
        const char character = document[i];
        if (quote != '\0')
            quote = character == quote ? '\0' : quote;
        else if (character == '"' || character == '\'')
            quote = character;
        else if (character == '>')
            return i;
    }
    throw std::runtime_error("a tag that does not end: " + std::string(document.substr(start, 60)));
}

XmlElement elementOfTag(std::string_view tag)
{
    XmlElement element;
    std::size_t at = tag.find_first_of(" \t\r\n/");
    element.name = tag.substr(0, at);
    while (at < tag.size()) {
        at = tag.find_first_not_of(" \t\r\n/", at);
        if (at == std::string_view::npos)
            break;
        const std::size_t equals = tag.find('=', at);
        const std::size_t open = equals == std::string_view::npos ? equals : tag.find_first_of("\"'", equals);
        const std::size_t close = open == std::string_view::npos ? open : tag.find(tag[open], open + 1);
        if (close == std::string_view::npos)
            throw std::runtime_error("an attribute without a value in " + std::string(tag));
        std::string name(tag.substr(at, equals - at));
        name.erase(name.find_last_not_of(kBlanks) + 1);
        element.attributes[name] = resolved(tag.substr(open + 1, close - open - 1));
        at = close + 1;
    }
    return element;
}

} // namespace

const std::string& XmlElement::attribute(const std::string& wanted) const
{
    const auto found = attributes.find(wanted);
    if (found == attributes.end())
        throw std::runtime_error("<" + name + "> has no attribute " + wanted);
    return found->second;
}

double XmlElement::number(const std::string& wanted) const
{
    return std::stod(attribute(wanted));
}

std::vector<XmlElement> xmlElements(std::string_view document)
{
    std::vector<XmlElement> elements;
    for (std::size_t at = document.find('<'); at != std::string_view::npos; at = document.find('<', at)) {
        if (document.substr(at).starts_with("<!--")) {
            at = document.find("-->", at);
            continue;
        }
        const std::size_t end = endOfTag(document, at);
        if (document[at + 1] != '/' && document[at + 1] != '?' && document[at + 1] != '!') {
            elements.push_back(elementOfTag(document.substr(at + 1, end - at - 1)));
            const std::size_t next = document.find('<', end);
            elements.back().text = resolved(document.substr(end + 1, next == std::string_view::npos ? next : next - end - 1));
        }
        at = end;
    }
    return elements;
}

} // namespace TOLVGraphing::testing_support
