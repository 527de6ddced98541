#include "../support/Json.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

using namespace TOLVGraphing::testing_support;

namespace {

std::string errorOf(const std::string& text)
{
    try {
        static_cast<void>(Json::parse(text));
    } catch (const JsonError& error) {
        return error.what();
    }
    return "accepted";
}

} // namespace

TEST(Json, ReadsEveryKindOfValue)
{
    const Json json = Json::parse(" {\"a\": [1, -2.5e3, true, false, null], \"b\": {\"c\": \"\\u00e9\\ud83d\\ude00\\n\"}}\n");
    EXPECT_EQ(json["a"].size(), 5U);
    EXPECT_EQ(json["a"][0].integer(), 1);
    EXPECT_EQ(json["a"][1].number(), -2500.0);
    EXPECT_TRUE(json["a"][2].boolean());
    EXPECT_FALSE(json["a"][3].boolean());
    EXPECT_TRUE(json["a"][4].isNull());
    EXPECT_EQ(json["b"]["c"].text(), "\xC3\xA9\xF0\x9F\x98\x80\n");
    EXPECT_EQ(json.find("z"), nullptr);
}

TEST(Json, KeepsNumbersExactly)
{
    EXPECT_EQ(Json::parse("9223372036854775807").integer(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(Json::parse("18446744073709551615").unsignedInteger(), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(Json::parse("1.10").numberText(), "1.10");
    EXPECT_EQ(Json::parse("3.4028234663852886e+38").number(), static_cast<double>(std::numeric_limits<float>::max()));
    EXPECT_EQ(Json::parse("0.1").singleNumber(), 0.1F);
    EXPECT_TRUE(std::signbit(Json::parse("-0.0").number()));
}

TEST(Json, ReadsTextsInANumbersPlace)
{
    EXPECT_TRUE(std::isnan(Json::parse("\"NaN\"").number()));
    EXPECT_EQ(Json::parse("\"Infinity\"").number(), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Json::parse("\"-Infinity\"").singleNumber(), -std::numeric_limits<float>::infinity());
    EXPECT_FALSE(Json::parse("\"nan\"").isNumber());
}

TEST(Json, RefusesWhatIsNotStrictJson)
{
    struct Row {
        const char* text;
        const char* error;
    };
    const Row rows[] = {
        {"", "1:1: expected a digit"},
        {"[1,]", "1:4: expected a digit"},
        {"[1 2]", "1:4: expected \",\""},
        {"{\"a\":1,}", "1:8: expected a key"},
        {"{\"a\":1,\n\"a\":2}", "2:4: expected another key than \"a\" a second time"},
        {"{a:1}", "1:2: expected a key"},
        {"{\"a\" 1}", "1:6: expected \":\""},
        {"01", "1:2: expected the end of the text"},
        {"+1", "1:1: expected a digit"},
        {".5", "1:1: expected a digit"},
        {"1.", "1:3: expected a digit"},
        {"1e", "1:3: expected a digit"},
        {"NaN", "1:1: expected a digit"},
        {"nul", "1:1: expected a value"},
        {"\"a", "1:3: expected a closing quotation mark"},
        {"\"\\x\"", "1:3: expected an escape"},
        {"\"\\u12g4\"", "1:4: expected four hexadecimal digits"},
        {"\"\\ud800x\"", "1:8: expected the second half of a surrogate pair"},
        {"1 // one", "1:3: expected the end of the text"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(errorOf(row.text), row.error) << row.text;
    EXPECT_EQ(errorOf(std::string(100'000, '[')), "1:202: expected fewer levels");
}

TEST(Json, NamesTheKindThatWasFound)
{
    EXPECT_THROW(static_cast<void>(Json::parse("1.0").integer()), JsonError);
    EXPECT_THROW(static_cast<void>(Json::parse("18446744073709551616").unsignedInteger()), JsonError);
    EXPECT_THROW(static_cast<void>(Json::parse("1e999").number()), JsonError);
    EXPECT_THROW(static_cast<void>(Json::parse("[]")[std::size_t{0}]), JsonError);
    EXPECT_THROW(static_cast<void>(Json::parse("{}")["a"]), JsonError);
    try {
        static_cast<void>(Json::parse("[]").boolean());
        ADD_FAILURE() << "no error";
    } catch (const JsonError& error) {
        EXPECT_STREQ(error.what(), "found a list where a boolean was expected");
    }
}
