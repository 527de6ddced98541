// Arrays and sound files, listed and drawn by the command line.

#include "CommandLine.h"
#include "MeasurementFiles.h"

#include <sndfile.h>

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <optional>
#include <ostream>

namespace TOLVGraphing::testing_support {

namespace {

struct ArrayCase {
    const char* name;
    std::string content;
    /// Behind "array.npy: npy 1.0 ".
    const char* listing;
    /// How many series a drawing has, and the title of its x axis: a single column is drawn against its row number, and columns of arrays have no names.
    std::size_t seriesCount;
    const char* xTitle;
};

std::ostream& operator<<(std::ostream& stream, const ArrayCase& arrayCase)
{
    return stream << arrayCase.name;
}

const std::vector<double> kFour{1, -2, 3, 0};
const std::vector<double> kSix{1, 2, 3, 4, 5, 9};
const std::vector<double> kPositive{1, 2, 3, 0};

const ArrayCase kArrays[] = {
    {"singleLittle", npyFile("<f4", "(4,)", elementBytes<float>(kFour)), "<f4\n  1  column 1: number, 4 rows, -2 to 3\n", 1, "sample"},
    {"singleBig", npyFile(">f4", "(4,)", elementBytes<float>(kFour, true)), ">f4\n  1  column 1: number, 4 rows, -2 to 3\n", 1, "sample"},
    {"doubleLittle", npyFile("<f8", "(4,)", elementBytes<double>(kFour)), "<f8\n  1  column 1: number, 4 rows, -2 to 3\n", 1, "sample"},
    {"doubleBig", npyFile(">f8", "(4,)", elementBytes<double>(kFour, true)), ">f8\n  1  column 1: number, 4 rows, -2 to 3\n", 1, "sample"},
    {"i1", npyFile("|i1", "(4,)", elementBytes<std::int8_t>(kFour)), "|i1\n  1  column 1: number, 4 rows, -2 to 3\n", 1, "sample"},
    {"u1", npyFile("|u1", "(4,)", elementBytes<std::uint8_t>(kPositive)), "|u1\n  1  column 1: number, 4 rows, 0 to 3\n", 1, "sample"},
    {"i2", npyFile("<i2", "(4,)", elementBytes<std::int16_t>(kFour)), "<i2\n  1  column 1: number, 4 rows, -2 to 3\n", 1, "sample"},
    {"i2Big", npyFile(">i2", "(4,)", elementBytes<std::int16_t>(kFour, true)), ">i2\n  1  column 1: number, 4 rows, -2 to 3\n", 1, "sample"},
    {"u2", npyFile("<u2", "(4,)", elementBytes<std::uint16_t>(kPositive)), "<u2\n  1  column 1: number, 4 rows, 0 to 3\n", 1, "sample"},
    {"i4", npyFile("<i4", "(4,)", elementBytes<std::int32_t>(kFour)), "<i4\n  1  column 1: number, 4 rows, -2 to 3\n", 1, "sample"},
    {"i8Big", npyFile(">i8", "(4,)", elementBytes<std::int64_t>(kFour, true)), ">i8\n  1  column 1: number, 4 rows, -2 to 3\n", 1, "sample"},
    {"u8", npyFile("<u8", "(4,)", elementBytes<std::uint64_t>(kPositive)), "<u8\n  1  column 1: number, 4 rows, 0 to 3\n", 1, "sample"},
    {"rowsAfterRows", npyFile("<f8", "(3, 2)", elementBytes<double>(kSix)), "<f8\n  1  column 1: number, 3 rows, 1 to 5\n  2  column 2: number, 3 rows, 2 to 9\n", 1, ""},
    {"columnsAfterColumns", npyFile("<f8", "(3, 2)", elementBytes<double>(kSix), true), "<f8\n  1  column 1: number, 3 rows, 1 to 3\n  2  column 2: number, 3 rows, 4 to 9\n", 1,
        ""},
    {"threeColumns", npyFile("<i2", "(2, 3)", elementBytes<std::int16_t>(kSix)),
        "<i2\n  1  column 1: number, 2 rows, 1 to 4\n  2  column 2: number, 2 rows, 2 to 5\n  3  column 3: number, 2 rows, 3 to 9\n", 2, ""},
};

class Arrays : public CommandLineTest, public testing::WithParamInterface<ArrayCase> {};

TEST_P(Arrays, areListedAndDrawn)
{
    folder().write("array.npy", GetParam().content);
    EXPECT_EQ(listing("array.npy"), std::string("array.npy: npy 1.0 ") + GetParam().listing);
    const DrawnPage page = drawn({"array.npy"});
    EXPECT_EQ(page.strokesOfColor("#0072b2").size() + page.strokesOfColor("#d55e00").size(), GetParam().seriesCount);
    EXPECT_EQ(page.hasText("sample"), *GetParam().xTitle != '\0') << page.allTexts();
}

class RawNumbers : public CommandLineTest {};

TEST_F(RawNumbers, areListedAndDrawnOverTheRowNumber)
{
    folder().write("scope.f32", elementBytes<float>(kSix));
    EXPECT_EQ(listing("scope.f32"), "scope.f32: raw single precision, 1 channel\n  1  column 1: number, 6 rows, 1 to 9\n");
    const DrawnPage page = drawn({"scope.f32"});
    EXPECT_EQ(curvePoints(page).size(), 7U);
    EXPECT_TRUE(page.hasText("sample")) << page.allTexts();
    folder().write("scope.f64", elementBytes<double>(kSix));
    EXPECT_EQ(listing("scope.f64"), "scope.f64: raw double precision, 1 channel\n  1  column 1: number, 6 rows, 1 to 9\n");
}

TEST_F(RawNumbers, ofChannelsSideBySide)
{
    folder().write("scope.f32", elementBytes<float>(kSix));
    const ProcessResult listed = run({"--list-columns", "--channels", "2", "scope.f32"});
    EXPECT_EQ(listed.output, "scope.f32: raw single precision, 2 channels\n  1  column 1: number, 3 rows, 1 to 5\n  2  column 2: number, 3 rows, 2 to 9\n") << listed.text();
    const DrawnPage both = drawn({"scope.f32", "--channels", "2"});
    EXPECT_EQ(both.strokesOfColor("#0072b2").size() + both.strokesOfColor("#d55e00").size(), 2U);
    const DrawnPage one = drawn({"scope.f32", "--channels", "2", "--x", "1"});
    EXPECT_EQ(one.strokesOfColor("#0072b2").size() + one.strokesOfColor("#d55e00").size(), 1U);
    EXPECT_TRUE(
        endedWith(run({"scope.f32", "--channels", "4", "--list-columns"}), 1, "tolvgraph: scope.f32: 24 bytes, expected a multiple of 16, 4 bytes for each of 4 channels\n"));
}

/// Keeps what the command line learns of long columns in the test's folder.
class LongColumns : public CommandLineTest {
protected:
    LongColumns()
    {
        if (const char* former = std::getenv("XDG_CACHE_HOME"))
            m_former = former;
        ::setenv("XDG_CACHE_HOME", folder().path("cache").c_str(), 1);
    }
    ~LongColumns() override
    {
        ::unsetenv("TOLVGRAPHING_NO_CACHE");
        if (m_former)
            ::setenv("XDG_CACHE_HOME", m_former->c_str(), 1);
        else
            ::unsetenv("XDG_CACHE_HOME");
    }

