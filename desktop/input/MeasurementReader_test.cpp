#include <desktop/input/MeasurementReader.h>

#include <desktop/input/testing/TemporaryFile.h>

#include <tests/support/OptionalFiles.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <ostream>
#include <random>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace TOLVGraphing::input {

namespace {

using namespace std::string_literals;
using testing::summary;
using testing::TemporaryFile;

std::string errorText(const std::string& path)
{
    try {
        return summary(readMeasurements(path));
    } catch (const MeasurementError& error) {
        EXPECT_EQ(error.file(), path);
        return error.what();
    }
}

TEST(MeasurementReader, filesThatCannotBeRead)
{
    EXPECT_EQ(errorText("/nowhere/a.csv"), "/nowhere/a.csv: cannot be opened (No such file or directory), expected a readable file");
    EXPECT_EQ(errorText("/"), "/: cannot be read (Is a directory), expected a readable file");
    EXPECT_EQ(errorText(""), ": cannot be opened (No such file or directory), expected a readable file");
    EXPECT_EQ(errorText("/dev/null"), "/dev/null: an empty file, expected a table of numbers, an npy array or a sound file");
    EXPECT_EQ(errorText("/dev/zero"), "/dev/zero:1: a byte of the value 0 (binary data), expected text");
}

TEST(MeasurementReader, fileWithoutPermission)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "a file without permissions can be read by this user";
    TemporaryFile file("1,2\n");
    ::chmod(file.path().c_str(), 0);
    EXPECT_EQ(errorText(file.path()), file.path() + ": cannot be opened (Permission denied), expected a readable file");
}

/// Puts a pipe in the place of standard input, fed with a text in small pieces from a thread.
class PipedInput {
public:
    explicit PipedInput(const std::string& content) : m_saved(::dup(STDIN_FILENO))
    {
        int ends[2];
        if (::pipe(ends) != 0)
            std::abort();
        ::dup2(ends[0], STDIN_FILENO);
        ::close(ends[0]);
        m_writer = std::thread([content, end = ends[1]] {
            for (std::size_t place = 0; place < content.size();) {
                ssize_t length = ::write(end, content.data() + place, std::min<std::size_t>(content.size() - place, 7001));
                if (length <= 0)
                    break;
                place += static_cast<std::size_t>(length);
            }
            ::close(end);
        });
    }
    ~PipedInput()
    {
        m_writer.join();
        if (m_saved >= 0) {
            ::dup2(m_saved, STDIN_FILENO);
            ::close(m_saved);
        }
    }
    PipedInput(const PipedInput&) = delete;
    PipedInput& operator=(const PipedInput&) = delete;

private:
    int m_saved;
    std::thread m_writer;
};

TEST(MeasurementReader, standardInput)
{
    std::string content = "t,v\n";
    for (int row = 0; row < 300000; ++row)
        content += std::to_string(row) + ",0.25\n";
    MeasurementTable table;
    bool hasTotal = false;
    ReadSettings settings;
    settings.progress = [&hasTotal](const ReadProgress& progress) {
        hasTotal = hasTotal || progress.totalBytes;
        return true;
    };
    {
        PipedInput input(content);
        table = readMeasurements("-", settings);
    }
    EXPECT_FALSE(hasTotal);
    EXPECT_EQ(table.sourceName, "-");
    ASSERT_EQ(table.rowCount(), 300000U);
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
        ASSERT_EQ(table.columns[0].values[row], static_cast<float>(row));
        ASSERT_EQ(table.columns[1].values[row], 0.25F);
    }
    {
        PipedInput input("words\n");
        EXPECT_EQ(errorText("-"), "-:1: no table in the file, which starts with 'words', expected at least one column of numbers or dates");
    }
    {
        PipedInput input("\x93NUMPY\1\0\x3D\0"s + "{'descr':'<f4','fortran_order':False,'shape':(2,),}         \n"s + "\0\0\x80\x3F\0\0\0\xC0"s);
        EXPECT_EQ(errorText("-"), "column 1: 1 -2");
    }
    {
        PipedInput input("RIFF\x28\0\0\0WAVEfmt \x10\0\0\0\1\0\1\0\2\0\0\0\4\0\0\0\2\0\x10\0data\4\0\0\0\0\x40\0\xC0"s);
        EXPECT_EQ(errorText("-"), "time[s]: 0 0.5 | channel 1: 0.5 -0.5");
    }
}

