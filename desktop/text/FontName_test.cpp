#include "FontName.h"

#include <gtest/gtest.h>

using namespace TOLVGraphing::text;

TEST(FontName, endingsNameTheStyle)
{
    struct Case {
        const char* name;
        FontFace expected;
    };
    const Case cases[] = {
        {"HelveticaNeue", {"HelveticaNeue", 400, false}},
        {"HelveticaNeue-Bold", {"HelveticaNeue", 700, false}},
        {"HelveticaNeue-Light", {"HelveticaNeue", 300, false}},
        {"HelveticaNeue-UltraLightItalic", {"HelveticaNeue", 200, true}},
        {"Family-BoldItalic", {"Family", 700, true}},
        {"Family-BoldOblique", {"Family", 700, true}},
        {"Family-semi bold", {"Family", 600, false}},
        {"Family-Italic", {"Family", 400, true}},
        {"Family-Roman", {"Family", 400, false}},
        {"Two-Part-Black", {"Two-Part", 900, false}},
        {"Noto-Mono", {"Noto-Mono", 400, false}},
        {"Family-BoldX", {"Family-BoldX", 400, false}},
        {"Family-", {"Family-", 400, false}},
        {"-Bold", {"-Bold", 400, false}},
        {"Liberation Sans", {"Liberation Sans", 400, false}},
        {"", {"", 400, false}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(faceFromFontName(c.name), c.expected) << c.name << " gave " << toString(faceFromFontName(c.name));
}

TEST(FontName, namedFamiliesMayHaveABlank)
{
    EXPECT_EQ(namedFamily("HelveticaNeue"), NamedFamily::HelveticaNeue);
    EXPECT_EQ(namedFamily("Helvetica Neue"), NamedFamily::HelveticaNeue);
    EXPECT_EQ(namedFamily("helvetica"), NamedFamily::Helvetica);
    EXPECT_EQ(namedFamily("Helvetica Narrow"), NamedFamily::None);
}
