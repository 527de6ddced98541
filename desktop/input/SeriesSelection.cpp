#include "SeriesSelection.h"

#include <desktop/input/MeasurementError.h>

#include <TOLVGraphing/platform/text/DayDateFormatter.h>
#include <TOLVGraphing/platform/text/NumberText.h>
#include <TOLVMath/ExtremePyramid.h>
#include <TOLVMath/TOLVRealVector.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <numeric>
#include <utility>

namespace TOLVGraphing::input {

namespace {

using Vector = std::shared_ptr<const TOLVRealVector>;

constexpr std::string_view kRowNumber = "index";
constexpr const char* kRowNumberName = "sample";
/// The most column names that an error lists.
constexpr std::size_t kMostNamesListed = 12;

std::string listOfColumns(const MeasurementTable& table)
{
    std::string text;
    for (std::size_t i = 0; i < table.columns.size() && i < kMostNamesListed; ++i)
        text += (i ? ", " : "") + quotedExcerpt(table.columns[i].displayName());
    if (table.columns.size() > kMostNamesListed)
        text += ", ...";
    return text;
}

bool hasValues(const MeasurementColumn& column)
{
    return column.gapCount < column.values.size();
}

std::vector<float> rowNumbers(std::size_t count)
{
    std::vector<float> numbers(count);
    for (std::size_t i = 0; i < count; ++i)
        numbers[i] = static_cast<float>(i);
    return numbers;
}

bool isFinite(const Vector& vector)
{
    // What is learned of long vectors here is what drawing asks for next.
    if (vector->length() >= TOLVRealVector::kLongStorage && vector->isAscending())
        return std::isfinite(vector->components()[0]) && std::isfinite(vector->components()[vector->length() - 1]);
    if (const ExtremePyramid* pyramid = vector->pyramidOfStorage(vector->length()))
        return !pyramid->hasNaN() && std::isfinite(pyramid->extremes().minimum) && std::isfinite(pyramid->extremes().maximum);
    const float* c = vector->components();
    // A sum would overflow; the exponent test is as fast as reading the memory.
    return std::all_of(c, c + vector->length(), [](float value) { return std::isfinite(value); });
}

/// The samples of both vectors that are finite in both, sorted by x where it does not ascend.
struct Samples {
    Vector x;
    Vector y;
    std::size_t leftOut = 0;
    bool sorted = false;
};

void dropNonFinite(Samples& samples)
{
    if (isFinite(samples.x) && isFinite(samples.y))
        return;
    std::vector<float> keptX;
    std::vector<float> keptY;
    for (std::size_t i = 0; i < samples.x->length(); ++i) {
        const float x = samples.x->components()[i];
        const float y = samples.y->components()[i];
        if (std::isfinite(x) && std::isfinite(y)) {
            keptX.push_back(x);
            keptY.push_back(y);
        }
    }
    samples.leftOut = samples.x->length() - keptX.size();
    samples.x = TOLVRealVector::vectorWithComponents(std::move(keptX));
    samples.y = TOLVRealVector::vectorWithComponents(std::move(keptY));
}

void sortByX(Samples& samples)
{
    if (samples.x->isAscending())
        return;
    const float* x = samples.x->components();
    const float* y = samples.y->components();
    std::vector<std::size_t> order(samples.x->length());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return x[a] < x[b]; });
    std::vector<float> sortedX;
    std::vector<float> sortedY;
    sortedX.reserve(order.size());
    sortedY.reserve(order.size());
    for (const std::size_t index : order) {
        sortedX.push_back(x[index]);
        sortedY.push_back(y[index]);
    }
    samples.x = TOLVRealVector::vectorWithComponents(std::move(sortedX));
    samples.y = TOLVRealVector::vectorWithComponents(std::move(sortedY));
    samples.sorted = true;
}

/// The table's columns as vectors, each made once however often it is used.
class ColumnVectors {
public:
    explicit ColumnVectors(MeasurementTable& table) : m_table(table) {}

    Vector vector(std::size_t index)
    {
        auto& made = m_made[index];
        if (!made)
            made = m_table.columns[index].values.takeVector();
        return made;
    }

private:
    MeasurementTable& m_table;
    std::map<std::size_t, Vector> m_made;
};

/// The column that a request means; nothing for the row number.
std::optional<std::size_t> columnOrRowNumber(const MeasurementTable& table, const std::string& nameOrNumber)
{
    if (nameOrNumber == kRowNumber && !table.indexOfColumn(kRowNumber))
        return std::nullopt;
    return requireColumn(table, nameOrNumber);
}

