#include <desktop/input/RecordSplitter.h>

#include <gtest/gtest.h>

namespace TOLVGraphing::input {

namespace {

using Status = RecordSplitter::Status;

/// The fields of the first record as `[a][b]`, then the number of lines and what is left of the text; or the status's name.
std::string splitText(const std::string& text, char delimiter)
{
    RecordSplitter splitter(delimiter);
    const char* end = text.c_str() + text.size();
    switch (splitter.split(text.c_str(), end)) {
    case Status::Incomplete: return "incomplete";
    case Status::OpenQuote: return "open quote";
    case Status::BinaryByte: return "binary";
    case Status::FieldTooLong: return "too long";
    case Status::TooManyFields: return "too many";
    case Status::Complete: break;
    }
    std::string result;
    for (const FieldText& field : splitter.fields())
        result += "[" + field.unquoted() + "]";
    return result + std::to_string(splitter.lineCount()) + std::string(splitter.next(), end);
}

struct SplitCase {
    std::string text;
    char delimiter;
    const char* expected;
};

TEST(RecordSplitter, records)
{
    using namespace std::string_literals;
    const SplitCase cases[] = {
        {"a,b\nrest", ',', "[a][b]1rest"},
        {"a,b\r\nrest", ',', "[a][b]1rest"},
        {"a,b\rrest", ',', "[a][b]1rest"},
        {"\nrest", ',', "1rest"},
        {"  \nrest", ',', "1rest"},
        {",\n", ',', "[][]1"},
        {"a,\n", ',', "[a][]1"},
        {"a,  \n", ',', "[a][]1"},
        {" a , b c \n", ',', "[a][b c]1"},
        {"\ta\t,b\n", ',', "[a][b]1"},
        {"a\t\tb\n", '\t', "[a][][b]1"},
        {" a  \t b  \n", ' ', "[a][b]1"},
        {" \t \n", ' ', "1"},
        {"\"a\" \"b c\"\n", ' ', "[a][b c]1"},
        {"\"a\"b c\n", ' ', "[\"a\"b][c]1"},
        {"\"a,b\",c\n", ',', "[a,b][c]1"},
        {"\"a\"\"b\",\"\"\"\"\n", ',', "[a\"b][\"]1"},
        {"\"\",b\n", ',', "[][b]1"},
        {" \"a\" , \"b\" \n", ',', "[a][b]1"},
        {"\"a\nb\r\nc\rd\",e\nrest", ',', "[a\nb\r\nc\rd][e]4rest"},
        {"\"a\"b,c\n", ',', "[\"a\"b][c]1"},
        {"\"a\nb\"c,d\n", ',', "[\"a]1b\"c,d\n"},
        {"a\"b,c\n", ',', "[a\"b][c]1"},
        {"a,b", ',', "incomplete"},
        {"a,b\r", ',', "incomplete"},
        {"a,\"b\"", ',', "incomplete"},
        {"", ',', "incomplete"},
        {"a,\"b", ',', "open quote"},
        {"a,\"b\"\"", ',', "open quote"},
        {"a,\0b\n"s, ',', "binary"},
        {"a,\"\0b\"\n"s, ',', "binary"},
        {std::string(16384, ',') + "\n", ',', ""},
        {std::string(16385, ',') + "\n", ',', "too many"},
        {std::string((1U << 20U) + 1, 'x') + "\n", ',', "too long"},
    };
    for (const SplitCase& splitCase : cases) {
        std::string result = splitText(splitCase.text, splitCase.delimiter);
        if (splitCase.text.size() == 16385)
            EXPECT_EQ(result.size(), 16385 * 2U + 1);
        else
            EXPECT_EQ(result, splitCase.expected) << splitCase.text.substr(0, 40);
    }
}

} // namespace

} // namespace TOLVGraphing::input
