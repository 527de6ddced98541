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

TableBuilder::TableBuilder(std::size_t columnCount) : m_columns(columnCount), m_stageLength(stageLengthFor(columnCount))
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
        addField(m_columns[index], isPresent ? &fields[index] : nullptr, value);
        stage(index)[m_stagedRows] = value.value;
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
        result.mergedDateCount = result.kind == ColumnKind::Date ? column.mergedDateCount : 0;
        result.values = std::move(column.values);
        result.texts = std::move(column.texts);
        result.gapCount = static_cast<std::size_t>(std::count_if(result.values.begin(), result.values.end(), [](float value) { return std::isnan(value); }));
        // Numbers in a column of dates, or dates in one of numbers, are gaps with a word in the file.
        std::size_t dropped = result.gapCount - std::min(result.gapCount, column.emptyCount + result.wordCount);
        result.wordCount += dropped;
        column = {};
    }
}

void TableBuilder::addField(Column& column, const FieldText* field, const FieldValue& value)
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
    if (isDate) {
        column.mergedDateCount += value.days != column.lastDays && value.value == static_cast<float>(column.lastDays) ? 1 : 0;
        column.lastDays = value.days;
    }
    if (column.keepsTexts)
        column.texts.push_back(field ? field->unquoted() : std::string());
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