TEST(MeasurementReader, hugeArrayFromAPipeIsRefusedAtItsEnd)
{
    PipedInput input("\x93NUMPY\1\0\x41\0"s + "{'descr':'<f4','fortran_order':False,'shape':(1000000000000,),} \n"s + "\0\0\x80\x3F"s);
    EXPECT_EQ(errorText("-"), "-: the end of the file within the elements, expected 1000000000000 rows of 1 columns");
}

/// The error of a file of this content that is cut to `left` bytes when reading reports how far it is for the first time, behind the file's name; the columns where there is none.
std::string summaryOfCutFile(const std::string& content, const std::string& suffix, off_t left)
{
    const TemporaryFile file(content, suffix);
    ReadSettings settings;
    // Read, not mapped.
    settings.shortestMappedFile = std::numeric_limits<std::uint64_t>::max();
    settings.progress = [&file, left](const ReadProgress&) { return ::truncate(file.path().c_str(), left) == 0; };
    try {
        return std::to_string(readMeasurements(file.path(), settings).rowCount()) + " rows";
    } catch (const MeasurementError& error) {
        EXPECT_EQ(error.file(), file.path());
        return std::string(error.what()).substr(file.path().size());
    }
}

TEST(MeasurementReader, fileThatBecomesShorterWhileItIsRead)
{
    std::string text;
    for (int row = 0; row < 1'500'000; ++row)
        text += "1.25\n2.5\n";
    ASSERT_EQ(text.size(), 13'500'000U);
    std::string wave = "RIFF\x24\x6C\xDC\2WAVEfmt \x10\0\0\0\1\0\1\0\x40\x1F\0\0\x80\x3E\0\0\2\0\x10\0data\0\x6C\xDC\2"s;
    wave.resize(wave.size() + 48'000'000, '\1');
    for (const off_t left : {off_t{0}, off_t{1}, off_t{4'194'304}, off_t{9'000'000}, off_t{13'499'999}}) {
        const std::string shorter = ": became shorter while it was read, " + std::to_string(left) + " bytes are left, expected ";
        EXPECT_EQ(summaryOfCutFile(text, ".csv", left), shorter + "13500000");
        EXPECT_EQ(summaryOfCutFile(text.substr(0, 12'000'000), ".f64", std::min(left, off_t{11'999'999})),
            ": became shorter while it was read, " + std::to_string(std::min(left, off_t{11'999'999})) + " bytes are left, expected 12000000");
        EXPECT_EQ(summaryOfCutFile(wave, ".wav", left), shorter + "48000044");
    }
    EXPECT_EQ(summaryOfCutFile(text, ".csv", 13'500'000), "3000000 rows") << "a file that stays as it is";
}

TEST(MeasurementReader, fileThatClaimsMoreThanItHasIsReadToItsEnd)
{
    // The system's own files have a length of a page, whatever is in them.
    const std::string path = "/sys/kernel/mm/transparent_hugepage/hpage_pmd_size";
    if (::access(path.c_str(), R_OK) != 0)
        GTEST_SKIP() << "no such file of the system";
    EXPECT_TRUE(errorText(path).starts_with("column 1: ")) << errorText(path);
}

