// What surrounds the command line may be missing or broken: outputs, folders, the environment, fonts, room on the disk.

#include "../desktop/Pixels.h"
#include "CommandLine.h"

#include <TestPaths.h>

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kSuffixes[] = {"pdf", "ps", "eps", "svg", "png", "tiff"};

class Surroundings : public CommandLineTest {
protected:
    Surroundings() { folder().write("table.csv", "t,v\n1,2\n2,5\n3,4\n4,4\n"); }

    /// Runs a shell's script in the folder, in which "$0" is the command line.
    [[nodiscard]] ProcessResult shell(const std::string& script) const
    {
        ProcessSurroundings surroundings;
        surroundings.folder = folder().path();
        return runProcess({"sh", "-c", script, TOLV_PROGRAM_TOLVGRAPH}, surroundings);
    }
    /// Runs the command line with these assignments, or options, of env.
    [[nodiscard]] ProcessResult runWith(std::vector<std::string> environment, const std::vector<std::string>& arguments) const
    {
        environment.insert(environment.begin(), "env");
        environment.emplace_back(TOLV_PROGRAM_TOLVGRAPH);
        environment.insert(environment.end(), arguments.begin(), arguments.end());
        ProcessSurroundings surroundings;
        surroundings.folder = folder().path();
        return runProcess(environment, surroundings);
    }
};

// Standard input and outputs.

TEST_F(Surroundings, standardOutputThatIsClosed)
{
    constexpr const char* kMessage = "tolvgraph: standard output: cannot be written (Bad file descriptor), expected a file or device with room\n";
    EXPECT_TRUE(endedWith(shell("exec \"$0\" --list-columns table.csv >&-"), 1, kMessage));
    EXPECT_TRUE(endedWith(shell("exec \"$0\" --help >&-"), 1, kMessage));
    // Pictures do not need it, and their files do not take its place.
    EXPECT_TRUE(succeededSilently(shell("exec \"$0\" table.csv -o picture.svg >&-")));
    EXPECT_THAT(folder().read("picture.svg"), StartsWith("<?xml"));
    EXPECT_TRUE(endedWith(shell("exec \"$0\" table.csv --list-columns -o other.svg >&-"), 1, kMessage));
    EXPECT_THAT(folder().names(), ElementsAre("picture.svg", "table.csv"));
}

TEST_F(Surroundings, standardErrorThatIsClosed)
{
    folder().write("ragged.csv", "t,v\n1,2\n2,5,6\n3,4\n4,4\n");
    const ProcessResult told = run({"ragged.csv", "-o", "told.svg"});
    ASSERT_TRUE(told.status == 0 && !told.error.empty()) << "a file with a warning: " << told.text();
    EXPECT_TRUE(succeededSilently(shell("exec \"$0\" ragged.csv -o picture.svg 2>&-")));
    EXPECT_TRUE(folder().read("picture.svg") == folder().read("told.svg"));
    EXPECT_TRUE(endedWith(shell("exec \"$0\" missing.csv -o missing.svg 2>&-"), 1, ""));
}

TEST_F(Surroundings, everythingStandardThatIsClosed)
{
    const std::string table = folder().read("table.csv");
    EXPECT_TRUE(succeededSilently(shell("exec \"$0\" table.csv -o picture.svg <&- >&- 2>&-")));
    EXPECT_THAT(folder().read("picture.svg"), StartsWith("<?xml"));
    EXPECT_EQ(folder().read("table.csv"), table);
}

TEST_F(Surroundings, standardInputThatIsClosed)
{
    EXPECT_TRUE(endedWith(shell("exec \"$0\" - -o picture.svg <&-"), 1, "tolvgraph: -: cannot be read (Bad file descriptor), expected a readable file\n"));
    EXPECT_TRUE(succeededSilently(shell("exec \"$0\" table.csv -o picture.svg <&-")));
}

TEST_F(Surroundings, pipeThatNobodyReads)
{
    // The end of the pipe is gone before the program starts: the other side says so by closing a second one.
    constexpr const char* kBroken = "mkfifo gone; { read line <gone; %s \"$0\" --list-columns table.csv; echo $? >status; } | { exec <&-; echo >gone; }; cat status";
    const auto statusOf = [&](const std::string& before) {
        std::string script = kBroken;
        script.replace(script.find("%s"), 2, before);
        const ProcessResult result = shell(script);
        std::filesystem::remove(folder().path("gone"));
        return result;
    };
    const ProcessResult usual = statusOf("");
    EXPECT_EQ(usual.output, "141\n") << "ended by SIGPIPE as other programs are: " << usual.text();
    EXPECT_THAT(usual.error, testing::Not(HasSubstr("tolvgraph:")));
    const ProcessResult ignored = statusOf("trap '' PIPE;");
    EXPECT_EQ(ignored.output, "1\n");
    EXPECT_EQ(ignored.error, "tolvgraph: standard output: cannot be written (Broken pipe), expected a file or device with room\n");
}

