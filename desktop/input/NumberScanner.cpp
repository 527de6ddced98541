#include <desktop/input/NumberScanner.h>

#include <charconv>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>

namespace TOLVGraphing::input {

namespace {

/// Whether a number that is not zero has a magnitude of at least one: all that tells too large from too small.
bool isLarge(std::string_view text)
{
    std::size_t letter = text.find('e');
    long exponent = 0;
    if (letter != std::string_view::npos) {
        std::size_t sign = text[letter + 1] == '+' ? 1 : 0;
        auto result = std::from_chars(text.data() + letter + 1 + sign, text.data() + text.size(), exponent);
        if (result.ec != std::errc())
            exponent = text[letter + 1] == '-' ? -std::numeric_limits<int>::max() : std::numeric_limits<int>::max();
    }
    std::string_view digits = text.substr(0, letter);
    std::size_t first = digits.find_first_of("123456789");
    std::size_t mark = digits.find('.');
    if (first == std::string_view::npos)
        return false;
    if (mark == std::string_view::npos)
        mark = digits.size();
    long place = first < mark ? static_cast<long>(mark - first) - 1 : -static_cast<long>(first - mark);
    return place + exponent >= 0;
}

} // namespace

float exactNumber(const char* begin, const char* end, char decimalMark)
{
    // Into the form that the standard library reads: no plus sign, a point, an e.
    char buffer[64] = {};
    std::string longText;
    bool isNegative = *begin == '-';
    if (*begin == '-' || *begin == '+')
        ++begin;
    auto length = static_cast<std::size_t>(end - begin);
    char* text = buffer;
    if (length > sizeof buffer) {
        longText.resize(length);
        text = longText.data();
    }
    for (std::size_t index = 0; index < length; ++index) {
        char character = begin[index];
        if (character == decimalMark)
            character = '.';
        else if ((character | 0x20) == 'd' || character == 'E')
            character = 'e';
        text[index] = character;
    }
    float magnitude = 0;
    auto result = std::from_chars(text, text + length, magnitude);
    if (result.ec == std::errc::result_out_of_range)
        magnitude = isLarge(std::string_view(text, length)) ? std::numeric_limits<float>::infinity() : 0.0F;
    return isNegative ? -magnitude : magnitude;
}

} // namespace TOLVGraphing::input
