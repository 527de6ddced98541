#include <desktop/input/RawNumberReader.h>

#include <desktop/input/SeriesSelection.h>
#include <desktop/input/testing/FloatFiles.h>
#include <desktop/input/testing/TemporaryFile.h>

#include <gtest/gtest.h>

#include <fstream>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace TOLVGraphing::input {

namespace {

using testing::bytesOfFloats;
using testing::readContent;
using testing::summaryOfContent;

std::string bytesOfDoubles(const std::vector<double>& numbers)
{
    return std::string(reinterpret_cast<const char*>(numbers.data()), numbers.size() * sizeof(double));
}

ReadSettings channels(std::size_t count)
{
    ReadSettings settings;
    settings.channelCount = count;
    return settings;
}

struct RawCase {
    const char* name;
    std::string content;
    std::string suffix;
    std::size_t channelCount;
    std::string expected;
};

TEST(RawNumberReader, numbers)
{
    const std::string six = bytesOfFloats({1, 2, 3, 4, 5, -6.5F});
    const RawCase cases[] = {
        {"single", six, ".f32", 1, "column 1: 1 2 3 4 5 -6.5"},
        {"two channels", six, ".f32", 2, "column 1: 1 3 5 | column 2: 2 4 -6.5"},
        {"three channels", six, ".f32", 3, "column 1: 1 4 | column 2: 2 5 | column 3: 3 -6.5"},
        {"a row", six, ".f32", 6, "column 1: 1 | column 2: 2 | column 3: 3 | column 4: 4 | column 5: 5 | column 6: -6.5"},
        {"double", bytesOfDoubles({0.1, 1e300, -2}), ".f64", 1, "column 1: 0.1 inf -2"},
        {"double in two channels", bytesOfDoubles({0.5, 1, 1.5, 2}), ".F64", 2, "column 1: 0.5 1.5 | column 2: 1 2"},
        {"the bytes of a number", std::string("\0\0\x80\x3F", 4), ".f32", 1, "column 1: 1"},
    };
    for (const RawCase& one : cases)
        EXPECT_EQ(summaryOfContent(one.content, channels(one.channelCount), one.suffix), one.expected) << one.name;
    // Whatever kind of file the bytes look like.
    EXPECT_EQ(readContent("BZh9", {}, ".f32").format.text(), "raw single precision, 1 channel");
    EXPECT_EQ(readContent(std::string("\x93NUMPY\1\0", 8), {}, ".f64").format.text(), "raw double precision, 1 channel");
}

TEST(RawNumberReader, errors)
{
    const RawCase cases[] = {
        {"empty", "", ".f32", 1, "FILE: an empty file, expected a table of numbers, an npy array or a sound file"},
        {"part of a number", "12345", ".f32", 1, "FILE: 5 bytes, expected a multiple of 4, 4 bytes for each of 1 channel"},
        {"one byte", "1", ".f64", 1, "FILE: 1 byte, expected a multiple of 8, 8 bytes for each of 1 channel"},
        {"part of a row", "123456789012", ".f32", 2, "FILE: 12 bytes, expected a multiple of 8, 4 bytes for each of 2 channels"},
        {"no channel", "1234", ".f32", 0, "FILE: 0 channels, expected 1 to 1024"},
        {"too many channels", "1234", ".f32", 1025, "FILE: 1025 channels, expected 1 to 1024"},
    };
    for (const RawCase& one : cases)
        EXPECT_EQ(summaryOfContent(one.content, channels(one.channelCount), one.suffix), one.expected) << one.name;
}

TEST(RawNumberReader, refusesPipes)
{
    const testing::TemporaryFile file("", ".csv");
    const std::string pipe = file.path() + ".f32";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::string error;
    {
        const std::jthread writer([&pipe] { std::ofstream(pipe, std::ios::binary) << "1234"; });
        try {
            static_cast<void>(readMeasurements(pipe));
        } catch (const MeasurementError& problem) {
            error = problem.what();
        }
    }
    ::unlink(pipe.c_str());
    EXPECT_EQ(error, pipe + ": raw numbers from a pipe, expected a file, whose length says how many there are");
}

TEST(RawNumberReader, suffixes)
{
    for (const char* name : {"a.f32", "a.F32", "/b.c/a.f64", ".f32"})
        EXPECT_TRUE(hasRawNumberSuffix(name)) << name;
    for (const char* name : {"", "-", "f32", "a.f3", "a.f32.csv", "a.f320", "a.f16", "a.f32/b"})
        EXPECT_FALSE(hasRawNumberSuffix(name)) << name;
}

TEST(RawNumberReader, channelsAreSeriesOverTheRowNumber)
{
    MeasurementTable table = readContent(bytesOfFloats({5, 6, 7, 8}), channels(2), ".f32");
    SeriesSelection selection = selectSeries(std::move(table), {});
    ASSERT_EQ(selection.series.size(), 2U);
    EXPECT_EQ(selection.xName, "sample");
    EXPECT_EQ(selection.series[1].data->X()->components()[1], 1.0F);
    EXPECT_EQ(selection.series[1].data->Y()->components()[1], 8.0F);
    ColumnRequest request;
    request.x = "1";
    selection = selectSeries(readContent(bytesOfFloats({5, 6, 7, 8}), channels(2), ".f32"), request);
    ASSERT_EQ(selection.series.size(), 1U);
    EXPECT_EQ(selection.series[0].data->X()->components()[1], 7.0F);
    request = {};
    request.categories = true;
    EXPECT_EQ(selectSeries(readContent(bytesOfFloats({5, 6, 7, 8}), channels(2), ".f32"), request).categoryTexts, (std::vector<std::string>{"0", "1"}));
}

} // namespace

} // namespace TOLVGraphing::input
