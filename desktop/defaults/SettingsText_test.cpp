#include "SettingsText.h"

#include <gmock/gmock.h>

namespace TOLVGraphing::defaults {

void PrintTo(const SettingsProblem& problem, std::ostream* stream)
{
    *stream << problem.line << ": " << problem.message;
}

namespace {

using testing::ElementsAre;

TEST(SettingsText, ReadsValuesOfTheGeneralSection)
{
    struct Case {
        const char* text;
        std::optional<std::string> value;
    };
    const Case cases[] = {
        {"[General]\nkey=value\n", "value"},
        {"[General]\nkey=value", "value"},
        {"[General]\r\n  key =\t value \r\n", "value"},
        {"[general]\nkey=a=b\n", "a=b"},
        {"key=value\n", "value"},
        {"\xEF\xBB\xBFkey=value\n", "value"},
        {"[General]\nkey=one\nkey=two\n", "two"},
        {"[Other]\nkey=one\n[General]\nkey=two\n[Third]\nkey=three\n", "two"},
        {"[Other]\nkey=one\n[GENERAL]\nkey=two\n", "two"},
        {"[General]\nkey=\n", ""},
        {"[General]\nk%65y=value\n", "value"},
        {"[General]\nKey=value\n", std::nullopt},
        {"[Other]\nkey=value\n", std::nullopt},
        {"[General]\n;key=value\n#key=value\n", std::nullopt},
        {"[General]\nkey\n", std::nullopt},
        {"[General\nkey=value\n", "value"},
        {"", std::nullopt},
    };
    for (const Case& test : cases)
        EXPECT_EQ(SettingsText(test.text).valueForKey("key"), test.value) << test.text;
}

TEST(SettingsText, ReadsEscapedValues)
{
    struct Case {
        const char* written;
        const char* value;
    };
    const Case cases[] = {
        {"\" a; b\"", " a; b"},
        {"\"a, \\\"b\\\"\"", "a, \"b\""},
        {"C:\\\\folder", "C:\\folder"},
        {"one\\ntwo\\tthree\\r", "one\ntwo\tthree\r"},
        {"\\xe4", "ä"},
        {"\\x221e!", "∞!"},
        {"\\x1F600", "😀"},
        {"\\xd800", "\xEF\xBF\xBD"},
        {"\\x123456789abc", "\xEF\xBF\xBD"},
        {"end\\", "end\\"},
    };
    for (const Case& test : cases)
        EXPECT_EQ(SettingsText(std::string("key=") + test.written).valueForKey("key"), test.value) << test.written;
}

TEST(SettingsText, WritesWhatItReads)
{
    struct Case {
        std::string value;
        const char* written;
    };
    const Case cases[] = {
        {"true", "key=true"},
        {"-12", "key=-12"},
        {"two words", "key=two words"},
        {"", "key="},
        {" before", "key=\" before\""},
        {"a;b", "key=\"a;b\""},
        {"a=b, \"c\"", "key=\"a=b, \\\"c\\\"\""},
        {"back\\slash", "key=back\\\\slash"},
        {"two\nlines\t", "key=\"two\\nlines\\t\""},
        {"\x01"
         "b",
            "key=\\x01\\x62"},
        {std::string("\0z", 2), "key=\\x00z"},
        {"µ∞", "key=µ∞"},
    };
    for (const Case& test : cases) {
        SettingsText settings;
        settings.setValue(test.value, "key");
        EXPECT_EQ(settings.text(), std::string("[General]\n") + test.written + "\n");
        EXPECT_EQ(SettingsText(settings.text()).valueForKey("key"), test.value);
    }
}

TEST(SettingsText, WritesAnyName)
{
    SettingsText settings;
    for (const char* key : {"a=b", "[x]", ";", "two words", "new\nline", "ä", "a%41"})
        settings.setValue(key, key);
    EXPECT_EQ(settings.text(), "[General]\na%3Db=\"a=b\"\n%5Bx%5D=[x]\n%3B=\";\"\ntwo%20words=two words\nnew%0Aline=new\\nline\n%C3%A4=ä\na%2541=a%41\n");
    for (const char* key : {"a=b", "[x]", ";", "two words", "new\nline", "ä", "a%41"})
        EXPECT_EQ(settings.valueForKey(key), key);
    EXPECT_TRUE(settings.problems().empty());
}

TEST(SettingsText, KeepsEveryOtherLine)
{
    struct Case {
        const char* before;
        const char* after;
    };
    const Case cases[] = {
        {"; mine\n[General]\nother=1\nkey=old ; x\n\nwhat is this\n[Window]\nkey=9\n", "; mine\n[General]\nother=1\nkey=new\n\nwhat is this\n[Window]\nkey=9\n"},
        {"[General]\nother=1\n\n[Window]\nkey=9\n", "[General]\nother=1\nkey=new\n\n[Window]\nkey=9\n"},
        {"[General]\n\n[Window]\nkey=9\n", "[General]\nkey=new\n\n[Window]\nkey=9\n"},
        {"[Window]\nkey=9\n", "[Window]\nkey=9\n\n[General]\nkey=new\n"},
        {"[Window]\nkey=9", "[Window]\nkey=9\n\n[General]\nkey=new\n"},
        {"[General]\nother=1", "[General]\nother=1\nkey=new\n"},
        {"[General]\r\nkey=old\r\n", "[General]\r\nkey=new\r\n"},
        {"\xEF\xBB\xBFkey=old\n", "\xEF\xBB\xBFkey=new\n"},
        {"key=one\nkey=two\n", "key=one\nkey=new\n"},
        {"", "[General]\nkey=new\n"},
    };
    for (const Case& test : cases) {
        SettingsText settings(test.before);
        EXPECT_EQ(settings.text(), test.before);
        settings.setValue("new", "key");
        EXPECT_EQ(settings.text(), test.after);
        EXPECT_EQ(settings.valueForKey("key"), "new");
    }
}

TEST(SettingsText, TellsTheLinesThatSayNothing)
{
    const SettingsText settings("; a comment\n[General]\nkey=1\nno sign\n=nameless\n[Other]\nno sign either\n");
    EXPECT_THAT(settings.problems(), ElementsAre(SettingsProblem{4, "expected key=value"}, SettingsProblem{5, "expected key=value"}));
    EXPECT_EQ(settings.lineOfKey("key"), 3U);
    EXPECT_EQ(settings.lineOfKey("missing"), 0U);
}

} // namespace
} // namespace TOLVGraphing::defaults
