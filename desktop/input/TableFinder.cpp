#include <desktop/input/TableFinder.h>

#include <desktop/input/SampleRateLine.h>
#include <desktop/input/UnitWords.h>

#include <algorithm>
#include <utility>

namespace TOLVGraphing::input {

namespace {

bool isValueKind(FieldKind kind)
{
    return kind == FieldKind::Number || kind == FieldKind::Date;
}

/// Whether a row has the pattern's kinds: no word where the pattern has a number, and at least one value where the pattern has no word.
bool fitsPattern(const SampleRow& row, const SampleRow& pattern)
{
    bool hasValue = false;
    for (std::size_t column = 0; column < row.kinds.size(); ++column) {
        FieldKind expected = pattern.kindAt(column);
        FieldKind kind = row.kinds[column];
        if (isValueKind(expected) && kind != FieldKind::Empty && kind != expected)
            return false;
        hasValue = hasValue || (isValueKind(kind) && expected != FieldKind::Word);
    }
    return hasValue;
}

bool isRemark(const SampleRow& row)
{
    return row.isComment || row.isBlank();
}

/// A word first and numbers next: a line of a preamble, or a header with years for names.
bool hasKeyAndValues(const SampleRow& row)
{
    return row.kindAt(0) == FieldKind::Word && row.wordCount == 1 && row.valueCount > 0;
}

/// A word and then two or more years that ascend: `city,2019,2020,2021`, the names of a table with words in its first column.
bool isNameAndYears(const SampleRow& row)
{
    constexpr std::string_view kEarliest = "1000";
    constexpr std::string_view kLatest = "2999";
    if (!hasKeyAndValues(row) || row.width < 3)
        return false;
    std::string former;
    for (std::size_t column = 1; column < row.width; ++column) {
        const std::string text = row.fields[column].unquoted();
        const bool isYear = text.size() == kEarliest.size() && text.find_first_not_of("0123456789") == std::string::npos && text >= kEarliest && text <= kLatest;
        if (!isYear || text <= former)
            return false;
        former = text;
    }
    return true;
}

bool isAllWords(const SampleRow& row)
{
    return row.wordCount > 0 && row.valueCount == 0;
}

/// Several words, each another one: names rather than the same remark in every column.
bool hasDistinctWords(const SampleRow& row)
{
    if (row.wordCount < 2 || row.valueCount > 0)
        return false;
    for (std::size_t index = 1; index < row.width; ++index) {
        if (row.fields[index].text != row.fields[index - 1].text)
            return true;
    }
    return false;
}

/// A stretch of rows that may be the table, and the row that it was found by.
struct Body {
    std::size_t start = 0;
    std::size_t pattern = 0;
    std::size_t fittingRows = 0;
};

class TableFinder {
public:
    TableFinder(const std::vector<SampleRow>& rows, const Dialect& dialect, const ReadSettings& settings, std::string_view sample)
        : m_rows(rows)
        , m_dialect(dialect)
        , m_settings(settings)
        , m_sample(sample)
    {
    }

    std::optional<TableLayout> find();

private:
    bool findBody();
    bool isProse() const;
    std::optional<Body> bodyWithPattern(std::size_t pattern) const;
    bool isBetter(const Body& body, const Body& other);
    void skipSmallTable(const Body& body);
    void takeRowsAbove(const SampleRow& pattern);
    void takeGapsAbove(const SampleRow& pattern);
    bool isNamedGap(const SampleRow& row, const SampleRow& pattern) const;
    template <typename Length>
    std::size_t commonLength(Length length) const;
    std::size_t bodyWidth() const;
    void findHeader();
    void takeFixedHeader();
    std::optional<std::size_t> headerAbove(std::size_t row) const;
    std::optional<std::size_t> rowAbove(std::size_t row, bool takesComments) const;
    bool isHeader(std::size_t index) const;
    static bool isUnitsRow(const SampleRow& row);
    std::vector<std::string> headerTexts(const SampleRow& row) const;
    void takeNames(std::size_t row);
    void takeUnits(std::size_t row);
    void findSampleRate();
    void describeBody();

