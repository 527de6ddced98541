#include <desktop/input/Utf8.h>

#include <gtest/gtest.h>

namespace TOLVGraphing::input {

namespace {

TEST(Utf8, validTexts)
{
    using namespace std::string_view_literals;
    for (std::string_view text : {""sv, "abc"sv, "\0"sv, "\u00B5"sv, "\u07FF\u0800\uFFFF"sv, "\U00010000\U0010FFFF"sv})
        EXPECT_TRUE(isUtf8(text)) << text;
    for (std::string_view text : {"\x80"sv, "\xB5V"sv, "\xC2"sv, "\xC0\x80"sv, "\xC1\xBF"sv, "\xE0\x9F\xBF"sv, "\xED\xA0\x80"sv, "\xF0\x8F\xBF\xBF"sv, "\xF4\x90\x80\x80"sv,
             "\xF5\x80\x80\x80"sv, "\xE2\x82"sv, "\xC2\x41"sv, "\xFF"sv})
        EXPECT_FALSE(isUtf8(text)) << text;
}

TEST(Utf8, everyCharacterIsValid)
{
    for (unsigned character = 0; character <= 0x10FFFF; ++character) {
        char buffer[4];
        std::string_view text(buffer, static_cast<std::size_t>(appendUtf8(buffer, character) - buffer));
        bool isSurrogate = character >= 0xD800 && character < 0xE000;
        ASSERT_EQ(isUtf8(text), !isSurrogate) << character;
    }
}

TEST(Utf8, otherBytesAreLatin1)
{
    EXPECT_EQ(asUtf8("\u00B5V"), "\u00B5V");
    EXPECT_EQ(asUtf8("\xB5V"), "\u00B5V");
    EXPECT_EQ(asUtf8("\xFF"), "\u00FF");
    EXPECT_EQ(asUtf8("\xC3\xA9 \xE9"), "\u00C3\u00A9 \u00E9");
}

} // namespace

} // namespace TOLVGraphing::input