TEST_F(Surroundings, pipeThatIsReadInPart)
{
    std::string header = "t";
    std::string row = "0";
    for (int i = 0; i < 15000; ++i) {
        header += ",column" + std::to_string(i);
        row += ",1";
    }
    folder().write("wide.csv", header + "\n" + row + "\n" + row + "\n");
    const ProcessResult result = shell("{ \"$0\" --list-columns wide.csv; echo $? >status; } | head -n 1; cat status");
    EXPECT_EQ(result.output, "wide.csv: delimited text, comma, decimal point, 1 header row\n141\n") << result.error;
    EXPECT_EQ(result.error, "");
}

// Folders and the environment.

TEST_F(Surroundings, currentFolderThatIsGone)
{
    const std::string start = "mkdir gone; cd gone; rmdir ../gone; exec \"$0\" ";
    const std::string table = folder().path("table.csv");
    EXPECT_TRUE(succeededSilently(shell(start + table + " -o " + folder().path("picture.svg"))));
    EXPECT_THAT(folder().read("picture.svg"), StartsWith("<?xml"));
    EXPECT_TRUE(
        endedWith(shell(start + table + " -o picture.svg"), 1, "tolvgraph: picture.svg: cannot be written, no file can be made in the folder .: No such file or directory\n"));
}

TEST_F(Surroundings, environmentThatIsBroken)
{
    ASSERT_TRUE(succeededSilently(run({"table.csv", "-o", "usual.svg", "-o", "usual.eps"})));
    folder().write("file", "");
    const std::vector<std::vector<std::string>> kCases = {
        {"LC_ALL=xx"},
        {"LANG=de_DE.nothing", "LC_NUMERIC=de_DE.UTF-8"},
        {"-u", "HOME", "-u", "XDG_CACHE_HOME", "-u", "XDG_CONFIG_HOME"},
        {"-u", "XDG_CACHE_HOME", "HOME=/proc/nowhere"},
        {"HOME=" + folder().path("file"), "XDG_CACHE_HOME=" + folder().path("file"), "XDG_CONFIG_HOME=" + folder().path("file"), "XDG_RUNTIME_DIR=" + folder().path("file")},
        {"XDG_CACHE_HOME=relative"},
        {"TMPDIR=/proc/nowhere"},
        {"-u", "PATH"},
    };
    for (const auto& environment : kCases) {
        EXPECT_TRUE(succeededSilently(runWith(environment, {"table.csv", "-o", "picture.svg", "-o", "picture.eps"}))) << environment.front();
        EXPECT_TRUE(folder().read("picture.svg") == folder().read("usual.svg")) << environment.front();
        EXPECT_TRUE(folder().read("picture.eps") == folder().read("usual.eps")) << environment.front();
    }
}

// Targets.

TEST_F(Surroundings, targetsThatTakeNoFile)
{
    folder().write("file", "no folder");
    const std::string longName(300, 'n');
    std::vector<std::string> outputs;
    for (const char* suffix : kSuffixes)
        outputs.push_back(std::string("-o .") + suffix);
    outputs.emplace_back("--layout .json");
    const auto before = folder().names();
    const struct {
        std::string start;
        std::string reason;
    } kCases[] = {
        // clang-format off
        {"file/picture",    ": cannot be written: Not a directory"},
        {"nowhere/picture", ": cannot be written, no file can be made in the folder nowhere: No such file or directory"},
        {longName,          ": cannot be written: File name too long"},
        // clang-format on
    };
    for (const auto& [start, reason] : kCases) {
        for (const std::string& output : outputs) {
            const std::size_t blank = output.find(' ');
            const std::string path = start + output.substr(blank + 1);
            EXPECT_TRUE(endedWith(run({"table.csv", output.substr(0, blank), path}), 1, "tolvgraph: " + path + reason + "\n"));
        }
    }
    EXPECT_EQ(folder().names(), before);
}

TEST_F(Surroundings, linkToAFolderThatIsMissing)
{
    std::filesystem::create_symlink("nowhere/target.svg", folder().path("dangling.svg"));
    EXPECT_TRUE(endedWith(
        run({"table.csv", "-o", "dangling.svg"}), 1, "tolvgraph: dangling.svg: cannot be written, no file can be made in the folder ./nowhere: No such file or directory\n"));
    EXPECT_THAT(folder().names(), ElementsAre("dangling.svg", "table.csv"));
}