TEST(MeasurementReader, pipeWithoutAnEndIsReadUpToALimit)
{
    ReadSettings settings;
    settings.mostPipedBytes = 20'000;
    const auto textOrError = [&settings] {
        try {
            return std::to_string(readMeasurements("-", settings).rowCount()) + " rows";
        } catch (const MeasurementError& error) {
            return std::string(error.what());
        }
    };
    const std::string tooMuch = "-: more than 20000 bytes from a pipe or device, expected fewer, or a file";
    std::string rows;
    for (int row = 0; row < 10'000; ++row)
        rows += "1\n";
    {
        PipedInput input(rows);
        EXPECT_EQ(textOrError(), "10000 rows") << "as much as the limit";
    }
    {
        PipedInput input(rows + "1\n");
        EXPECT_EQ(textOrError(), tooMuch);
    }
    {
        PipedInput input("RIFF\x28\0\0\0WAVEfmt \x10\0\0\0\1\0\1\0\2\0\0\0\4\0\0\0\2\0\x10\0data\4\0\0\0"s + rows);
        EXPECT_EQ(textOrError(), tooMuch);
    }
    {
        PipedInput input("\x93NUMPY\1\0\x41\0"s + "{'descr':'<f4','fortran_order':False,'shape':(1000000000000,),} \n"s + rows);
        EXPECT_EQ(textOrError(), tooMuch);
    }
}

TEST(MeasurementReader, aFileRedirectedToStandardInputIsReadFromItsPlace)
{
    TemporaryFile file("junk\na,b\n1,2\n");
    int saved = ::dup(STDIN_FILENO);
    int descriptor = ::open(file.path().c_str(), O_RDONLY);
    ASSERT_GE(descriptor, 0);
    ::lseek(descriptor, 5, SEEK_SET);
    ::dup2(descriptor, STDIN_FILENO);
    ::close(descriptor);
    EXPECT_EQ(errorText("-"), "a: 1 | b: 2");
    if (saved >= 0) {
        ::dup2(saved, STDIN_FILENO);
        ::close(saved);
    }
}

struct ForeignCase {
    const char* file;
    std::size_t rows;
    /// Display names, units in brackets, and the kinds that are not numbers.
    const char* columns;
    const char* format;
    const char* firstRow;
    const char* lastRow;
};

std::string columnsText(const MeasurementTable& table)
{
    std::string text;
    for (const MeasurementColumn& column : table.columns) {
        text += (text.empty() ? "" : "|") + column.displayName() + (column.unit.empty() ? "" : "[" + column.unit + "]");
        text += column.kind == ColumnKind::Number ? "" : "(" + std::string(columnKindName(column.kind)) + ")";
    }
    return text;
}

std::string rowText(const MeasurementTable& table, std::size_t row)
{
    std::string text;
    for (const MeasurementColumn& column : table.columns)
        text += (text.empty() ? "" : " ") + testing::textOfValue(column.values[row]);
    return text;
}

void PrintTo(const ForeignCase& foreignCase, std::ostream* stream)
{
    *stream << foreignCase.file;
}

class ForeignMeasurements : public ::testing::TestWithParam<ForeignCase> {};

TEST_P(ForeignMeasurements, areRead)
{
    const ForeignCase& foreignCase = GetParam();
    std::filesystem::path path = testing_support::optionalFile("data", foreignCase.file);
    if (path.empty())
        GTEST_SKIP() << "no folder with " << foreignCase.file << " beside the checkout";
    MeasurementTable table = readMeasurements(path.string());
    EXPECT_EQ(columnsText(table), foreignCase.columns);
    EXPECT_EQ(table.format.text(), std::string("delimited text, ") + foreignCase.format);
    EXPECT_EQ(table.shortRowCount + table.longRowCount, 0U);
    ASSERT_EQ(table.rowCount(), foreignCase.rows);
    EXPECT_EQ(rowText(table, 0), foreignCase.firstRow);
    EXPECT_EQ(rowText(table, foreignCase.rows - 1), foreignCase.lastRow);
}

const ForeignCase kForeignCases[] = {
    {"co2-mm-mlo_broken-columns.csv", 820, "Date(date)|Decimal Date|Average|Interpolated|Trend|Number of Days|column 7", "comma, decimal point, 1 header row",
        "-4324 1958.2028 315.71 314.44 -1 -9.99 -0.99", "20605 2026.4583 431.44 429.06 19 0.35 0.15"},
    {"ecg_mitdb208_108000.csv", 108000, "sample|ecg_mV", "comma, decimal point, 1 header row", "0 -0.245", "107999 -0.385"},
    {"fr_autoeq_AKG_K371.csv", 613, "frequency|raw", "comma, decimal point, 1 header row", "20 5.69", "20000 -16.53"},
    {"fr_sbaf_Focal-Utopia-L.txt", 696, "column 1|column 2", "blanks, decimal point, 0 header rows", "20 -1.47", "20000 -4.42"},
    {"fr_sbaf_Grado-SR60-L.txt", 696, "column 1|column 2", "blanks, decimal point, 0 header rows", "20 -11.17", "20000 -15.35"},
    {"fr_sbaf_Sennheiser-HD600-L.txt", 696, "column 1|column 2", "blanks, decimal point, 0 header rows", "20 -8.92", "20000 -1.94"},
    {"scope_DS1052E_header-block.csv", 8192, "Time (s)|Voltage (V)|Voltage (V)", "comma, decimal point, 1 header row, 16 skipped lines", "0 1.72 9.92", "1.6382e-05 -0.04 4.96"},
    {"scope_DS1102E-D_units-row.csv", 600, "X[Second]|CH1[Volt]|CH2[Volt]", "comma, decimal point, 2 header rows", "-0.00059999997 -1.28 5.4", "0.000598 -1.36 5.4"},
    {"vega_co2-concentration.csv", 741, "Date(date)|CO2|adjusted CO2", "comma, decimal point, 1 header row", "-4324 315.7 314.44", "18353 416.18 413.35"},
    {"vega_global-temp.csv", 144, "year|temp", "comma, decimal point, 1 header row", "1880 -0.17", "2023 1.17"},
    {"vega_iowa-electricity.csv", 51, "year(date)|source(text)|net_generation", "comma, decimal point, 1 header row", "11323 nan 35361", "17167 nan 21933"},
    {"vega_seattle-weather.csv", 1461, "date(date)|precipitation|temp_max|temp_min|wind|weather(text)", "comma, decimal point, 1 header row", "15340 0 12.8 5 4.7 nan",
        "16800 0 5.6 -2.1 3.5 nan"},
};
INSTANTIATE_TEST_SUITE_P(Files, ForeignMeasurements, ::testing::ValuesIn(kForeignCases), [](const auto& parameter) { return "file" + std::to_string(parameter.index); });

TEST(ForeignMeasurements, wideTableAndSampleRate)
{
    std::filesystem::path wide = testing_support::optionalFile("data", "vega_us-employment.csv");
    std::filesystem::path scope = testing_support::optionalFile("data", "scope_DS1052E_header-block.csv");
    if (wide.empty() || scope.empty())
        GTEST_SKIP() << "no folder with such files beside the checkout";
    MeasurementTable table = readMeasurements(wide.string());
    EXPECT_EQ(table.columns.size(), 24U);
    EXPECT_EQ(table.rowCount(), 120U);
    EXPECT_EQ(table.columns[1].name, "nonfarm");
    EXPECT_EQ(table.columns[1].values.front(), 135450.0F);
    EXPECT_EQ(table.columns[23].values.back(), 234.0F);
    EXPECT_EQ(readMeasurements(scope.string()).sampleRate, 5e8);
}

/// Valid files of every kind, to be broken.
std::vector<std::string> seeds()
{
    return {
        "a,b\n1,2\n3,4\n5,6\n7,8\n",
        "X,CH1,CH2,\r\nSecond,Volt,Volt,\r\n-5.9e-04,-1.28e+00,5.4e+00,\r\n-5.8e-04,1,2,\r\n",
        "\"Points =\",8192,\n\"Pos (V) = \",0.2,-6\n\"Time (s)\",\"Voltage (V)\",\"a \"\"b\"\"\"\n0,1.72,9.92\n2E-9,-4.52,9.92\n,,\n",
        "# comment\n20.00 -05.58\r\n20.20 +01.00\r\n20.40 nan\r\n",
        "datum;wert;wort\n2012-01-01T12:30:45.5Z;1,5;ja\n2012-01-02 00:00:00+02:00;2,75;nein\n2012-13-45;;\n",
        "x\ty\n1,5\t2,5\n\t7\n3\t1e400\n",
        "\xEF\xBB\xBF"
        "1;2\r3;4\r",
        "\xFF\xFE"
        "1\0,\0"
        "2\0\n\0"
        "3\0,\0"
        "4\0\n\0"s,
        "\x93NUMPY\1\0\x40\0"s + "{'descr': '<f4', 'fortran_order': False, 'shape': (2, 2), }    \n"s + std::string(16, '\x3F'),
        "\x93NUMPY\2\0\x40\0\0\0"s + "{'descr': '>i2', 'fortran_order': True, 'shape': (4,), }       \n"s + "\0\1\0\2\0\3\0\4"s,
        "RIFF\x28\0\0\0WAVEfmt \x10\0\0\0\1\0\1\0\2\0\0\0\4\0\0\0\2\0\x10\0data\4\0\0\0\0\x40\0\xC0"s,
    };
}

/// One change: a byte, a stretch removed, repeated or taken from another file, or the end cut off.
void mutate(std::string& content, const std::vector<std::string>& others, std::mt19937& random)
{
    static const std::string interesting = ",;\t \"\r\n#%*/;-+.eEdD019aNni\0\x01\xFF\xFE\x80xL()'"s;
    auto below = [&random](std::size_t limit) { return limit == 0 ? 0 : random() % limit; };
    std::size_t place = below(content.size() + 1);
    switch (below(7)) {
    case 0:
        if (place < content.size())
            content[place] = interesting[below(interesting.size())];
        break;
    case 1:
        if (place < content.size())
            content[place] = static_cast<char>(below(256));
        break;
    case 2: content.insert(place, 1, interesting[below(interesting.size())]); break;
    case 3: content.erase(place, 1 + below(12)); break;
    case 4:
        for (std::size_t count = 1 + below(40), length = below(20); count > 0; --count)
            content.insert(place, content.substr(place, length));
        break;
    case 5: {
        const std::string& other = others[below(others.size())];
        std::size_t otherPlace = below(other.size());
        content.insert(place, other.substr(otherPlace, below(60)));
        break;
    }
    default: content.resize(place); break;
    }
}

/// What every table promises, whatever the file was.
void expectConsistent(const MeasurementTable& table)
{
    ASSERT_FALSE(table.columns.empty());
    ASSERT_GT(table.rowCount(), 0U);
    std::size_t number = 0;
    for (const MeasurementColumn& column : table.columns) {
        ASSERT_EQ(column.number, ++number);
        ASSERT_EQ(column.values.size(), table.rowCount());
        std::size_t gaps = 0;
        for (float value : column.values)
            gaps += std::isnan(value) ? 1 : 0;
        ASSERT_EQ(column.gapCount, gaps);
        ASSERT_LE(column.wordCount, gaps);
        ASSERT_TRUE(column.texts.empty() || column.texts.size() == table.rowCount());
    }
}

TEST(MeasurementReader, brokenFilesAreTablesOrErrors)
{
    std::mt19937 random(1958);
    const std::vector<std::string> valid = seeds();
    TemporaryFile file("");
    ReadSettings settings;
    settings.keptTextColumns = {"column 2", "b", "y", "wort"};
    settings.keepsTextsOfTextColumns = true;
    std::size_t tables = 0;
    std::size_t errors = 0;
    // More rounds are for a sanitizer's run by hand.
    const char* asked = std::getenv("TOLVGRAPHING_MUTATION_ROUNDS");
    const int rounds = asked ? std::atoi(asked) : 4000;
    for (int round = 0; round < rounds; ++round) {
        std::string content = valid[random() % valid.size()];
        for (std::size_t changes = 1 + random() % 6; changes > 0; --changes)
            mutate(content, valid, random);
        file.write(content);
        try {
            expectConsistent(readMeasurements(file.path(), round % 2 == 0 ? settings : ReadSettings{}));
            ++tables;
        } catch (const MeasurementError& error) {
            ASSERT_EQ(error.file(), file.path());
            ++errors;
        }
        ASSERT_FALSE(HasFatalFailure()) << "round " << round;
    }
    // Both outcomes are common, so that the rounds test something.
    EXPECT_GT(tables, static_cast<std::size_t>(rounds / 4));
    EXPECT_GT(errors, static_cast<std::size_t>(rounds / 20));
}

} // namespace

} // namespace TOLVGraphing::input
