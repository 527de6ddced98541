#include <desktop/input/SampleRows.h>

namespace TOLVGraphing::input {

namespace {

SampleRow describedRow(const RecordSplitter& splitter, const Dialect& dialect)
{
    SampleRow row;
    row.fields = splitter.fields();
    row.kinds.reserve(row.fields.size());
    for (const FieldText& field : row.fields) {
        FieldKind kind = fieldValue(field.text, dialect.numberStyle).kind;
        row.kinds.push_back(kind);
        row.valueCount += kind == FieldKind::Number || kind == FieldKind::Date ? 1 : 0;
        row.wordCount += kind == FieldKind::Word ? 1 : 0;
        if (!field.text.empty())
            row.width = row.kinds.size();
    }
    return row;
}

} // namespace

std::size_t commentMarkLength(const char* position, char delimiter)
{
    const char* mark = position;
    while (*mark == ' ' || *mark == '\t')
        ++mark;
    std::size_t length = 0;
    if (*mark == '#' || *mark == '%' || *mark == '*' || (*mark == ';' && delimiter != ';'))
        length = 1;
    else if (*mark == '/' && mark[1] == '/')
        length = 2;
    return length == 0 || *mark == delimiter ? 0 : static_cast<std::size_t>(mark - position) + length;
}

std::vector<SampleRow> sampleRows(std::string_view text, const Dialect& dialect, std::size_t largestCount)
{
    std::vector<SampleRow> rows;
    RecordSplitter splitter(dialect.delimiter);
    const char* position = text.data();
    const char* end = text.data() + text.size();
    std::size_t line = 1;
    while (position < end && rows.size() < largestCount) {
        std::size_t markLength = commentMarkLength(position, dialect.delimiter);
        if (splitter.split(position + markLength, end) != RecordSplitter::Status::Complete)
            break;
        SampleRow row = describedRow(splitter, dialect);
        row.offset = static_cast<std::size_t>(position - text.data());
        row.line = line;
        row.isComment = markLength > 0;
        rows.push_back(std::move(row));
        position = splitter.next();
        line += splitter.lineCount();
    }
    return rows;
}

} // namespace TOLVGraphing::input
