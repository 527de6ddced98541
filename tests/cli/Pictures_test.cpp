// Pictures of every kind: sizes, several in one run, replaced files.

#include "CommandLine.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>

namespace TOLVGraphing::testing_support {

namespace {

/// The first bytes of each kind.
const std::pair<const char*, const char*> kStarts[] = {
    {"pdf", "%PDF-1."},
    {"ps", "%!PS-Adobe-3.0\n"},
    {"eps", "%!PS-Adobe-3.0 EPSF-3.0\n"},
    {"svg", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg "},
    {"png", "\x89PNG\r\n\x1A\n"},
    {"tif", "II*"},
    {"tiff", "II*"},
};

/// The number of four bytes, the highest first.
unsigned bigEndian(const std::string& bytes, std::size_t at)
{
    unsigned number = 0;
    for (std::size_t i = 0; i < 4; ++i)
        number = number << 8U | static_cast<unsigned char>(bytes.at(at + i));
    return number;
}

std::string pixelSizeOfPNG(const std::string& bytes)
{
    return std::to_string(bigEndian(bytes, 16)) + "x" + std::to_string(bigEndian(bytes, 20));
}

class Pictures : public CommandLineTest {
protected:
    Pictures() { folder().write("table.csv", "t,v\n0,1\n1,3\n2,2\n3,5\n4,4\n"); }
};

TEST_F(Pictures, theSuffixSaysTheKind)
{
    for (const auto& [suffix, start] : kStarts) {
        std::string upper = suffix;
        for (char& letter : upper)
            letter = static_cast<char>(letter - 'a' + 'A');
        for (const std::string& name : {std::string("one.") + suffix, "two.x." + upper}) {
            EXPECT_TRUE(succeededSilently(run({"table.csv", "-o", name})));
            EXPECT_THAT(folder().read(name), testing::StartsWith(start)) << name;
        }
    }
}

TEST_F(Pictures, severalInOneRun)
{
    EXPECT_TRUE(succeededSilently(run({"table.csv", "-o", "a.pdf", "--output", "b.svg", "-o", "c.png", "--output=d.eps", "-o", "e.tiff", "-o", "f.ps", "-o", "g.svg"})));
    EXPECT_EQ(folder().names(), (std::vector<std::string>{"a.pdf", "b.svg", "c.png", "d.eps", "e.tiff", "f.ps", "g.svg", "table.csv"}));
    // Each is what it is alone: one drawing does not change the next.
    for (const char* name : {"a.pdf", "b.svg", "c.png", "d.eps", "e.tiff", "f.ps"}) {
        const std::string alone = std::string("alone") + std::filesystem::path(name).extension().string();
        EXPECT_TRUE(succeededSilently(run({"table.csv", "-o", alone})));
        EXPECT_TRUE(folder().read(alone) == folder().read(name)) << name;
    }
    EXPECT_EQ(folder().read("b.svg"), folder().read("g.svg"));
}

TEST_F(Pictures, secondOfThreeFails)
{
    EXPECT_TRUE(endedWith(run({"table.csv", "-o", "a.svg", "-o", "/nowhere/b.svg", "-o", "c.svg"}), 1,
        "tolvgraph: /nowhere/b.svg: cannot be written, no file can be made in the folder /nowhere: No such file or directory\n"));
    EXPECT_EQ(folder().names(), (std::vector<std::string>{"a.svg", "table.csv"}));
}

struct ScaleCase {
    const char* size;
    const char* scale;
    const char* pixels;
};

TEST_F(Pictures, pixelsArePointsTimesScaleRoundedUp)
{
    const ScaleCase cases[] = {
        {"640x400", "2", "1280x800"},
        {"640x400", "1", "640x400"},
        {"640x400", "0.5", "320x200"},
        {"100x50", "3.5", "350x175"},
        {"100.2x50.6", "1", "101x51"},
        {"100x50", "1.005", "101x51"},
        {"1x1", "0.1", "1x1"},
        {"72x72", "64", "4608x4608"},
    };
    for (const ScaleCase& c : cases) {
        EXPECT_TRUE(succeededSilently(run({"table.csv", "--size", c.size, "--scale", c.scale, "-o", "picture.png"})));
        EXPECT_EQ(pixelSizeOfPNG(folder().read("picture.png")), c.pixels) << c.size << " by " << c.scale;
    }
    EXPECT_TRUE(succeededSilently(run({"table.csv", "-o", "picture.png"})));
    EXPECT_EQ(pixelSizeOfPNG(folder().read("picture.png")), "1280x800") << "by default";
}

TEST_F(Pictures, pageSizesAreThoseAskedFor)
{
    EXPECT_TRUE(succeededSilently(run({"table.csv", "--size", "300.5x200", "--scale", "7", "-o", "p.svg", "-o", "p.pdf", "-o", "p.eps", "-o", "p.ps"})));
    EXPECT_THAT(folder().read("p.svg"), testing::HasSubstr(" width=\"300.5pt\" height=\"200pt\" viewBox=\"0 0 300.5 200\""));
    for (const char* name : {"p.eps", "p.ps"}) {
        EXPECT_THAT(folder().read(name), testing::HasSubstr("\n%%BoundingBox: 0 0 301 200\n")) << name;
        EXPECT_THAT(folder().read(name), testing::HasSubstr("\n%%HiResBoundingBox: 0 0 300.5 200\n")) << name;
    }
    TOLV_REQUIRE_PROGRAM("pdfinfo");
    EXPECT_THAT(runProcess({"pdfinfo", folder().path("p.pdf")}).output, testing::ContainsRegex("Page size: +300\\.5 x 200 pts"));
}

TEST_F(Pictures, theSameRunGivesTheSameBytes)
{
    for (const char* suffix : {"pdf", "ps", "eps", "svg", "png", "tiff"}) {
        EXPECT_TRUE(succeededSilently(run({"table.csv", "--title", "T", "--legend", "--marker", "1", "-o", std::string("one.") + suffix})));
        EXPECT_TRUE(succeededSilently(run({"table.csv", "--title", "T", "--legend", "--marker", "1", "-o", std::string("two.") + suffix})));
        EXPECT_TRUE(folder().read(std::string("one.") + suffix) == folder().read(std::string("two.") + suffix)) << suffix;
    }
}

TEST_F(Pictures, oldFilesAreReplaced)
{
    folder().write("picture.svg", std::string(100000, 'x'));
    ASSERT_EQ(::chmod(folder().path("picture.svg").c_str(), 0640), 0);
    EXPECT_TRUE(succeededSilently(run({"table.csv", "-o", "picture.svg"})));
    EXPECT_EQ(curvePoints(DrawnPage::fromSVG(folder().read("picture.svg"))).size(), 6U);
    struct stat status {};
    ASSERT_EQ(::stat(folder().path("picture.svg").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
    EXPECT_EQ(folder().names(), (std::vector<std::string>{"picture.svg", "table.csv"}));
}

TEST_F(Pictures, linksStayAndTheirFilesAreReplaced)
{
    std::filesystem::create_directory(folder().path("elsewhere"));
    folder().write("elsewhere/real.svg", "old");
    std::filesystem::create_symlink("elsewhere/real.svg", folder().path("link.svg"));
    EXPECT_TRUE(succeededSilently(run({"table.csv", "-o", "link.svg"})));
    EXPECT_TRUE(std::filesystem::is_symlink(folder().path("link.svg")));
    EXPECT_EQ(curvePoints(DrawnPage::fromSVG(folder().read("elsewhere/real.svg"))).size(), 6U);
}

TEST_F(Pictures, mayReplaceTheMeasurementsLink)
{
    // A picture may even stand where its measurements were: they are read before.
    folder().write("both.svg", folder().read("table.csv"));
    EXPECT_TRUE(succeededSilently(run({"both.svg", "-o", "both.svg"})));
    EXPECT_EQ(curvePoints(DrawnPage::fromSVG(folder().read("both.svg"))).size(), 6U);
}

TEST_F(Pictures, throughAPipe)
{
    std::filesystem::create_symlink("/dev/stdout", folder().path("out.svg"));
    const ProcessResult result = run({"table.csv", "-o", "out.svg"});
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_EQ(curvePoints(DrawnPage::fromSVG(result.output)).size(), 6U);
}

} // namespace

} // namespace TOLVGraphing::testing_support
