#include "ValidUtf8.h"

#include <gtest/gtest.h>

using TOLVGraphing::text::validUtf8;

TEST(ValidUtf8, keepsWellFormedText)
{
    for (const char* text : {"", "plain", "µ∞×10⁻³ Ωé", "漢字", "\xF4\x8F\xBF\xBF", "\xEE\x80\x80", "line\nline\ttab"})
        EXPECT_EQ(validUtf8(text), text);
}

TEST(ValidUtf8, replacesEachByteThatBelongsToNoCharacter)
{
    struct Case {
        std::string_view bytes;
        const char* expected;
    };
    using namespace std::string_view_literals;
    const Case cases[] = {
        {"\xFF"sv, "\uFFFD"},
        {"a\x80z"sv, "a\uFFFDz"},
        {"cut \xC3"sv, "cut \uFFFD"},
        {"cut \xE2\x82"sv, "cut \uFFFD\uFFFD"},
        {"cut \xF0\x9F\x98"sv, "cut \uFFFD\uFFFD\uFFFD"},
        {"\xC0\xAF overlong"sv, "\uFFFD\uFFFD overlong"},
        {"\xE0\x80\xAF"sv, "\uFFFD\uFFFD\uFFFD"},
        {"\xED\xA0\x80 surrogate"sv, "\uFFFD\uFFFD\uFFFD surrogate"},
        {"\xF4\x90\x80\x80"sv, "\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xC3\x28"sv, "\uFFFD("},
        {"nul \0 in it"sv, "nul \uFFFD in it"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(validUtf8(c.bytes), c.expected);
}
