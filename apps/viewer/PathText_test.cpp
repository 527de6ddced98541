#include "PathText.h"

#include <gtest/gtest.h>

#include <string>

namespace TOLVGraphing::app {

namespace {

struct PathCase {
    const char* path;
    const char* text;
};

const PathCase kCases[] = {
    {"", ""},
    {"/data/scope.csv", "/data/scope.csv"},
    {"/data/\xC3\x9C"
     "bung 1.csv",
        "/data/\xC3\x9C"
        "bung 1.csv"},
    {"100%.csv", "100%25.csv"},
    {"100%25.csv", "100%2525.csv"},
    {"a\tb\nc\x7F", "a%09b%0Ac%7F"},
    {"\xFC"
     "bung",
        "%FCbung"},
    {"cut \xE2\x82", "cut %E2%82"},
};

} // namespace

TEST(PathText, isUtf8InOneLineAndReadsBack)
{
    for (const PathCase& one : kCases) {
        EXPECT_EQ(textOfPath(one.path), one.text);
        EXPECT_EQ(pathOfText(one.text), one.path);
    }
}

TEST(PathText, readsPercentSignsWithoutDigitsAsThemselves)
{
    EXPECT_EQ(pathOfText("100%"), "100%");
    EXPECT_EQ(pathOfText("5%4"), "5%4");
    EXPECT_EQ(pathOfText("%4x%zz%-1"), "%4x%zz%-1");
    EXPECT_EQ(pathOfText("%e4"), "\xE4");
}

} // namespace TOLVGraphing::app
