// The layout report: where everything stands in the picture, as JSON beside it or by itself.

#include "../support/Json.h"
#include "../support/JsonValues.h"
#include "CommandLine.h"

#include <cmath>
#include <filesystem>

namespace TOLVGraphing::testing_support {

namespace {

constexpr const char* kTable = "t,v\n0,1\n1,4\n2,2\n3,3\n";

class LayoutReport : public CommandLineTest {
protected:
    LayoutReport() { folder().write("table.csv", kTable); }

    Json report(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.end(), {"--layout", "out.json"});
        EXPECT_TRUE(succeededSilently(run(arguments)));
        return Json::parse(folder().read("out.json"));
    }
};

TEST_F(LayoutReport, isWrittenWithoutAPicture)
{
    const Json json = report({"table.csv"});
    EXPECT_EQ(json["size"][0].number(), 640.0);
    EXPECT_EQ(json["size"][1].number(), 400.0);
    EXPECT_EQ(json["graph"]["horizontalAxis"]["kind"].text(), "TOLVLinearAxis");
    EXPECT_TRUE(json["legendRect"].isNull());
}

TEST_F(LayoutReport, tellsWhatThePictureShows)
{
    EXPECT_TRUE(succeededSilently(run({"table.csv", "-o", "picture.svg", "--layout", "out.json", "--legend", "--marker", "1", "--size", "500x300"})));
    const Json json = Json::parse(folder().read("out.json"));
    const DrawnPage page = DrawnPage::fromSVG(folder().read("picture.svg"));
    // The page's y grows downwards, and the frame stands on the middle of its points.
    const Rect frame = frameOfDataArea(page);
    const Rect dataRect = rectOf(json["graph"]["dataRect"]);
    EXPECT_EQ(frame.x(), std::floor(dataRect.x()) + 0.5);
    EXPECT_EQ(frame.width(), std::ceil(dataRect.maxX()) - std::floor(dataRect.x()) - 1.0);
    EXPECT_EQ(json["graph"]["horizontalAxis"]["markerLabels"][0]["text"].text(), "1");
    EXPECT_EQ(json["graph"]["callouts"][0]["text"].text(), "4");
    EXPECT_FALSE(json["legendRect"].isNull());
}

TEST_F(LayoutReport, tellsWhyLabelsAreMissing)
{
    const Json json = report({"table.csv", "--x-range", "0:500"});
    std::size_t collisions = 0;
    for (const Json& label : json["graph"]["horizontalAxis"]["labels"].elements())
        collisions += label["fate"].text() == "collides" ? 1 : 0;
    const Json lines = report({"table.csv", "--draw", "line", "--size", "60x80"});
    for (const Json& callout : lines["graph"]["callouts"].elements())
        collisions += callout["fate"].text() != "kept" ? 1 : 0;
    EXPECT_GT(collisions, 0U);
    EXPECT_EQ(lines["graph"]["horizontalAxis"]["slots"].size(), 4U);
}

TEST_F(LayoutReport, keepsTheOldFileWhenItCannotBeWritten)
{
    std::filesystem::create_directory(folder().path("folder.json"));
    const ProcessResult result = run({"table.csv", "--layout", "folder.json"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.error.find("folder.json"), std::string::npos) << result.error;
    EXPECT_TRUE(endedWith(run({"table.csv", "--layout", "out.txt"}), 2, "tolvgraph: --layout: found 'out.txt', expected a name that ends in .json\nTry 'tolvgraph --help'.\n"));
}

} // namespace

} // namespace TOLVGraphing::testing_support
