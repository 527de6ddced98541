#include <hosts/qt6/QtUserDefaults.h>

#include <QSettings>

#include <gtest/gtest.h>

using namespace TOLVGraphing;

namespace {

class QtSettings : public testing::Test {
protected:
    ~QtSettings() override { QSettings().clear(); }

    QtUserDefaults m_defaults;
};

TEST_F(QtSettings, NamesWithoutAValueReadAsFalseZeroAndNothing)
{
    EXPECT_FALSE(m_defaults.boolForKey("absent"));
    EXPECT_EQ(m_defaults.integerForKey("absent"), 0);
    EXPECT_EQ(m_defaults.stringForKey("absent"), "");
}

TEST_F(QtSettings, KeepWhatIsSet)
{
    m_defaults.setBool(true, "flag");
    m_defaults.setInteger(-9'000'000'000, "number");
    m_defaults.setString("Größe", "text");
    QSettings().sync();
    const QtUserDefaults others;
    EXPECT_TRUE(others.boolForKey("flag"));
    EXPECT_EQ(others.integerForKey("number"), -9'000'000'000);
    EXPECT_EQ(others.stringForKey("text"), "Größe");
    m_defaults.setBool(false, "flag");
    EXPECT_FALSE(others.boolForKey("flag"));
}

TEST_F(QtSettings, WhatAUserWroteIsUnderstood)
{
    struct Case {
        const char* text;
        bool flag;
        std::int64_t number;
    };
    for (const Case& test : {Case{"true", true, 0}, Case{"Yes", true, 0}, Case{"1", true, 1}, Case{"800", true, 800}, Case{"0", false, 0}, Case{"no", false, 0},
             Case{"many", false, 0}, Case{"", false, 0}}) {
        QSettings().setValue("key", QString(test.text));
        EXPECT_EQ(m_defaults.boolForKey("key"), test.flag) << test.text;
        EXPECT_EQ(m_defaults.integerForKey("key"), test.number) << test.text;
    }
}

} // namespace
