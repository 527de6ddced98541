#include <desktop/input/DialectDetector.h>

#include <algorithm>
#include <map>

namespace TOLVGraphing::input {

namespace {

/// Rows looked at for one dialect. A long preamble is still followed by enough rows of the table.
constexpr std::size_t kRowCount = 1000;

/// A word that another separator or decimal mark might turn into numbers.
bool isSuspicious(std::string_view word)
{
    bool startsLikeNumber = std::string_view("+-.0123456789").find(word.front()) != std::string_view::npos;
    return startsLikeNumber && word.find_first_of(",; \t") != std::string_view::npos;
}

/// The most frequent width among the rows that have values.
std::size_t commonWidth(const std::vector<SampleRow>& rows)
{
    std::map<std::size_t, std::size_t> counts;
    for (const SampleRow& row : rows) {
        if (!row.isComment && row.valueCount > 0)
            ++counts[row.fields.size()];
    }
    auto most = std::max_element(counts.begin(), counts.end(), [](const auto& left, const auto& right) { return left.second < right.second; });
    return most == counts.end() ? 0 : most->first;
}

double score(const std::vector<SampleRow>& rows)
{
    std::size_t width = commonWidth(rows);
    double total = 0;
    for (const SampleRow& row : rows) {
        if (row.isComment)
            continue;
        // Rows of another length show that the separator is wrong; they count a little, because a preamble has them too.
        total += static_cast<double>(row.valueCount) * (row.fields.size() == width ? 1.0 : 0.25);
        // Between separators that do equally well otherwise a header decides: `name,v` above `item 1,5` has two fields between commas only.
        if (row.valueCount == 0 && width > 1 && row.fields.size() == width)
            total += 0.01;
        for (std::size_t column = 0; column < row.kinds.size(); ++column) {
            if (row.kinds[column] == FieldKind::Word)
                total -= isSuspicious(row.fields[column].text) ? 1.0 : 0.001;
        }
    }
    return total;
}

bool hasDecimalMark(const std::vector<SampleRow>& rows, char delimiter)
{
    for (const SampleRow& row : rows) {
        for (std::size_t column = 0; column < row.kinds.size(); ++column) {
            if (!row.isComment && row.kinds[column] == FieldKind::Number && row.fields[column].text.find_first_of(delimiter == ',' ? "." : ".,") != std::string_view::npos)
                return true;
        }
    }
    return false;
}

std::vector<Dialect> candidates(const ReadSettings& settings)
{
    std::vector<Dialect> result;
    const std::string delimiters = settings.delimiter ? std::string(1, *settings.delimiter) : ",;\t ";
    const std::string marks = settings.decimalMark ? std::string(1, *settings.decimalMark) : ".,";
    for (char delimiter : delimiters) {
        for (char mark : marks) {
            if (mark != delimiter)
                result.push_back({delimiter, {mark, false}});
        }
    }
    return result;
}

} // namespace

Dialect detectedDialect(std::string_view sample, const ReadSettings& settings)
{
    Dialect best;
    double bestScore = 0;
    bool isFirst = true;
    for (const Dialect& candidate : candidates(settings)) {
        std::vector<SampleRow> rows = sampleRows(sample, candidate, kRowCount);
        double candidateScore = score(rows);
        if (!isFirst && candidateScore <= bestScore)
            continue;
        isFirst = false;
        bestScore = candidateScore;
        best = candidate;
        best.numberStyle.allowsBothMarks = !settings.decimalMark && candidate.delimiter != ',' && !hasDecimalMark(rows, candidate.delimiter);
    }
    return best;
}

} // namespace TOLVGraphing::input
