#pragma once

#include <TOLVGraphing/axes/TOLVLinearAxis.h>
#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/graph/TOLVGraph.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing::testing_support {

/// A graph whose horizontal axis is prepared for one range after the other.
template <typename Axis>
class GraphWithAxis {
public:
    GraphWithAxis() : m_graph(TOLVGraph::graph()), m_axis(std::make_shared<Axis>(m_graph)) { m_graph->setHorizontalAxis(m_axis); }

    const std::shared_ptr<Axis>& axis() const { return m_axis; }

    void prepare(double min, double max, double width = 400.0)
    {
        m_graph->extents()->setX(TOLVAxisExtents::extentsWithMin(min, max));
        m_axis->prepareForDrawingInRect({0.0, 0.0, width, 10.0});
    }

private:
    std::shared_ptr<TOLVGraph> m_graph;
    std::shared_ptr<Axis> m_axis;
};

/// An axis without a graph that has these major values.
inline std::shared_ptr<TOLVAxis> axisWithTicks(TOLVAxis::Values major, TOLVAxis::Values minor = {})
{
    auto axis = std::make_shared<TOLVLinearAxis>();
    axis->setMajorValues(std::move(major));
    axis->setMinorValues(std::move(minor));
    return axis;
}

/// Removes a text from the end of a label; false where it does not end so.
inline bool removeEnd(std::string& text, const std::string& end)
{
    if (!text.ends_with(end))
        return false;
    text.erase(text.size() - end.size());
    return true;
}

/// The power of ten behind the digits, in superscript or as a prefix; removed from the text.
inline int removePowerOfTen(std::string& text)
{
    const std::string superscripts[] = {"⁰", "¹", "²", "³", "⁴", "⁵", "⁶", "⁷", "⁸", "⁹"};
    const std::pair<const char*, int> prefixes[] = {{"f", -15}, {"p", -12}, {"n", -9}, {"µ", -6}, {"m", -3}, {"k", 3}, {"M", 6}, {"G", 9}, {"T", 12}, {"P", 15}, {"E", 18}};
    for (const auto& [prefix, power] : prefixes) {
        if (removeEnd(text, prefix))
            return power;
    }
    const std::size_t mark = text.find("×10");
    if (mark == std::string::npos)
        return 0;
    int power = 0;
    for (int weight = 1; !text.ends_with("×10") && !text.ends_with("⁻"); weight *= 10) {
        int digit = 0;
        while (digit < 10 && !removeEnd(text, superscripts[digit]))
            ++digit;
        if (digit == 10)
            break;
        power += digit * weight;
    }
    if (removeEnd(text, "⁻"))
        power = -power;
    EXPECT_TRUE(removeEnd(text, "×10")) << text;
    return power;
}

/// The number that a label of any style says. Anything that is no number fails the test.
inline double numberInLabel(std::string text)
{
    const std::string label = text;
    const int power = removePowerOfTen(text);
    std::erase(text, ',');
    text += "e" + std::to_string(power);
    double number = 0.0;
    EXPECT_EQ(std::from_chars(text.data(), text.data() + text.size(), number).ptr, text.data() + text.size()) << label;
    return number;
}

/// The finite tick values of the last preparation, narrowed, each once. Of two that are one tick computed in two ways, a few units in the last place apart while the others are not, the first.
inline std::vector<float> ticksOfAxis(const TOLVAxis& axis)
{
    std::set<float> ticks;
    for (const TOLVAxis::Values* values : {&axis.majorValues(), &axis.minorValues()}) {
        for (const double value : *values) {
            if (std::isfinite(static_cast<float>(value)))
                ticks.insert(static_cast<float>(value));
        }
    }
    const float spacing = ticks.size() > 1 ? (*ticks.rbegin() - *ticks.begin()) / static_cast<float>(ticks.size() - 1) : 0.0F;
    std::vector<float> distinct;
    for (const float tick : ticks) {
        const float distance = distinct.empty() ? 0.0F : tick - distinct.back();
        if (distinct.empty() || distance > std::abs(tick) * 4.0F * std::numeric_limits<float>::epsilon() || distance * 100.0F > spacing)
            distinct.push_back(tick);
    }
    return distinct;
}

