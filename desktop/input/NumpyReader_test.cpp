#include <desktop/input/NumpyReader.h>

#include <desktop/input/testing/TemporaryFile.h>

#include <gtest/gtest.h>

#include <cstring>

namespace TOLVGraphing::input {

namespace {

using namespace std::string_literals;
using testing::readContent;
using testing::summary;
using testing::summaryOfContent;

/// A file of version `major`.0 with this header text and these bytes of elements.
std::string arrayFile(const std::string& header, const std::string& elements, int major = 1)
{
    std::string text = header + "\n";
    std::string file = "\x93NUMPY";
    file += static_cast<char>(major);
    file += '\0';
    for (std::size_t index = 0; index < (major == 1 ? 2U : 4U); ++index)
        file += static_cast<char>(static_cast<unsigned char>(text.size() >> (8 * index)));
    return file + text + elements;
}

std::string header(const std::string& type, const std::string& shape, bool isFortranOrder = false)
{
    return "{'descr': '" + type + "', 'fortran_order': " + (isFortranOrder ? "True" : "False") + ", 'shape': " + shape + ", }";
}

template <typename Element>
std::string bytesOf(std::initializer_list<Element> elements, bool isBigEndian = false)
{
    std::string bytes;
    for (Element element : elements) {
        char buffer[sizeof(Element)];
        std::memcpy(buffer, &element, sizeof element);
        if (isBigEndian)
            std::reverse(buffer, buffer + sizeof element);
        bytes.append(buffer, sizeof element);
    }
    return bytes;
}

struct ArrayCase {
    const char* name;
    std::string content;
    std::string expected;
};

TEST(NumpyReader, arrays)
{
    constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
    const std::string matrix = bytesOf<float>({1, 2, 3, 4, 5, 6});
    const ArrayCase cases[] = {
        {"f4", arrayFile(header("<f4", "(3,)"), bytesOf<float>({1, notANumber, -2.5F})), "column 1: 1 nan -2.5"},
        {"f8", arrayFile(header("<f8", "(3,)"), bytesOf<double>({0.1, 1e300, -1e-300})), "column 1: 0.1 inf -0"},
        {"f2", arrayFile(header("<f2", "(8,)"), bytesOf<std::uint16_t>({0x3C00, 0xC000, 0x7BFF, 0x0001, 0x8000, 0x7C00, 0xFC00, 0x7E00})),
            "column 1: 1 -2 65504 5.9604645e-08 -0 inf -inf nan"},
        {"big f4", arrayFile(header(">f4", "(2,)"), bytesOf<float>({1.5F, -3}, true)), "column 1: 1.5 -3"},
        {"big f8", arrayFile(header(">f8", "(2,)"), bytesOf<double>({1.5, -3}, true)), "column 1: 1.5 -3"},
        {"big f2", arrayFile(header(">f2", "(1,)"), bytesOf<std::uint16_t>({0x3C00}, true)), "column 1: 1"},
        {"i1", arrayFile(header("|i1", "(2,)"), bytesOf<std::int8_t>({-128, 127})), "column 1: -128 127"},
        {"u1", arrayFile(header("|u1", "(2,)"), bytesOf<std::uint8_t>({0, 255})), "column 1: 0 255"},
        {"i2", arrayFile(header("<i2", "(2,)"), bytesOf<std::int16_t>({-32768, 32767})), "column 1: -32768 32767"},
        {"big u2", arrayFile(header(">u2", "(2,)"), bytesOf<std::uint16_t>({1, 65535}, true)), "column 1: 1 65535"},
        {"i4", arrayFile(header("<i4", "(2,)"), bytesOf<std::int32_t>({-5, 16777217})), "column 1: -5 16777216"},
        {"u4", arrayFile(header("<u4", "(1,)"), bytesOf<std::uint32_t>({4294967295U})), "column 1: 4294967296"},
        {"big i8", arrayFile(header(">i8", "(2,)"), bytesOf<std::int64_t>({-5, 1}, true)), "column 1: -5 1"},
        {"u8", arrayFile(header("<u8", "(1,)"), bytesOf<std::uint64_t>({18446744073709551615U})), "column 1: 1.8446744e+19"},
        {"b1", arrayFile(header("|b1", "(3,)"), bytesOf<std::uint8_t>({0, 1, 2})), "column 1: 0 1 1"},
        {"question mark", arrayFile(header("?", "(1,)"), bytesOf<std::uint8_t>({1})), "column 1: 1"},
        {"native order", arrayFile(header("=f4", "(1,)"), bytesOf<float>({7})), "column 1: 7"},
        {"C order", arrayFile(header("<f4", "(3, 2)"), matrix), "column 1: 1 3 5 | column 2: 2 4 6"},
        {"Fortran order", arrayFile(header("<f4", "(3, 2)", true), matrix), "column 1: 1 2 3 | column 2: 4 5 6"},
        {"few rows stay rows", arrayFile(header("<f4", "(1, 6)"), matrix), "column 1: 1 | column 2: 2 | column 3: 3 | column 4: 4 | column 5: 5 | column 6: 6"},
        {"one column", arrayFile(header("<f4", "(6, 1)"), matrix), "column 1: 1 2 3 4 5 6"},
        {"version 2", arrayFile(header("<f4", "(6,)"), matrix, 2), "column 1: 1 2 3 4 5 6"},
        {"version 3", arrayFile(header("<f4", "(2,3)"), matrix, 3), "column 1: 1 4 | column 2: 2 5 | column 3: 3 6"},
        {"old long shape", arrayFile(header("<f4", "(6L,)"), matrix), "column 1: 1 2 3 4 5 6"},
        {"other quotes and spaces", arrayFile("{\"shape\":(6,),\"fortran_order\" : False , \"descr\" :\"<f4\"}", matrix), "column 1: 1 2 3 4 5 6"},
        {"bytes behind the elements", arrayFile(header("<f4", "(1,)"), matrix), "column 1: 1"},
    };
    for (const ArrayCase& arrayCase : cases)
        EXPECT_EQ(summaryOfContent(arrayCase.content, {}, ".npy"), arrayCase.expected) << arrayCase.name;
}

TEST(NumpyReader, errors)
{
    const std::string types = "expected f2, f4, f8, i1 to i8, u1 to u8 or b1";
    const ArrayCase cases[] = {
        {"structured", arrayFile("{'descr': [('a', '<f4'), ('b', '<i2')], 'fortran_order': False, 'shape': (2,), }", ""),
            "FILE: structured elements '[('a', '<f4'), ('b', '<i2')]', " + types},
        {"complex", arrayFile(header("<c8", "(2,)"), ""), "FILE: elements of the type '<c8', " + types},
        {"long double", arrayFile(header("<f16", "(2,)"), ""), "FILE: elements of the type '<f16', " + types},
        {"text", arrayFile(header("<U5", "(2,)"), ""), "FILE: elements of the type '<U5', " + types},
        {"object", arrayFile(header("|O", "(2,)"), ""), "FILE: elements of the type '|O', " + types},
        {"i3", arrayFile(header("<i3", "(2,)"), ""), "FILE: elements of the type '<i3', " + types},
        {"no dimension", arrayFile(header("<f4", "()"), "abcd"), "FILE: an array of the shape '()', expected one dimension, or two (rows and columns)"},
        {"three dimensions", arrayFile(header("<f4", "(1, 1, 1)"), "abcd"), "FILE: an array of the shape '(1, 1, 1)', expected one dimension, or two (rows and columns)"},
        {"no rows", arrayFile(header("<f4", "(0, 3)"), ""), "FILE: an array of the shape '(0, 3)' without elements, expected at least one row and one column"},
        {"no columns", arrayFile(header("<f4", "(3, 0)"), ""), "FILE: an array of the shape '(3, 0)' without elements, expected at least one row and one column"},
        {"negative", arrayFile(header("<f4", "(-3,)"), ""), "FILE: the shape '(-3,)', expected numbers in parentheses"},
        {"beyond 64 bits", arrayFile(header("<f4", "(99999999999999999999,)"), ""), "FILE: the shape '(99999999999999999999,)', expected numbers in parentheses"},
        {"bytes overflow", arrayFile(header("<f8", "(9223372036854775807, 16)"), ""), "FILE: an array of 9223372036854775807 rows, expected one that fits the memory"},
        {"too large for the file", arrayFile(header("<f8", "(1000000000000,)"), "12345678"),
            "FILE: 8 bytes of elements, expected 8000000000000 for 1000000000000 rows of 1 columns"},
        {"cut", arrayFile(header("<f4", "(3,)"), "12345678"), "FILE: 8 bytes of elements, expected 12 for 3 rows of 1 columns"},
        {"too many columns", arrayFile(header("<f4", "(1, 16385)"), ""), "FILE: an array of 16385 columns, expected at most 16384"},
        {"no type", arrayFile("{'fortran_order': False, 'shape': (2,)}", ""), "FILE: an npy header without 'descr', expected the element type"},
        {"no order", arrayFile("{'descr': '<f4', 'shape': (2,)}", ""), "FILE: an npy header without 'fortran_order', expected True or False"},
        {"no shape", arrayFile("{'descr': '<f4', 'fortran_order': False}", ""), "FILE: an npy header without 'shape', expected numbers in parentheses"},
        {"version 4", arrayFile(header("<f4", "(1,)"), "abcd", 4), "FILE: npy version 4.0, expected 1.0 to 3.0"},
        {"cut header", arrayFile(header("<f4", "(1,)"), "abcd").substr(0, 30), "FILE: the end of the file within the npy header, expected 58 bytes of header"},
        {"cut length", "\x93NUMPY\1\0a"s, "FILE: the end of the file within the npy header, expected the length of the header"},
        {"huge header", "\x93NUMPY\2\0\xFF\xFF\xFF\xFF"s, "FILE: an npy header of 4294967295 bytes, expected at most 1 MiB"},
        {"text by that name", "1,2\n", "FILE: a file that does not start like an npy array, expected the bytes \\x93NUMPY and a version"},
    };
    for (const ArrayCase& arrayCase : cases)
        EXPECT_EQ(summaryOfContent(arrayCase.content, {}, ".npy"), arrayCase.expected) << arrayCase.name;
}

TEST(NumpyReader, everyBeginningOfAFileIsRefused)
{
    for (const bool isMapped : {false, true}) {
        ReadSettings settings;
        settings.shortestMappedFile = isMapped ? 1 : settings.shortestMappedFile;
        for (int major : {1, 2, 3}) {
            const std::string whole = arrayFile(header("<f4", "(2, 1)"), "12345678", major);
            ASSERT_FALSE(summaryOfContent(whole, settings, ".npy").starts_with("FILE"));
            for (std::size_t length = 0; length < whole.size(); ++length) {
                const std::string text = summaryOfContent(whole.substr(0, length), settings, ".npy");
                EXPECT_TRUE(text.starts_with("FILE: ") && text.find(", expected ") != std::string::npos) << length << " of " << whole.size() << " bytes: " << text;
            }
        }
    }
}

TEST(NumpyReader, damagedHeadersAreRefusedOrRead)
{
    const std::string whole = arrayFile(header("<f4", "(2, 1)"), "12345678");
    std::size_t refused = 0;
    for (std::size_t place = 0; place + 8 < whole.size(); ++place) {
        for (const int damage : {0x01, 0x02, 0x10, 0x80, 0xFF}) {
            std::string content = whole;
            content[place] = static_cast<char>(content[place] ^ damage);
            ReadSettings settings;
            settings.shortestMappedFile = 1;
            const std::string mapped = summaryOfContent(content, settings, ".npy");
            EXPECT_EQ(mapped, summaryOfContent(content, {}, ".npy")) << place;
            refused += mapped.starts_with("FILE: ") ? 1 : 0;
        }
    }
    EXPECT_GT(refused, whole.size()) << "most of the header matters";
}

TEST(NumpyReader, formatAndGaps)
{
    MeasurementTable table = readContent(arrayFile(header(">i2", "(2, 2)"), bytesOf<std::int16_t>({1, 2, 3, 4}, true)), {}, ".dat");
    EXPECT_EQ(table.format.text(), "npy 1.0 >i2");
    EXPECT_EQ(table.sampleRate, std::nullopt);
    table = readContent(arrayFile(header("<f4", "(2,)"), bytesOf<float>({std::numeric_limits<float>::quiet_NaN(), 1})));
    EXPECT_EQ(table.columns[0].gapCount, 1U);
    EXPECT_EQ(table.columns[0].wordCount, 0U);
}

TEST(NumpyReader, blocksDoNotMatter)
{
    std::string elements;
    constexpr std::uint32_t rows = 400000;
    for (std::uint32_t index = 0; index < rows * 3; ++index)
        elements += bytesOf<std::uint32_t>({index});
    MeasurementTable byRows = readContent(arrayFile(header("<u4", "(400000, 3)"), elements));
    MeasurementTable byColumns = readContent(arrayFile(header("<u4", "(400000, 3)", true), elements));
    for (std::uint32_t row = 0; row < rows; ++row) {
        for (std::uint32_t column = 0; column < 3; ++column) {
            ASSERT_EQ(byRows.columns[column].values[row], static_cast<float>(row * 3 + column));
            ASSERT_EQ(byColumns.columns[column].values[row], static_cast<float>(column * rows + row));
        }
    }
}

} // namespace

} // namespace TOLVGraphing::input
