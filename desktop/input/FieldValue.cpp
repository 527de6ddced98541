#include <desktop/input/FieldValue.h>

#include <desktop/input/CalendarDate.h>
#include <desktop/input/NumberScanner.h>

#include <algorithm>
#include <limits>

namespace TOLVGraphing::input {

namespace {

constexpr float kGap = std::numeric_limits<float>::quiet_NaN();

bool isSameWord(std::string_view text, std::string_view lowerCaseWord)
{
    auto isSame = [](char character, char lower) { return character == lower || (character >= 'A' && character <= 'Z' && character + 32 == lower); };
    return std::equal(text.begin(), text.end(), lowerCaseWord.begin(), lowerCaseWord.end(), isSame);
}

FieldValue wordValue(std::string_view text)
{
    if (isSameWord(text, "na") || isSameWord(text, "n/a") || isSameWord(text, "null"))
        return {FieldKind::Empty, kGap};
    bool isNegative = text.front() == '-';
    if (isNegative || text.front() == '+')
        text.remove_prefix(1);
    if (isSameWord(text, "nan"))
        return {FieldKind::Empty, kGap};
    if (isSameWord(text, "inf") || isSameWord(text, "infinity")) {
        constexpr float infinity = std::numeric_limits<float>::infinity();
        return {FieldKind::Number, isNegative ? -infinity : infinity};
    }
    return {FieldKind::Word, kGap};
}

} // namespace

FieldValue fieldValue(std::string_view text, NumberStyle style)
{
    if (text.empty())
        return {FieldKind::Empty, kGap};
    const char* end = text.data() + text.size();
    float value = 0;
    if (scanNumber(text.data(), style.decimalMark, value) == end)
        return {FieldKind::Number, value};
    char otherMark = style.decimalMark == ',' ? '.' : ',';
    if (style.allowsBothMarks && scanNumber(text.data(), otherMark, value) == end)
        return {FieldKind::Number, value};
    if (text.size() >= 7 && (text[4] == '-' || text[4] == '/' || (text[2] == '.' && text[5] == '.'))) {
        if (auto days = daysOfDate(text))
            return {FieldKind::Date, static_cast<float>(*days), *days};
    }
    return wordValue(text);
}

} // namespace TOLVGraphing::input