inline std::vector<std::string> labelsOfTicks(const NumberFormatter& formatter, const std::vector<float>& ticks)
{
    std::vector<std::string> labels;
    for (const float tick : ticks)
        labels.push_back(labelTextFromNumber(formatter, static_cast<double>(tick)).value_or("nothing"));
    return labels;
}

/// Every label is another one than those of all other ticks and says a number that is nearer to its own tick than to the neighbours.
inline void expectLabelsTellTicksApart(const NumberFormatter& formatter, const TOLVAxis& axis)
{
    const std::vector<float> ticks = ticksOfAxis(axis);
    const std::vector<std::string> labels = labelsOfTicks(formatter, ticks);
    EXPECT_EQ(std::set<std::string>(labels.begin(), labels.end()).size(), ticks.size());
    for (std::size_t i = 0; i < ticks.size(); ++i) {
        const double said = numberInLabel(labels[i]);
        const double off = std::abs(said - static_cast<double>(ticks[i]));
        EXPECT_NE(labels[i], "-0");
        const double below = i > 0 ? static_cast<double>(ticks[i - 1]) : -std::numeric_limits<double>::infinity();
        const double above = i + 1 < ticks.size() ? static_cast<double>(ticks[i + 1]) : std::numeric_limits<double>::infinity();
        EXPECT_LT(off, std::abs(said - below)) << labels[i];
        EXPECT_LT(off, std::abs(said - above)) << labels[i];
    }
}

/// Labels of many linear axes: near and far from zero, coarse and as fine as floats are.
template <typename Formatter>
void expectLabelsTellTicksApartOnLinearAxes()
{
    std::mt19937_64 random(20250311);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    GraphWithAxis<TOLVLinearAxis> graph;
    const Formatter formatter(graph.axis());
    for (int round = 0; round < 400; ++round) {
        const double sign = round % 2 == 0 ? 1.0 : -1.0;
        const double min = round % 5 == 0 ? 0.0 : sign * std::pow(10.0, 14.0 * unit(random) - 7.0);
        const double finest = std::max(1e-6, 2.0 * std::abs(min) * static_cast<double>(std::numeric_limits<float>::epsilon()));
        const double span = round % 3 == 0 ? finest * (1.0 + 50.0 * unit(random)) : std::max(finest, std::pow(10.0, 12.0 * unit(random) - 6.0));
        graph.prepare(min, min + span, 50.0 + 1500.0 * unit(random));
        SCOPED_TRACE(testing::Message() << "from " << min << " over " << span);
        EXPECT_FALSE(ticksOfAxis(*graph.axis()).empty());
        expectLabelsTellTicksApart(formatter, *graph.axis());
    }
}

/// Labels of many logarithmic axes, of parts of a decade up to all decades of floats.
template <typename Formatter>
void expectLabelsTellTicksApartOnLogarithmicAxes()
{
    std::mt19937_64 random(20250312);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    GraphWithAxis<TOLVLogarithmicAxis> graph;
    const Formatter formatter(graph.axis());
    for (int round = 0; round < 100; ++round) {
        const double low = -45.0 + 83.0 * unit(random);
        const double high = round % 4 == 0 ? low + 0.5 + unit(random) : low + (38.5 - low) * unit(random);
        graph.prepare(std::pow(10.0, low), std::pow(10.0, high), 50.0 + 4000.0 * unit(random));
        SCOPED_TRACE(testing::Message() << "decades " << low << " to " << high);
        expectLabelsTellTicksApart(formatter, *graph.axis());
    }
}

} // namespace TOLVGraphing::testing_support
