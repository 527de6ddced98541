#include "../support/FuzzTarget.h"
#include "../support/InputReader.h"
#include "../support/PrivateFolder.h"
#include "../support/Tables.h"

#include <desktop/input/ByteSource.h>
#include <desktop/input/DelimitedTextReader.h>

#include <algorithm>
#include <cstdlib>

namespace TOLVGraphing::fuzzing {
namespace {

using input::MeasurementTable;
using input::ReadSettings;

/// Whether a text is a number in the form of which nobody doubts: digits with a sign, a mark and an exponent where they belong.
bool isPlainNumber(std::string_view text, char mark)
{
    std::size_t place = 0;
    const auto digits = [&] {
        const std::size_t first = place;
        while (place < text.size() && text[place] >= '0' && text[place] <= '9')
            ++place;
        return place - first;
    };
    const auto skip = [&](std::string_view characters) {
        const bool isThere = place < text.size() && characters.find(text[place]) != std::string_view::npos;
        place += isThere ? 1U : 0U;
        return isThere;
    };
    skip("+-");
    if (digits() == 0)
        return false;
    if (skip({&mark, 1}) && digits() == 0)
        return false;
    if (skip("eE")) {
        skip("+-");
        if (digits() == 0)
            return false;
    }
    return place == text.size();
}

/// The nearest float by the C library, which rounds decimal texts of any length correctly.
float nearestFloat(std::string text, char mark)
{
    std::replace(text.begin(), text.end(), mark, '.');
    return std::strtof(text.c_str(), nullptr);
}

template <typename Value>
std::optional<Value> maybe(InputReader& reader, Value value)
{
    return reader.yes() ? std::optional(value) : std::nullopt;
}

ReadSettings settingsOf(InputReader& reader)
{
    static constexpr char kDelimiters[] = {',', ';', '\t', ' ', '|', ':', 'x', '.'};
    static constexpr char kMarks[] = {'.', ',', '.', 'x'};
    ReadSettings settings;
    settings.delimiter = maybe(reader, reader.oneOf(kDelimiters));
    settings.decimalMark = maybe(reader, reader.oneOf(kMarks));
    settings.headerRows = maybe(reader, reader.below(4));
    settings.skippedLines = reader.yes() ? reader.below(4) : 0;
    settings.keepsTextsOfTextColumns = reader.yes();
    return settings;
}

/// Reads the path; the error's text behind the path, or nothing with the table set.
std::string readInto(MeasurementTable& table, const std::string& path, const ReadSettings& settings, std::size_t lineEnds)
{
    try {
        input::ByteSource source(path);
        table = input::readDelimitedText(source, settings);
        requireSoundTable(table);
        return {};
    } catch (const input::MeasurementError& error) {
        requireClearError(error, path, lineEnds);
        return std::string(error.what()).substr(path.size());
    }
}

ReadSettings withAllTexts(ReadSettings settings, std::size_t columnCount)
{
    for (std::size_t column = 1; column <= columnCount; ++column)
        settings.keptTextColumns.push_back("column " + std::to_string(column));
    settings.keepsTextsOfFirstColumn = true;
    return settings;
}

void requireSameValues(const MeasurementTable& one, const MeasurementTable& other, std::string_view whatMustHold)
{
    require(one.columns.size() == other.columns.size() && one.rowCount() == other.rowCount(), whatMustHold);
    for (std::size_t i = 0; i < one.columns.size(); ++i) {
        require(one.columns[i].name == other.columns[i].name && one.columns[i].kind == other.columns[i].kind, whatMustHold);
        require(std::ranges::equal(one.columns[i].values, other.columns[i].values, areSame), whatMustHold);
    }
}

/// Fields whose texts are plain numbers have the values that the C library gives them, whichever way their rows were read.
void requireValuesOfTexts(const MeasurementTable& table)
{
    const char mark = table.format.decimalMark;
    for (const input::MeasurementColumn& column : table.columns) {
        for (std::size_t row = 0; row < column.texts.size(); ++row) {
            const std::string& text = column.texts[row];
            if (isPlainNumber(text, mark))
                require(areSame(column.values[row], nearestFloat(text, mark)) || (column.kind != input::ColumnKind::Number && std::isnan(column.values[row])),
                    "a plain number is the nearest float, or a gap among dates");
            else if (text.empty())
                require(std::isnan(column.values[row]), "an empty field is a gap");
        }
    }
}

std::string withLineEnds(std::string_view text, std::string_view lineEnd)
{
    std::string result;
    for (const char character : text)
        result += character == '\n' ? lineEnd : std::string_view(&character, 1);
    return result;
}

bool isOneLineEndText(std::string_view text)
{
    return text.find_first_of(std::string_view("\r\"\0", 3)) == std::string_view::npos && !text.starts_with("\xFF\xFE") && !text.starts_with("\xFE\xFF");
}

/// Any bytes at all, read in several ways that have to agree.
Verdict tryAnyText(const PrivateFolder& folder, InputReader& reader)
{
    const ReadSettings settings = settingsOf(reader);
    const auto content = reader.rest();
    const std::string_view text = textOf(content);
    const auto lineEnds = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char character) { return character == '\n' || character == '\r'; }));
    MeasurementTable table;
    const std::string error = readInto(table, folder.write("any.csv", content), settings, lineEnds);
    if (content.size() <= Pipe::kMostBytes) {
        MeasurementTable piped;
        require(readInto(piped, Pipe(content).path(), settings, lineEnds) == error, "a pipe is read like a file");
        piped.sourceName = table.sourceName;
        require(piped == table, "a pipe has the table of a file");
    }
    if (isOneLineEndText(text)) {
        const std::string other = withLineEnds(text, "\r\n");
        MeasurementTable same;
        require(readInto(same, folder.write("any.csv", std::as_bytes(std::span(other))), settings, lineEnds) == error, "all line ends are read alike");
        require(same == table, "all line ends give the same table");
        static_cast<void>(folder.write("any.csv", content));
    }
    if (!error.empty())
        return Verdict::refused;
    MeasurementTable texts;
    require(readInto(texts, folder.path("any.csv"), withAllTexts(settings, table.columns.size()), lineEnds).empty(), "texts can be kept of everything that can be read");
    requireSameValues(table, texts, "values do not depend on texts that are kept");
    requireValuesOfTexts(texts);
    return Verdict::accepted;
}

