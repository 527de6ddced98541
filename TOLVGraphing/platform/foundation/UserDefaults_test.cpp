#include "UserDefaults.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <memory>
#include <string>

namespace TOLVGraphing {
namespace {

TEST(UserDefaults, AnAbsentSettingIsFalseZeroAndEmpty)
{
    const MemoryUserDefaults defaults;
    EXPECT_FALSE(defaults.boolForKey("a"));
    EXPECT_EQ(defaults.integerForKey("a"), 0);
    EXPECT_EQ(defaults.stringForKey("a"), "");
}

TEST(UserDefaults, SettingsAreReadBack)
{
    MemoryUserDefaults defaults;
    defaults.setBool(true, "yes");
    defaults.setBool(false, "no");
    defaults.setInteger(800, "width");
    defaults.setInteger(std::numeric_limits<std::int64_t>::min(), "least");
    defaults.setInteger(std::numeric_limits<std::int64_t>::max(), "greatest");
    defaults.setString("Tj \n", "text");
    EXPECT_TRUE(defaults.boolForKey("yes"));
    EXPECT_FALSE(defaults.boolForKey("no"));
    EXPECT_EQ(defaults.integerForKey("width"), 800);
    EXPECT_EQ(defaults.integerForKey("least"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(defaults.integerForKey("greatest"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(defaults.stringForKey("text"), "Tj \n");
    defaults.setInteger(-3, "width");
    EXPECT_EQ(defaults.integerForKey("width"), -3);
    EXPECT_EQ(defaults.values().size(), 6U);
}

TEST(UserDefaults, TextsAreReadAsNumbersAndAnswersWhereTheyAreSome)
{
    struct Row {
        const char* text;
        std::int64_t integer;
        bool boolean;
    };
    const Row rows[] = {
        // clang-format off
        {"",                    0,   false},
        {"0",                   0,   false},
        {"1",                   1,   true},
        {"-1",                  -1,  true},
        {"600",                 600, true},
        {"true",                0,   true},
        {"yes",                 0,   true},
        {"false",               0,   false},
        {"no",                  0,   false},
        {"600 points",          0,   false},
        {" 600",                0,   false},
        {"6.5",                 0,   false},
        {"9223372036854775808", 0,   false},
        // clang-format on
    };
    for (const Row& row : rows) {
        MemoryUserDefaults defaults;
        defaults.setString(row.text, "key");
        EXPECT_EQ(defaults.integerForKey("key"), row.integer) << row.text;
        EXPECT_EQ(defaults.boolForKey("key"), row.boolean) << row.text;
        EXPECT_EQ(defaults.stringForKey("key"), row.text);
    }
}

TEST(UserDefaults, AreKeptAsTextsOfASettingsFile)
{
    MemoryUserDefaults defaults;
    defaults.setBool(true, "a");
    defaults.setBool(false, "b");
    defaults.setInteger(-12, "c");
    EXPECT_EQ(defaults.values(), (std::map<std::string, std::string, std::less<>>{{"a", "true"}, {"b", "false"}, {"c", "-12"}}));
}

TEST(UserDefaults, TheStandardOnesAreInMemoryUntilAHostInstallsItsOwn)
{
    const auto former = UserDefaults::standardUserDefaults();
    ASSERT_NE(former, nullptr);
    const auto own = std::make_shared<MemoryUserDefaults>();
    UserDefaults::setStandardUserDefaults(own);
    EXPECT_EQ(UserDefaults::standardUserDefaults(), own);
    UserDefaults::standardUserDefaults()->setBool(true, "key");
    EXPECT_TRUE(own->boolForKey("key"));
    UserDefaults::setStandardUserDefaults(nullptr);
    ASSERT_NE(UserDefaults::standardUserDefaults(), nullptr);
    EXPECT_FALSE(UserDefaults::standardUserDefaults()->boolForKey("key"));
    UserDefaults::setStandardUserDefaults(former);
}

} // namespace
} // namespace TOLVGraphing