/// The column of the abscissae; nothing for the row number.
std::optional<std::size_t> columnOfX(const MeasurementTable& table, const ColumnRequest& request)
{
    if (!request.x)
        return table.columns.size() > 1 && !table.areColumnsChannels && table.columns[0].kind != ColumnKind::Text ? std::optional<std::size_t>(0) : std::nullopt;
    const auto index = columnOrRowNumber(table, *request.x);
    if (index && !hasValues(table.columns[*index])) {
        throw MeasurementError(table.sourceName, 0, "no number in column " + quotedExcerpt(table.columns[*index].displayName()), "expected numbers or dates for x");
    }
    return index;
}

/// The columns that categories come from; each may be the row number.
struct CategoryColumns {
    std::optional<std::size_t> x;
    std::optional<std::size_t> texts;
};

CategoryColumns categoryColumns(const MeasurementTable& table, const ColumnRequest& request)
{
    CategoryColumns columns;
    if (request.x)
        columns.x = columnOrRowNumber(table, *request.x);
    else if (table.columns.size() > 1 && !table.areColumnsChannels)
        columns.x = 0;
    columns.texts = request.categoryColumn ? columnOrRowNumber(table, *request.categoryColumn) : columns.x;
    return columns;
}

/// The columns of the ordinates; `others` are taken already and only drawn where they are asked for.
std::vector<std::size_t> columnsOfY(const MeasurementTable& table, const ColumnRequest& request, std::array<std::optional<std::size_t>, 2> others)
{
    std::vector<std::size_t> columns;
    for (const std::string& name : request.y) {
        columns.push_back(requireColumn(table, name));
        if (!hasValues(table.columns[columns.back()]))
            throw MeasurementError(table.sourceName, 0, "no number in column " + quotedExcerpt(name), "expected a column of numbers");
    }
    if (!columns.empty())
        return columns;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (i != others[0] && i != others[1] && table.columns[i].kind == ColumnKind::Number && hasValues(table.columns[i]))
            columns.push_back(i);
    }
    if (columns.empty())
        throw MeasurementError(table.sourceName, 0, "no column of numbers to draw among " + listOfColumns(table), "expected at least one besides x");
    return columns;
}

void noteChanges(const Samples& samples, const std::string& name, const std::string& xName, std::vector<std::string>& notes)
{
    if (samples.leftOut > 0)
        notes.push_back(name + ": " + std::to_string(samples.leftOut) + (samples.leftOut == 1 ? " sample" : " samples") + " without a number left out");
    if (samples.sorted)
        notes.push_back(name + ": samples sorted by " + xName + ", which does not ascend in the file");
}

/// What the abscissae do not tell as the file does: `column` is theirs, nothing for the row number.
void noteAbscissae(const MeasurementTable& table, const ColumnRequest& request, std::optional<std::size_t> column, std::vector<std::string>& notes)
{
    if (!column && !request.x && table.columns.size() > 1 && !table.areColumnsChannels)
        notes.push_back(table.columns[0].displayName() + ": words, no numbers or dates, so that the row number is x");
    if (!column || table.columns[*column].mergedDateCount == 0)
        return;
    const std::size_t merged = table.columns[*column].mergedDateCount;
    notes.push_back(table.columns[*column].displayName() + ": " + std::to_string(merged) + (merged == 1 ? " time falls" : " times fall")
        + " together with the one before: single precision does not tell them apart so far from "
        + DayDateFormatter().stringFromNumber(table.columns[*column].dateOrigin).value_or(""));
}

std::shared_ptr<TOLVGraphData> seriesNamed(const std::string& name, const Vector& x, const Vector& y)
{
    auto data = TOLVGraphData::graphDataWithX(x, y, Color::blackColor());
    data->setName(name);
    return data;
}

/// Series of samples: those that a curve can be drawn through.
SeriesSelection sampleSeries(MeasurementTable& table, const ColumnRequest& request)
{
    const auto xColumn = columnOfX(table, request);
    const auto yColumns = columnsOfY(table, request, {xColumn, std::nullopt});
    const std::size_t rows = table.rowCount();
    ColumnVectors vectors(table);
    SeriesSelection selection;
    selection.xName = xColumn ? table.columns[*xColumn].name : kRowNumberName;
    const std::string xDisplayName = xColumn ? table.columns[*xColumn].displayName() : selection.xName;
    selection.xUnit = xColumn ? table.columns[*xColumn].unit : "";
    selection.xIsDate = xColumn && table.columns[*xColumn].kind == ColumnKind::Date;
    selection.xDateOrigin = selection.xIsDate ? table.columns[*xColumn].dateOrigin : 0.0;
    noteAbscissae(table, request, xColumn, selection.notes);
    const Vector x = xColumn ? vectors.vector(*xColumn) : TOLVRealVector::vectorWithComponents(rowNumbers(rows));
    for (const std::size_t column : yColumns) {
        Samples samples{x, vectors.vector(column)};
        dropNonFinite(samples);
        sortByX(samples);
        const std::string name = table.columns[column].displayName();
        noteChanges(samples, name, xDisplayName, selection.notes);
        if (samples.x->length() == 0)
            continue;
        selection.series.push_back({seriesNamed(name, samples.x, samples.y), table.columns[column].name, table.columns[column].unit});
    }
    if (selection.series.empty())
        throw MeasurementError(table.sourceName, 0, "no sample with a number in both x and y", "expected at least one");
    return selection;
}