/// A table that is made here, so that it is known what has to be read: plain numbers, gaps and words.
class MadeTable {
public:
    explicit MadeTable(InputReader& reader)
        : m_delimiter(reader.oneOf(kDelimiters))
        , m_mark(m_delimiter != ',' && reader.yes() ? ',' : '.')
        , m_columnCount(1 + reader.below(6))
        , m_rowCount(1 + reader.below(20))
    {
        for (std::size_t row = 0; row < m_rowCount; ++row) {
            for (std::size_t column = 0; column < m_columnCount; ++column)
                // A first column of numbers makes every row one of the table, and a last one that is empty throughout would be none.
                addField(reader, column == 0, column == 0 || (row == 0 && column + 1 == m_columnCount));
            m_text += reader.yes() ? "\n" : "\r\n";
        }
    }

    [[nodiscard]] std::string_view text() const { return m_text; }

    void requireIn(const PrivateFolder& folder) const
    {
        ReadSettings settings;
        settings.delimiter = m_delimiter;
        settings.decimalMark = m_mark;
        settings.headerRows = 0;
        MeasurementTable table;
        const std::string error = readInto(table, folder.write("made.csv", std::as_bytes(std::span(m_text))), settings, m_rowCount);
        require(error.empty(), "a plain table can be read");
        require(table.columns.size() == m_columnCount && table.rowCount() == m_rowCount, "a plain table has its rows and columns");
        for (std::size_t i = 0; i < m_values.size(); ++i)
            require(areSame(table.columns[i % m_columnCount].values[i / m_columnCount], m_values[i]), "a field of a plain table has its value");
    }

private:
    static constexpr char kDelimiters[] = {',', ';', '\t'};

    void addField(InputReader& reader, bool isFirst, bool isNumber)
    {
        if (!isFirst)
            m_text += m_delimiter;
        const std::size_t kind = isNumber ? 0 : reader.below(8);
        const std::string field = kind == 6 ? "word" : kind == 7 ? "" : number(reader);
        m_text += field;
        m_values.push_back(kind >= 6 ? std::numeric_limits<float>::quiet_NaN() : nearestFloat(field, m_mark));
    }

    std::string number(InputReader& reader) const
    {
        static constexpr const char* kSigns[] = {"", "-", "+"};
        std::string text = reader.oneOf(kSigns);
        appendDigits(text, reader, 1 + reader.below(24));
        if (reader.yes()) {
            text += m_mark;
            appendDigits(text, reader, 1 + reader.below(24));
        }
        if (reader.yes()) {
            text += reader.yes() ? "e" : "E";
            text += reader.oneOf(kSigns);
            appendDigits(text, reader, 1 + reader.below(3));
        }
        return text;
    }

    static void appendDigits(std::string& text, InputReader& reader, std::size_t count)
    {
        for (; count > 0; --count)
            text += static_cast<char>('0' + reader.below(10));
    }

    char m_delimiter;
    char m_mark;
    std::size_t m_columnCount;
    std::size_t m_rowCount;
    std::string m_text;
    std::vector<float> m_values;
};

} // namespace

Verdict tryInput(std::span<const std::byte> input)
{
    static const PrivateFolder folder;
    InputReader reader(input);
    if (reader.below(4) != 1)
        return tryAnyText(folder, reader);
    MadeTable(reader).requireIn(folder);
    return Verdict::accepted;
}

} // namespace TOLVGraphing::fuzzing
