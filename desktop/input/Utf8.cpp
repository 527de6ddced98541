#include <desktop/input/Utf8.h>

#include <cstddef>

namespace TOLVGraphing::input {

namespace {

/// The length of the character at the start of a text, 0 where there is none.
std::size_t characterLength(std::string_view bytes)
{
    auto byteAt = [bytes](std::size_t index) { return static_cast<unsigned>(static_cast<unsigned char>(bytes[index])); };
    unsigned first = byteAt(0);
    if (first < 0x80U)
        return 1;
    std::size_t length = first >= 0xF0U ? 4 : first >= 0xE0U ? 3 : 2;
    if (first < 0xC2U || first > 0xF4U || bytes.size() < length)
        return 0;
    unsigned character = first & (0x7FU >> length);
    for (std::size_t index = 1; index < length; ++index) {
        if ((byteAt(index) & 0xC0U) != 0x80U)
            return 0;
        character = character << 6U | (byteAt(index) & 0x3FU);
    }
    bool isOverlong = character < (length == 4 ? 0x10000U : length == 3 ? 0x800U : 0x80U);
    bool isSurrogate = character >= 0xD800U && character < 0xE000U;
    return isOverlong || isSurrogate || character > 0x10FFFFU ? 0 : length;
}

} // namespace

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
        std::size_t length = characterLength(bytes);
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
