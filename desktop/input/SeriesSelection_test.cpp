#include "SeriesSelection.h"

#include <desktop/input/MeasurementError.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace TOLVGraphing::input {
namespace {

constexpr float kGap = std::numeric_limits<float>::quiet_NaN();

MeasurementColumn column(std::string name, std::vector<float> values, ColumnKind kind = ColumnKind::Number, std::string unit = "")
{
    MeasurementColumn result;
    result.name = std::move(name);
    result.unit = std::move(unit);
    result.kind = kind;
    for (const float value : values)
        result.gapCount += std::isnan(value) ? 1 : 0;
    result.values = std::move(values);
    return result;
}

MeasurementTable table(std::vector<MeasurementColumn> columns)
{
    MeasurementTable result;
    result.sourceName = "file.csv";
    result.columns = std::move(columns);
    return result;
}

std::vector<float> values(const TOLVGraphData::Samples& samples)
{
    return {samples->components(), samples->components() + samples->length()};
}

std::string errorOf(MeasurementTable&& input, const ColumnRequest& request)
{
    try {
        (void)selectSeries(std::move(input), request);
    } catch (const MeasurementError& error) {
        return error.what();
    }
    return "no error";
}

TEST(SeriesSelection, FirstColumnIsXAndEveryOtherNumberColumnASeries)
{
    const auto selection = selectSeries(
        table({column("t", {0, 1, 2}, ColumnKind::Number, "s"), column("a", {5, 6, 7}, ColumnKind::Number, "V"), column("word", {kGap, kGap, kGap}, ColumnKind::Text), column("b", {1, 2, 3})}), {});
    ASSERT_EQ(selection.series.size(), 2U);
    EXPECT_EQ(selection.series[0].data->name(), "a");
    EXPECT_EQ(selection.series[0].unit, "V");
    EXPECT_EQ(selection.series[1].data->name(), "b");
    EXPECT_EQ(values(selection.series[0].data->X()), (std::vector<float>{0, 1, 2}));
    EXPECT_EQ(values(selection.series[0].data->Y()), (std::vector<float>{5, 6, 7}));
    EXPECT_EQ(selection.xName, "t");
    EXPECT_EQ(selection.xUnit, "s");
    EXPECT_TRUE(selection.notes.empty());
    EXPECT_EQ(selection.series[0].data->X(), selection.series[1].data->X()) << "series share their abscissae";
}

TEST(SeriesSelection, WhereTheFirstColumnIsNotXTheRowNumberIs)
{
    EXPECT_EQ(values(selectSeries(table({column("only", {5, 6, 7})}), {}).series[0].data->X()), (std::vector<float>{0, 1, 2}));
    const auto words = selectSeries(table({column("name", {kGap, kGap}, ColumnKind::Text), column("a", {3, 4})}), {});
    EXPECT_EQ(values(words.series[0].data->X()), (std::vector<float>{0, 1}));
    EXPECT_EQ(words.xName, "sample");
    const auto asked = selectSeries(table({column("t", {7, 8}), column("a", {3, 4})}), {"index", {"a"}});
    EXPECT_EQ(values(asked.series[0].data->X()), (std::vector<float>{0, 1}));
}

TEST(SeriesSelection, ColumnsAreFoundByNameBeforeNumber)
{
    const auto make = [] { return table({column("2", {0, 1}), column("a", {3, 4}), column("", {5, 6})}); };
    EXPECT_EQ(requireColumn(make(), "2"), 0U);
    EXPECT_EQ(requireColumn(make(), "a"), 1U);
    EXPECT_EQ(requireColumn(make(), "3"), 2U);
    EXPECT_EQ(requireColumn(make(), "1"), 0U);
    const auto selection = selectSeries(make(), {"a", {"1", "3", "3"}});
    ASSERT_EQ(selection.series.size(), 3U);
    EXPECT_EQ(values(selection.series[0].data->Y()), (std::vector<float>{0, 1}));
    EXPECT_EQ(values(selection.series[2].data->Y()), (std::vector<float>{5, 6}));
    const auto same = selectSeries(make(), {"a", {"a"}});
    EXPECT_EQ(values(same.series[0].data->Y()), values(same.series[0].data->X()));
}

TEST(SeriesSelection, SamplesWithoutAFiniteNumberAreLeftOut)
{
    const float inf = std::numeric_limits<float>::infinity();
    const auto selection = selectSeries(table({column("t", {0, kGap, 2, 3, 4}), column("a", {5, 6, kGap, inf, 9}), column("b", {1, 2, 3, 4, 5})}), {});
    EXPECT_EQ(values(selection.series[0].data->X()), (std::vector<float>{0, 4}));
    EXPECT_EQ(values(selection.series[0].data->Y()), (std::vector<float>{5, 9}));
    EXPECT_EQ(values(selection.series[1].data->X()), (std::vector<float>{0, 2, 3, 4}));
    EXPECT_EQ(selection.notes,
        (std::vector<std::string>{"a: 3 samples without a number left out", "b: 1 sample without a number left out"}));
}

TEST(SeriesSelection, SamplesAreSortedByXStably)
{
    const auto selection = selectSeries(table({column("t", {2, 1, 1, 0}), column("a", {5, 6, 7, 8})}), {});
    EXPECT_EQ(values(selection.series[0].data->X()), (std::vector<float>{0, 1, 1, 2}));
    EXPECT_EQ(values(selection.series[0].data->Y()), (std::vector<float>{8, 6, 7, 5}));
    EXPECT_EQ(selection.notes, (std::vector<std::string>{"a: samples sorted by t, which does not ascend in the file"}));
}

TEST(SeriesSelection, ErrorsSayWhatWasFoundAndExpected)
{
    const auto make = [] { return table({column("t", {0, 1}), column("a", {3, 4}), column("w", {kGap, kGap}, ColumnKind::Text)}); };
    const struct {
        ColumnRequest request;
        const char* text;
    } cases[] = {
        {{std::nullopt, {"b"}}, "file.csv: no column 'b', expected a number from 1 to 3 or one of 't', 'a', 'w'"},
        {{"0", {}}, "file.csv: no column '0', expected a number from 1 to 3 or one of 't', 'a', 'w'"},
        {{"4", {}}, "file.csv: no column '4', expected a number from 1 to 3 or one of 't', 'a', 'w'"},
        {{"w", {}}, "file.csv: no number in column 'w', expected numbers or dates for x"},
        {{std::nullopt, {"w"}}, "file.csv: no number in column 'w', expected a column of numbers"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(errorOf(make(), one.request), one.text);
    EXPECT_EQ(errorOf(table({column("t", {0, 1}), column("w", {kGap, kGap}, ColumnKind::Text)}), {}),
        "file.csv: no column of numbers to draw among 't', 'w', expected at least one besides x");
    EXPECT_EQ(errorOf(table({column("t", {0, kGap}), column("a", {kGap, 4})}), {}), "file.csv: no sample with a number in both x and y, expected at least one");
}

TEST(SeriesSelection, DatesAreKnown)
{
    EXPECT_TRUE(selectSeries(table({column("d", {0, 1}, ColumnKind::Date), column("a", {3, 4})}), {}).xIsDate);
    EXPECT_FALSE(selectSeries(table({column("d", {0, 1}), column("a", {3, 4})}), {}).xIsDate);
}

} // namespace
} // namespace TOLVGraphing::input
