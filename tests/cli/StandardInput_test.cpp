// Measurements that come through a pipe, and several files in one graph.

#include "CommandLine.h"
#include "MeasurementFiles.h"

#include <sndfile.h>

namespace TOLVGraphing::testing_support {

namespace {

class StandardInput : public CommandLineTest {
protected:
    ProcessResult runWithInput(const std::vector<std::string>& arguments, const std::string& input) const
    {
        ProcessSurroundings surroundings;
        surroundings.input = input;
        return run(arguments, surroundings);
    }
};

TEST_F(StandardInput, ofText)
{
    const ProcessResult listed = runWithInput({"--list-columns", "-"}, "t,v\n1,2\n3,4\n");
    EXPECT_EQ(listed.status, 0);
    EXPECT_EQ(listed.error, "");
    EXPECT_EQ(listed.output, "-: delimited text, comma, decimal point, 1 header row\n  1  t: number, 2 rows, 1 to 3\n  2  v: number, 2 rows, 2 to 4\n");
    EXPECT_TRUE(succeededSilently(runWithInput({"-", "-o", "picture.svg"}, "t,v\n1,2\n3,4\n")));
    EXPECT_EQ(curvePoints(DrawnPage::fromSVG(folder().read("picture.svg"))).size(), 3U);
}

TEST_F(StandardInput, ofLongText)
{
    std::string table = "t,v\n";
    for (int row = 0; row < 300000; ++row)
        table += std::to_string(row) + "," + std::to_string(row % 7) + "\n";
    const ProcessResult listed = runWithInput({"--list-columns", "-"}, table);
    EXPECT_EQ(listed.output, "-: delimited text, comma, decimal point, 1 header row\n  1  t: number, 300000 rows, 0 to 299999\n  2  v: number, 300000 rows, 0 to 6\n");
}

TEST_F(StandardInput, ofAnArray)
{
    const ProcessResult listed = runWithInput({"--list-columns", "-"}, npyFile(">f4", "(3,)", elementBytes<float>({1, 2, 4}, true)));
    EXPECT_EQ(listed.output, "-: npy 1.0 >f4\n  1  column 1: number, 3 rows, 1 to 4\n") << listed.text();
}

TEST_F(StandardInput, ofASound)
{
    writeSound(folder().path("note.wav"), SF_FORMAT_WAV | SF_FORMAT_PCM_16, 10, 1, {0.0F, 0.5F, -0.5F});
    const ProcessResult listed = runWithInput({"--list-columns", "-"}, folder().read("note.wav"));
    EXPECT_EQ(listed.output, "-: WAV (Microsoft), Signed 16 bit PCM, 10 samples a second\n  1  time (s): number, 3 rows, 0 to 0.2\n  2  channel 1: number, 3 rows, -0.5 to 0.5\n")
        << listed.text();
}

TEST_F(StandardInput, withoutAWord)
{
    EXPECT_TRUE(endedWith(runWithInput({"-", "-o", "picture.svg"}, ""), 1, "tolvgraph: -: an empty file, expected a table of numbers, an npy array or a sound file\n"));
    EXPECT_TRUE(endedWith(runWithInput({"-", "-o", "picture.svg"}, "some words\n"), 1,
        "tolvgraph: -:1: no table in the file, which starts with 'some words', expected at least one column of numbers or dates\n"));
    EXPECT_TRUE(folder().names().empty());
}

TEST_F(StandardInput, progressIsShownOnATerminalAfterASecond)
{
    ProcessSurroundings surroundings;
    surroundings.input = "t,v\n1,2\n3,4\n";
    surroundings.inputDelay = std::chrono::milliseconds(1400);
    surroundings.errorIsTerminal = true;
    const ProcessResult slow = run({"-", "-o", "picture.svg"}, surroundings);
    EXPECT_EQ(slow.status, 0) << slow.text();
    // Shown, and wiped out at the end.
    EXPECT_TRUE(slow.error.starts_with("\rtolvgraph: reading -: 0 MB\033[K")) << slow.error;
    EXPECT_TRUE(slow.error.ends_with("\r\033[K")) << slow.error;

    surroundings.inputDelay = std::chrono::milliseconds(0);
    EXPECT_TRUE(succeededSilently(run({"-", "-o", "picture.svg"}, surroundings))) << "quick on a terminal";

    surroundings.inputDelay = std::chrono::milliseconds(1400);
    surroundings.errorIsTerminal = false;
    EXPECT_TRUE(succeededSilently(run({"-", "-o", "picture.svg"}, surroundings))) << "slow without a terminal";
}

class SeveralFiles : public CommandLineTest {
protected:
    SeveralFiles()
    {
        folder().write("first.csv", "t,v\n0,1\n10,2\n12,2\n");
        folder().write("second.csv", "t,v\n5,3\n16,4\n20,4\n");
        folder().write("pair.csv", "t,a,b\n0,5\n10,6,7\n20,8,9\n");
    }
};

TEST_F(SeveralFiles, areListedInOrder)
{
    const ProcessResult result = run({"--list-columns", "second.csv", "first.csv"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output,
        "second.csv: delimited text, comma, decimal point, 1 header row\n  1  t: number, 3 rows, 5 to 20\n  2  v: number, 3 rows, 3 to 4\n"
        "first.csv: delimited text, comma, decimal point, 1 header row\n  1  t: number, 3 rows, 0 to 12\n  2  v: number, 3 rows, 1 to 2\n");
}

TEST_F(SeveralFiles, areOneGraph)
{
    const DrawnPage page = drawn({"first.csv", "second.csv", "--margin", "20,40,30,60", "--size", "400x250", "--legend", "--y-range", "0:10"});
    // The x range is that of both, 0 to 20, and 4 points of the picture's width more, on 40...340 points.
    const double fit = 20.0 + 20.0 * 4.0 / 400.0;
    const auto first = page.strokesOfColor("#0072b2");
    const auto second = page.strokesOfColor("#d55e00");
    ASSERT_EQ(first.size(), 2U);
    ASSERT_EQ(second.size(), 2U);
    EXPECT_NEAR(first[0].points().front().x, 40.0, 1.0);
    EXPECT_NEAR(first[0].points().back().x, 40.0 + 300.0 * 12.0 / fit, 1e-3);
    EXPECT_NEAR(second[0].points().front().x, 115.0, 1.0);
    EXPECT_NEAR(second[0].points().back().x, 40.0 + 300.0 * 20.0 / fit, 1e-3);
    EXPECT_TRUE(page.hasText("first.csv"));
    EXPECT_TRUE(page.hasText("second.csv"));
    EXPECT_TRUE(page.hasText("t")) << "the title that both files give their x axis";
}

TEST_F(SeveralFiles, seriesOfAFileWithSeveralCarryItsName)
{
    std::string messages;
    const DrawnPage page = drawn({"first.csv", "pair.csv", "--legend"}, &messages);
    EXPECT_EQ(messages, "tolvgraph: pair.csv:2: 1 row with fields missing, which are gaps\ntolvgraph: pair.csv: b: 1 sample without a number left out\n");
    for (const char* text : {"first.csv", "pair.csv: a", "pair.csv: b"})
        EXPECT_TRUE(page.hasText(text)) << page.allTexts();
}

TEST_F(SeveralFiles, areAllReadBeforeAnythingIsDrawn)
{
    EXPECT_TRUE(
        endedWith(run({"first.csv", "missing.csv", "-o", "picture.svg"}), 1, "tolvgraph: missing.csv: cannot be opened (No such file or directory), expected a readable file\n"));
    EXPECT_EQ(folder().read("picture.svg"), "");
}

TEST_F(SeveralFiles, ofDifferentKindsAreOneGraph)
{
    folder().write("array.npy", npyFile("<f4", "(3,)", elementBytes<float>({1, 2, 4})));
    writeSound(folder().path("note.wav"), SF_FORMAT_WAV | SF_FORMAT_PCM_16, 10, 1, {0.0F, 0.5F, -0.5F});
    const DrawnPage page = drawn({"first.csv", "array.npy", "note.wav", "--legend"});
    for (const char* color : {"#0072b2", "#d55e00", "#009e73"})
        EXPECT_EQ(page.strokesOfColor(color).size(), 2U) << color;
    for (const char* text : {"first.csv", "array.npy", "note.wav"})
        EXPECT_TRUE(page.hasText(text)) << page.allTexts();
}

} // namespace

} // namespace TOLVGraphing::testing_support
