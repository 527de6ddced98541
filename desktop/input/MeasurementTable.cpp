#include <desktop/input/MeasurementTable.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace TOLVGraphing::input {

namespace {

std::string counted(std::size_t count, const std::string& noun)
{
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string numberText(double number)
{
    char buffer[32];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, number);
    return {buffer, result.ptr};
}

} // namespace

std::string_view columnKindName(ColumnKind kind)
{
    switch (kind) {
    case ColumnKind::Number: return "number";
    case ColumnKind::Date: return "date";
    case ColumnKind::Text: return "text";
    }
    return "number";
}

std::string delimiterName(char delimiter)
{
    switch (delimiter) {
    case ',': return "comma";
    case ';': return "semicolon";
    case '\t': return "tab";
    case ' ': return "blanks";
    default: return std::string("'") + delimiter + "'";
    }
}

std::string MeasurementColumn::displayName() const
{
    return name.empty() ? "column " + std::to_string(number) : name;
}

std::string MeasurementColumn::text() const
{
    std::string text = displayName();
    if (!unit.empty())
        text += " [" + unit + "]";
    text += " " + std::string(columnKindName(kind)) + ", " + counted(values.size(), "row");
    if (gapCount > 0)
        text += ", " + counted(gapCount, "gap");
    if (wordCount > 0)
        text += ", " + counted(wordCount, "word");
    return text;
}

bool operator==(const MeasurementColumn& left, const MeasurementColumn& right)
{
    auto isSame = [](float first, float second) { return first == second || (std::isnan(first) && std::isnan(second)); };
    return left.number == right.number && left.name == right.name && left.unit == right.unit && left.kind == right.kind && left.gapCount == right.gapCount
        && left.wordCount == right.wordCount && left.dateOrigin == right.dateOrigin && left.mergedDateCount == right.mergedDateCount && left.texts == right.texts
        && std::equal(left.values.begin(), left.values.end(), right.values.begin(), right.values.end(), isSame);
}

std::string TableFormat::text() const
{
    std::string text = kind;
    if (delimiter == '\0')
        return text;
    text += ", " + delimiterName(delimiter) + (decimalMark == ',' ? ", decimal comma" : ", decimal point");
    text += ", " + counted(headerRows, "header row");
    if (skippedLines > 0)
        text += ", " + counted(skippedLines, "skipped line");
    return text;
}

std::shared_ptr<const MappedFile> MeasurementTable::mappedFile() const
{
    // Either none is, or those are that were not changed since, all in one file.
    const auto mapped = std::find_if(columns.begin(), columns.end(), [](const MeasurementColumn& column) { return column.values.areElsewhere(); });
    return mapped == columns.end() ? nullptr : mapped->values.file();
}

std::size_t MeasurementTable::rowCount() const
{
    return columns.empty() ? 0 : columns.front().values.size();
}

std::optional<std::size_t> MeasurementTable::indexOfColumn(std::string_view name) const
{
    auto indexWhere = [this](auto isMatch) -> std::optional<std::size_t> {
        auto found = std::find_if(columns.begin(), columns.end(), isMatch);
        if (found == columns.end())
            return std::nullopt;
        return static_cast<std::size_t>(found - columns.begin());
    };
    auto byName = indexWhere([name](const MeasurementColumn& column) { return !column.name.empty() && column.name == name; });
    return byName ? byName : indexWhere([name](const MeasurementColumn& column) { return column.displayName() == name; });
}

std::optional<std::size_t> MeasurementTable::indexOfColumnOrNumber(std::string_view nameOrNumber) const
{
    if (const auto named = indexOfColumn(nameOrNumber))
        return named;
    std::size_t number = 0;
    const char* end = nameOrNumber.data() + nameOrNumber.size();
    const auto [parsed, error] = std::from_chars(nameOrNumber.data(), end, number);
    if (error != std::errc() || parsed != end || number < 1 || number > columns.size())
        return std::nullopt;
    return number - 1;
}

std::string MeasurementTable::text() const
{
    std::string text = sourceName + ": " + format.text();
    if (sampleRate)
        text += ", " + numberText(*sampleRate) + " samples per second";
    for (const MeasurementColumn& column : columns)
        text += "\n" + std::to_string(column.number) + ": " + column.text();
    return text;
}

} // namespace TOLVGraphing::input
