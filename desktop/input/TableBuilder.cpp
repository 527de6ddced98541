#include <desktop/input/TableBuilder.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace TOLVGraphing::input {

namespace {

constexpr float kGap = std::numeric_limits<float>::quiet_NaN();

/// About a quarter of a megabyte for all columns, so that the stage stays in the cache.
std::size_t stageLengthFor(std::size_t columnCount)
{
    return std::clamp<std::size_t>(65536 / std::max<std::size_t>(columnCount, 1), 16, 4096);
}

} // namespace

TableBuilder::TableBuilder(std::size_t columnCount, std::optional<double> dateOrigin) : m_dateOrigin(dateOrigin), m_columns(columnCount), m_stageLength(stageLengthFor(columnCount))
{
    m_stage.resize(columnCount * m_stageLength);
}

void TableBuilder::addColumn()
{
    flush(0);
    Column column;
    column.values.assign(m_flushedRows, kGap);
    column.emptyCount = m_flushedRows;
    m_columns.push_back(std::move(column));
    m_stageLength = stageLengthFor(m_columns.size());
    m_stage.resize(m_columns.size() * m_stageLength);
}

void TableBuilder::keepTexts(std::size_t column)
{
    m_columns[column].keepsTexts = true;
    m_takesPlainRows = false;
}

void TableBuilder::addRow(const std::vector<FieldText>& fields, const std::vector<FieldValue>& values)
{
    for (std::size_t index = 0; index < m_columns.size(); ++index) {
        bool isPresent = index < fields.size();
        FieldValue value = isPresent ? values[index] : FieldValue{FieldKind::Empty, kGap};
        stage(index)[m_stagedRows] = addField(m_columns[index], isPresent ? &fields[index] : nullptr, value);
    }
    ++m_stagedRows;
}

void TableBuilder::addEmptyRows(std::size_t count)
{
    for (; count > 0; --count) {
        if (isStageFull())
            flush(0);
        addRow({}, {});
    }
}

void TableBuilder::flush(std::size_t expectedRows)
{
    for (std::size_t index = 0; index < m_columns.size(); ++index) {
        std::vector<float>& values = m_columns[index].values;
        std::size_t needed = values.size() + m_stagedRows;
        if (needed > values.capacity())
            values.reserve(expectedRows > needed ? expectedRows : std::max(needed, values.capacity() * 2));
        values.insert(values.end(), stage(index), stage(index) + m_stagedRows);
    }
    m_flushedRows += m_stagedRows;
    m_stagedRows = 0;
}

bool TableBuilder::hasValues() const
{
    return std::any_of(m_columns.begin(), m_columns.end(), [this](const Column& column) { return column.dateCount > 0 || numberCount(column, rowCount()) > 0; });
}

void TableBuilder::finish(MeasurementTable& table)
{
    flush(0);
    m_stage = {};
    for (std::size_t index = 0; index < m_columns.size(); ++index) {
        Column& column = m_columns[index];
        MeasurementColumn& result = table.columns[index];
        result.kind = kindOf(column);
        if (!column.secondKindRows.empty()) {
            bool isDateKept = result.kind == ColumnKind::Date || (result.kind == ColumnKind::Text && column.dateCount > numberCount(column, m_flushedRows));
            dropKind(column, isDateKept == column.isDateFirst);
        }
        result.wordCount = column.wordCount + column.invalidDateCount;
        finishDates(column, result.kind, result);
        result.values = std::move(column.values);
        result.texts = std::move(column.texts);
        result.gapCount = static_cast<std::size_t>(std::count_if(result.values.begin(), result.values.end(), [](float value) { return std::isnan(value); }));
        // Numbers in a column of dates, or dates in one of numbers, are gaps with a word in the file.
        std::size_t dropped = result.gapCount - std::min(result.gapCount, column.emptyCount + result.wordCount);
        result.wordCount += dropped;
        column = {};
    }
}

float TableBuilder::addField(Column& column, const FieldText* field, const FieldValue& value)
{
    std::size_t row = rowCount();
    bool isDate = value.kind == FieldKind::Date;
    if (isDate && column.dateCount == 0) {
        column.isDateFirst = numberCount(column, row) == 0;
        m_takesPlainRows = m_takesPlainRows && !column.isDateFirst;
    }
    bool isSecondKind = column.isDateFirst ? value.kind == FieldKind::Number : isDate;
    if (isSecondKind)
        column.secondKindRows.push_back(row);
    column.emptyCount += value.kind == FieldKind::Empty ? 1 : 0;
    column.wordCount += value.kind == FieldKind::Word ? 1 : 0;
    column.dateCount += isDate ? 1 : 0;
    column.invalidDateCount += isDate && std::isnan(value.value) ? 1 : 0;
    if (column.keepsTexts)
        column.texts.push_back(field ? field->unquoted() : std::string());
    return isDate ? addDate(column, value.days) : value.value;
}

float TableBuilder::addDate(Column& column, double days) const
{
    if (std::isnan(days))
        return kGap;
    const double day = std::floor(days);
    if (!column.dateOrigin)
        column.dateOrigin = m_dateOrigin.value_or(day);
    column.hasTimes = column.hasTimes || days != day;
    const auto value = static_cast<float>(days - *column.dateOrigin);
    if (column.lastDays && *column.lastDays != days && static_cast<float>(*column.lastDays - *column.dateOrigin) == value)
        ++column.mergedDateCount;
    column.lastDays = days;
    return value;
}

/// Whole days are counted from 1970 after all, where nobody has said otherwise, and so are the dates of a column of words.
void TableBuilder::finishDates(Column& column, ColumnKind kind, MeasurementColumn& result) const
{
    const bool areDates = kind == ColumnKind::Date || (kind == ColumnKind::Text && column.dateCount > numberCount(column, m_flushedRows));
    if (!areDates || !column.dateOrigin)
        return;
    if (kind == ColumnKind::Date && (m_dateOrigin || column.hasTimes)) {
        result.dateOrigin = *column.dateOrigin;
        result.mergedDateCount = column.mergedDateCount;
        return;
    }
    for (float& value : column.values)
        value = static_cast<float>(static_cast<double>(value) + *column.dateOrigin);
}

std::size_t TableBuilder::numberCount(const Column& column, std::size_t rows)
{
    return rows - column.emptyCount - column.wordCount - column.dateCount;
}

ColumnKind TableBuilder::kindOf(const Column& column) const
{
    std::size_t filled = m_flushedRows - column.emptyCount;
    if (filled > 0 && column.dateCount * 10 >= filled * 9)
        return ColumnKind::Date;
    return numberCount(column, m_flushedRows) * 2 >= filled ? ColumnKind::Number : ColumnKind::Text;
}

/// Makes gaps of the values of the kind that came second in the column, or of those of the kind that came first.
void TableBuilder::dropKind(Column& column, bool dropsSecondKind)
{
    auto next = column.secondKindRows.begin();
    for (std::size_t row = 0; row < column.values.size(); ++row) {
        bool isSecondKind = next != column.secondKindRows.end() && *next == row;
        if (isSecondKind)
            ++next;
        if (isSecondKind == dropsSecondKind)
            column.values[row] = kGap;
    }
}

} // namespace TOLVGraphing::input
