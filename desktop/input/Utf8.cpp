#include <desktop/input/Utf8.h>

#include <desktop/text/ValidUtf8.h>

#include <cstddef>

namespace TOLVGraphing::input {

char* appendUtf8(char* target, unsigned character)
{
    auto byte = [](unsigned value) { return static_cast<char>(static_cast<unsigned char>(value)); };
    if (character < 0x80U) {
        *target++ = byte(character);
    } else if (character < 0x800U) {
        *target++ = byte(0xC0U | (character >> 6U));
        *target++ = byte(0x80U | (character & 0x3FU));
    } else if (character < 0x10000U) {
        *target++ = byte(0xE0U | (character >> 12U));
        *target++ = byte(0x80U | ((character >> 6U) & 0x3FU));
        *target++ = byte(0x80U | (character & 0x3FU));
    } else {
        *target++ = byte(0xF0U | (character >> 18U));
        *target++ = byte(0x80U | ((character >> 12U) & 0x3FU));
        *target++ = byte(0x80U | ((character >> 6U) & 0x3FU));
        *target++ = byte(0x80U | (character & 0x3FU));
    }
    return target;
}

bool isUtf8(std::string_view bytes)
{
    while (!bytes.empty()) {
        std::size_t length = text::utf8CharacterLength(bytes);
        if (length == 0)
            return false;
        bytes.remove_prefix(length);
    }
    return true;
}

std::string asUtf8(std::string_view bytes)
{
    if (isUtf8(bytes))
        return std::string(bytes);
    std::string text;
    for (char byte : bytes) {
        char buffer[4];
        text.append(buffer, static_cast<std::size_t>(appendUtf8(buffer, static_cast<unsigned char>(byte)) - buffer));
    }
    return text;
}

} // namespace TOLVGraphing::input
