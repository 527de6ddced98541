#include <desktop/input/DelimitedTextReader.h>

#include <desktop/input/DialectDetector.h>
#include <desktop/input/MeasurementError.h>
#include <desktop/input/NumberScanner.h>
#include <desktop/input/TableBuilder.h>
#include <desktop/input/TableFinder.h>
#include <desktop/input/TextBuffer.h>

#include <algorithm>
#include <cmath>
#include <array>
#include <string_view>
#include <utility>

namespace TOLVGraphing::input {

namespace {

constexpr std::size_t kSampleRowCount = 2000;
/// Missing fields that any table may have, however short its rows are: 64 MiB of gaps.
constexpr std::size_t kAllowedMissingFields = std::size_t{1} << 24;

class DelimitedTextReader {
public:
    DelimitedTextReader(ByteSource& source, const ReadSettings& settings) : m_source(source), m_settings(settings), m_buffer(source) {}

    MeasurementTable read();

private:
    using Status = RecordSplitter::Status;

    void checkSettings() const;
    void skipLines();
    TableLayout findTable();
    void fillSample();
    void checkSample(std::string_view sample);
    void startTable(const TableLayout& layout);
    void keepTexts(const TableLayout& layout);
    void readRows();
    const char* readPlainRows(const char* position);
    template <bool isBetweenBlanks>
    const char* readPlainRows(const char* position);
    template <bool isBetweenBlanks>
    const char* scanPlainRow(const char* position, std::size_t row);
    bool readRecord();
    bool skipComment();
    void skipRecord(const char* next, std::size_t lineCount);
    void addRecord();
    void addWaitingEmptyRows();
    void widenFor(std::size_t width);
    void countMissing(std::size_t count, std::size_t present);
    void flush();
    MeasurementTable finishedTable();
    [[noreturn]] void fail(std::size_t line, std::string found, std::string expected) const;
    [[noreturn]] void failSplit(Status status, std::size_t firstLine, const RecordSplitter& splitter) const;

