#include "../support/Comparison.h"
#include "../support/GraphSetup.h"
#include "../support/JsonValues.h"
#include "../support/RecordedCalls.h"
#include "../support/StubTextSystem.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/data/TOLVLabel.h>
#include <TOLVGraphing/data/TOLVMarker.h>

#include <string>
#include <utility>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

TOLVAxis::Labels labelsAt(const std::vector<Rect>& rects)
{
    TOLVAxis::Labels labels;
    for (const Rect& rect : rects)
        labels.push_back(TOLVLabel::labelWithAttributedString(AttributedString("placed"), rect));
    return labels;
}

/// The tick values of one kind in a case; every value's text gets the width that the case gives it.
TOLVAxis::Values installValues(const Json& json, const StubTextScope& text)
{
    TOLVAxis::Values values;
    for (const Json& entry : json.elements()) {
        values.push_back(entry["value"].number());
        const auto shown = static_cast<double>(entry["value"].singleNumber());
        text->setSize(ExactNumberFormatter().stringFromNumber(shown).value(), {entry["width"].number(), 20.0});
    }
    return values;
}

/// The tolerance along the axis; across it and for the size the result is exact.
void expectRect(const Rect& got, const Rect& expected, bool vertical, double alongTolerance)
{
    EXPECT_TRUE(within(got.x(), expected.x(), vertical ? 0.0 : alongTolerance)) << "x";
    EXPECT_TRUE(within(got.y(), expected.y(), vertical ? alongTolerance : 0.0)) << "y";
    EXPECT_TRUE(same(got.size, expected.size));
}

struct TickLabelExpectation {
    const char* kind;
    TOLVAxis::Values values;
    std::vector<Rect> rects;
    std::vector<std::size_t> kept;
};

/// The kept labels have to be those of the values at the kept positions, in order: text and rectangle tell which value a label is of.
void expectKept(const TOLVAxis::Labels& labels, const TickLabelExpectation& expectation, bool vertical, double tolerance)
{
    ASSERT_EQ(labels.size(), expectation.kept.size()) << expectation.kind;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        SCOPED_TRACE(std::string("kept ") + expectation.kind + " label " + std::to_string(i));
        const std::size_t position = expectation.kept[i];
        const auto value = static_cast<float>(expectation.values.at(position));
        EXPECT_TRUE(same(ExactNumberFormatter::numberFromString(labels[i]->label().string()), static_cast<double>(value)));
        expectRect(labels[i]->rect(), expectation.rects.at(position), vertical, tolerance);
    }
}

/// An axis whose labels all are the one that a test gives.
class FixedLabelAxis final : public TOLVAxis {
public:
    explicit FixedLabelAxis(std::shared_ptr<TOLVLabel> label) : m_label(std::move(label)) {}

    [[nodiscard]] std::shared_ptr<TOLVLabel> labelForValue(float, const Rect&) const override { return m_label; }
    [[nodiscard]] Rect tickLabelRectInRect(const Rect& rect) const override { return rect; }

private:
    std::shared_ptr<TOLVLabel> m_label;
};

} // namespace

EXPECTED_VALUES_TEST(labels, overlaps)
{
    const auto label = TOLVLabel::labelWithAttributedString(AttributedString("label"), rectOf(testCase.input["rect"]));
    const auto placed = labelsAt(rectsOf(testCase.input["placed"]));
    const Json& insets = testCase.input["insets"];
    const bool overlaps = insets.isNull() ? label->overlapsLabelInArray(placed) : label->overlapsLabelInArray(placed, insetsOf(insets));
    EXPECT_EQ(overlaps, testCase.expected["overlaps"].boolean());
}

EXPECTED_VALUES_TEST(labels, liesOutside)
{
    const auto label = TOLVLabel::labelWithAttributedString(AttributedString("label"), rectOf(testCase.input["rect"]));
    EXPECT_EQ(label->liesOutsideRect(rectOf(testCase.input["in"]), testCase.input["vertical"].boolean()), testCase.expected["outside"].boolean());
}

EXPECTED_VALUES_TEST(labels, tickLabels)
{
    const Json& input = testCase.input;
    const Json& expected = testCase.expected;
    const bool vertical = input["vertical"].boolean();
    const double tolerance = expected["tolAbs"].number();
    const StubTextScope text;
    text->setAscender(input["ascender"].number());
    const auto [graph, axis] = axisSetup(input["axis"].text(), vertical, extentsOf(input["extents"]));
    graph->setLabelFontHeight(input["labelFontHeight"].number());
    axis->setMargin(input["margin"].number());
    axis->setDrawsMinorLabels(input["drawsMinorLabels"].boolean());
    axis->setTickLabelFormatter(std::make_shared<ExactNumberFormatter>());
    const Rect strip = rectOf(input["rect"]);

    const TickLabelExpectation major{"major", installValues(input["major"], text), rectsOf(expected["majorRects"]), indexesOf(expected["majorKept"])};
    const TickLabelExpectation minor{"minor", installValues(input["minor"], text), rectsOf(expected["minorRects"]), indexesOf(expected["minorKept"])};
    for (const TickLabelExpectation& expectation : {major, minor}) {
        ASSERT_EQ(expectation.values.size(), expectation.rects.size());
        for (std::size_t i = 0; i < expectation.values.size(); ++i) {
            SCOPED_TRACE(std::string(expectation.kind) + " label " + std::to_string(i));
            expectRect(axis->labelForValue(static_cast<float>(expectation.values[i]), strip)->rect(), expectation.rects[i], vertical, tolerance);
        }
    }
    TOLVAxis::Labels majorLabels;
    TOLVAxis::Labels minorLabels;
    axis->getMajorLabels(majorLabels, major.values, minorLabels, minor.values, strip);
    expectKept(majorLabels, major, vertical, tolerance);
    expectKept(minorLabels, minor, vertical, tolerance);
}

EXPECTED_VALUES_TEST(labels, badge)
{
    const Json& expected = testCase.expected;
    const Rect labelRect = rectOf(testCase.input["labelRect"]);
    const StubTextScope text(sizeOf(testCase.input["textSize"]));
    const FixedLabelAxis axis(TOLVLabel::labelWithAttributedString(AttributedString("5"), labelRect));

    const auto calls = recorded([&] { axis.drawMarkers({TOLVMarker::markerWithValue(5.0)}, labelRect); });
    const double radius = expected["cornerRadius"].number();
    EXPECT_TRUE(samePath(onlyCallOf(calls, "fill").path(), Path::pathWithRoundedRect(rectOf(expected["badge"]), radius, radius)));
    EXPECT_TRUE(same(onlyCallOf(calls, "text").textOrigin(), pointOf(expected["textAt"])));
}
