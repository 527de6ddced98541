#include <desktop/input/NumberScanner.h>

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <random>
#include <string>

namespace TOLVGraphing::input {

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

struct NumberCase {
    const char* text;
    char mark;
    float value;
    std::size_t length;
};

TEST(NumberScanner, numbers)
{
    // clang-format off
    const NumberCase cases[] = {
        // clang-format off
        { "0",                '.', 0.0F,             1 },
        { "-0",               '.', -0.0F,            2 },
        { "+3",               '.', 3.0F,             2 },
        { "-05.58",           '.', -5.58F,           6 },
        { "00020.20",         '.', 20.2F,            8 },
        { ".5",               '.', 0.5F,             2 },
        { "5.",               '.', 5.0F,             2 },
        { "-.5e1",            '.', -5.0F,            5 },
        { "1E-7",             '.', 1e-7F,            4 },
        { "1e+05",            '.', 1e5F,             5 },
        { "-1.28000e+00",     '.', -1.28F,          12 },
        { "1.5D2",            '.', 150.0F,           5 },
        { "1.5d-2",           '.', 0.015F,           6 },
        { "1,5",              ',', 1.5F,             3 },
        { ",5",               ',', 0.5F,             2 },
        { "-2,75E1",          ',', -27.5F,           7 },
        { "12,34",            '.', 12.0F,            2 },
        { "12.34",            ',', 12.0F,            2 },
        { "1;2",              '.', 1.0F,             1 },
        { "1.2.3",            '.', 1.2F,             3 },
        { "16777217",         '.', 16777216.0F,      8 },
        { "16777217.0000000000000001", '.', 16777218.0F, 25 },
        { "16777219",         '.', 16777220.0F,      8 },
        { "3.4028235e38",     '.', 3.4028235e38F,   12 },
        { "3.4028236e38",     '.', kInfinity,       12 },
        { "-1e39",            '.', -kInfinity,       5 },
        { "1e400",            '.', kInfinity,        5 },
        { "1e99999999999999999999", '.', kInfinity, 22 },
        { "1e-45",            '.', 1e-45F,           5 },
        { "1e-46",            '.', 0.0F,             5 },
        { "-1e-400",          '.', -0.0F,            7 },
        { "0e999999",         '.', 0.0F,             8 },
        { "1e-99999999999999999999", '.', 0.0F,     23 },
        { "1.17549435e-38",   '.', 1.17549435e-38F, 14 },
        { "0.1000000000000000055511151231257827", '.', 0.1F, 36 },
        // clang-format on
    };
    // clang-format on
    for (const NumberCase& numberCase : cases) {
        float value = 77;
        const char* end = scanNumber(numberCase.text, numberCase.mark, value);
        ASSERT_NE(end, nullptr) << numberCase.text;
        EXPECT_EQ(static_cast<std::size_t>(end - numberCase.text), numberCase.length) << numberCase.text;
        EXPECT_EQ(std::bit_cast<std::uint32_t>(value), std::bit_cast<std::uint32_t>(numberCase.value)) << numberCase.text;
    }
}

TEST(NumberScanner, notNumbers)
{
    float value = 0;
    for (const char* text : {"", "-", "+", ".", "-.", "e5", "x", "--5", "+-5", "1e", "1e+", "1ex", "5dB", " 1", "inf", "nan"})
        EXPECT_EQ(scanNumber(text, '.', value), nullptr) << text;
    for (const char* text : {"1,", "-,", ",", "1,e5"})
        EXPECT_EQ(scanNumber(text, ',', value), nullptr) << text;
}

TEST(NumberScanner, longNumbers)
{
    float value = 0;
    std::string text = std::string(400, '9');
    EXPECT_EQ(scanNumber(text.c_str(), '.', value), text.c_str() + text.size());
    EXPECT_EQ(value, kInfinity);
    text = "0." + std::string(400, '0') + "1";
    EXPECT_EQ(scanNumber(text.c_str(), '.', value), text.c_str() + text.size());
    EXPECT_EQ(value, 0.0F);
    text = "0," + std::string(400, '0') + "1e+401";
    EXPECT_EQ(scanNumber(text.c_str(), ',', value), text.c_str() + text.size());
    EXPECT_EQ(value, 1.0F);
    text = std::string(5000, '0') + "1." + std::string(5000, '0');
    EXPECT_EQ(scanNumber(text.c_str(), '.', value), text.c_str() + text.size());
    EXPECT_EQ(value, 1.0F);
}

/// What the standard library makes of a text that is in its form.
float standardValue(const std::string& text)
{
    float value = 0;
    auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    EXPECT_EQ(result.ec, std::errc()) << text;
    return value;
}

void expectStandardValue(const std::string& text)
{
    float value = 0;
    const char* end = scanNumber(text.c_str(), '.', value);
    ASSERT_EQ(end, text.c_str() + text.size()) << text;
    ASSERT_EQ(std::bit_cast<std::uint32_t>(value), std::bit_cast<std::uint32_t>(standardValue(text))) << text;
}

TEST(NumberScanner, roundsLikeTheStandardLibrary)
{
    std::mt19937_64 random(20120101);
    for (int count = 0; count < 300000; ++count) {
        std::string text = random() % 2 ? "-" : "";
        text += std::to_string(random() >> (random() % 64));
        if (random() % 2)
            text += "." + std::to_string(random() >> (random() % 64));
        if (random() % 3 == 0)
            text += "e" + std::to_string(static_cast<int>(random() % 36) - 18);
        expectStandardValue(text);
    }
}

/// Half-way between two floats, and one unit in a far place beside it: where rounding twice would go wrong.
TEST(NumberScanner, roundsOnceNearHalfWay)
{
    std::mt19937_64 random(7);
    for (int count = 0; count < 100000; ++count) {
        auto exponent = static_cast<std::uint32_t>(127 + 1 + random() % 22);
        auto bits = exponent << 23U | static_cast<std::uint32_t>(random() & 0x7FFFFFU);
        float low = std::bit_cast<float>(bits);
        float high = std::bit_cast<float>(bits + 1);
        double middle = (static_cast<double>(low) + static_cast<double>(high)) / 2;
        char buffer[64];
        auto result = std::to_chars(buffer, buffer + sizeof buffer, middle, std::chars_format::fixed, 24);
        std::string text(buffer, result.ptr);
        expectStandardValue(text);
        text.back() = '1';
        expectStandardValue(text);
        // The same a little below: ...4999 instead of ...5000.
        std::string shorter(buffer, std::to_chars(buffer, buffer + sizeof buffer, middle).ptr);
        expectStandardValue(shorter);
        if (shorter.back() == '5') {
            shorter.back() = '4';
            expectStandardValue(shorter + "9999999999999999");
        }
        expectStandardValue(std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, low).ptr));
    }
}

} // namespace

} // namespace TOLVGraphing::input
