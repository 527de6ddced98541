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
    const auto selection = selectSeries(table({column("t", {0, 1, 2}, ColumnKind::Number, "s"), column("a", {5, 6, 7}, ColumnKind::Number, "V"),
                                            column("word", {kGap, kGap, kGap}, ColumnKind::Text), column("b", {1, 2, 3})}),
        {});
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
    EXPECT_EQ(words.notes, (std::vector<std::string>{"name: words, no numbers or dates, so that the row number is x"}));
    const auto asked = selectSeries(table({column("t", {7, 8}), column("a", {3, 4})}), {"index", {"a"}});
    EXPECT_EQ(values(asked.series[0].data->X()), (std::vector<float>{0, 1}));
    EXPECT_TRUE(asked.notes.empty());
}

TEST(SeriesSelection, TimesThatFallTogetherAreNotedForX)
{
    const auto make = [](std::size_t merged) {
        MeasurementColumn time = column("time", {20513.5F, 20513.5F, 20513.5F}, ColumnKind::Date);
        time.mergedDateCount = merged;
        return table({std::move(time), column("a", {3, 4, 5})});
    };
    EXPECT_TRUE(selectSeries(make(0), {}).notes.empty());
    EXPECT_EQ(selectSeries(make(1), {}).notes,
        (std::vector<std::string>{"time: 1 time falls together with the one before: single precision does not tell them apart so far from 1970-01-01"}));
    EXPECT_EQ(selectSeries(make(2), {}).notes,
        (std::vector<std::string>{"time: 2 times fall together with the one before: single precision does not tell them apart so far from 1970-01-01"}));
    EXPECT_TRUE(selectSeries(make(2), {"index", {"a"}}).notes.empty());
}