TEST_F(Surroundings, layoutOnADeviceWithoutRoom)
{
    std::filesystem::create_symlink("/dev/full", folder().path("full.json"));
    EXPECT_TRUE(endedWith(run({"table.csv", "--layout", "full.json"}), 1, "tolvgraph: full.json: cannot be written: No space left on device\n"));
}

/// A file system of its own, with nothing left of its room but for a page or two. Needs the right to mount one.
TEST_F(Surroundings, diskThatIsFull)
{
    const std::string mount = "mkdir -p disk && mount -t tmpfs -o size=64k none disk || exit 99\n";
    const auto onDisk = [&](const std::string& script) {
        ProcessSurroundings surroundings;
        surroundings.folder = folder().path();
        return runProcess({"unshare", "--mount", "--map-root-user", "sh", "-c", mount + script, TOLV_PROGRAM_TOLVGRAPH}, surroundings);
    };
    TOLV_REQUIRE_PROGRAM("unshare");
    if (const ProcessResult trial = onDisk("exit 0"); trial.status != 0)
        GTEST_SKIP() << "no file system can be mounted here: " << trial.error;
    for (const std::string output :
        {"-o disk/picture.pdf", "-o disk/picture.ps", "-o disk/picture.eps", "-o disk/picture.svg", "-o disk/picture.png", "-o disk/picture.tiff", "--layout disk/picture.json"}) {
        const std::string path = output.substr(output.find(' ') + 1);
        const ProcessResult result
            = onDisk("echo old >" + path + "; head -c 1000000 /dev/zero >disk/rest 2>/dev/null\n\"$0\" table.csv " + output + "; echo $?; cat " + path + "; ls -A disk");
        EXPECT_EQ(result.error, "tolvgraph: " + path + ": cannot be written: No space left on device\n");
        EXPECT_EQ(result.output, "1\nold\n" + path.substr(5) + "\nrest\n");
    }
}

// Fonts.

class WithoutFonts : public Surroundings {
protected:
    WithoutFonts()
    {
        folder().write(
            "fonts.conf", "<?xml version=\"1.0\"?>\n<!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">\n<fontconfig><cachedir>" + folder().path("cache") + "</cachedir></fontconfig>\n");
    }

    /// Memory that nobody has set is not zero either.
    [[nodiscard]] ProcessResult runWithoutFonts(const std::vector<std::string>& arguments) const
    {
        return runWith({"MALLOC_PERTURB_=85", "FONTCONFIG_FILE=" + folder().path("fonts.conf")}, arguments);
    }
};

constexpr const char* kNoFont = "No usable font is installed: a box stands for each character\n";

TEST_F(WithoutFonts, everyPictureIsDrawnWithOneWordOfIt)
{
    std::vector<std::string> arguments{"table.csv", "--title", "A title", "--legend", "--marker", "2", "--layout", "picture.json"};
    for (const char* suffix : kSuffixes)
        arguments.insert(arguments.end(), {"-o", std::string("picture.") + suffix});
    const ProcessResult result = runWithoutFonts(arguments);
    EXPECT_EQ(result.status, 0) << result.text();
    EXPECT_EQ(result.error, kNoFont);
    for (const char* suffix : kSuffixes)
        EXPECT_GT(folder().read(std::string("picture.") + suffix).size(), 2000U) << suffix;
}

TEST_F(WithoutFonts, boxesHaveTheirWidthsAndStandWhereTheTextsDo)
{
    ASSERT_EQ(runWithoutFonts({"table.csv", "--title", "Five.", "--scale", "1", "-o", "picture.svg", "-o", "picture.png"}).status, 0);
    const auto title = DrawnPage::fromSVG(folder().read("picture.svg")).textNamed("Five.");
    ASSERT_TRUE(title);
    EXPECT_GE(title->length, 5 * 0.4 * title->size);
    EXPECT_LE(title->length, 5 * 1.0 * title->size);
    // The title stands alone above the frame: each fifth of its width has a box of its own, and beside it is nothing.
    const Pixels image = pixelsOfPNGFile(folder().path("picture.png"));
    std::vector<int> inkOfFifth(5, 0);
    for (int y = static_cast<int>(title->y - title->size); y <= static_cast<int>(title->y); ++y) {
        for (int x = 0; x < image.width; ++x) {
            if (image.colorAt(x, y) == "#ffffff")
                continue;
            const double fifth = (x + 0.5 - title->x) / title->length * 5.0;
            ASSERT_TRUE(fifth > -0.1 && fifth < 5.1) << x << ", " << y;
            ++inkOfFifth[static_cast<std::size_t>(std::clamp(fifth, 0.0, 4.0))];
        }
    }
    EXPECT_GT(*std::min_element(inkOfFifth.begin(), inkOfFifth.end()), 10) << testing::PrintToString(inkOfFifth);
}

} // namespace

} // namespace TOLVGraphing::testing_support
