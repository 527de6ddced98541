#include <desktop/input/DelimitedTextReader.h>

#include <desktop/input/testing/TemporaryFile.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>

namespace TOLVGraphing::input {

namespace {

using namespace std::string_literals;
using testing::readContent;
using testing::summary;
using testing::summaryOfContent;

struct FormatCase {
    const char* name;
    std::string content;
    const char* expected;
};

std::ostream& operator<<(std::ostream& stream, const FormatCase& formatCase)
{
    return stream << formatCase.name;
}

class DelimitedFormat : public ::testing::TestWithParam<FormatCase> {};

TEST_P(DelimitedFormat, isRead)
{
    EXPECT_EQ(summaryOfContent(GetParam().content), GetParam().expected);
}

std::string caseName(const ::testing::TestParamInfo<FormatCase>& info)
{
    return info.param.name;
}

const FormatCase kSeparatorCases[] = {
    {"comma", "a,b\n1,2\n3,4\n", "a: 1 3 | b: 2 4"},
    {"semicolon", "a;b\n1;2\n3;4\n", "a: 1 3 | b: 2 4"},
    {"semicolonAndPoint", "a;b\n1.5;2.5\n3;4\n", "a: 1.5 3 | b: 2.5 4"},
    {"commaBehindNumberedWords", "name,v\nitem 1,5\nitem 2,7\n", "name(text): nan nan | v: 5 7"},
    {"commaBehindNumberedWordsWithoutHeader", "item 1,5\nitem 2,7\n", "column 1(text): nan nan | column 2: 5 7"},
    {"blanksAndDecimalComma", "name v\nitem 1,5\nitem 2,7\n", "name(text): nan nan | v: 1.5 2.7"},
    {"tab", "a\tb\n1\t2\n3\t4\n", "a: 1 3 | b: 2 4"},
    {"oneBlank", "a b\n1 2\n3 4\n", "a: 1 3 | b: 2 4"},
    {"runsOfBlanks", "  a    b\n  1    2  \n 30   40\n", "a: 1 30 | b: 2 40"},
    {"blanksAndTabsMixed", "1 \t 2\n3  4\n", "column 1: 1 3 | column 2: 2 4"},
    {"commaAndBlanks", "a, b\n1, 2\n 3 ,4 \n", "a: 1 3 | b: 2 4"},
    {"oneColumn", "1\n2\n3\n", "column 1: 1 2 3"},
    {"oneColumnWithName", "pressure\n1\n2\n", "pressure: 1 2"},
    {"oneNumber", "42", "column 1: 42"},
    {"oneRow", "1,2,3", "column 1: 1 | column 2: 2 | column 3: 3"},
    {"commaWithTextThatHasBlanks", "2001-01-01,Fossil Fuels,35361\n2002-01-01,Nuclear Energy,35991\n",
        "column 1(date): 11323 11688 | column 2(text): nan nan | column 3: 35361 35991"},
    {"semicolonWithTextThatHasCommas", "1,5;foo, bar;2,5\n3,5;baz, 7;4,5\n", "column 1: 1.5 3.5 | column 2(text): nan nan | column 3: 2.5 4.5"},
    {"tabWithEmptyMiddle", "x\ty\tz\n1\t\t3\n4\t\t6\n", "x: 1 4 | y: nan nan | z: 3 6"},
};
INSTANTIATE_TEST_SUITE_P(Separators, DelimitedFormat, ::testing::ValuesIn(kSeparatorCases), caseName);

const FormatCase kDecimalCases[] = {
    {"commaBetweenSemicolons", "1,5;2,75\n-0,25;3\n", "column 1: 1.5 -0.25 | column 2: 2.75 3"},
    {"commaBetweenTabs", "t\tv\n1,5\t2,75\n2,5\t3\n", "t: 1.5 2.5 | v: 2.75 3"},
    {"commaBetweenBlanks", "1,5 2,75\n2,5 3,25\n", "column 1: 1.5 2.5 | column 2: 2.75 3.25"},
    {"commaWithExponent", "1,5E-3;2,5e+2\n1;1\n", "column 1: 0.0015 1 | column 2: 250 1"},
    {"loneCommaSeparates", "1,5\n2,7\n", "column 1: 1 2 | column 2: 5 7"},
    {"commaOnlyInALaterRow", "1;2\n3;4\n5,5;6\n", "column 1: 1 3 5.5 | column 2: 2 4 6"},
    {"pointsBetweenSemicolonsMakeCommasWords", "1.5;2.5\n1,234.5;3.5\n", "column 1: 1.5 nan | column 2: 2.5 3.5"},
    {"quotedThousandsAreWords", "\"1,234\",1\n\"5,678\",2\n", "column 1(text): nan nan | column 2: 1 2"},
};
INSTANTIATE_TEST_SUITE_P(DecimalMarks, DelimitedFormat, ::testing::ValuesIn(kDecimalCases), caseName);

const FormatCase kNumberCases[] = {
    {"zeroPadded", "20.00 -05.58\n020.20 +00.10\n", "column 1: 20 20.2 | column 2: -5.58 0.1"},
    {"signed", "+3,-4\n-0,+.5\n", "column 1: 3 -0 | column 2: -4 0.5"},
    {"exponents", "1E-7,1e+05\n2.5e3,-1.28000e+00\n", "column 1: 1e-07 2500 | column 2: 1e+05 -1.28"},
    {"fortranExponents", "1.0D+02,2d-1\n1,1\n", "column 1: 100 1 | column 2: 0.2 1"},
    {"barePoints", "1.,.5\n2.,.25\n", "column 1: 1 2 | column 2: 0.5 0.25"},
    {"infinities", "1,inf\n2,-Infinity\n3,+INF\n4,1\n", "column 1: 1 2 3 4 | column 2: inf -inf inf 1"},
    {"notNumbers", "1,nan\n2,NaN\n3,-nan\n4,1\n", "column 1: 1 2 3 4 | column 2: nan nan nan 1"},
    {"beyondFloat", "1e39,-1e400\n1e-60,-1e-400\n", "column 1: inf 0 | column 2: -inf -0"},
    {"leadingBlanks", "   1,   2\n  10,  20\n", "column 1: 1 10 | column 2: 2 20"},
    {"halfNumbersAreWords", "1,2x\n2,0x10\n3,1e\n4,--5\n5,1.2.3\n6,7\n7,8\n8,9\n9,1\n10,2\n", "column 1: 1 2 3 4 5 6 7 8 9 10 | column 2: nan nan nan nan nan 7 8 9 1 2"},
    {"wordsForLong", "t,V\n0,OVL\n1,OVL\n2,OVL\n3,OVL\n4,1\n5,2\n", "t: 0 1 2 3 4 5 | V(text): nan nan nan nan 1 2"},
};
INSTANTIATE_TEST_SUITE_P(Numbers, DelimitedFormat, ::testing::ValuesIn(kNumberCases), caseName);

const FormatCase kHeaderCases[] = {
    {"namesWithoutNumbersBelowAHeader", "country,v\nChad,\nPeru,n/a\nOman,5\nLaos,7\n", "country(text): nan nan nan nan | v: nan nan 5 7"},
    {"namesWithoutNumbersInSeveralColumns", "country,v,w\nChad,,\nOman,5,6\nLaos,7,8\n", "country(text): nan nan nan | v: nan 5 7 | w: nan 6 8"},
    {"namesWithoutNumbersAndUnits", "country;v\n;V\nChad;\nOman;5\nLaos;7\n", "country(text): nan nan nan | v[V]: nan 5 7"},
    {"titleAboveAHeader", "results,\nname,v\nOman,5\nLaos,7\n", "name(text): nan nan | v: 5 7"},
    {"noHeader", "1,2\n3,4\n", "column 1: 1 3 | column 2: 2 4"},
    {"unitsRow", "X,CH1,CH2,\nSecond,Volt,Volt,\n-5.9e-04,-1.28e+00,5.4e+00,\n-5.8e-04,1,2,\n", "X[Second]: -0.00059 -0.00058 | CH1[Volt]: -1.28 1 | CH2[Volt]: 5.4 2"},
    {"unitsInBrackets", "t;U\n[s];[counts]\n1;2\n3;4\n", "t[s]: 1 3 | U[counts]: 2 4"},
    {"unitsSomeEmpty", "n,t,U\n,ms,mV\n1,2,3\n", "n: 1 | t[ms]: 2 | U[mV]: 3"},
    {"namesThatAreNoUnits", "Overview,of,it\nalpha,beta,gamma\n1,2,3\n", "alpha: 1 | beta: 2 | gamma: 3"},
    {"quotedHeader", "\"time, s\",\"say \"\"hi\"\"\"\n1,2\n", "time, s: 1 | say \"hi\": 2"},
    {"headerOneShorter", "a,b\n1,2,3\n4,5,6\n", "a: 1 4 | b: 2 5 | column 3: 3 6"},
    {"headerLonger", "a,b,c\n1,2\n4,5\n", "a: 1 4 | b: 2 5 | c: nan nan"},
    {"headerWithEmptyName", ",b\n1,2\n", "column 1: 1 | b: 2"},
    {"yearsAsNames", "year,2001,2002\n1,2,3\n4,5,6\n", "year: 1 4 | 2001: 2 5 | 2002: 3 6"},
    {"namesWithBlanksBetweenBlanks", "Time (s)  Voltage (V)\n1 2\n3 4\n", "Time (s): 1 3 | Voltage (V): 2 4"},
    {"duplicateNames", "t,V,V\n1,2,3\n", "t: 1 | V: 2 | V: 3"},
    {"firstValueIsAWord", "t,V\nOVL,1\n2,3\n4,5\n6,7\n", "t: nan 2 4 6 | V: 1 3 5 7"},
    {"firstRowsAreEmpty", "t,V\n,\n,\n2,3\n4,5\n", "t: nan nan 2 4 | V: nan nan 3 5"},
    {"commentNames", "# time voltage\n0 1\n1 2\n", "time: 0 1 | voltage: 1 2"},
    {"commentNamesAndUnits", "# t U\n# s mV\n0 1\n1 2\n", "t[s]: 0 1 | U[mV]: 1 2"},
};
INSTANTIATE_TEST_SUITE_P(Headers, DelimitedFormat, ::testing::ValuesIn(kHeaderCases), caseName);

const FormatCase kPreambleCases[] = {
    {"title", "Measurement of the third of March\nt,V\n1,2\n3,4\n", "t: 1 3 | V: 2 4"},
    {"quotedKeysAndValues",
        "\"Points =\",8192,\n\"Scale (s) =\",1E-7,\n\"Channel Data\",\"CH 1\",\"CH 2\"\n\"Pos (V) = \",0.2,-6\n\"Inverted = \",\"NO\",\"NO\"\n"
        "\"Time (s)\",\"Voltage (V)\",\"Voltage (V)\"\n0,1.72,9.92\n2E-9,-4.52,9.92\n,,\n",
        "Time (s): 0 2e-09 | Voltage (V): 1.72 -4.52 | Voltage (V): 9.92 9.92"},
    {"keysAndValuesWithoutHeader", "Model,7\nScale,2\nOffset,3\n0,1\n1,2\n2,3\n3,4\n", "column 1: 0 1 2 3 | column 2: 1 2 3 4"},
    {"moreKeysThanRows", "A,1\nB,2\nC,3\nD,4\nE,5\nF,6\nG,7\nH,8\nt,V\n0,1\n1,2\n", "t: 0 1 | V: 1 2"},
    {"keyEndsInEqualsSign", "Scale =,2\n0,1\n1,2\n", "column 1: 0 1 | column 2: 1 2"},
    {"smallTable", "Points,Channels\n8192,2\nt,V\n0,1\n1,2\n2,3\n3,4\n4,5\n5,6\n6,7\n7,8\n8,9\n9,10\n", "t: 0 1 2 3 4 5 6 7 8 9 | V: 1 2 3 4 5 6 7 8 9 10"},
    {"headerRepeated", "t,V\n0,1\n1,2\n2,3\nt,V\n3,4\n4,5\n", "t: 0 1 2 nan 3 4 | V: 1 2 3 nan 4 5"},
    {"sectionMarks", "[Header]\nDate: today\n\n[Data]\nf;dB\n1;2\n3;4\n", "f: 1 3 | dB: 2 4"},
    {"blankLinesBefore", "\n\n\nt,V\n\n1,2\n", "t: 1 | V: 2"},
    {"comments", "# made by hand\n% and so on\n// third\n; fourth\nt,V\n1,2\n# within\n3,4\n", "t: 1 3 | V: 2 4"},
    {"starComments", "* Freq(Hz) SPL(dB)\n20.0 50.5\n21.0 51.5\n", "Freq(Hz): 20 21 | SPL(dB): 50.5 51.5"},
    {"semicolonIsNoCommentWhereItSeparates", "a;b\n;1\n2;3\n", "a: nan 2 | b: 1 3"},
    {"quoteInAComment", "# 5\" disk\n1,2\n# \"open\n3,4\n", "column 1: 1 3 | column 2: 2 4"},
    {"footer", "t,V\n1,2\n3,4\nEND\n", "t: 1 3 | V: 2 4"},
    {"remarkBetweenRows", "1,2\npause\n3,4\n5,6\n", "column 1: 1 3 5 | column 2: 2 4 6"},
};
INSTANTIATE_TEST_SUITE_P(Preambles, DelimitedFormat, ::testing::ValuesIn(kPreambleCases), caseName);

const FormatCase kRowCases[] = {
    {"emptyFields", "a,b,c\n1,,3\n,5,\n", "a: 1 nan | b: nan 5 | c: 3 nan"},
    {"words", "a,b\n1,overload\n2,3\n4,5\n", "a: 1 2 4 | b: nan 3 5"},
    {"wordInTheOnlyColumn", "1\nerror\n3\n", "column 1: 1 nan 3"},
    {"trailingSeparators", "a,b,\n1,2,\n3,4,\n", "a: 1 3 | b: 2 4"},
    {"trailingSeparatorsWithoutHeader", "1;2;\n3;4;\n", "column 1: 1 3 | column 2: 2 4"},
    {"trailingSeparatorOnSomeRows", "1,2,\n3,4\n5,6,\n", "column 1: 1 3 5 | column 2: 2 4 6"},
    {"shortRow", "a,b,c\n1,2,3\n4\n5,6,7\n", "a: 1 4 5 | b: 2 nan 6 | c: 3 nan 7"},
    {"shortRowBetweenBlanks", "1 2 3\n4 5\n6 7 8\n", "column 1: 1 4 6 | column 2: 2 5 7 | column 3: 3 nan 8"},
    {"emptyRowInTheMiddle", "1,2\n,\n3,4\n", "column 1: 1 nan 3 | column 2: 2 nan 4"},
    {"emptyRowsAtTheEnd", "1,2\n3,4\n,\n,,,\n", "column 1: 1 3 | column 2: 2 4"},
    {"blankLines", "1,2\n\n   \n3,4\n\n", "column 1: 1 3 | column 2: 2 4"},
    {"quotedNumbers", "\"1\",\"2.5\"\n\"3\",\"4.5\"\n", "column 1: 1 3 | column 2: 2.5 4.5"},
    {"quotedSeparator", "1,\"a,b\",2\n3,\"c\",4\n", "column 1: 1 3 | column 2(text): nan nan | column 3: 2 4"},
    {"quotedLineEnd", "1,\"a\nb\",2\n3,\"c\r\nd\",4\n", "column 1: 1 3 | column 2(text): nan nan | column 3: 2 4"},
    {"quoteWithinAWord", "1,5\" disk,2\n3,\"a\"b,4\n", "column 1: 1 3 | column 2(text): nan nan | column 3: 2 4"},
    {"emptyQuotes", "1,\"\"\n2,\"3\"\n", "column 1: 1 2 | column 2: nan 3"},
    {"naWords", "1,NA\n2,n/a\n3,null\n4,5\n", "column 1: 1 2 3 4 | column 2: nan nan nan 5"},
};
INSTANTIATE_TEST_SUITE_P(Rows, DelimitedFormat, ::testing::ValuesIn(kRowCases), caseName);

const FormatCase kTextCases[] = {
    {"windowsLineEnds", "a,b\r\n1,2\r\n3,4\r\n", "a: 1 3 | b: 2 4"},
    {"loneReturns", "a,b\r1,2\r3,4\r", "a: 1 3 | b: 2 4"},
    {"mixedLineEnds", "a,b\r\n1,2\n3,4\r5,6", "a: 1 3 5 | b: 2 4 6"},
    {"noLastLineEnd", "1,2\n3,4", "column 1: 1 3 | column 2: 2 4"},
    {"utf8Mark",
        "\xEF\xBB\xBF"
        "a,b\n1,2\n",
        "a: 1 | b: 2"},
    {"utf8MarkBeforeANumber",
        "\xEF\xBB\xBF"
        "1,2\n3,4\n",
        "column 1: 1 3 | column 2: 2 4"},
    {"littleEndian16",
        "\xFF\xFE"
        "a\0,\0\xB5\0\n\0"
        "1\0,\0"
        "2\0\n\0"s,
        "a: 1 | \u00B5: 2"},
    {"bigEndian16",
        "\xFE\xFF"
        "\0a\0,\xD8\x34\xDD\x1E\0\n\0"
        "1\0,\0"
        "2\0\n"s,
        "a: 1 | \U0001D11E: 2"},
    {"unpairedSurrogate",
        "\xFF\xFE"
        "a\0,\0\x34\xD8\n\0"
        "1\0,\0"
        "2\0"s,
        "a: 1 | \uFFFD: 2"},
    {"latin1",
        "t,W\xE4rme\ns,\xB0"
        "C\n1,2\n",
        "t[s]: 1 | W\u00E4rme[\u00B0"
        "C]: 2"},
    {"dosEndOfFile", "1,2\n3,4\n\x1A", "column 1: 1 3 | column 2: 2 4"},
};
INSTANTIATE_TEST_SUITE_P(Texts, DelimitedFormat, ::testing::ValuesIn(kTextCases), caseName);

const FormatCase kDateCases[] = {
    {"days", "date,v\n2012-01-01,1\n2012-01-02,2\n", "date(date): 15340 15341 | v: 1 2"},
    {"daysBeforeYears", "Datum;v\n01.02.2012;1,5\n02.02.2012 12:00;2,5\n", "Datum(date from 15371): 0 1.5 | v: 1.5 2.5"},
    {"months", "1969-12,1\n1970-02,2\n", "column 1(date): -31 31 | column 2: 1 2"},
    {"timesOfDay", "2012-01-01T12:00:00Z,1\n2012-01-01 18:00,2\n", "column 1(date from 15340): 0.5 0.75 | column 2: 1 2"},
    {"offsets", "2012-01-01T12:00:00+02:00,1\n2012-01-01T00:00:00-0600,2\n", "column 1(date from 15340): 0.41666666 0.25 | column 2: 1 2"},
    {"timeBetweenTabs", "2012-01-01 06:00\t1,5\n2012-01-01 12:00\t2,5\n", "column 1(date from 15340): 0.25 0.5 | column 2: 1.5 2.5"},
    {"impossibleDate", "2012-01-01,1\n2012-13-45,2\n2012-01-03,3\n", "column 1(date): 15340 nan 15342 | column 2: 1 2 3"},
    {"timeBehindWholeDays", "2012-01-03,1\n2012-01-01,2\n2012-01-02 12:00,3\n", "column 1(date from 15342): 0 -2 -0.5 | column 2: 1 2 3"},
    {"timeBehindAnImpossibleDate", "2012-13-45,1\n2012-01-01 18:00,2\n", "column 1(date from 15340): nan 0.75 | column 2: 1 2"},
    {"timesBefore1970", "1969-12-30 12:00,1\n1970-01-01,2\n", "column 1(date from -2): 0.5 2 | column 2: 1 2"},
    {"timesBehindEmptyFields", "a,b\n,1\n2012-01-01 06:00,2\n,3\n", "a(date from 15340): nan 0.25 nan | b: 1 2 3"},
    {"timesAmongWordsAreText", "2012-01-01 12:00,1\nsoon,2\nlater,3\n", "column 1(text): 15340.5 nan nan | column 2: 1 2 3"},
    {"eachColumnHasItsOrigin", "a,b\n2012-01-01 06:00,2013-01-01 12:00\n2012-01-02,2013-01-02\n", "a(date from 15340): 0.25 1 | b(date from 15706): 0.5 1"},
    {"fewDatesAmongNumbers", "1,1\n2,2\n2012-01-01,3\n4,4\n", "column 1: 1 2 nan 4 | column 2: 1 2 3 4"},
    {"oneNumberAmongManyDates", "2012-01-01,1\n7,1\n2012-01-02,1\n2012-01-03,1\n2012-01-04,1\n2012-01-05,1\n2012-01-06,1\n2012-01-07,1\n2012-01-08,1\n2012-01-09,1\n",
        "column 1(date): 15340 nan 15341 15342 15343 15344 15345 15346 15347 15348 | column 2: 1 1 1 1 1 1 1 1 1 1"},
    {"manyDatesBehindANumber", "7,1\n2012-01-01,1\n2012-01-02,1\n2012-01-03,1\n2012-01-04,1\n2012-01-05,1\n2012-01-06,1\n2012-01-07,1\n2012-01-08,1\n2012-01-09,1\n",
        "column 1(date): nan 15340 15341 15342 15343 15344 15345 15346 15347 15348 | column 2: 1 1 1 1 1 1 1 1 1 1"},
    {"numbersBehindOneDate", "2012-01-01,1\n2,1\n3,1\n", "column 1: nan 2 3 | column 2: 1 1 1"},
    {"datesAndWordsAreText", "2012-01-01,1\nsoon,2\nlater,3\n", "column 1(text): 15340 nan nan | column 2: 1 2 3"},
    {"yearsAreNumbers", "year,v\n2001,1\n2002,2\n", "year: 2001 2002 | v: 1 2"},
};
INSTANTIATE_TEST_SUITE_P(Dates, DelimitedFormat, ::testing::ValuesIn(kDateCases), caseName);

const FormatCase kErrorCases[] = {
    {"empty", "", "FILE: an empty file, expected a table of numbers, an npy array or a sound file"},
    {"blankLinesOnly", "\n\n  \n", "FILE: nothing but blank lines, expected a table of numbers"},
    {"markOnly", "\xEF\xBB\xBF", "FILE: an empty file, expected a table of numbers"},
    {"wordsOnly", "name,place\nBob,Oslo\n", "FILE:1: no table in the file, which starts with 'name,place', expected at least one column of numbers or dates"},
    {"headerOnly", "t,V\n", "FILE:1: no table in the file, which starts with 't,V', expected at least one column of numbers or dates"},
    {"prose", "Once upon a time there were 3 bears,\nand they lived in a house with 2 doors and a garden.\n",
        "FILE:1: no table in the file, which starts with 'Once upon a time there were 3 bears,', expected at least one column of numbers or dates"},
    {"nulByte", "1,2\n3,\0\n"s, "FILE:2: a byte of the value 0 (binary data), expected text"},
    {"controlByte", "1,2\r\n3,4\r\n\x01", "FILE:3: a byte of the value 1 (binary data), expected text"},
    {"openQuote", "1,2\n3,\"4\n5,6\n", "FILE:2: a quotation mark that is not closed, expected another one at the end of the field"},
    {"openQuoteFirst", "\"1,2\n3,4\n", "FILE:1: a quotation mark that is not closed, expected another one at the end of the field"},
    {"utf16WithoutMark",
        "1\0,\0"
        "2\0\n\0"
        "1\0,\0"
        "2\0\n\0"s,
        "FILE:1: what looks like UTF-16 without a byte order mark, expected UTF-8, or UTF-16 with a byte order mark"},
    {"utf32",
        "\xFF\xFE\0\0"
        "1\0\0\0"s,
        "FILE:1: text in UTF-32, expected UTF-8 or UTF-16"},
    {"gzip", "\x1F\x8B\x08", "FILE: a gzip-compressed file, expected a table of numbers, an npy array or a sound file"},
    {"zip", "PK\x03\x04", "FILE: a zip archive (a spreadsheet or an npz file, perhaps), expected a table of numbers, an npy array or a sound file"},
};
INSTANTIATE_TEST_SUITE_P(Errors, DelimitedFormat, ::testing::ValuesIn(kErrorCases), caseName);

std::string repeated(const std::string& text, std::size_t count)
{
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t index = 0; index < count; ++index)
        result += text;
    return result;
}

TEST(DelimitedTextReader, reportsTheFormat)
{
    MeasurementTable table = readContent("Sampling Frequency (Hz)=;500000\nremark\nt;U\ns;V\n1,5;2\n# x\n2,5;x\n\n;7\n");
    EXPECT_EQ(table.format.kind, "delimited text");
    EXPECT_EQ(table.format.delimiter, ';');
    EXPECT_EQ(table.format.decimalMark, ',');
    EXPECT_EQ(table.format.headerRows, 2U);
    EXPECT_EQ(table.format.skippedLines, 4U);
    EXPECT_EQ(table.format.text(), "delimited text, semicolon, decimal comma, 2 header rows, 4 skipped lines");
    EXPECT_EQ(table.sampleRate, 500000.0);
    EXPECT_EQ(table.columns[0].gapCount, 1U);
    EXPECT_EQ(table.columns[0].wordCount, 0U);
    EXPECT_EQ(table.columns[1].gapCount, 1U);
    EXPECT_EQ(table.columns[1].wordCount, 1U);
}

TEST(DelimitedTextReader, countsShortAndLongRows)
{
    std::string content = "a,b\n" + repeated("1,2\n", 200) + "3\n4\n5,6,7\n" + repeated("1,2\n", 200);
    MeasurementTable table = readContent(content);
    EXPECT_EQ(table.columns.size(), 2U);
    EXPECT_EQ(table.rowCount(), 403U);
    EXPECT_EQ(table.shortRowCount, 2U);
    EXPECT_EQ(table.firstShortLine, 202U);
    EXPECT_EQ(table.longRowCount, 1U);
    EXPECT_EQ(table.firstLongLine, 204U);
    EXPECT_EQ(table.columns[1].gapCount, 2U);
    EXPECT_EQ(table.columns[1].wordCount, 0U);
}

TEST(DelimitedTextReader, gapCountsAreTheNumbersOfNaN)
{
    MeasurementTable table = readContent("a,b,c\n1,x,2012-01-01\n,2,2012-01-02\nnan,3,7\n,,\n4\ny,5,2012-99-99\n6,7,2012-01-03\n");
    std::size_t words[] = {1, 1, 2};
    for (std::size_t index = 0; index < 3; ++index) {
        const MeasurementColumn& column = table.columns[index];
        std::size_t gaps = 0;
        for (float value : column.values)
            gaps += std::isnan(value) ? 1 : 0;
        EXPECT_EQ(column.gapCount, gaps) << index;
        EXPECT_EQ(column.wordCount, words[index]) << index;
        EXPECT_EQ(column.values.size(), 7U) << index;
    }
}

TEST(DelimitedTextReader, datesThatRoundingMakesEqualAreCounted)
{
    // A float has a step of 169 s, 20,513 days behind its origin: seconds fall together, and equal times are the file's own.
    const auto merged = [](const std::string& text, std::optional<double> origin) {
        ReadSettings settings;
        settings.dateOrigin = origin;
        return readContent(text, settings).columns[0].mergedDateCount;
    };
    const std::string seconds = "2026-03-01 12:00:00,1\n2026-03-01 12:00:01,2\n2026-03-01 12:00:02,3\n2026-03-01 12:05:00,4\n";
    EXPECT_EQ(merged(seconds, 0.0), 2U);
    EXPECT_EQ(merged(seconds, std::nullopt), 0U);
    EXPECT_EQ(merged("2026-03-01,1\n2026-03-01,2\n2026-03-02,3\n", 0.0), 0U);
    EXPECT_EQ(merged("2026-03-01 12:00:00,1\n,2\n2026-03-01 12:00:01,3\n", 0.0), 1U);
    EXPECT_EQ(merged("1970-01-01 00:00:00,1\n1970-01-01 00:00:01,2\n", 0.0), 0U);
    // Where numbers prevail, there are no dates to tell apart.
    EXPECT_EQ(merged("2026-03-01 12:00:00,1\n2026-03-01 12:00:01,2\n3,3\n4,4\n5,5\n", 0.0), 0U);
}

TEST(DelimitedTextReader, everySecondOfADayIsTheDaysOwn)
{
    std::string content;
    for (int second = 0; second < 86'400; ++second) {
        char line[48];
        std::snprintf(line, sizeof line, "2026-03-01 %02d:%02d:%02d,%d\n", second / 3600, second / 60 % 60, second % 60, second);
        content += line;
    }
    const MeasurementTable table = readContent(content);
    const MeasurementColumn& column = table.columns[0];
    EXPECT_EQ(column.dateOrigin, 20513.0);
    ASSERT_EQ(column.values.size(), 86'400U);
    for (int second = 0; second < 86'400; ++second)
        ASSERT_EQ(std::lround(static_cast<double>(column.values[static_cast<std::size_t>(second)]) * 86'400.0), second);
    EXPECT_EQ(column.mergedDateCount, 0U);
}

TEST(DelimitedTextReader, datesAreCountedFromTheOriginThatIsAskedFor)
{
    const auto read = [](const std::string& text, double origin) {
        ReadSettings settings;
        settings.dateOrigin = origin;
        return summary(readContent(text, settings));
    };
    EXPECT_EQ(read("2012-01-03,1\n2012-01-01,2\n", 15340.0), "column 1(date from 15340): 2 0 | column 2: 1 2");
    EXPECT_EQ(read("2012-01-01 12:00,1\n2012-01-02,2\n", 0.0), "column 1(date): 15340.5 15341 | column 2: 1 2");
    EXPECT_EQ(read("2012-01-01 12:00,1\n2012-01-02,2\n", 15000.25), "column 1(date from 15000.25): 340.25 340.75 | column 2: 1 2");
    EXPECT_EQ(read("2012-01-01 12:00,1\n2012-01-02,2\n", std::numeric_limits<double>::quiet_NaN()), "column 1(date from 15340): 0.5 1 | column 2: 1 2") << "none is asked for";
    EXPECT_EQ(read("7,1\n8,2\n", 15000.0), "column 1: 7 8 | column 2: 1 2");
}

TEST(DelimitedTextReader, columnThatIsEmptyForLongIsANumberColumn)
{
    std::string content = "t,late\n" + repeated("1,\n", 50000) + "2,7\n";
    MeasurementTable table = readContent(content);
    ASSERT_EQ(table.columns.size(), 2U);
    EXPECT_EQ(table.columns[1].kind, ColumnKind::Number);
    EXPECT_EQ(table.columns[1].gapCount, 50000U);
    EXPECT_EQ(table.columns[1].values.back(), 7.0F);
    EXPECT_EQ(table.shortRowCount, 0U);
}

TEST(DelimitedTextReader, columnWithoutNameThatIsEmptyForLongTurnsUp)
{
    std::string content = repeated("1,\n", 5000) + "2,7\n" + repeated("1,8\n", 5000);
    MeasurementTable table = readContent(content);
    ASSERT_EQ(table.columns.size(), 2U);
    EXPECT_EQ(table.columns[1].displayName(), "column 2");
    EXPECT_EQ(table.columns[1].gapCount, 5000U);
    EXPECT_EQ(table.columns[1].values[5000], 7.0F);
    EXPECT_EQ(table.rowCount(), 10001U);
    EXPECT_EQ(table.longRowCount, 0U);
}

TEST(DelimitedTextReader, kindIsRevisedBeyondTheSample)
{
    std::string content = repeated("1,5\n", 100000) + repeated("1,x\n", 200000);
    MeasurementTable table = readContent(content);
    EXPECT_EQ(table.columns[1].kind, ColumnKind::Text);
    EXPECT_EQ(table.columns[1].wordCount, 200000U);
    EXPECT_EQ(table.columns[1].values.front(), 5.0F);
}

TEST(DelimitedTextReader, keepsTextsOfNamedColumns)
{
    const char* content = "day,weather,wind\n2012-01-01,\"drizzle, \"\"light\"\"\",4\n2012-01-02,,5\n2012-01-03\n";
    EXPECT_TRUE(readContent(content).columns[1].texts.empty());
    ReadSettings settings;
    settings.keptTextColumns = {"weather", "day", "nothing", "4", "0"};
    MeasurementTable table = readContent(content, settings);
    EXPECT_EQ(table.columns[0].texts, (std::vector<std::string>{"2012-01-01", "2012-01-02", "2012-01-03"}));
    EXPECT_EQ(table.columns[1].texts, (std::vector<std::string>{"drizzle, \"light\"", "", ""}));
    EXPECT_TRUE(table.columns[2].texts.empty());
    ReadSettings byKind;
    byKind.keepsTextsOfTextColumns = true;
    table = readContent("a,b\n1,x\n2,y\n", byKind);
    EXPECT_TRUE(table.columns[0].texts.empty());
    EXPECT_EQ(table.columns[1].texts, (std::vector<std::string>{"x", "y"}));
}

TEST(DelimitedTextReader, keptTextsAreOfPlainRowsToo)
{
    ReadSettings settings;
    settings.keptTextColumns = {"b"};
    MeasurementTable table = readContent("a,b\n1,2\n3,+04.0\n", settings);
    EXPECT_EQ(table.columns[1].texts, (std::vector<std::string>{"2", "+04.0"}));
    EXPECT_EQ(summary(table), "a: 1 3 | b: 2 4");
}

TEST(DelimitedTextReader, keepsTextsOfColumnsByNumberAfterTheirName)
{
    // Which columns keep their texts, by the column that is asked for.
    const std::pair<const char*, const char*> cases[] = {
        {"1", "1"},
        {"2", "1"}, // the name goes before the number
        {"3", "3"},
        {"column 3", "3"},
        {"4", "4"},
        {"b", "4"}, // the first of that name
        {"5", "5"},
        {"6", ""},
        {"0", ""},
        {"-1", ""},
        {"1.0", ""},
        {"", ""},
    };
    for (const auto& [asked, expected] : cases) {
        ReadSettings settings;
        settings.keptTextColumns = {asked};
        settings.headerRows = 1;
        const MeasurementTable table = readContent("2,c,,b,b\n1,2,3,4,5\n6,7,8,9,0\n", settings);
        ASSERT_EQ(table.columns.size(), 5U);
        std::string kept;
        for (const MeasurementColumn& column : table.columns)
            kept += column.texts.empty() ? "" : std::to_string(column.number);
        EXPECT_EQ(kept, expected) << asked;
    }
}

TEST(DelimitedTextReader, keepsTextsOfTheFirstColumn)
{
    ReadSettings settings;
    settings.keepsTextsOfFirstColumn = true;
    MeasurementTable table = readContent("a,b\n1,x\n\"2\",y\n,z\n", settings);
    EXPECT_EQ(table.columns[0].texts, (std::vector<std::string>{"1", "2", ""}));
    EXPECT_TRUE(table.columns[1].texts.empty());
    EXPECT_EQ(table.columns[0].values[1], 2.0F) << "the values are read all the same";
    table = readContent("caf\xE9,1\nm\xC3\xBCsli,2\n\xB5,3\n", settings);
    EXPECT_EQ(table.columns[0].texts, (std::vector<std::string>{"caf\xC3\xA9", "m\xC3\xBCsli", "\xC2\xB5"})) << "in UTF-8, whatever the file is in";
}

TEST(DelimitedTextReader, keepsOneTextPerRowAcrossEmptyRowsAndBlocks)
{
    ReadSettings settings;
    settings.keepsTextsOfFirstColumn = true;
    // Rows of empty fields count once a filled one follows; comments and blank lines never do.
    std::string content = "name,v\n";
    std::vector<std::string> expected;
    for (int i = 0; i < 5000; ++i) {
        content += "row " + std::to_string(i) + "," + std::to_string(i) + (i % 1000 == 7 ? "\n,\n\n# remark\n" : "\n");
        expected.push_back("row " + std::to_string(i));
        if (i % 1000 == 7)
            expected.emplace_back();
    }
    const MeasurementTable table = readContent(content + ",\n", settings);
    EXPECT_EQ(table.columns[0].texts, expected);
    EXPECT_EQ(table.rowCount(), expected.size());
}

struct SettingsCase {
    const char* name;
    const char* content;
    ReadSettings settings;
    const char* expected;
};

TEST(DelimitedTextReader, obeysTheSettings)
{
    auto with = [](std::optional<char> delimiter, std::optional<char> mark, std::optional<std::size_t> headerRows = {}, std::size_t skipped = 0) {
        ReadSettings settings;
        settings.delimiter = delimiter;
        settings.decimalMark = mark;
        settings.headerRows = headerRows;
        settings.skippedLines = skipped;
        return settings;
    };
    const SettingsCase cases[] = {
        {"decimal comma alone", "1,5\n2,7\n", with({}, ','), "column 1: 1.5 2.7"},
        {"delimiter", "1,5 2,7\n1,5 2,7\n", with(',', {}), "column 1: 1 1 | column 2(text): nan nan | column 3: 7 7"},
        {"bar", "a|b\n1|2\n", with('|', {}), "a: 1 | b: 2"},
        {"blanks", "3 4\n1;5 2\n3 4\n3 4\n", with(' ', {}), "column 1: 3 nan 3 3 | column 2: 4 2 4 4"},
        {"no header", "a,b\n1,2\n3,4\n", with({}, {}, 0), "column 1: nan 1 3 | column 2: nan 2 4"},
        {"one header row", "1,2\n3,4\n", with({}, {}, 1), "1: 3 | 2: 4"},
        {"two header rows", "p,q\nfoo,bar\n3,4\n", with({}, {}, 2), "p[foo]: 3 | q[bar]: 4"},
        {"header in a comment", "# p q\n3 4\n", with({}, {}, 1), "p: 3 | q: 4"},
        {"skipped lines", "7,8,9\r\n7\na,b\n1,2\n", with({}, {}, {}, 2), "a: 1 | b: 2"},
        {"skipped and fixed header", "x\n1,2\n3,4\n", with({}, {}, 0, 1), "column 1: 1 3 | column 2: 2 4"},
        {"all lines skipped", "1,2\n3,4\n", with({}, {}, {}, 5), "FILE:3: the end of the file, expected more than 5 lines, which are to be skipped"},
        {"comma twice", "1\n", with(',', ','), "FILE: a comma both as delimiter and as decimal mark, expected them to differ"},
        {"letter", "1\n", with('e', {}), "FILE: the delimiter 'e', expected a comma, semicolon, tab, blank or another punctuation mark"},
        {"point", "1\n", with('.', {}), "FILE: the delimiter '.', expected a comma, semicolon, tab, blank or another punctuation mark"},
        {"decimal mark", "1\n", with({}, ':'), "FILE: the decimal mark ':', expected a point or a comma"},
        {"three header rows", "1\n", with({}, {}, 3), "FILE: 3 header rows, expected 0, 1 (names) or 2 (names and units)"},
    };
    for (const SettingsCase& settingsCase : cases)
        EXPECT_EQ(summaryOfContent(settingsCase.content, settingsCase.settings), settingsCase.expected) << settingsCase.name;
}

TEST(DelimitedTextReader, linesOfErrorsCountSkippedLines)
{
    ReadSettings settings;
    settings.skippedLines = 2;
    EXPECT_EQ(summaryOfContent("x\ny\n1,2\n3,\"4\n", settings), "FILE:4: a quotation mark that is not closed, expected another one at the end of the field");
}

TEST(DelimitedTextReader, aTableWithoutNumbersBehindItsHeaderIsMissedInTheLastLine)
{
    ReadSettings settings;
    settings.headerRows = 2;
    for (const char* lineEnd : {"", "\n"})
        EXPECT_EQ(summaryOfContent("a,b\n1\n3/,2=1" + std::string(lineEnd), settings),
            "FILE:3: no row with a number behind the header, expected at least one column of numbers or dates");
}

TEST(DelimitedTextReader, limits)
{
    std::string wide = repeated("1,", kMaximumColumnCount);
    EXPECT_EQ(readContent(wide + "\n" + wide + "\n").columns.size(), kMaximumColumnCount);
    EXPECT_EQ(summaryOfContent(wide + "1\n" + wide + "1\n"), "FILE:1: 16385 columns, expected at most 16384");
    EXPECT_EQ(summaryOfContent("1,2\n" + repeated("1,", kMaximumColumnCount + 1) + "1\n"), "FILE:2: more than 16384 columns, expected at most that many");
    EXPECT_EQ(summaryOfContent("1,2\n3," + std::string(kMaximumFieldLength + 1, 'x') + "\n"),
        "FILE:2: a field of more than 1 MiB (a quotation mark may be missing), expected shorter fields");
    EXPECT_EQ(
        summaryOfContent("1,2\n3,\"" + repeated("x\n", kMaximumFieldLength)), "FILE:2: a field of more than 1 MiB (a quotation mark may be missing), expected shorter fields");
    EXPECT_EQ(summaryOfContent("1,2\n3,4\n" + repeated("                ", (kMaximumLineLength >> 4U) + 200000)), "FILE:3: a line of more than 16 MiB, expected lines of text");
    MeasurementTable table = readContent("1,2\n3," + std::string(kMaximumFieldLength, 'x') + "\n");
    EXPECT_EQ(summary(table), "column 1: 1 3 | column 2: 2 nan");
}

TEST(DelimitedTextReader, shortRowsOfAWideTableDoNotFillTheMemory)
{
    std::string wideRows = repeated(repeated("1,", 1999) + "1\n", 30);
    std::string text = summaryOfContent(wideRows + repeated("2\n", 20000));
    // 8,393 rows of 1,999 missing fields are the first to be more than 2^24.
    EXPECT_EQ(text, "FILE:8423: 16777607 fields missing so far in rows shorter than 2000 columns, expected rows of equal length");
    text = summaryOfContent(wideRows + repeated(",\n", 100000) + "3\n");
    EXPECT_EQ(text.substr(text.find(',')), ", expected rows of equal length");
    // One wide row among many is an odd one.
    EXPECT_EQ(readContent(repeated("1,", 10000) + "1\n" + repeated("2\n", 100000)).longRowCount, 1U);
}

TEST(DelimitedTextReader, yearsAboveWordsAndNumbersAreNames)
{
    const MeasurementTable table = readContent("city,2019,2020,2021\nLund,12,15,9\nYstad,20,,25\n");
    ASSERT_EQ(table.columns.size(), 4U);
    EXPECT_EQ(table.columns[0].name, "city");
    EXPECT_EQ(table.columns[3].name, "2021");
    EXPECT_EQ(table.rowCount(), 2U);
    EXPECT_EQ(readContent("\"city\";\"1999\";\"2009\"\nLund;12;15\nYstad;20;25\n").columns[1].name, "1999");
    // No names: a lone year, years that do not ascend or are of other lengths, other numbers, and rows that are all so.
    for (const char* content :
        {"a,2019\nb,12\nc,13\n", "a,2020,2019\nb,1,2\nc,3,4\n", "a,999,2019\nb,1,2\nc,3,4\n", "a,2019.5,2020\nb,1,2\nc,3,4\n", "a,1990,2000\nb,1991,2001\nc,1992,2002\n"}) {
        SCOPED_TRACE(content);
        EXPECT_EQ(readContent(content).rowCount(), 3U);
    }
}

/// Rows of every kind at every place of a block's end, with a row count far beyond a stage.
TEST(DelimitedTextReader, blocksDoNotMatter)
{
    const std::string kinds[] = {"1,2\n", "1,2\r\n", "1,2\r", "\"1\",\"2\"\r\n", "1,\"2\"\n", " 1 , 2 ,\n", "+01.0,2e0\n"};
    std::string content;
    std::size_t rows = 0;
    for (std::size_t index = 0; content.size() < (std::size_t{7} << 20U); ++index, ++rows)
        content += kinds[(index * index + index / 7) % std::size(kinds)];
    MeasurementTable table = readContent(content);
    ASSERT_EQ(table.rowCount(), rows);
    ASSERT_EQ(table.columns.size(), 2U);
    EXPECT_EQ(table.columns[0].values, std::vector<float>(rows, 1.0F));
    EXPECT_EQ(table.columns[1].values, std::vector<float>(rows, 2.0F));
    EXPECT_EQ(table.format.skippedLines, 0U);
}

TEST(DelimitedTextReader, everyShiftOfABlockEnd)
{
    // The block length is 2^20; records with a quoted line end and CR LF lie across its end in every position.
    const std::string tail = "1,\"a\r\nb\",2.5\r\n3,\"\"\"\",4.5\r\n";
    for (std::size_t shift = 0; shift <= tail.size(); ++shift) {
        std::string content = "5,w,6\n";
        while (content.size() < (std::size_t{1} << 20U) - shift - 64)
            content += "5,w,6\n";
        content += "5,w,6" + std::string((std::size_t{1} << 20U) - shift - content.size() - 6, ' ') + "\n";
        MeasurementTable table = readContent(content + tail);
        std::size_t rows = table.rowCount();
        ASSERT_EQ(table.columns.size(), 3U);
        EXPECT_EQ(table.columns[2].values[rows - 3], 6.0F) << shift;
        EXPECT_EQ(table.columns[2].values[rows - 2], 2.5F) << shift;
        EXPECT_EQ(table.columns[2].values[rows - 1], 4.5F) << shift;
        EXPECT_EQ(table.columns[1].wordCount, rows) << shift;
    }
}

TEST(DelimitedTextReader, nulBehindTheSample)
{
    std::string content = repeated("1,2\n", 400000) + "3,"s + '\0' + "\n";
    EXPECT_EQ(summaryOfContent(content), "FILE:400001: a NUL byte (binary data), expected text");
}

TEST(DelimitedTextReader, decodes16BitTextAcrossBlocks)
{
    std::string content = "\xFF\xFE";
    std::string ascii = "t,v\n";
    for (int row = 0; row < 200000; ++row)
        ascii += std::to_string(row) + ",0.5\n";
    for (char character : ascii) {
        content += character;
        content += '\0';
    }
    MeasurementTable table = readContent(content);
    ASSERT_EQ(table.rowCount(), 200000U);
    for (std::size_t row = 0; row < 200000; ++row)
        ASSERT_EQ(table.columns[0].values[row], static_cast<float>(row));
}

TEST(DelimitedTextReader, reportsProgressAndCancels)
{
    std::string content = repeated("123456,7\n", 2000000);
    ReadSettings settings;
    std::vector<ReadProgress> reports;
    settings.progress = [&reports](const ReadProgress& progress) {
        reports.push_back(progress);
        return true;
    };
    EXPECT_EQ(readContent(content, settings).rowCount(), 2000000U);
    ASSERT_EQ(reports.size(), content.size() / (4U << 20U) + 1);
    for (std::size_t index = 0; index < reports.size(); ++index) {
        EXPECT_EQ(reports[index].totalBytes, content.size());
        EXPECT_EQ(reports[index].bytesRead, index + 1 < reports.size() ? (index + 1) * (4U << 20U) : content.size());
    }
    std::size_t calls = 0;
    settings.progress = [&calls](const ReadProgress&) { return ++calls < 3; };
    EXPECT_THROW(readContent(content, settings), ReadingCancelled);
    EXPECT_EQ(calls, 3U);
}

TEST(DelimitedTextReader, valuesAreMovedOut)
{
    MeasurementTable table = readContent("1,2\n3,4\n");
    const float* place = table.columns[1].values.data();
    std::vector<float> values = std::move(table.columns[1].values);
    EXPECT_EQ(values.data(), place);
    EXPECT_EQ(values, (std::vector<float>{2, 4}));
}

} // namespace

} // namespace TOLVGraphing::input
