// What cannot be read or written: status 1, one line on standard error that says where, what was found and what was expected, and no picture.

#include "CommandLine.h"
#include "MeasurementFiles.h"

#include <fcntl.h>
#include <sndfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>

#include <filesystem>
#include <thread>

namespace TOLVGraphing::testing_support {

namespace {

using namespace std::string_literals;

constexpr const char* kAnyKind = "expected a table of numbers, an npy array or a sound file";

class BadInput : public CommandLineTest {
protected:
    /// The file "bad.csv" (or of another name) with this content is refused with "tolvgraph: FILE" and this, whether it is to be listed or drawn.
    void expectRefused(const std::string& content, const std::string& problem, const std::string& file = "bad.csv") const
    {
        SCOPED_TRACE(problem);
        folder().write(file, content);
        EXPECT_TRUE(endedWith(run({"--list-columns", file}), 1, "tolvgraph: " + file + problem + "\n"));
        expectNotDrawn({file}, problem);
    }

    /// Waits for what writes into a pipe of the folder, also where the program has never opened it.
    void release(std::thread& writer, const std::string& pipe) const
    {
        const int reader = ::open(folder().path(pipe).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        writer.join();
        ::close(reader);
    }

    /// Drawing with these arguments, the file first, is refused.
    void expectNotDrawn(std::vector<std::string> arguments, const std::string& problem) const
    {
        const std::string message = "tolvgraph: " + arguments.front() + problem + "\n";
        arguments.insert(arguments.end(), {"-o", "picture.svg"});
        EXPECT_TRUE(endedWith(run(arguments), 1, message));
        EXPECT_FALSE(std::filesystem::exists(folder().path("picture.svg")));
    }
};

TEST_F(BadInput, filesThatCannotBeRead)
{
    expectNotDrawn({"missing.csv"}, ": cannot be opened (No such file or directory), expected a readable file");
    expectNotDrawn({"/nowhere/missing.csv"}, ": cannot be opened (No such file or directory), expected a readable file");
    expectNotDrawn({"."}, ": cannot be read (Is a directory), expected a readable file");
    expectNotDrawn({"/dev/null"}, ": an empty file, "s + kAnyKind);
    expectNotDrawn({"/dev/zero"}, ":1: a byte of the value 0 (binary data), expected text");
}

TEST_F(BadInput, moreSeriesThanAGraphHas)
{
    std::string wide = "1";
    for (int column = 2; column <= 8194; ++column)
        wide += ",1";
    wide += "\n" + wide + "\n";
    folder().write("wide.csv", wide);
    EXPECT_TRUE(
        endedWith(run({"wide.csv", "wide.csv", "-o", "picture.svg"}), 2, "tolvgraph: FILE: found '16386 series', expected at most 16384 in one graph; --y chooses some of them\n"));
    EXPECT_FALSE(std::filesystem::exists(folder().path("picture.svg")));
}

TEST_F(BadInput, fileThatBecomesShorterBetweenReadingAndDrawing)
{
    // Samples of such a long file are used where they lie. The program has read it when it opens the second file, a pipe, and waits for what comes out of it.
    const std::size_t length = 6'000'000;
    ASSERT_EQ(::mkfifo(folder().path("second.csv").c_str(), 0600), 0);
    for (const off_t left : {off_t{0}, off_t{3}, off_t{2'000'000}, off_t{4'096'000}, off_t{5'999'999}}) {
        SCOPED_TRACE(left);
        folder().write("first.f32", std::string(length, '?'));
        for (const char* name : {"picture.svg", "picture.png", "layout.json"})
            folder().write(name, "old");
        std::thread writer([&] {
            const int pipe = ::open(folder().path("second.csv").c_str(), O_WRONLY | O_CLOEXEC);
            EXPECT_EQ(::truncate(folder().path("first.f32").c_str(), left), 0);
            EXPECT_EQ(::write(pipe, "1,2\n3,4\n", 8), 8);
            ::close(pipe);
        });
        const ProcessResult result = run({"first.f32", "second.csv", "-o", "picture.svg", "-o", "picture.png", "--layout", "layout.json"});
        release(writer, "second.csv");
        EXPECT_TRUE(endedWith(result, 1, "tolvgraph: first.f32: became shorter while it was read, " + std::to_string(left) + " bytes are left, expected 6000000\n"));
        for (const char* name : {"picture.svg", "picture.png", "layout.json"})
            EXPECT_EQ(folder().read(name), "old");
    }
}

TEST_F(BadInput, fileThatVanishesBetweenReadingAndDrawingIsDrawn)
{
    ASSERT_EQ(::mkfifo(folder().path("second.csv").c_str(), 0600), 0);
    folder().write("first.f32", std::string(6'000'000, '?'));
    std::thread writer([&] {
        const int pipe = ::open(folder().path("second.csv").c_str(), O_WRONLY | O_CLOEXEC);
        EXPECT_TRUE(std::filesystem::remove(folder().path("first.f32")));
        EXPECT_EQ(::write(pipe, "1,2\n3,4\n", 8), 8);
        ::close(pipe);
    });
    EXPECT_TRUE(succeededSilently(run({"first.f32", "second.csv", "-o", "picture.svg"})));
    release(writer, "second.csv");
    EXPECT_TRUE(std::filesystem::exists(folder().path("picture.svg")));
}

TEST_F(BadInput, deviceWithoutAnEnd)
{
    for (const char* link : {"zero.f32", "zero.npy", "zero.csv"})
        std::filesystem::create_symlink("/dev/zero", folder().path(link));
    expectNotDrawn({"zero.f32"}, ": raw numbers from a pipe, expected a file, whose length says how many there are");
    expectNotDrawn({"zero.npy"}, ": a file that does not start like an npy array, expected the bytes \\x93NUMPY and a version");
    expectNotDrawn({"zero.csv"}, ":1: a byte of the value 0 (binary data), expected text");
}

TEST_F(BadInput, fileWithoutPermission)
{
    folder().write("secret.csv", "t,v\n1,2\n3,4\n");
    ASSERT_EQ(::chmod(folder().path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(folder().path("secret.csv").c_str(), 0), 0);
    ProcessSurroundings surroundings;
    surroundings.withoutPrivileges = true;
    EXPECT_TRUE(endedWith(run({"--list-columns", "secret.csv"}, surroundings), 1, "tolvgraph: secret.csv: cannot be opened (Permission denied), expected a readable file\n"));
}

TEST_F(BadInput, textThatIsNoTable)
{
    expectRefused("", ": an empty file, "s + kAnyKind);
    expectRefused("\n\n  \n", ": nothing but blank lines, expected a table of numbers");
    expectRefused("name,place\nBob,Oslo\n", ":1: no table in the file, which starts with 'name,place', expected at least one column of numbers or dates");
    expectRefused("t,v\n", ":1: no table in the file, which starts with 't,v', expected at least one column of numbers or dates");
    expectRefused("1,2\n3,\"4\n5,6\n", ":2: a quotation mark that is not closed, expected another one at the end of the field");
}

TEST_F(BadInput, binaryData)
{
    expectRefused("1,2\n3,\0\n"s, ":2: a byte of the value 0 (binary data), expected text");
    expectRefused("\x89PNG\r\n\x1A\n\0\0\0\rIHDR"s, ": a PNG image, "s + kAnyKind);
    expectRefused("\x1F\x8B\x08\0\0"s, ": a gzip-compressed file, "s + kAnyKind);
    expectRefused("%PDF-1.5\n", ": a PDF file, "s + kAnyKind);
    std::string noise;
    for (unsigned i = 0, value = 1; i < 4096; ++i, value = value * 1103515245U + 12345U)
        noise += static_cast<char>(value >> 16U);
    folder().write("noise.dat", noise);
    const ProcessResult result = run({"noise.dat", "-o", "picture.svg"});
    EXPECT_EQ(result.status, 1) << result.text();
    EXPECT_THAT(result.error, testing::MatchesRegex("tolvgraph: noise\\.dat:1: .*, expected .*\n"));
}

TEST_F(BadInput, brokenArrays)
{
    const std::string whole = npyFile("<f4", "(4,)", elementBytes<float>({1, 2, 3, 4}));
    expectRefused(whole.substr(0, whole.size() - 6), ": 10 bytes of elements, expected 16 for 4 rows of 1 columns", "bad.npy");
    expectRefused(whole.substr(0, 40), ": the end of the file within the npy header, expected " + std::to_string(whole.size() - 16 - 10) + " bytes of header", "bad.npy");
    expectRefused(whole.substr(0, 9), ": the end of the file within the npy header, expected the length of the header", "bad.npy");
    expectRefused(npyFile("<c8", "(1,)", "12345678"), ": elements of the type '<c8', expected f2, f4, f8, i1 to i8, u1 to u8 or b1", "bad.npy");
    expectRefused(npyFile("<f4", "(1, 1, 1)", "1234"), ": an array of the shape '(1, 1, 1)', expected one dimension, or two (rows and columns)", "bad.npy");
    expectRefused(npyFile("<f8", "(900000000000000,)", "12345678"), ": 8 bytes of elements, expected 7200000000000000 for 900000000000000 rows of 1 columns", "bad.npy");
    expectRefused("t,v\n1,2\n", ": a file that does not start like an npy array, expected the bytes \\x93NUMPY and a version", "bad.npy");
}

TEST_F(BadInput, brokenSounds)
{
    writeSound(folder().path("whole.wav"), SF_FORMAT_WAV | SF_FORMAT_PCM_16, 8000, 1, std::vector<float>(1000, 0.25F));
    const std::string whole = folder().read("whole.wav");
    for (const std::size_t length : {std::size_t{16}, std::size_t{30}, std::size_t{44}}) {
        SCOPED_TRACE(length);
        folder().write("bad.wav", whole.substr(0, length));
        const ProcessResult result = run({"bad.wav", "-o", "picture.svg"});
        EXPECT_EQ(result.status, 1) << result.text();
        EXPECT_THAT(result.error, testing::MatchesRegex("tolvgraph: bad\\.wav: a sound file .*, expected .*\n"));
        EXPECT_FALSE(std::filesystem::exists(folder().path("picture.svg")));
    }
    folder().write("bad.wav", "t,v\n1,2\n");
    EXPECT_THAT(run({"bad.wav", "-o", "picture.svg"}).error,
        testing::MatchesRegex("tolvgraph: bad\\.wav: a sound file that cannot be decoded \\(.*\\), expected wav, flac, aiff, ogg or another known kind\n"));
}

TEST_F(BadInput, soundThatEndsBeforeItsHeaderSays)
{
    writeSound(folder().path("whole.wav"), SF_FORMAT_WAV | SF_FORMAT_PCM_16, 8000, 1, std::vector<float>(1000, 0.25F));
    folder().write("cut.wav", folder().read("whole.wav").substr(0, 1044));
    const ProcessResult result = run({"--list-columns", "cut.wav"});
    // Recorders that are switched off leave such files: what is there is read.
    EXPECT_EQ(result.status, 0) << result.text();
    EXPECT_THAT(result.output, testing::HasSubstr("  2  cut: number, 500 rows, 0.25 to 0.25\n"));
}

TEST_F(BadInput, columnsThatDoNotExistOrHoldNoNumbers)
{
    folder().write("table.csv", "t,a,w\n0,1,no\n1,2,yes\n2,3,no\n");
    for (const std::string name : {"b", "0", "4", "-1", "1.5", "A", ""}) {
        SCOPED_TRACE(name);
        const std::string problem = ": no column '" + name + "', expected a number from 1 to 3 or one of 't', 'a', 'w'";
        expectNotDrawn({"table.csv", "--x=" + name}, problem);
        if (!name.empty())
            expectNotDrawn({"table.csv", "--y=" + name}, problem);
    }
    expectNotDrawn({"table.csv", "--x", "w"}, ": no number in column 'w', expected numbers or dates for x");
    expectNotDrawn({"table.csv", "--y", "a,w"}, ": no number in column 'w', expected a column of numbers");
    folder().write("words.csv", "t,w\n0,no\n1,yes\n2,no\n");
    expectNotDrawn({"words.csv"}, ": no column of numbers to draw among 't', 'w', expected at least one besides x");
    folder().write("gaps.csv", "t,a\n0,\n,1\n2,\n,3\n");
    expectNotDrawn({"gaps.csv"}, ": no sample with a number in both x and y, expected at least one");
}

TEST_F(BadInput, longNamesOfColumnsAreCut)
{
    std::string header = "t";
    std::string row = "0";
    for (int i = 0; i < 30; ++i) {
        header += "," + std::string(100, 'n') + std::to_string(i);
        row += ",1";
    }
    folder().write("wide.csv", header + "\n" + row + "\n" + row + "\n");
    const ProcessResult result = run({"wide.csv", "--y", "none", "-o", "picture.svg"});
    EXPECT_EQ(result.status, 1);
    EXPECT_LT(result.error.size(), 1000U);
    EXPECT_TRUE(result.error.ends_with(", ...\n")) << result.error;
}

class BadOutput : public CommandLineTest {
protected:
    BadOutput() { folder().write("table.csv", "t,v\n1,2\n2,5\n3,4\n4,4\n"); }

    void expectRefused(const std::string& picture, const std::string& reason) const
    {
        const auto before = folder().names();
        EXPECT_TRUE(endedWith(run({"table.csv", "-o", picture}), 1, "tolvgraph: " + picture + ": cannot be written" + reason + "\n"));
        EXPECT_EQ(folder().names(), before) << "a temporary file stayed";
    }
};

TEST_F(BadOutput, placesThatTakeNoFile)
{
    expectRefused("/nowhere/picture.svg", ", no file can be made in the folder /nowhere: No such file or directory");
    expectRefused("table.csv/picture.svg", ": Not a directory");
    std::filesystem::create_directory(folder().path("folder.svg"));
    expectRefused("folder.svg", ": Is a directory");
    std::filesystem::create_symlink("circle.svg", folder().path("circle.svg"));
    expectRefused("circle.svg", ": Too many levels of symbolic links");
}

TEST_F(BadOutput, deviceWithoutRoom)
{
    std::filesystem::create_symlink("/dev/full", folder().path("full.svg"));
    expectRefused("full.svg", ": No space left on device");
    for (const char* suffix : {"pdf", "ps", "eps", "png", "tiff"}) {
        std::filesystem::create_symlink("/dev/full", folder().path(std::string("full.") + suffix));
        expectRefused(std::string("full.") + suffix, ": No space left on device");
    }
}

TEST_F(BadOutput, folderAndFileWithoutPermission)
{
    ASSERT_EQ(::chmod(folder().path().c_str(), 0755), 0);
    ProcessSurroundings surroundings;
    surroundings.withoutPrivileges = true;
    ASSERT_EQ(::chmod(folder().path().c_str(), ::geteuid() == 0 ? 0755 : 0555), 0);
    EXPECT_TRUE(
        endedWith(run({"table.csv", "-o", "picture.svg"}, surroundings), 1, "tolvgraph: picture.svg: cannot be written, no file can be made in the folder .: Permission denied\n"));
    ASSERT_EQ(::chmod(folder().path().c_str(), 0777), 0);
    // The folder would allow to replace the file, the file itself does not want it.
    folder().write("old.svg", "old");
    ASSERT_EQ(::chmod(folder().path("old.svg").c_str(), 0444), 0);
    EXPECT_TRUE(endedWith(run({"table.csv", "-o", "old.svg"}, surroundings), 1, "tolvgraph: old.svg: cannot be written: Permission denied\n"));
    EXPECT_EQ(folder().read("old.svg"), "old");
    EXPECT_EQ(folder().names(), (std::vector<std::string>{"old.svg", "table.csv"}));
}

TEST_F(BadOutput, failureHalfwayLeavesTheOldFile)
{
    ProcessSurroundings surroundings;
    surroundings.fileSizeLimit = 2000;
    for (const char* suffix : {"pdf", "ps", "eps", "svg", "png", "tiff"}) {
        const std::string picture = std::string("picture.") + suffix;
        folder().write(picture, "the old picture");
        const ProcessResult result = run({"table.csv", "-o", picture}, surroundings);
        // PostScript pages are made in a temporary file, so that they fail earlier.
        if (picture.ends_with("ps"))
            EXPECT_TRUE(endedWith(result, 1,
                std::string("tolvgraph: cannot make the ") + (picture.ends_with(".eps") ? "EPS" : "PostScript")
                    + " output: its page could not be kept in the folder for temporary files, expected room in /tmp\n"));
        else
            EXPECT_TRUE(endedWith(result, 1, "tolvgraph: " + picture + ": cannot be written: File too large\n"));
        EXPECT_EQ(folder().read(picture), "the old picture");
        std::filesystem::remove(folder().path(picture));
    }
    EXPECT_EQ(folder().names(), std::vector<std::string>{"table.csv"});
}

TEST_F(BadOutput, badInputLeavesTheOldFile)
{
    folder().write("picture.svg", "the old picture");
    folder().write("words.csv", "no\nnumbers\n");
    EXPECT_EQ(run({"words.csv", "-o", "picture.svg"}).status, 1);
    EXPECT_EQ(run({"table.csv", "--y", "none", "-o", "picture.svg"}).status, 1);
    EXPECT_EQ(run({"table.csv", "--marker", "x", "-o", "picture.svg"}).status, 2);
    EXPECT_EQ(folder().read("picture.svg"), "the old picture");
    EXPECT_EQ(folder().names(), (std::vector<std::string>{"picture.svg", "table.csv", "words.csv"}));
}

TEST_F(BadOutput, listingThatCannotBePrinted)
{
    ProcessSurroundings surroundings;
    surroundings.outputFile = "/dev/full";
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--list-columns", "table.csv"}, {"--help"}, {"--version"}}) {
        EXPECT_TRUE(endedWith(run(arguments, surroundings), 1, "tolvgraph: standard output: cannot be written (No space left on device), expected a file or device with room\n"));
    }
}

TEST_F(BadOutput, sizesThatNoPictureCanHave)
{
    EXPECT_TRUE(endedWith(run({"table.csv", "--size", "14400x14400", "-o", "first.svg", "-o", "picture.tif"}), 1,
        "tolvgraph: cannot make the TIFF output: an image of 28800 x 28800 pixels was asked for; the limit is 268435456 pixels in all\n"));
    EXPECT_TRUE(endedWith(run({"missing.csv", "--size", "600x14400", "--scale", "3", "-o", "picture.png"}), 1,
        "tolvgraph: cannot make the PNG output: an image side of 43200 pixels was asked for; the limit is 32767 pixels a side\n"))
        << "before anything is read";
    for (const char* kind : {"pdf", "ps", "eps", "svg"}) {
        EXPECT_TRUE(endedWith(run({"table.csv", "--size", "14400.5x10", "-o", std::string("picture.") + kind}), 2,
            "tolvgraph: --size: found '14400.5x10', expected WIDTHxHEIGHT in points, each from 1 to 14400, for example 640x400\nTry 'tolvgraph --help'.\n"));
    }
    EXPECT_EQ(folder().names(), std::vector<std::string>{"table.csv"});
}

TEST_F(BadOutput, imageThatIsTooLarge)
{
    EXPECT_TRUE(endedWith(run({"table.csv", "--size", "14400x14400", "--scale", "64", "-o", "picture.png"}), 1,
        "tolvgraph: cannot make the PNG output: an image side of 921600 pixels was asked for; the limit is 32767 pixels a side\n"));
    EXPECT_EQ(folder().names(), std::vector<std::string>{"table.csv"});
}

} // namespace

} // namespace TOLVGraphing::testing_support