/// The texts of the categories; those that the file has are moved out of the table.
std::vector<std::string> categoryTexts(MeasurementTable& table, std::optional<std::size_t> column)
{
    if (column && !table.columns[*column].texts.empty())
        return std::move(table.columns[*column].texts);
    std::vector<std::string> texts;
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
        if (!column) {
            texts.push_back(std::to_string(row));
            continue;
        }
        const float value = table.columns[*column].values[row];
        if (std::isnan(value))
            texts.emplace_back();
        else if (table.columns[*column].kind == ColumnKind::Date)
            texts.push_back(DayDateFormatter(table.columns[*column].dateOrigin).stringFromNumber(static_cast<double>(value)).value_or(""));
        else
            texts.push_back(shortestText(value));
    }
    return texts;
}

/// Abscissae that tell the categories apart: finite, and each greater than the one before.
bool tellCategoriesApart(const ColumnValues& values)
{
    const bool areFinite = std::all_of(values.begin(), values.end(), [](float value) { return std::isfinite(value); });
    return areFinite && std::adjacent_find(values.begin(), values.end(), std::greater_equal<>()) == values.end();
}

/// Makes gaps of infinite values, which no axis shows. Answers how many gaps there are.
std::size_t leaveEmptyWhereNotFinite(std::vector<float>& values)
{
    std::size_t gaps = 0;
    for (float& value : values) {
        if (std::isfinite(value))
            continue;
        value = std::numeric_limits<float>::quiet_NaN();
        ++gaps;
    }
    return gaps;
}

std::string leftEmptyNote(const std::string& name, std::size_t gaps)
{
    return name + ": " + std::to_string(gaps) + (gaps == 1 ? " row without a number is left empty" : " rows without a number are left empty");
}

/// Series in which sample i belongs to row i.
SeriesSelection categorySeries(MeasurementTable& table, const ColumnRequest& request)
{
    const std::size_t rows = table.rowCount();
    if (rows > kMaximumCategoryCount)
        throw MeasurementError(table.sourceName, 0, std::to_string(rows) + " rows to draw as categories", "expected at most " + std::to_string(kMaximumCategoryCount));
    const CategoryColumns columns = categoryColumns(table, request);
    const auto yColumns = columnsOfY(table, request, {columns.x, columns.texts});
    const bool usesX = columns.x && tellCategoriesApart(table.columns[*columns.x].values);
    SeriesSelection selection;
    selection.xName = columns.texts ? table.columns[*columns.texts].name : kRowNumberName;
    selection.xUnit = columns.texts ? table.columns[*columns.texts].unit : "";
    selection.xIsDate = usesX && table.columns[*columns.x].kind == ColumnKind::Date;
    selection.xDateOrigin = selection.xIsDate ? table.columns[*columns.x].dateOrigin : 0.0;
    selection.categoryTexts = categoryTexts(table, columns.texts);
    ColumnVectors vectors(table);
    const Vector x = usesX ? vectors.vector(*columns.x) : TOLVRealVector::vectorWithComponents(rowNumbers(rows));
    std::map<std::size_t, std::size_t> gapCounts;
    for (const std::size_t column : yColumns) {
        if (!gapCounts.contains(column))
            gapCounts[column] = leaveEmptyWhereNotFinite(table.columns[column].values.own());
        const std::string name = table.columns[column].displayName();
        if (gapCounts[column] > 0)
            selection.notes.push_back(leftEmptyNote(name, gapCounts[column]));
        if (gapCounts[column] < rows)
            selection.series.push_back({seriesNamed(name, x, vectors.vector(column)), table.columns[column].name, table.columns[column].unit});
    }
    if (selection.series.empty())
        throw MeasurementError(table.sourceName, 0, "no row with a finite number to draw", "expected at least one");
    return selection;
}

} // namespace

std::size_t requireColumn(const MeasurementTable& table, const std::string& nameOrNumber)
{
    if (const auto index = table.indexOfColumnOrNumber(nameOrNumber))
        return *index;
    throw MeasurementError(table.sourceName, 0, "no column " + quotedExcerpt(nameOrNumber),
        "expected a number from 1 to " + std::to_string(table.columns.size()) + " or one of " + listOfColumns(table));
}

SeriesSelection selectSeries(MeasurementTable&& table, const ColumnRequest& request)
{
    return request.categories ? categorySeries(table, request) : sampleSeries(table, request);
}

} // namespace TOLVGraphing::input
