#include <desktop/input/FieldValue.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace TOLVGraphing::input {

namespace {

constexpr float kGap = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr NumberStyle kPoint = {'.', false};
constexpr NumberStyle kComma = {',', false};
constexpr NumberStyle kBoth = {'.', true};

struct FieldCase {
    const char* text;
    NumberStyle style;
    FieldKind kind;
    float value;
};

TEST(FieldValue, kinds)
{
    // clang-format off
    const FieldCase cases[] = {
        // clang-format off
        { "",           kPoint, FieldKind::Empty,  kGap },
        { "nan",        kPoint, FieldKind::Empty,  kGap },
        { "-NaN",       kPoint, FieldKind::Empty,  kGap },
        { "NA",         kPoint, FieldKind::Empty,  kGap },
        { "N/A",        kPoint, FieldKind::Empty,  kGap },
        { "Null",       kPoint, FieldKind::Empty,  kGap },
        { "inf",        kPoint, FieldKind::Number, kInfinity },
        { "-Infinity",  kPoint, FieldKind::Number, -kInfinity },
        { "+INF",       kPoint, FieldKind::Number, kInfinity },
        { "1.5",        kPoint, FieldKind::Number, 1.5F },
        { "1,5",        kComma, FieldKind::Number, 1.5F },
        { "1.5",        kComma, FieldKind::Word,   kGap },
        { "1,5",        kPoint, FieldKind::Word,   kGap },
        { "1,5",        kBoth,  FieldKind::Number, 1.5F },
        { "1.5",        kBoth,  FieldKind::Number, 1.5F },
        { "1,234.5",    kBoth,  FieldKind::Word,   kGap },
        { "2012-01-01", kPoint, FieldKind::Date,   15340.0F },
        { "2012/01/01", kPoint, FieldKind::Date,   15340.0F },
        { "2012-13-01", kPoint, FieldKind::Date,   kGap },
        { "2012",       kPoint, FieldKind::Number, 2012.0F },
        { "-",          kPoint, FieldKind::Word,   kGap },
        { "rain",       kPoint, FieldKind::Word,   kGap },
        { "nanometre",  kPoint, FieldKind::Word,   kGap },
        { "5 V",        kPoint, FieldKind::Word,   kGap },
        // clang-format on
    };
    // clang-format on
    for (const FieldCase& fieldCase : cases) {
        FieldValue value = fieldValue(fieldCase.text, fieldCase.style);
        EXPECT_EQ(static_cast<int>(value.kind), static_cast<int>(fieldCase.kind)) << fieldCase.text;
        if (std::isnan(fieldCase.value))
            EXPECT_TRUE(std::isnan(value.value)) << fieldCase.text;
        else
            EXPECT_EQ(value.value, fieldCase.value) << fieldCase.text;
    }
}

} // namespace

} // namespace TOLVGraphing::input
