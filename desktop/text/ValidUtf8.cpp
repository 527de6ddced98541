#include "ValidUtf8.h"

namespace TOLVGraphing::text {

namespace {

bool isContinuation(unsigned char byte)
{
    return (byte & 0xC0U) == 0x80U;
}

} // namespace

std::size_t utf8CharacterLength(std::string_view bytes)
{
    const auto at = [&](std::size_t i) { return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : static_cast<unsigned char>(0); };
    const unsigned char lead = at(0);
    const unsigned char second = at(1);
    if (lead < 0x80U)
        return bytes.empty() ? 0 : 1;
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

std::string validUtf8(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const std::size_t length = bytes.front() == '\0' ? 0 : utf8CharacterLength(bytes);
        if (length == 0)
            text += "\xEF\xBF\xBD";
        else
            text += bytes.substr(0, length);
        bytes.remove_prefix(length == 0 ? 1 : length);
    }
    return text;
}

} // namespace TOLVGraphing::text
