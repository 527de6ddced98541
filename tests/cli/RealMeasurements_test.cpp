// Measurements from instruments and archives, which are no part of the project: each is listed and drawn where somebody put it, see optionalFile().

#include "CommandLine.h"
#include "MeasurementFiles.h"
#include "tests/support/OptionalFiles.h"

#include <gmock/gmock.h>

#include <ostream>

namespace TOLVGraphing::testing_support {

namespace {

struct RealCase {
    const char* file;
    /// The listing's lines behind the name, up to the first that does not matter here.
    const char* listing;
    std::vector<std::string> options;
    /// Texts that the picture shows.
    std::vector<std::string> texts;
    std::size_t leastVertices;
    /// Behind "tolvgraph: FILE: ".
    const char* message = "";
};

const RealCase kCases[] = {
    {"fr_autoeq_AKG_K371.csv", "delimited text, comma, decimal point, 1 header row\n  1  frequency: number, 613 rows, 20 to 20000\n  2  raw: number, 613 rows, -17.55 to 7.75\n",
        {}, {"frequency", "raw", "10,000"}, 150},
    {"fr_sbaf_Sennheiser-HD600-L.txt", "delimited text, blanks, decimal point, 0 header rows\n  1  column 1: number, 696 rows, 20 to 20000\n", {}, {"10,000", "18,000", "-5"}, 150},
    {"fr_sbaf_Focal-Utopia-L.txt", "delimited text, blanks, decimal point, 0 header rows\n  1  column 1: number, 696 rows, 20 to 20000\n", {}, {"10,000", "18,000", "-5"}, 150},
    {"fr_sbaf_Grado-SR60-L.txt", "delimited text, blanks, decimal point, 0 header rows\n  1  column 1: number, 696 rows, 20 to 20000\n", {}, {"10,000", "18,000", "-10"}, 150},
    {"ecg_mitdb208_108000.csv", "delimited text, comma, decimal point, 1 header row\n  1  sample: number, 108000 rows, 0 to 107999\n", {}, {"sample", "ecg_mV", "100,000"}, 1000},
    {"vega_co2-concentration.csv",
        "delimited text, comma, decimal point, 1 header row\n  1  Date: date in days since 1970-01-01, 741 rows, 1958-03-01 to 2020-04-01\n  2  CO2: number, 741 rows, 313.21 to "
        "416.18\n",
        {"--y", "CO2"}, {"Date", "CO2", "400"}, 500},
    {"vega_us-employment.csv", "delimited text, comma, decimal point, 1 header row\n  1  month: date in days since 1970-01-01, 120 rows, ", {"--y", "nonfarm"},
        {"month", "nonfarm", "140,000"}, 100},
    {"vega_iowa-electricity.csv",
        "delimited text, comma, decimal point, 1 header row\n  1  year: date in days since 1970-01-01, 51 rows, 2001-01-01 to 2017-01-01\n  2  source: text, 51 rows, 51 gaps\n",
        {}, {"year", "net_generation"}, 20, "net_generation: samples sorted by year, which does not ascend in the file"},
    {"vega_global-temp.csv", "delimited text, comma, decimal point, 1 header row\n  1  year: number, 144 rows, 1880 to 2023\n  2  temp: number, 144 rows, -0.48 to 1.17\n", {},
        {"year", "temp", "-0.1"}, 100},
    {"vega_seattle-weather.csv", "delimited text, comma, decimal point, 1 header row\n  1  date: date in days since 1970-01-01, 1461 rows, 2012-01-01 to 2015-12-31\n",
        {"--y", "temp_max"}, {"date", "temp_max", "30"}, 800},
    {"co2-mm-mlo_broken-columns.csv", "delimited text, comma, decimal point, 1 header row\n  1  Date: date in days since 1970-01-01, 820 rows, 1958-03-01 to ", {"--y", "Average"},
        {"Date", "Average"}, 500},
    {"scope_DS1102E-D_units-row.csv",
        "delimited text, comma, decimal point, 2 header rows\n  1  X (Second): number, 600 rows, -0.00059999997 to 0.000598\n  2  CH1 (Volt): number, 600 rows, ", {"--y", "CH1"},
        {"X (Second)", "CH1 (Volt)", "-0.0001"}, 400},
    {"scope_DS1052E_header-block.csv",
        "delimited text, comma, decimal point, 1 header row, 16 skipped lines, 5e+08 samples a second\n  1  Time (s): number, 8192 rows, 0 to 1.6382e-05\n", {"--y", "2"},
        {"Time (s)", "Voltage (V)"}, 1000},
};

void PrintTo(const RealCase& realCase, std::ostream* stream)
{
    *stream << realCase.file;
}

class RealMeasurements : public CommandLineTest, public testing::WithParamInterface<RealCase> {};

TEST_P(RealMeasurements, areListedAndDrawn)
{
    const RealCase& c = GetParam();
    const std::string path = testing_support::optionalFile("data", c.file).string();
    if (path.empty())
        GTEST_SKIP() << "no folder with " << c.file << " beside the checkout";
    EXPECT_THAT(listing(path), testing::StartsWith(path + ": " + c.listing));
    std::vector<std::string> arguments{path};
    arguments.insert(arguments.end(), c.options.begin(), c.options.end());
    std::string messages;
    const DrawnPage page = drawn(arguments, &messages);
    EXPECT_EQ(messages, *c.message ? "tolvgraph: " + path + ": " + c.message + "\n" : "");
    for (const std::string& text : c.texts)
        EXPECT_TRUE(page.hasText(text)) << text << " among " << page.allTexts();
    EXPECT_GE(curvePoints(page).size(), c.leastVertices);
    // However long the record, a column of pixels has no more than two vertices.
    EXPECT_LE(curvePoints(page).size(), 1400U);
}

INSTANTIATE_TEST_SUITE_P(
    Files, RealMeasurements, testing::ValuesIn(kCases), [](const testing::TestParamInfo<RealCase>& caseInfo) { return "file" + std::to_string(caseInfo.index); });

} // namespace

} // namespace TOLVGraphing::testing_support