    const std::vector<SampleRow>& m_rows;
    const Dialect& m_dialect;
    const ReadSettings& m_settings;
    std::string_view m_sample;
    TableLayout m_layout;
    /// The index of the table's first row, and its number of columns without the header.
    std::size_t m_bodyStart = 0;
    std::size_t m_width = 0;
};

std::optional<TableLayout> TableFinder::find()
{
    if (!findBody())
        return std::nullopt;
    if (m_settings.headerRows)
        takeFixedHeader();
    else
        findHeader();
    if (isProse())
        return std::nullopt;
    m_layout.columnCount = std::max({m_width, m_layout.names.size(), m_layout.units.size()});
    m_layout.names.resize(m_layout.columnCount);
    m_layout.units.resize(m_layout.columnCount);
    findSampleRate();
    describeBody();
    return m_layout;
}

/// The patterns for the table are the last rows with values, and rows half-way and at three quarters: the end of a file may have a footer.
bool TableFinder::findBody()
{
    std::vector<std::size_t> valueRows;
    for (std::size_t index = 0; index < m_rows.size(); ++index) {
        if (!m_rows[index].isComment && m_rows[index].valueCount > 0)
            valueRows.push_back(index);
    }
    if (valueRows.empty())
        return false;
    std::vector<std::size_t> patterns = {valueRows[valueRows.size() * 3 / 4], valueRows[valueRows.size() / 2]};
    for (std::size_t back = 1; back <= std::min<std::size_t>(5, valueRows.size()); ++back)
        patterns.push_back(valueRows[valueRows.size() - back]);
    Body best{valueRows.back(), valueRows.back(), 0};
    for (std::size_t pattern : patterns) {
        auto body = bodyWithPattern(pattern);
        if (body && (best.fittingRows == 0 || isBetter(*body, best)))
            best = *body;
    }
    skipSmallTable(best);
    m_width = bodyWidth();
    takeRowsAbove(m_rows[best.pattern]);
    takeGapsAbove(m_rows[best.pattern]);
    return true;
}

/// The longest stretch up to the end of the sample of which at least half fits the row. Nothing where that is not even the end itself.
std::optional<Body> TableFinder::bodyWithPattern(std::size_t patternIndex) const
{
    const SampleRow& pattern = m_rows[patternIndex];
    std::size_t fitting = 0;
    std::size_t counted = 0;
    std::optional<Body> body;
    for (std::size_t index = m_rows.size(); index-- > 0;) {
        const SampleRow& row = m_rows[index];
        if (isRemark(row) || row.isAllEmpty())
            continue;
        ++counted;
        if (!fitsPattern(row, pattern))
            continue;
        ++fitting;
        // A much shorter row may belong to the table, but does not start it.
        if (fitting * 2 >= counted && row.fields.size() * 2 >= pattern.width)
            body = Body{index, patternIndex, fitting};
    }
    return body;
}

/// A pattern with words fits lines of keys and values as well as rows of numbers, so a body that has a header comes first, and otherwise
/// the columns of numbers count as much as the rows.
bool TableFinder::isBetter(const Body& body, const Body& other)
{
    auto rankOf = [this](const Body& candidate) {
        m_width = m_rows[candidate.pattern].width;
        bool hasHeader = headerAbove(candidate.start).has_value();
        return std::pair(hasHeader, candidate.fittingRows * m_rows[candidate.pattern].valueCount);
    };
    return rankOf(body) > rankOf(other);
}

/// A preamble may be a small table itself, such as `Points,Channels` and `8192,2`, with the header of the real one behind it.
void TableFinder::skipSmallTable(const Body& body)
{
    m_bodyStart = body.start;
    std::size_t fitting = 0;
    for (std::size_t index = body.start; index < m_rows.size() && fitting * 10 < body.fittingRows; ++index) {
        const SampleRow& row = m_rows[index];
        if (!isRemark(row) && hasDistinctWords(row) && row.width + 1 >= m_rows[body.pattern].width && fitting > 0 && index + 1 < m_rows.size())
            m_bodyStart = index + 1;
        fitting += fitsPattern(row, m_rows[body.pattern]) ? 1 : 0;
    }
}

/// Rows directly above that have a number or nothing in the first column, if the table has, belong to it although they have words
/// elsewhere: nothing but rows of a table looks like that.
void TableFinder::takeRowsAbove(const SampleRow& pattern)
{
    for (;;) {
        auto above = rowAbove(m_bodyStart, false);
        if (!above || m_rows[*above].valueCount == 0 || m_rows[*above].width != m_width)
            return;
        bool isFirstRight = m_rows[*above].kindAt(0) != FieldKind::Word || !isValueKind(pattern.kindAt(0));
        if (!isFirstRight || (hasKeyAndValues(m_rows[*above]) && m_rows[*above].valueCount > pattern.valueCount))
            return;
        m_bodyStart = *above;
    }
}

/// Rows of names whose numbers are all missing belong to the table below a header of full width: `Chad,` between `country,population` and `Peru,34` names no column of numbers.
void TableFinder::takeGapsAbove(const SampleRow& pattern)
{
    std::size_t start = m_bodyStart;
    auto above = rowAbove(start, false);
    for (; above && isNamedGap(m_rows[*above], pattern); above = rowAbove(start, false))
        start = *above;
    if (above && isAllWords(m_rows[*above]) && m_rows[*above].width >= m_width)
        m_bodyStart = start;
}

bool TableFinder::isNamedGap(const SampleRow& row, const SampleRow& pattern) const
{
    if (row.wordCount == 0 || row.fields.size() < m_width)
        return false;
    for (std::size_t column = 0; column < m_width; ++column) {
        if (row.kindAt(column) != FieldKind::Empty && pattern.kindAt(column) != FieldKind::Word)
            return false;
    }
    return true;
}

/// Sentences with a number here and there are no table: mostly words, no header, and few rows or rows of differing length.
bool TableFinder::isProse() const
{
    std::size_t values = 0;
    std::size_t words = 0;
    std::size_t rows = 0;
    std::size_t rowsOfEqualWidth = 0;
    for (std::size_t index = m_bodyStart; index < m_rows.size(); ++index) {
        const SampleRow& row = m_rows[index];
        if (isRemark(row) || row.width == 0)
            continue;
        ++rows;
        values += row.valueCount;
        words += row.wordCount;
        rowsOfEqualWidth += row.width == m_width ? 1 : 0;
    }
    bool isTold = m_settings.headerRows || m_layout.headerRows > 0;
    return !isTold && words > values && (rows < 3 || rowsOfEqualWidth * 2 < rows);
}

/// The length that at least one row in a hundred of the table reaches, so that one broken row does not widen the table.
template <typename Length>
std::size_t TableFinder::commonLength(Length length) const
{
    std::vector<std::size_t> rowsOfLength;
    std::size_t count = 0;
    for (std::size_t index = m_bodyStart; index < m_rows.size(); ++index) {
        const SampleRow& row = m_rows[index];
        if (row.isComment || row.valueCount == 0)
            continue;
        ++count;
        if (length(row) >= rowsOfLength.size())
            rowsOfLength.resize(length(row) + 1);
        ++rowsOfLength[length(row)];
    }
    std::size_t reaching = 0;
    for (std::size_t candidate = rowsOfLength.size(); candidate-- > 0;) {
        reaching += rowsOfLength[candidate];
        if (reaching * 100 >= count)
            return candidate;
    }
    return 0;
}

std::size_t TableFinder::bodyWidth() const
{
    return commonLength([](const SampleRow& row) { return row.width; });
}

void TableFinder::findHeader()
{
    std::size_t start = m_bodyStart;
    auto header = headerAbove(start);
    // First rows with a word in a column of numbers, between the header and the first row that fits, belong to the table.
    for (std::size_t odd = 0; !header && odd < 3; ++odd) {
        auto above = rowAbove(start, false);
        if (!above || m_rows[*above].valueCount == 0 || m_rows[*above].width != m_width)
            break;
        start = *above;
        auto aboveOdd = headerAbove(start);
        if (aboveOdd && isAllWords(m_rows[*aboveOdd]))
            header = aboveOdd;
    }
    // A row of years fits the rows below it, which have words in their first column too.
    const bool isAboveOthers = m_bodyStart + 1 < m_rows.size() && !isNameAndYears(m_rows[m_bodyStart + 1]);
    if (!header && isAboveOthers && isNameAndYears(m_rows[m_bodyStart]))
        header = m_bodyStart;
    if (!header)
        return;
    auto namesRow = isUnitsRow(m_rows[*header]) ? headerAbove(*header) : std::nullopt;
    if (namesRow && isAllWords(m_rows[*namesRow])) {
        takeNames(*namesRow);
        takeUnits(*header);
    } else {
        takeNames(*header);
    }
    // All-empty rows behind the header are rows too.
    m_bodyStart = *header + 1;
}

void TableFinder::takeFixedHeader()
{
    std::size_t row = 0;
    std::optional<std::size_t> comment;
    for (std::size_t count = 0; count < *m_settings.headerRows && row < m_rows.size();) {
        const SampleRow& candidate = m_rows[row];
        if (isRemark(candidate)) {
            comment = candidate.isComment && candidate.width == m_width ? row : comment;
            ++row;
            continue;
        }
        // The names may be in a comment directly above the first row of the table.
        bool isInComment = count == 0 && candidate.wordCount == 0 && comment;
        std::size_t header = isInComment ? *comment : row++;
        if (count++ == 0)
            takeNames(header);
        else
            takeUnits(header);
    }
    m_layout.headerRows = *m_settings.headerRows;
    m_bodyStart = row;
    m_width = m_bodyStart < m_rows.size() ? std::max(m_width, bodyWidth()) : m_width;
}

/// The header that ends directly above a row.
std::optional<std::size_t> TableFinder::headerAbove(std::size_t row) const
{
    auto above = rowAbove(row, false);
    if (above && isHeader(*above))
        return above;
    auto comment = rowAbove(row, true);
    if (!comment || !m_rows[*comment].isComment)
        return std::nullopt;
    const SampleRow& candidate = m_rows[*comment];
    return isAllWords(candidate) && candidate.width == m_width ? comment : std::nullopt;
}

/// The nearest row above that is not blank or all empty, with or without comments.
std::optional<std::size_t> TableFinder::rowAbove(std::size_t row, bool takesComments) const
{
    while (row-- > 0) {
        const SampleRow& candidate = m_rows[row];
        if (!candidate.isBlank() && candidate.width > 0 && (takesComments || !candidate.isComment))
            return row;
    }
    return std::nullopt;
}

bool TableFinder::isHeader(std::size_t index) const
{
    const SampleRow& row = m_rows[index];
    if (row.wordCount == 0)
        return false;
    bool isWidthRight = row.width + 1 >= m_width && row.width <= m_width * 2 + 1;
    if (m_dialect.delimiter == ' ')
        isWidthRight = (row.width + 1 >= m_width && row.width <= m_width) || headerTexts(row).size() == m_width;
    // One text with blanks above several columns is a title.
    bool isTitle = row.width == 1 && m_width > 1 && row.fields.front().text.find(' ') != std::string_view::npos;
    if (!isWidthRight || isTitle)
        return false;
    if (row.valueCount == 0)
        return true;
    // `year,2001,2002` is a header, but not `Scale =,2` or one of several such lines, nor a first row with a word, `OVL,1`, below the names.
    if (!hasKeyAndValues(row))
        return false;
    char last = row.fields.front().text.back();
    auto above = rowAbove(index, false);
    bool hasBetterAbove = above && (hasKeyAndValues(m_rows[*above]) || (isAllWords(m_rows[*above]) && m_rows[*above].width == m_width));
    return last != '=' && last != ':' && !hasBetterAbove;
}

bool TableFinder::isUnitsRow(const SampleRow& row)
{
    std::size_t units = 0;
    std::size_t words = 0;
    for (const FieldText& field : row.fields) {
        words += field.text.empty() ? 0 : 1;
        units += isUnitWord(field.unquoted()) ? 1 : 0;
    }
    return words > 0 && units * 2 > words;
}

/// The texts of a header row. Names between blanks may contain single blanks themselves; then two of them separate.
std::vector<std::string> TableFinder::headerTexts(const SampleRow& row) const
{
    std::vector<std::string> texts;
    if (m_dialect.delimiter == ' ' && row.width > m_width) {
        for (const FieldText& field : row.fields) {
            const char* begin = field.text.data();
            bool isApart = texts.empty() || (begin - m_sample.data() >= 2 && (begin[-1] == '\t' || begin[-2] == ' ' || begin[-2] == '\t'));
            if (isApart)
                texts.push_back(field.unquoted());
            else
                texts.back() += " " + field.unquoted();
        }
        return texts;
    }
    for (std::size_t column = 0; column < row.width; ++column)
        texts.push_back(row.fields[column].unquoted());
    return texts;
}

void TableFinder::takeNames(std::size_t row)
{
    m_layout.names = headerTexts(m_rows[row]);
    m_layout.headerRows = 1;
}

void TableFinder::takeUnits(std::size_t row)
{
    m_layout.units = headerTexts(m_rows[row]);
    for (std::string& unit : m_layout.units)
        unit = withoutBrackets(unit);
    m_layout.headerRows = 2;
}

void TableFinder::findSampleRate()
{
    for (std::size_t index = 0; index < m_bodyStart && !m_layout.sampleRate; ++index) {
        std::size_t lineEnd = index + 1 < m_rows.size() ? m_rows[index + 1].offset : m_sample.size();
        m_layout.sampleRate = statedSampleRate(m_sample.substr(m_rows[index].offset, lineEnd - m_rows[index].offset));
    }
}

void TableFinder::describeBody()
{
    std::size_t end = m_rows.size();
    if (m_bodyStart < end) {
        m_layout.dataOffset = m_rows[m_bodyStart].offset;
        m_layout.dataLine = m_rows[m_bodyStart].line;
    }
    m_layout.fieldCount = commonLength([](const SampleRow& row) { return row.fields.size(); });
    m_layout.isTextColumn.resize(m_layout.columnCount);
    for (std::size_t column = 0; column < m_layout.columnCount; ++column) {
        std::size_t words = 0;
        std::size_t filled = 0;
        for (std::size_t index = m_bodyStart; index < end; ++index) {
            FieldKind kind = m_rows[index].isComment ? FieldKind::Empty : m_rows[index].kindAt(column);
            words += kind == FieldKind::Word ? 1 : 0;
            filled += kind == FieldKind::Empty ? 0 : 1;
        }
        m_layout.isTextColumn[column] = words * 2 > filled;
    }
    std::size_t linesBefore = m_layout.dataLine - 1;
    m_layout.skippedLines = linesBefore > m_layout.headerRows ? linesBefore - m_layout.headerRows : 0;
}

} // namespace

std::optional<TableLayout> foundTable(const std::vector<SampleRow>& rows, const Dialect& dialect, const ReadSettings& settings, std::string_view sample)
{
    return TableFinder(rows, dialect, settings, sample).find();
}

} // namespace TOLVGraphing::input