    ByteSource& m_source;
    const ReadSettings& m_settings;
    TextBuffer m_buffer;
    Dialect m_dialect;
    RecordSplitter m_splitter{','};
    TableBuilder m_builder{0};
    MeasurementTable m_table;
    /// The line of the buffer's begin, from 1.
    std::size_t m_line = 1;
    /// The rows are meant to have this many fields, even where the last ones have been empty so far.
    std::size_t m_fieldCount = 0;
    /// Rows of empty fields that are dropped if nothing follows.
    std::size_t m_waitingEmptyRows = 0;
    std::size_t m_missingFields = 0;
    std::size_t m_presentFields = 0;
    std::vector<FieldValue> m_values;
};

MeasurementTable DelimitedTextReader::read()
{
    checkSettings();
    skipLines();
    TableLayout layout = findTable();
    startTable(layout);
    readRows();
    m_source.finish();
    return finishedTable();
}

void DelimitedTextReader::checkSettings() const
{
    if (m_settings.delimiter) {
        auto delimiter = static_cast<unsigned char>(*m_settings.delimiter);
        constexpr std::string_view partsOfNumbers = "+-.\"0123456789";
        bool isLetter = (delimiter | 0x20U) >= 'a' && (delimiter | 0x20U) <= 'z';
        bool isControl = (delimiter < ' ' && delimiter != '\t') || delimiter >= 0x7F;
        if (isLetter || isControl || partsOfNumbers.find(*m_settings.delimiter) != std::string_view::npos)
            fail(0, "the delimiter " + quotedExcerpt(std::string_view(&*m_settings.delimiter, 1)), "expected a comma, semicolon, tab, blank or another punctuation mark");
    }
    if (m_settings.decimalMark && *m_settings.decimalMark != '.' && *m_settings.decimalMark != ',')
        fail(0, "the decimal mark " + quotedExcerpt(std::string_view(&*m_settings.decimalMark, 1)), "expected a point or a comma");
    if (m_settings.delimiter && m_settings.decimalMark && *m_settings.delimiter == *m_settings.decimalMark)
        fail(0, "a comma both as delimiter and as decimal mark", "expected them to differ");
    if (m_settings.headerRows && *m_settings.headerRows > 2)
        fail(0, std::to_string(*m_settings.headerRows) + " header rows", "expected 0, 1 (names) or 2 (names and units)");
}

void DelimitedTextReader::skipLines()
{
    for (std::size_t skipped = 0; skipped < m_settings.skippedLines; ++skipped) {
        const char* position = m_buffer.begin();
        for (;;) {
            std::string_view text(position, static_cast<std::size_t>(m_buffer.end() - position));
            std::size_t lineEnd = text.find_first_of("\r\n");
            // A CR at the end of the window may be half of a line end.
            bool isCut = lineEnd == std::string_view::npos || (text[lineEnd] == '\r' && lineEnd + 1 == text.size());
            if (!isCut) {
                bool isPair = text[lineEnd] == '\r' && text[lineEnd + 1] == '\n';
                m_buffer.consumeTo(position + lineEnd + (isPair ? 2 : 1));
                break;
            }
            if (m_buffer.isAtEnd())
                fail(m_line, "the end of the file", "expected more than " + std::to_string(m_settings.skippedLines) + " lines, which are to be skipped");
            // What is in a skipped line is not kept, so it may be of any length.
            bool endsInReturn = !text.empty() && text.back() == '\r';
            m_buffer.consumeTo(m_buffer.end() - (endsInReturn ? 1 : 0));
            m_buffer.fill(m_line);
            position = m_buffer.begin();
        }
        ++m_line;
    }
}

TableLayout DelimitedTextReader::findTable()
{
    fillSample();
    std::string_view sample(m_buffer.begin(), static_cast<std::size_t>(m_buffer.end() - m_buffer.begin()));
    checkSample(sample);
    m_dialect = detectedDialect(sample, m_settings);
    for (std::size_t rowCount : {kSampleRowCount, sample.size()}) {
        std::vector<SampleRow> rows = sampleRows(sample, m_dialect, rowCount);
        if (auto layout = foundTable(rows, m_dialect, m_settings, sample))
            return *layout;
        if (rows.size() < rowCount && rows.size() < kSampleRowCount)
            break;
    }
    // A record that cannot be split explains a missing table better than its absence does.
    RecordSplitter splitter(m_dialect.delimiter);
    std::size_t line = m_line;
    for (const char* position = m_buffer.begin(); position < m_buffer.end(); position = splitter.next()) {
        Status status = splitter.split(position, m_buffer.end());
        if (status != Status::Complete && (status != Status::Incomplete || m_buffer.isAtEnd()))
            failSplit(status, line, splitter);
        if (status != Status::Complete)
            break;
        line += splitter.lineCount();
    }
    std::size_t firstLine = std::min(sample.find_first_of("\r\n"), sample.size());
    fail(m_line, "no table in " + std::string(m_buffer.isAtEnd() ? "the file" : "the first megabyte") + ", which starts with " + quotedExcerpt(sample.substr(0, firstLine)),
        "expected at least one column of numbers or dates");
}

/// The first megabyte, or more where lines are so long that it has only a few of them.
void DelimitedTextReader::fillSample()
{
    constexpr std::size_t enough = std::size_t{1} << 20;
    constexpr std::ptrdiff_t fewLines = 4;
    while (!m_buffer.isAtEnd()) {
        auto length = static_cast<std::size_t>(m_buffer.end() - m_buffer.begin());
        bool hasLines = std::count_if(m_buffer.begin(), m_buffer.end(), [](char character) { return character == '\n' || character == '\r'; }) >= fewLines;
        if ((length >= enough && hasLines) || length > kMaximumLineLength)
            return;
        m_buffer.fill(m_line);
    }
}

void DelimitedTextReader::checkSample(std::string_view sample)
{
    constexpr std::string_view blanks = " \t\r\n";
    if (sample.find_first_not_of(blanks) == std::string_view::npos && m_buffer.isAtEnd())
        fail(0, sample.empty() && m_line == 1 ? "an empty file" : "nothing but blank lines", "expected a table of numbers");
    std::size_t line = m_line;
    for (std::size_t index = 0; index < sample.size(); ++index) {
        auto byte = static_cast<unsigned char>(sample[index]);
        if (byte == '\n' || (byte == '\r' && index + 1 < sample.size() && sample[index + 1] != '\n'))
            ++line;
        // Tab to CR, the DOS end-of-file mark and escape occur in text; the other control characters do not.
        if (byte < 9 || (byte > 13 && byte < 32 && byte != 0x1A && byte != 0x1B))
            fail(line, "a byte of the value " + std::to_string(byte) + " (binary data)", "expected text");
    }
}

void DelimitedTextReader::startTable(const TableLayout& layout)
{
    std::size_t widest = std::max(layout.columnCount, layout.fieldCount);
    if (layout.columnCount > kMaximumColumnCount || widest > kMaximumColumnCount + 1)
        fail(m_line + layout.dataLine - 1, std::to_string(widest) + " columns", "expected at most " + std::to_string(kMaximumColumnCount));
    m_splitter = RecordSplitter(m_dialect.delimiter);
    const bool hasOrigin = m_settings.dateOrigin && std::isfinite(*m_settings.dateOrigin);
    m_builder = TableBuilder(layout.columnCount, hasOrigin ? m_settings.dateOrigin : std::nullopt);
    m_fieldCount = layout.fieldCount;
    m_table.sourceName = m_source.name();
    m_table.sampleRate = layout.sampleRate;
    m_table.format.kind = "delimited text";
    m_table.format.delimiter = m_dialect.delimiter;
    m_table.format.decimalMark = m_dialect.numberStyle.decimalMark;
    m_table.format.headerRows = layout.headerRows;
    m_table.format.skippedLines = m_settings.skippedLines + layout.skippedLines;
    m_table.columns.resize(layout.columnCount);
    for (std::size_t column = 0; column < layout.columnCount; ++column) {
        m_table.columns[column].number = column + 1;
        m_table.columns[column].name = layout.names[column];
        m_table.columns[column].unit = layout.units[column];
    }
    keepTexts(layout);
    m_buffer.consumeTo(m_buffer.begin() + layout.dataOffset);
    m_line += layout.dataLine - 1;
}

void DelimitedTextReader::keepTexts(const TableLayout& layout)
{
    std::vector<bool> isKept(layout.columnCount, m_settings.keepsTextsOfTextColumns);
    for (std::size_t column = 0; column < layout.columnCount; ++column)
        isKept[column] = isKept[column] && layout.isTextColumn[column];
    if (m_settings.keepsTextsOfFirstColumn && layout.columnCount > 0)
        isKept[0] = true;
    for (const std::string& asked : m_settings.keptTextColumns) {
        if (auto column = m_table.indexOfColumnOrNumber(asked))
            isKept[*column] = true;
    }
    for (std::size_t column = 0; column < layout.columnCount; ++column) {
        if (isKept[column])
            m_builder.keepTexts(column);
    }
}

void DelimitedTextReader::readRows()
{
    for (;;) {
        if (m_builder.isStageFull())
            flush();
        if (m_builder.takesPlainRows() && m_waitingEmptyRows == 0)
            m_buffer.consumeTo(readPlainRows(m_buffer.begin()));
        if (m_builder.isStageFull())
            continue;
        if (m_buffer.begin() == m_buffer.end()) {
            if (m_buffer.isAtEnd())
                return;
            m_buffer.fill(m_line);
            continue;
        }
        if (!readRecord()) {
            auto length = static_cast<std::size_t>(m_buffer.end() - m_buffer.begin());
            m_buffer.fill(m_line);
            // Nothing more came, so the record ends in the middle of quotes: every other one ends in a line end.
            if (m_buffer.isAtEnd() && static_cast<std::size_t>(m_buffer.end() - m_buffer.begin()) == length)
                failSplit(Status::OpenQuote, m_line, m_splitter);
        }
    }
}

const char* DelimitedTextReader::readPlainRows(const char* position)
{
    return m_dialect.delimiter == ' ' ? readPlainRows<true>(position) : readPlainRows<false>(position);
}

/// Stages rows of nothing but numbers, until a row is something else, the stage is full or the window ends. Returns the position of the
/// first row that was not taken.
template <bool isBetweenBlanks>
const char* DelimitedTextReader::readPlainRows(const char* position)
{
    std::size_t firstRow = m_builder.stagedRows();
    std::size_t row = firstRow;
    for (std::size_t stageLength = m_builder.stageLength(); row < stageLength; ++row) {
        const char* next = scanPlainRow<isBetweenBlanks>(position, row);
        if (!next)
            break;
        position = next;
    }
    m_builder.setStagedRows(row);
    m_line += row - firstRow;
    m_presentFields += (row - firstRow) * m_builder.columnCount();
    return position;
}

/// Scans a row of numbers into the stage. Returns the position behind its line end, or null where there is anything else: the NUL behind
/// the window stops every scan.
template <bool isBetweenBlanks>
const char* DelimitedTextReader::scanPlainRow(const char* position, std::size_t row)
{
    const char delimiter = m_dialect.delimiter;
    const char decimalMark = m_dialect.numberStyle.decimalMark;
    const std::size_t columnCount = m_builder.columnCount();
    auto skipBlanks = [&] {
        while (*position == ' ' || (*position == '\t' && (isBetweenBlanks || delimiter != '\t')))
            ++position;
    };
    for (std::size_t column = 0; column < columnCount; ++column) {
        if (column > 0 && !isBetweenBlanks && *position++ != delimiter)
            return nullptr;
        skipBlanks();
        const char* numberEnd = scanNumber(position, decimalMark, m_builder.stage(column)[row]);
        if (!numberEnd)
            return nullptr;
        position = numberEnd;
        if (isBetweenBlanks && column + 1 < columnCount && *position != ' ' && *position != '\t')
            return nullptr;
        skipBlanks();
    }
    if (!isBetweenBlanks && *position == delimiter) {
        ++position;
        skipBlanks();
    }
    if (*position == '\n')
        return position + 1;
    // The LF that belongs to a CR at the end of the window may be in the next block.
    if (*position != '\r' || position[1] == '\0')
        return nullptr;
    return position + (position[1] == '\n' ? 2 : 1);
}

/// Reads the record at the window's begin, whatever it is. False where the window does not have all of it.
bool DelimitedTextReader::readRecord()
{
    const char* begin = m_buffer.begin();
    if (commentMarkLength(begin, m_dialect.delimiter) > 0)
        return skipComment();
    Status status = m_splitter.split(begin, m_buffer.end());
    if (status == Status::Incomplete || status == Status::OpenQuote)
        return false;
    if (status != Status::Complete)
        failSplit(status, m_line, m_splitter);
    if (m_splitter.fields().empty())
        skipRecord(m_splitter.next(), 1);
    else
        addRecord();
    return true;
}

/// A comment is one line, whatever quotation marks are in it.
bool DelimitedTextReader::skipComment()
{
    std::string_view text(m_buffer.begin(), static_cast<std::size_t>(m_buffer.end() - m_buffer.begin()));
    std::size_t lineEnd = text.find_first_of("\r\n");
    if (lineEnd == std::string_view::npos || (text[lineEnd] == '\r' && lineEnd + 1 == text.size()))
        return false;
    bool isPair = text[lineEnd] == '\r' && text[lineEnd + 1] == '\n';
    skipRecord(m_buffer.begin() + lineEnd + (isPair ? 2 : 1), 1);
    return true;
}

void DelimitedTextReader::skipRecord(const char* next, std::size_t lineCount)
{
    m_table.format.skippedLines += lineCount;
    m_line += lineCount;
    m_buffer.consumeTo(next);
}

void DelimitedTextReader::addRecord()
{
    const std::vector<FieldText>& fields = m_splitter.fields();
    m_values.clear();
    std::size_t width = 0;
    bool hasValue = false;
    for (const FieldText& field : fields) {
        m_values.push_back(fieldValue(field.text, m_dialect.numberStyle));
        hasValue = hasValue || m_values.back().kind == FieldKind::Number || m_values.back().kind == FieldKind::Date;
        if (!field.text.empty())
            width = m_values.size();
    }
    if (!hasValue && width > 0 && fields.size() < m_builder.columnCount())
        return skipRecord(m_splitter.next(), m_splitter.lineCount());
    if (width == 0) {
        ++m_waitingEmptyRows;
    } else {
        addWaitingEmptyRows();
        widenFor(width);
        std::size_t columnCount = m_builder.columnCount();
        if (fields.size() < columnCount && m_table.shortRowCount++ == 0)
            m_table.firstShortLine = m_line;
        if (width > columnCount && m_table.longRowCount++ == 0)
            m_table.firstLongLine = m_line;
        countMissing(columnCount - std::min(fields.size(), columnCount), fields.size());
        m_builder.addRow(fields, m_values);
    }
    m_line += m_splitter.lineCount();
    m_buffer.consumeTo(m_splitter.next());
}

void DelimitedTextReader::addWaitingEmptyRows()
{
    if (m_waitingEmptyRows > 0) {
        countMissing(m_waitingEmptyRows * m_builder.columnCount(), m_waitingEmptyRows);
        m_builder.addEmptyRows(std::exchange(m_waitingEmptyRows, 0));
    }
    if (m_builder.isStageFull())
        flush();
}

/// Fields behind the last named or filled column, which every row of the sample left empty, become columns once one is filled.
void DelimitedTextReader::widenFor(std::size_t width)
{
    while (m_builder.columnCount() < std::min({width, m_fieldCount, kMaximumColumnCount})) {
        countMissing(m_builder.rowCount(), 0);
        m_builder.addColumn();
        m_table.columns.emplace_back();
        m_table.columns.back().number = m_table.columns.size();
    }
}

/// Rows that are nearly all missing fields would make a large table of a small file.
void DelimitedTextReader::countMissing(std::size_t count, std::size_t present)
{
    m_missingFields += count;
    m_presentFields += present;
    if (m_missingFields > kAllowedMissingFields && m_missingFields / 4 > m_presentFields)
        fail(m_line, std::to_string(m_missingFields) + " fields missing so far in rows shorter than " + std::to_string(m_builder.columnCount()) + " columns",
            "expected rows of equal length");
}

void DelimitedTextReader::flush()
{
    std::size_t expectedRows = 0;
    std::uint64_t consumed = m_buffer.consumedBytes();
    if (auto total = m_source.totalBytes(); total && consumed > 0) {
        double estimate = static_cast<double>(m_builder.rowCount()) / static_cast<double>(consumed) * static_cast<double>(*total);
        // A value takes at least a byte of a table without missing fields.
        double most = static_cast<double>(*total) / static_cast<double>(m_builder.columnCount());
        expectedRows = static_cast<std::size_t>(std::min(estimate * 1.02, most)) + m_builder.stageLength();
    }
    m_builder.flush(expectedRows);
}

MeasurementTable DelimitedTextReader::finishedTable()
{
    m_table.format.skippedLines += std::exchange(m_waitingEmptyRows, 0);
    if (!m_builder.hasValues())
        fail(std::max<std::size_t>(m_line, 2) - 1, "no row with a number behind the header", "expected at least one column of numbers or dates");
    m_builder.finish(m_table);
    return std::move(m_table);
}

void DelimitedTextReader::fail(std::size_t line, std::string found, std::string expected) const
{
    throw MeasurementError(m_source.name(), line, std::move(found), std::move(expected));
}

void DelimitedTextReader::failSplit(Status status, std::size_t firstLine, const RecordSplitter& splitter) const
{
    std::size_t line = firstLine + splitter.lineCount() - 1;
    switch (status) {
    case Status::OpenQuote: fail(firstLine, "a quotation mark that is not closed", "expected another one at the end of the field");
    case Status::BinaryByte: fail(line, "a NUL byte (binary data)", "expected text");
    case Status::FieldTooLong: fail(firstLine, "a field of more than 1 MiB (a quotation mark may be missing)", "expected shorter fields");
    case Status::TooManyFields: fail(line, "more than " + std::to_string(kMaximumColumnCount) + " columns", "expected at most that many");
    case Status::Complete:
    case Status::Incomplete: break;
    }
    fail(line, "a line that does not end", "expected a line end");
}

} // namespace

MeasurementTable readDelimitedText(ByteSource& source, const ReadSettings& settings)
{
    return DelimitedTextReader(source, settings).read();
}

} // namespace TOLVGraphing::input
