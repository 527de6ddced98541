#include <desktop/input/SampleRateLine.h>

#include <charconv>
#include <cmath>
#include <cstddef>
#include <string>
#include <system_error>

namespace TOLVGraphing::input {

namespace {

std::string inSmallLetters(std::string_view text)
{
    std::string result(text);
    for (char& character : result)
        character = character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character;
    return result;
}

/// The text behind "sampling frequency", "sample rate" and the like.
std::optional<std::string_view> behindKey(std::string_view line)
{
    std::size_t sample = line.find("sampl");
    if (sample == std::string_view::npos)
        return std::nullopt;
    line.remove_prefix(sample);
    for (std::string_view word : {std::string_view("frequency"), std::string_view("freq"), std::string_view("rate")}) {
        std::size_t place = line.find(word);
        if (place != std::string_view::npos)
            return line.substr(place + word.size());
    }
    return std::nullopt;
}

} // namespace

std::optional<double> statedSampleRate(std::string_view line)
{
    std::string text = inSmallLetters(line);
    auto rest = behindKey(text);
    if (!rest)
        return std::nullopt;
    std::size_t unit = rest->find_first_of("([");
    std::size_t unitEnd = rest->find_first_of(")]");
    std::size_t number = rest->find_first_of("0123456789");
    std::size_t keyEnd = unit != std::string_view::npos && unitEnd != std::string_view::npos && unit < number ? unitEnd + 1 : 0;
    std::size_t begin = rest->find_first_not_of(" \t:=,;\"", keyEnd);
    if (begin == std::string_view::npos)
        return std::nullopt;
    double rate = 0;
    auto result = std::from_chars(rest->data() + begin, rest->data() + rest->size(), rate);
    if (result.ec != std::errc() || !(rate > 0) || !std::isfinite(rate))
        return std::nullopt;
    auto has = [&](std::string_view word) { return rest->find(word) != std::string_view::npos; };
    return rate * (has("khz") ? 1e3 : has("mhz") ? 1e6 : has("ghz") ? 1e9 : 1.0);
}

} // namespace TOLVGraphing::input
