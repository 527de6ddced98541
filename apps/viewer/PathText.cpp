#include "PathText.h"

#include <desktop/text/ValidUtf8.h>

#include <charconv>
#include <cstddef>
#include <string_view>

namespace TOLVGraphing::app {

namespace {

bool standsForItself(std::string_view character)
{
    const auto first = static_cast<unsigned char>(character.front());
    return first >= 0x20U && first != 0x7FU && first != '%';
}

std::string escaped(char byte)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    return {'%', kDigits[value >> 4U], kDigits[value & 15U]};
}

} // namespace

std::string textOfPath(const std::string& path)
{
    std::string text;
    for (std::string_view rest = path; !rest.empty();) {
        const std::size_t length = text::utf8CharacterLength(rest);
        if (length > 0 && standsForItself(rest.substr(0, length)))
            text += rest.substr(0, length);
        else
            text += escaped(rest.front());
        rest.remove_prefix(length > 0 ? length : 1);
    }
    return text;
}

std::string pathOfText(const std::string& text)
{
    std::string path;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned value = 0;
        const char* digits = text.data() + i + 1;
        if (text[i] == '%' && i + 2 < text.size() && std::from_chars(digits, digits + 2, value, 16).ptr == digits + 2) {
            path += static_cast<char>(value);
            i += 2;
        } else {
            path += text[i];
        }
    }
    return path;
}

} // namespace TOLVGraphing::app
