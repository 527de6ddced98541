#include "ValidUtf8.h"

#include <cstddef>

namespace TOLVGraphing::text {

namespace {

bool isContinuation(unsigned char byte)
{
    return (byte & 0xC0U) == 0x80U;
}

/// The length of the well-formed character at the beginning of the bytes, or 0. Overlong forms, surrogates and values above U+10FFFF are not well-formed.
std::size_t characterLength(std::string_view bytes)
{
    const auto at = [&](std::size_t i) { return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : static_cast<unsigned char>(0); };
    const unsigned char lead = at(0);
    const unsigned char second = at(1);
    if (lead < 0x80U)
        return lead == 0 ? 0 : 1;
    if (!isContinuation(second))
        return 0;
    if (lead >= 0xC2U && lead <= 0xDFU)
        return 2;
    if (!isContinuation(at(2)))
        return 0;
    if (lead >= 0xE0U && lead <= 0xEFU) {
        const bool isOverlong = lead == 0xE0U && second < 0xA0U;
        const bool isSurrogate = lead == 0xEDU && second > 0x9FU;
        return isOverlong || isSurrogate ? 0 : 3;
    }
    if (!isContinuation(at(3)) || lead < 0xF0U || lead > 0xF4U)
        return 0;
    const bool isOverlong = lead == 0xF0U && second < 0x90U;
    const bool isTooLarge = lead == 0xF4U && second > 0x8FU;
    return isOverlong || isTooLarge ? 0 : 4;
}

} // namespace

std::string validUtf8(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const std::size_t length = characterLength(bytes);
        if (length == 0)
            text += "\xEF\xBF\xBD";
        else
            text += bytes.substr(0, length);
        bytes.remove_prefix(length == 0 ? 1 : length);
    }
    return text;
}

} // namespace TOLVGraphing::text
