// Columns that are used where they lie in a file: which ones, and what happens to them.

#include <desktop/input/MappedFile.h>
#include <desktop/input/MeasurementReader.h>
#include <desktop/input/SeriesSelection.h>
#include <desktop/input/testing/FloatFiles.h>
#include <desktop/input/testing/TemporaryFile.h>

#include <TOLVMath/ExtremePyramid.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <unistd.h>

namespace TOLVGraphing::input {

namespace {

using testing::alignedNpyOfFloats;
using testing::bytesOfFloats;
using testing::noise;
using testing::npyOfFloats;
using testing::summary;
using testing::TemporaryFile;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

/// Maps files however short they are.
ReadSettings mapping()
{
    ReadSettings settings;
    settings.shortestMappedFile = 1;
    return settings;
}

struct MappingCase {
    const char* name;
    std::string content;
    std::string suffix;
    bool isMapped;
    std::string expected;
};

TEST(MappedColumns, areThoseThatLieWholeInTheFile)
{
    const std::vector<float> six{1, 2, kNaN, 4, 5, 6};
    std::string bigEndian = alignedNpyOfFloats(six, "(6,)");
    bigEndian.replace(bigEndian.find('<'), 1, ">");
    const MappingCase cases[] = {
        {"one dimension", alignedNpyOfFloats(six, "(6,)"), ".npy", true, "column 1: 1 2 nan 4 5 6"},
        {"one column", alignedNpyOfFloats(six, "(6, 1)"), ".npy", true, "column 1: 1 2 nan 4 5 6"},
        {"Fortran order", alignedNpyOfFloats(six, "(3, 2)", true), ".npy", true, "column 1: 1 2 nan | column 2: 4 5 6"},
        {"row by row", alignedNpyOfFloats(six, "(3, 2)"), ".npy", false, "column 1: 1 nan 5 | column 2: 2 4 6"},
        {"bytes behind the elements", alignedNpyOfFloats(six, "(5,)"), ".npy", true, "column 1: 1 2 nan 4 5"},
        {"no multiple of four bytes", npyOfFloats(six, "(6,)", false, 61 - npyOfFloats({}, "(6,)").size() % 4), ".npy", false, "column 1: 1 2 nan 4 5 6"},
        {"raw", bytesOfFloats(six), ".f32", true, "column 1: 1 2 nan 4 5 6"},
        {"raw, large letters", bytesOfFloats(six), ".F32", true, "column 1: 1 2 nan 4 5 6"},
    };
    for (const MappingCase& one : cases) {
        SCOPED_TRACE(one.name);
        const TemporaryFile file(one.content, one.suffix);
        const MeasurementTable mapped = readMeasurements(file.path(), mapping());
        EXPECT_EQ(summary(mapped), one.expected);
        for (const MeasurementColumn& column : mapped.columns)
            EXPECT_EQ(column.values.areElsewhere(), one.isMapped);
        const MeasurementTable read = readMeasurements(file.path());
        EXPECT_FALSE(read.columns[0].values.areElsewhere()) << "a short file";
        EXPECT_EQ(mapped, read);
        EXPECT_EQ(mapped.columns[0].gapCount, 1U);
    }
    const TemporaryFile big(bigEndian, ".npy");
    EXPECT_FALSE(readMeasurements(big.path(), mapping()).columns[0].values.areElsewhere());
}

TEST(MappedColumns, becomeSeriesWithoutACopy)
{
    const TemporaryFile file(alignedNpyOfFloats({0, 1, 2, 5, -3, 4}, "(3, 2)", true), ".npy");
    MeasurementTable table = readMeasurements(file.path(), mapping());
    const float* x = table.columns[0].values.data();
    const float* y = table.columns[1].values.data();
    const SeriesSelection selection = selectSeries(std::move(table), {});
    ASSERT_EQ(selection.series.size(), 1U);
    EXPECT_EQ(selection.series[0].data->X()->components(), x);
    EXPECT_EQ(selection.series[0].data->Y()->components(), y);
    float minimum = 0.0F;
    EXPECT_TRUE(selection.series[0].data->Y()->getMinimum(&minimum, nullptr));
    EXPECT_EQ(minimum, -3.0F);
}

TEST(MappedColumns, areCopiedWhereTheyHaveToChange)
{
    const TemporaryFile file(bytesOfFloats({1, std::numeric_limits<float>::infinity(), 3}), ".f32");
    MeasurementTable table = readMeasurements(file.path(), mapping());
    ColumnRequest request;
    request.categories = true;
    const SeriesSelection selection = selectSeries(std::move(table), request);
    EXPECT_EQ(selection.notes, std::vector<std::string>{"column 1: 1 row without a number is left empty"});
    EXPECT_EQ(testing::textOfValue(selection.series[0].data->Y()->components()[1]), "nan");
    EXPECT_EQ(summary(readMeasurements(file.path())), "column 1: 1 inf 3");
}

TEST(MappedColumns, outliveTheirFile)
{
    std::shared_ptr<const TOLVRealVector> vector;
    {
        const TemporaryFile file(bytesOfFloats({1, 2, 3}), ".f32");
        vector = readMeasurements(file.path(), mapping()).columns[0].values.takeVector();
    }
    EXPECT_EQ(vector->components()[2], 3.0F);
}

TEST(MappedColumns, areFollowedAndCancelled)
{
    const std::size_t count = 5'000'000;
    const TemporaryFile file(bytesOfFloats(std::vector<float>(count, 1.0F)), ".f32");
    ReadSettings settings;
    std::vector<std::uint64_t> places;
    settings.progress = [&places](const ReadProgress& progress) {
        places.push_back(progress.bytesRead);
        return true;
    };
    EXPECT_TRUE(readMeasurements(file.path(), settings).columns[0].values.areElsewhere()) << "20 MB are long enough";
    EXPECT_EQ(places, (std::vector<std::uint64_t>{4'194'304, 8'388'608, 12'582'912, 16'777'216, 20'000'000}));
    settings.progress = [](const ReadProgress& progress) { return progress.bytesRead < 8'388'608; };
    EXPECT_THROW(static_cast<void>(readMeasurements(file.path(), settings)), ReadingCancelled);
}

TEST(MappedColumns, sayWhenTheFileIsCutWhileItIsRead)
{
    const TemporaryFile file(bytesOfFloats(std::vector<float>(3'000'000, 1.0F)), ".f32");
    ReadSettings settings;
    settings.progress = [&file](const ReadProgress&) { return ::truncate(file.path().c_str(), 5'000'000) == 0; };
    try {
        static_cast<void>(readMeasurements(file.path(), settings));
        FAIL() << "half of the file is missing";
    } catch (const MeasurementError& error) {
        EXPECT_EQ(std::string(error.what()), file.path() + ": became shorter while it was read, 5000000 bytes are left, expected 12000000");
    }
}

TEST(MappedColumns, knowTheirFile)
{
    const TemporaryFile file(bytesOfFloats({1, 2, 3}), ".f32");
    MeasurementTable table = readMeasurements(file.path(), mapping());
    ASSERT_NE(table.mappedFile(), nullptr);
    EXPECT_EQ(table.mappedFile()->bytes().size(), 12U);
    table.columns[0].values.own().push_back(4);
    EXPECT_EQ(table.mappedFile(), nullptr) << "the numbers have been copied";
    EXPECT_EQ(readMeasurements(file.path()).mappedFile(), nullptr) << "a short file";
}

TEST(MappedColumns, areSearchedWithoutACrashWhenTheFileIsCutBehindThem)
{
    std::vector<float> samples = noise(200'000);
    samples[150'000] = 1000.0F;
    const TemporaryFile file(bytesOfFloats(samples), ".f32");
    const auto vector = readMeasurements(file.path(), mapping()).columns[0].values.takeVector();
    EXPECT_EQ(vector->pyramidOfStorage(vector->length())->extremes().maximum, 1000.0F);
    ASSERT_EQ(::truncate(file.path().c_str(), 0), 0);
    float maximum = 1.0F;
    std::size_t location = 0;
    // What the extremes promise is not there any more; where it is said to be is of no interest, but that it is not far outside.
    EXPECT_TRUE(vector->getMaximum(&maximum, &location));
    EXPECT_EQ(maximum, 0.0F);
    EXPECT_LE(location, samples.size());
}

} // namespace

} // namespace TOLVGraphing::input
