#pragma once

#include <desktop/input/FieldValue.h>
#include <desktop/input/MeasurementTable.h>
#include <desktop/input/RecordSplitter.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace TOLVGraphing::input {

/// Collects the rows of a text table by columns.
///
/// Rows of nothing but numbers, nearly all of them, are written straight to a small stage by the reader (stage(), stagedRows(), flush());
/// all others go field by field through addRow(), which also counts what each column holds and so finds out its kind.
class TableBuilder {
public:
    /// Dates are counted from `dateOrigin`, in days since 1970-01-01, or else from an origin that suits the column.
    explicit TableBuilder(std::size_t columnCount, std::optional<double> dateOrigin = std::nullopt);

    [[nodiscard]] std::size_t columnCount() const { return m_columns.size(); }
    [[nodiscard]] std::size_t rowCount() const { return m_flushedRows + m_stagedRows; }
    /// Adds a column that is a gap in all rows so far.
    void addColumn();
    /// The texts of this column's fields are kept. Before the first row only.
    void keepTexts(std::size_t column);

    /// The column's stage of stageLength() values; plain rows are written at and behind stagedRows(). Good until addColumn().
    [[nodiscard]] float* stage(std::size_t column) { return m_stage.data() + column * m_stageLength; }
    [[nodiscard]] std::size_t stageLength() const { return m_stageLength; }
    [[nodiscard]] std::size_t stagedRows() const { return m_stagedRows; }
    /// Rows of numbers in every column may be staged: no column has dates or keeps its texts.
    [[nodiscard]] bool takesPlainRows() const { return m_takesPlainRows; }
    /// Plain rows up to this number (at most stageLength()) are in the stage now. Waiting all-empty rows must have been added before.
    void setStagedRows(std::size_t count) { m_stagedRows = count; }

    /// Adds a row of these fields; missing ones are gaps, surplus ones are left out.
    void addRow(const std::vector<FieldText>& fields, const std::vector<FieldValue>& values);
    /// Adds rows of gaps.
    void addEmptyRows(std::size_t count);

    /// Moves the stage to the columns. `expectedRows` is an estimate of the rows of the whole file, 0 for unknown; room is made for them
    /// once, so that long columns are not copied.
    void flush(std::size_t expectedRows);
    [[nodiscard]] bool isStageFull() const { return m_stagedRows == m_stageLength; }

    /// Some field was a number or a date.
    [[nodiscard]] bool hasValues() const;
    /// Moves everything into the table's columns, which must be as many as columnCount() and have their names and units already.
    void finish(MeasurementTable& table);

private:
    struct Column {
        std::vector<float> values;
        std::vector<std::string> texts;
        bool keepsTexts = false;
        std::size_t emptyCount = 0;
        std::size_t wordCount = 0;
        std::size_t dateCount = 0;
        std::size_t invalidDateCount = 0;
        /// Dates that rounding made equal to the one before them, and the date of the last row that had one.
        std::size_t mergedDateCount = 0;
        std::optional<double> lastDays;
        /// What the values of dates are counted from, in days since 1970-01-01, from the first one on.
        std::optional<double> dateOrigin;
        /// Some date has a time of day.
        bool hasTimes = false;
        /// Rows of the kind, numbers or dates, that came second in this column: they are gaps in the end, or all others are.
        bool isDateFirst = false;
        std::vector<std::size_t> secondKindRows;
    };

    /// Answers the value as the column has it.
    float addField(Column& column, const FieldText* field, const FieldValue& value);
    float addDate(Column& column, double days) const;
    void finishDates(Column& column, ColumnKind kind, MeasurementColumn& result) const;
    [[nodiscard]] static std::size_t numberCount(const Column& column, std::size_t rows);
    [[nodiscard]] ColumnKind kindOf(const Column& column) const;
    static void dropKind(Column& column, bool dropsSecondKind);

    std::optional<double> m_dateOrigin;
    std::vector<Column> m_columns;
    std::vector<float> m_stage;
    std::size_t m_stageLength = 0;
    std::size_t m_stagedRows = 0;
    std::size_t m_flushedRows = 0;
    bool m_takesPlainRows = true;
};

} // namespace TOLVGraphing::input