    std::string picture() const
    {
        EXPECT_TRUE(succeededSilently(run({"long.npy", "-o", "picture.svg"})));
        return folder().read("picture.svg");
    }
    std::size_t keptCount() const
    {
        std::error_code none;
        const std::filesystem::directory_iterator entries(folder().path("cache/tolvgraphing/extremes"), none);
        return none ? 0 : static_cast<std::size_t>(std::distance(entries, std::filesystem::directory_iterator()));
    }

private:
    std::optional<std::string> m_former;
};

TEST_F(LongColumns, areDrawnAlikeWithAndWithoutKeptExtremes)
{
    constexpr std::size_t count = 4'000'000;
    std::vector<float> samples(count);
    for (std::size_t i = 0; i < count; ++i)
        samples[i] = static_cast<float>((i * 7919U) % 1009U) * static_cast<float>(i % 65'536U);
    std::string elements(reinterpret_cast<const char*>(samples.data()), count * sizeof(float));
    folder().write("long.npy", npyFile("<f4", "(4000000,)", elements));
    ::setenv("TOLVGRAPHING_NO_CACHE", "1", 1);
    const std::string without = picture();
    EXPECT_EQ(keptCount(), 0U);
    ::unsetenv("TOLVGRAPHING_NO_CACHE");
    EXPECT_EQ(picture(), without);
    EXPECT_EQ(keptCount(), 1U);
    EXPECT_EQ(picture(), without) << "with the extremes that were kept";
    // Another peak, in a file that was written anew.
    samples[2'000'000] = 1e9F;
    elements.assign(reinterpret_cast<const char*>(samples.data()), count * sizeof(float));
    folder().write("long.npy", npyFile("<f4", "(4000000,)", elements));
    EXPECT_NE(picture(), without);
}

std::string caseName(const testing::TestParamInfo<ArrayCase>& info)
{
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Files, Arrays, testing::ValuesIn(kArrays), caseName);

class Sounds : public CommandLineTest {};

TEST_F(Sounds, oneChannel)
{
    writeSound(folder().path("note.wav"), SF_FORMAT_WAV | SF_FORMAT_FLOAT, 8, 1, {0.0F, 0.5F, -0.25F, 1.0F});
    EXPECT_EQ(listing("note.wav"),
        "note.wav: WAV (Microsoft), 32 bit float, 8 samples a second\n"
        "  1  time (s): number, 4 rows, 0 to 0.375\n"
        "  2  note: number, 4 rows, -0.25 to 1\n");
    const DrawnPage page = drawn({"note.wav"});
    EXPECT_TRUE(page.allTexts().ends_with(" | time (s) | note")) << page.allTexts();
    EXPECT_EQ(curvePoints(page).size(), 5U);
}

TEST_F(Sounds, twoChannelsAreTwoSeries)
{
    writeSound(folder().path("pair.wav"), SF_FORMAT_WAV | SF_FORMAT_PCM_16, 100, 2, {0.0F, 0.5F, 0.25F, -0.5F, 0.5F, 0.0F});
    EXPECT_EQ(listing("pair.wav"),
        "pair.wav: WAV (Microsoft), Signed 16 bit PCM, 100 samples a second\n"
        "  1  time (s): number, 3 rows, 0 to 0.02\n"
        "  2  left: number, 3 rows, 0 to 0.5\n"
        "  3  right: number, 3 rows, -0.5 to 0.5\n");
    const DrawnPage page = drawn({"pair.wav", "--legend"});
    for (const char* color : {"#0072b2", "#d55e00"}) {
        const auto strokes = page.strokesOfColor(color);
        ASSERT_EQ(strokes.size(), 2U) << "the curve and the legend's piece of line in " << color;
        EXPECT_EQ(strokes[0].points().size(), 4U);
        EXPECT_EQ(strokes[1].points().size(), 2U);
    }
    EXPECT_TRUE(page.hasText("left"));
    EXPECT_TRUE(page.hasText("right"));
}

struct SoundCase {
    const char* file;
    int format;
    const char* kind;
};

TEST_F(Sounds, ofOtherKinds)
{
    const SoundCase cases[] = {
        {"a.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, "FLAC"},
        {"a.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_24, "AIFF"},
        {"a.au", SF_FORMAT_AU | SF_FORMAT_PCM_16, "AU"},
        {"a.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS, "OGG"},
    };
    std::vector<float> samples;
    for (int i = 0; i < 800; ++i)
        samples.push_back(static_cast<float>(i % 40 - 20) / 40.0F);
    for (const SoundCase& soundCase : cases) {
        SCOPED_TRACE(soundCase.file);
        writeSound(folder().path(soundCase.file), soundCase.format, 8000, 1, samples);
        const std::string text = listing(soundCase.file);
        EXPECT_TRUE(text.starts_with(std::string(soundCase.file) + ": " + soundCase.kind)) << text;
        EXPECT_NE(text.find(", 8000 samples a second\n  1  time (s): number, 800 rows, 0 to 0.099875\n  2  a: number, 800 rows, "), std::string::npos) << text;
        EXPECT_GT(curvePoints(drawn({soundCase.file})).size(), 100U);
    }
}

} // namespace

} // namespace TOLVGraphing::testing_support