TEST(SeriesSelection, DatesKeepTheirOrigin)
{
    const auto make = [](ColumnKind kind) {
        MeasurementColumn time = column("time", {0.25F, 0.5F, 1.0F}, kind);
        time.dateOrigin = kind == ColumnKind::Date ? 20513.0 : 0.0;
        return table({std::move(time), column("a", {3, 4, 5})});
    };
    const auto dates = selectSeries(make(ColumnKind::Date), {});
    EXPECT_TRUE(dates.xIsDate);
    EXPECT_EQ(dates.xDateOrigin, 20513.0);
    EXPECT_EQ(values(dates.series[0].data->X()), (std::vector<float>{0.25F, 0.5F, 1.0F}));
    EXPECT_EQ(selectSeries(make(ColumnKind::Number), {}).xDateOrigin, 0.0);
    EXPECT_EQ(selectSeries(make(ColumnKind::Date), {"index", {"a"}}).xDateOrigin, 0.0);
    ColumnRequest categories;
    categories.categories = true;
    const auto rows = selectSeries(make(ColumnKind::Date), categories);
    EXPECT_EQ(rows.xDateOrigin, 20513.0);
    EXPECT_EQ(rows.categoryTexts, (std::vector<std::string>{"2026-03-01 06:00", "2026-03-01 12:00", "2026-03-02"}));
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
    EXPECT_EQ(selection.notes, (std::vector<std::string>{"a: 3 samples without a number left out", "b: 1 sample without a number left out"}));
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

MeasurementColumn columnWithTexts(std::string name, std::vector<std::string> texts, std::vector<float> numbers, ColumnKind kind)
{
    MeasurementColumn result = column(std::move(name), std::move(numbers), kind);
    result.texts = std::move(texts);
    return result;
}

/// Country, population and area of three rows, the second without a population.
MeasurementTable countries()
{
    return table({columnWithTexts("country", {"Chad", "Peru", "Oman"}, {kGap, kGap, kGap}, ColumnKind::Text), column("population", {18, kGap, 5}, ColumnKind::Number, "million"),
        column("area", {1284, 1285, 310})});
}

/// The request for categories with these columns.
ColumnRequest categories(std::optional<std::string> x = {}, std::vector<std::string> y = {}, std::optional<std::string> texts = {})
{
    return {std::move(x), std::move(y), true, std::move(texts)};
}

using Texts = std::vector<std::string>;

/// Equal, and gaps where gaps are expected.
void expectValues(const TOLVGraphData::Samples& samples, const std::vector<float>& expected)
{
    ASSERT_EQ(samples->length(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_TRUE(samples->components()[i] == expected[i] || (std::isnan(samples->components()[i]) && std::isnan(expected[i]))) << i << ": " << samples->components()[i];
}

TEST(CategorySelection, WordsOfTheFirstColumnAreTheCategories)
{
    const auto selection = selectSeries(countries(), categories());
    EXPECT_EQ(selection.categoryTexts, (Texts{"Chad", "Peru", "Oman"}));
    EXPECT_EQ(selection.xName, "country");
    EXPECT_FALSE(selection.xIsDate);
    ASSERT_EQ(selection.series.size(), 2U);
    expectValues(selection.series[0].data->X(), {0, 1, 2});
    expectValues(selection.series[0].data->Y(), {18, kGap, 5});
    expectValues(selection.series[1].data->Y(), {1284, 1285, 310});
    EXPECT_EQ(selection.series[0].data->X(), selection.series[1].data->X()) << "series share their abscissae, gaps or not";
    EXPECT_EQ(selection.series[0].unit, "million");
    EXPECT_EQ(selection.series[0].data->name(), "population");
    EXPECT_EQ(selection.notes, (Texts{"population: 1 row without a number is left empty"}));
}

TEST(CategorySelection, WithoutCategoriesThereAreNoTexts)
{
    EXPECT_TRUE(selectSeries(countries(), {}).categoryTexts.empty());
}

struct AbscissaeCase {
    const char* name;
    std::vector<float> values;
    ColumnKind kind;
    std::vector<float> expected;
    bool isDate;
};

TEST(CategorySelection, AbscissaeAreTheValuesWhereTheyTellTheCategoriesApart)
{
    const float inf = std::numeric_limits<float>::infinity();
    const AbscissaeCase cases[] = {
        {"ascending", {-1.5F, 0, 7}, ColumnKind::Number, {-1.5F, 0, 7}, false},
        {"dates", {15340, 15341, 15400}, ColumnKind::Date, {15340, 15341, 15400}, true},
        {"descending", {3, 2, 1}, ColumnKind::Number, {0, 1, 2}, false},
        {"equal", {1, 1, 2}, ColumnKind::Number, {0, 1, 2}, false},
        {"gap", {1, kGap, 2}, ColumnKind::Number, {0, 1, 2}, false},
        {"infinite", {1, 2, inf}, ColumnKind::Number, {0, 1, 2}, false},
        {"dates that go back", {15340, 15300, 15400}, ColumnKind::Date, {0, 1, 2}, false},
        {"words", {kGap, kGap, kGap}, ColumnKind::Text, {0, 1, 2}, false},
    };
    for (const AbscissaeCase& one : cases) {
        SCOPED_TRACE(one.name);
        const auto selection = selectSeries(table({column("x", one.values, one.kind), column("y", {4, 5, 6})}), categories());
        ASSERT_EQ(selection.series.size(), 1U);
        expectValues(selection.series[0].data->X(), one.expected);
        expectValues(selection.series[0].data->Y(), {4, 5, 6});
        EXPECT_EQ(selection.xIsDate, one.isDate);
        EXPECT_EQ(selection.xName, "x");
        EXPECT_TRUE(selection.notes.empty());
    }
}

TEST(CategorySelection, TextsOfTheFileGoBeforeWrittenNumbers)
{
    const auto kept = selectSeries(table({columnWithTexts("x", {"01", "2.50", ""}, {1, 2.5F, kGap}, ColumnKind::Number), column("y", {4, 5, 6})}), categories());
    EXPECT_EQ(kept.categoryTexts, (Texts{"01", "2.50", ""}));
    const auto numbers = selectSeries(table({column("x", {1, 2.5F, kGap, 0.1F, 1e20F}), column("y", {4, 5, 6, 7, 8})}), categories());
    EXPECT_EQ(numbers.categoryTexts, (Texts{"1", "2.5", "", "0.1", "1e+20"}));
    const auto dates = selectSeries(table({column("x", {15340, 15340.25F, kGap}, ColumnKind::Date), column("y", {4, 5, 6})}), categories());
    EXPECT_EQ(dates.categoryTexts, (Texts{"2012-01-01", "2012-01-01 06:00", ""}));
}

TEST(CategorySelection, TheOnlyColumnIsDrawnAgainstItsRowNumber)
{
    const auto selection = selectSeries(table({column("only", {5, kGap, 7})}), categories());
    expectValues(selection.series[0].data->X(), {0, 1, 2});
    expectValues(selection.series[0].data->Y(), {5, kGap, 7});
    EXPECT_EQ(selection.categoryTexts, (Texts{"0", "1", "2"}));
    EXPECT_EQ(selection.xName, "sample");
}

TEST(CategorySelection, ColumnsCanBeChosen)
{
    const auto make = [] { return table({column("t", {10, 20}), column("a", {3, 4}), columnWithTexts("name", {"p", "q"}, {kGap, kGap}, ColumnKind::Text), column("b", {5, 6})}); };
    const struct {
        const char* title;
        ColumnRequest request;
        std::vector<float> x;
        Texts texts;
        const char* xName;
        Texts series;
    } cases[] = {
        {"default", categories(), {10, 20}, {"10", "20"}, "t", {"a", "b"}},
        {"texts by name", categories({}, {}, "name"), {10, 20}, {"p", "q"}, "name", {"a", "b"}},
        {"texts by number", categories({}, {}, "3"), {10, 20}, {"p", "q"}, "name", {"a", "b"}},
        {"texts that are numbers are no series", categories({}, {}, "a"), {10, 20}, {"3", "4"}, "a", {"b"}},
        {"x of words", categories("name"), {0, 1}, {"p", "q"}, "name", {"t", "a", "b"}},
        {"x and texts", categories("b", {}, "name"), {5, 6}, {"p", "q"}, "name", {"t", "a"}},
        {"row number", categories("index"), {0, 1}, {"0", "1"}, "sample", {"t", "a", "b"}},
        {"texts of row numbers", categories("t", {}, "index"), {10, 20}, {"0", "1"}, "sample", {"a", "b"}},
        {"y that is x and texts", categories("t", {"t", "b", "t"}, "b"), {10, 20}, {"5", "6"}, "b", {"t", "b", "t"}},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.title);
        const auto selection = selectSeries(make(), one.request);
        EXPECT_EQ(selection.categoryTexts, one.texts);
        EXPECT_EQ(selection.xName, one.xName);
        Texts names;
        for (const auto& series : selection.series) {
            names.push_back(series.name);
            expectValues(series.data->X(), one.x);
            EXPECT_EQ(series.data->Y()->length(), 2U);
        }
        EXPECT_EQ(names, one.series);
        EXPECT_TRUE(selection.notes.empty());
    }
}

TEST(CategorySelection, OrdinatesThatAreNotFiniteAreLeftEmpty)
{
    const float inf = std::numeric_limits<float>::infinity();
    const auto selection = selectSeries(
        table({column("x", {1, 2, 3, 4}), column("a", {inf, 2, -inf, kGap}), column("b", {inf, kGap, kGap, kGap}), column("c", {kGap, kGap, kGap, kGap})}), categories());
    ASSERT_EQ(selection.series.size(), 1U) << "columns without a number are no series";
    expectValues(selection.series[0].data->Y(), {kGap, 2, kGap, kGap});
    EXPECT_EQ(selection.notes, (Texts{"a: 3 rows without a number are left empty", "b: 4 rows without a number are left empty"}));
}

TEST(CategorySelection, ErrorsSayWhatWasFoundAndExpected)
{
    const float inf = std::numeric_limits<float>::infinity();
    EXPECT_EQ(errorOf(countries(), categories({}, {}, "region")), "file.csv: no column 'region', expected a number from 1 to 3 or one of 'country', 'population', 'area'");
    EXPECT_EQ(errorOf(countries(), categories("4")), "file.csv: no column '4', expected a number from 1 to 3 or one of 'country', 'population', 'area'");
    EXPECT_EQ(errorOf(countries(), categories({}, {"country"})), "file.csv: no number in column 'country', expected a column of numbers");
    EXPECT_EQ(errorOf(table({column("t", {0, 1}), column("w", {kGap, kGap}, ColumnKind::Text)}), categories()),
        "file.csv: no column of numbers to draw among 't', 'w', expected at least one besides x");
    EXPECT_EQ(errorOf(table({column("t", {0, 1}), column("a", {inf, kGap})}), categories()), "file.csv: no row with a finite number to draw, expected at least one");
    EXPECT_EQ(
        errorOf(table({column("t", std::vector<float>(kMaximumCategoryCount + 1, 1.0F))}), categories()), "file.csv: 20001 rows to draw as categories, expected at most 20000");
}

TEST(CategorySelection, AsManyCategoriesAsAllowed)
{
    const auto selection = selectSeries(table({column("y", std::vector<float>(kMaximumCategoryCount, 1.0F))}), categories());
    EXPECT_EQ(selection.categoryTexts.size(), kMaximumCategoryCount);
    EXPECT_EQ(selection.categoryTexts.back(), "19999");
    EXPECT_EQ(selection.series[0].data->X()->components()[kMaximumCategoryCount - 1], 19999.0F);
}

} // namespace
} // namespace TOLVGraphing::input
