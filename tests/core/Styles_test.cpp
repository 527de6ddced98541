#include "../support/Comparison.h"
#include "../support/JsonValues.h"
#include "../support/RecordedCalls.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/data/ColorOperations.h>
#include <TOLVGraphing/data/TOLVLineStyle.h>

#include <string>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

std::shared_ptr<TOLVLineStyle> presetOfKind(const std::string& kind)
{
    if (kind == "solid")
        return TOLVLineStyle::solidLineWithColor(Color::blackColor(), 1.0);
    if (kind == "dashed")
        return TOLVLineStyle::dashedLineStyle();
    if (kind == "dashDot")
        return TOLVLineStyle::dashDotLineStyle();
    if (kind == "dotted")
        return TOLVLineStyle::dottedLineStyle();
    throw JsonError("there is no preset \"" + kind + "\"");
}

void expectPattern(const std::optional<std::vector<float>>& got, const Json& expected)
{
    const auto pattern = patternOf(expected);
    ASSERT_EQ(got.has_value(), pattern.has_value());
    if (got) {
        EXPECT_TRUE(same(*got, *pattern)) << "patternValues";
    }
}

void expectStyle(const TOLVLineStyle& style, const Json& expected)
{
    expectPattern(style.patternValues(), expected["patternValues"]);
    EXPECT_TRUE(same(style.thickness(), expected["thickness"].number())) << "thickness";
    EXPECT_TRUE(same(style.color(), colorOf(expected["color"]))) << "color";
}

/// One call on a context as the expected values write it.
void expectCall(const RecordedCall& call, const Json& expected)
{
    const std::string& operation = expected[0].text();
    if (operation == "dash") {
        ASSERT_EQ(call.operation(), "lineDash");
        EXPECT_TRUE(same(call.dash().phase, expected[1].number())) << "phase";
        EXPECT_TRUE(same(call.dash().lengths, doublesOf(expected[2]))) << "lengths";
    } else if (operation == "width") {
        ASSERT_EQ(call.operation(), "lineWidth");
        EXPECT_TRUE(same(call.number(), expected[1].number()));
    } else {
        ASSERT_EQ(operation, "strokeColor");
        ASSERT_EQ(call.operation(), "strokeColor");
        const auto color = colorOf(expected[1]);
        EXPECT_EQ(call.arguments(), color ? toString(*color) : "none");
    }
}

} // namespace

EXPECTED_VALUES_TEST(styles, preset)
{
    const auto style = presetOfKind(testCase.input["kind"].text());
    expectPattern(style->patternValues(), testCase.expected["patternValues"]);
    EXPECT_TRUE(same(style->thickness(), testCase.expected["thickness"].number()));
}

EXPECTED_VALUES_TEST(styles, newStyle)
{
    expectStyle(TOLVLineStyle(), testCase.expected);
}

EXPECTED_VALUES_TEST(styles, styleWithColor)
{
    const auto receiver = lineStyleOf(testCase.input);
    const auto result = receiver->styleWithColor(colorOf(testCase.input["newColor"]));
    expectStyle(*result, testCase.expected["result"]);
    expectStyle(*receiver, testCase.expected["receiver"]);
}

EXPECTED_VALUES_TEST(styles, setInContext)
{
    const auto style = lineStyleOf(testCase.input);
    const auto calls = recorded([&] { style->set(); });
    const Json& expected = testCase.expected["calls"];
    ASSERT_EQ(calls.size(), expected.size());
    for (std::size_t i = 0; i < calls.size(); ++i) {
        SCOPED_TRACE("call " + std::to_string(i));
        expectCall(calls[i], expected[i]);
    }
}

EXPECTED_VALUES_TEST(styles, labelColors)
{
    const Color color = colorOf(testCase.input["color"]).value();
    EXPECT_EQ(needsDarkLabel(color), testCase.expected["needsDarkLabel"].boolean());
    EXPECT_TRUE(same(appropriateLabelColor(color), colorOf(testCase.expected["appropriateLabelColor"]).value()));
    EXPECT_TRUE(same(appropriateSecondaryColor(color), colorOf(testCase.expected["appropriateSecondaryColor"]).value()));
}

EXPECTED_VALUES_TEST(styles, blend)
{
    const Color a = colorOf(testCase.input["a"]).value();
    const Color b = colorOf(testCase.input["b"]).value();
    EXPECT_TRUE(same(linearBurn(a, b), colorOf(testCase.expected["linearBurn"]).value())) << "linearBurn";
    EXPECT_TRUE(same(linearDodge(a, b), colorOf(testCase.expected["linearDodge"]).value())) << "linearDodge";
    EXPECT_TRUE(same(multiply(a, b), colorOf(testCase.expected["multiply"]).value())) << "multiply";
}

EXPECTED_VALUES_TEST(styles, hex)
{
    const auto color = colorWithSRGBHexString(testCase.input["text"].text(), testCase.input["alpha"].number());
    EXPECT_TRUE(same(color, colorOf(testCase.expected["color"])));
}
