#include "DocumentExport.h"

#include "GraphDocument.h"

#include <desktop/input/MeasurementError.h>
#include <desktop/output/FileError.h>
#include <desktop/text/PangoTextSystem.h>

#include "tests/desktop/Process.h"
#include "tests/desktop/TemporaryFolder.h"
#include "tests/viewer/HostThread.h"

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/text/TextSystem.h>

#include <TestPaths.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <ostream>

namespace TOLVGraphing::app {

namespace {

using testing_support::readDocumentData;

constexpr const char* kRising = "t (s),v,w\n1,10,1\n2,20,2.5\n4,40,3\n7,12.345,4\n";
constexpr const char* kNames = "name,v\nquartz,1\nmica,2.5\ngypsum,3\n";

class DocumentExportTest : public testing::Test {
protected:
    ~DocumentExportTest() override { setTextSystem(nullptr); }

    std::unique_ptr<GraphDocument> documentOf(const std::string& content, const Options& options)
    {
        auto document = std::make_unique<GraphDocument>();
        document->install(readDocumentData({folder.write("data.csv", content)}, options));
        return document;
    }
    /// The bytes that the command line writes.
    std::string drawn(const std::string& content, std::vector<std::string> arguments, const std::string& suffix)
    {
        const std::string output = "command" + suffix;
        arguments.insert(arguments.begin(), {TOLV_PROGRAM_TOLVGRAPH, folder.write("data.csv", content), "-o", folder.path(output)});
        const auto result = testing_support::runProcess(arguments);
        EXPECT_EQ(result.status, 0) << result.text();
        return folder.read(output);
    }
    std::string exported(const GraphDocument& document, const std::string& suffix, const Size& size = {640.0, 400.0}, double scale = 2.0)
    {
        const std::string name = "window" + suffix;
        exportDocument(document, folder.path(name), size, scale);
        return folder.read(name);
    }

    testing_support::TemporaryFolder folder;
};

struct ExportCase {
    const char* name;
    const char* content;
    std::vector<std::string> arguments;
    Options options;
};

std::ostream& operator<<(std::ostream& stream, const ExportCase& exportCase)
{
    return stream << exportCase.name;
}

Options with(const std::function<void(Options&)>& change)
{
    Options options;
    change(options);
    return options;
}

class EqualExports : public DocumentExportTest, public testing::WithParamInterface<ExportCase> {
protected:
    EqualExports() { installDesktopTextSystem(); }
};

} // namespace

TEST_P(EqualExports, areTheBytesOfTheCommandLine)
{
    const auto document = documentOf(GetParam().content, GetParam().options);
    const std::string expected = drawn(GetParam().content, GetParam().arguments, ".svg");
    EXPECT_EQ(exported(*document, ".svg", GetParam().options.size), expected);
    // A window has laid the graph out for itself in between.
    GraphSheet sheet = document->sheet();
    layoutSheet(sheet, document->options(), {0.0, 0.0, 1234.0, 321.0});
    EXPECT_EQ(exported(*document, ".svg", GetParam().options.size), expected);
    // And after the document was saved and opened again.
    document->save(folder.path("plot.tolvgraph"));
    const auto opened = GraphDocument::open(folder.path("plot.tolvgraph"));
    opened->install(readDocumentData(opened->sourcePaths(), opened->options()));
    EXPECT_EQ(exported(*opened, ".svg", GetParam().options.size), expected);
}

INSTANTIATE_TEST_SUITE_P(Each, EqualExports,
    testing::Values(ExportCase{"plain", kRising, {}, {}},
        ExportCase{"looks", kRising, {"--title", "gypsum", "--legend", "--color", "ff0000,00ff00", "--pattern", "dashed", "--thickness", "2.5", "--y-label", "height"},
            with([](Options& o) {
                o.title = "gypsum";
                o.legend = true;
                o.colors = {Color(1.0, 0.0, 0.0), Color(0.0, 1.0, 0.0)};
                o.patterns = {LinePattern::Dashed};
                o.thicknesses = {2.5};
                o.yLabel = "height";
            })},
        ExportCase{"markers", kRising, {"--marker", "2", "--marker", "6.5"}, with([](Options& o) {
                       o.markers = {"2", "6.5"};
                   })},
        ExportCase{"ranges", kRising, {"--x-range", "0:5", "--y-range", "-3:"}, with([](Options& o) {
                       o.xRange = RangeText{"0", "5"};
                       o.yRange = RangeText{"-3", ""};
                   })},
        ExportCase{"logarithmic", kRising, {"--x-axis", "log", "--y-axis", "log", "--x-format", "si", "--draw", "x"}, with([](Options& o) {
                       o.xAxis = AxisKind::Logarithmic;
                       o.yAxis = AxisKind::Logarithmic;
                       o.xFormat = NumberStyle::SI;
                       o.drawing = DrawingKind::X;
                   })},
        ExportCase{"lines", kNames, {"--draw", "line", "--marker", "mica"}, with([](Options& o) {
                       o.xAxis = AxisKind::Line;
                       o.drawing = DrawingKind::Line;
                       o.markers = {"mica"};
                   })},
        ExportCase{"bars", kNames, {"--draw", "bar", "--legend"}, with([](Options& o) {
                       o.xAxis = AxisKind::Bar;
                       o.drawing = DrawingKind::Bar;
                       o.legend = true;
                   })},
        ExportCase{"dots", kRising, {"--draw", "dotted", "--y", "v"}, with([](Options& o) {
                       o.drawing = DrawingKind::Dotted;
                       o.y = {"v"};
                   })},
        ExportCase{"margin", kRising, {"--margin", "20,60,40,10", "--size", "300x200"}, with([](Options& o) {
                       o.margin = EdgeInsets{20.0, 60.0, 40.0, 10.0};
                       o.size = {300.0, 200.0};
                   })}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST_F(DocumentExportTest, writesEveryKind)
{
    installDesktopTextSystem();
    // Fitted ranges have room that depends on the picture's size, so the document is made for it.
    const auto document = documentOf(kRising, with([](Options& o) { o.size = {300.0, 200.0}; }));
    for (const char* suffix : {".pdf", ".ps", ".eps", ".svg", ".png", ".tif", ".tiff", ".PNG"})
        EXPECT_EQ(exported(*document, suffix, {300.0, 200.0}, 1.5), drawn(kRising, {"--size", "300x200", "--scale", "1.5"}, suffix)) << suffix;
}

TEST_F(DocumentExportTest, showsTheRangesOfTheWindowAndLeavesItsGraphAlone)
{
    installDesktopTextSystem();
    const auto document = documentOf(kRising, {});
    const auto graph = document->graph();
    graph->zoomXToFixedMin(1.5F, 3.5F);
    graph->zoomYToFixedMin(-5.0, 55.0);
    GraphSheet sheet = document->sheet();
    layoutSheet(sheet, document->options(), {0.0, 0.0, 1234.0, 321.0});
    const EdgeInsets margin = graph->margin();
    const auto major = graph->horizontalAxis()->majorValues();
    const auto series = graph->graphData();
    // Only the room behind the last sample is another one with range texts; no curve reaches it here.
    EXPECT_EQ(exported(*document, ".png"), drawn(kRising, {"--x-range", "1.5:3.5", "--y-range", "-5:55"}, ".png"));
    EXPECT_EQ(graph->margin(), margin);
    EXPECT_EQ(graph->horizontalAxis()->majorValues(), major);
    EXPECT_EQ(graph->graphData(), series);
    EXPECT_FALSE(document->isModified());
}

TEST_F(DocumentExportTest, refusesWhatCannotBeWritten)
{
    const auto document = documentOf(kRising, {});
    const auto errorOf = [&](const GraphDocument& one, const std::string& path) -> std::string {
        try {
            exportDocument(one, path, {640.0, 400.0}, 2.0);
        } catch (const std::exception& error) {
            return error.what();
        }
        return "no error";
    };
    const std::string unknown = folder.path("picture.bmp");
    EXPECT_EQ(errorOf(*document, unknown), unknown + ": found a name without a known suffix, expected one that ends in .pdf, .ps, .eps, .svg, .png, .tif or .tiff");
    EXPECT_EQ(errorOf({}, folder.path("a.pdf")), folder.path("a.pdf") + ": found a document without data, expected one that shows measurements");
    std::filesystem::create_symlink(folder.path("data.csv"), folder.path("link.svg"));
    EXPECT_EQ(errorOf(*document, folder.path("link.svg")), folder.path("link.svg") + ": found one of the document's own sources, expected another name");
    EXPECT_EQ(folder.read("data.csv"), kRising);
    EXPECT_TRUE(errorOf(*document, folder.path("missing/a.png")).starts_with(folder.path("missing/a.png") + ": "));
}

TEST_F(DocumentExportTest, refusesADocumentWhoseSourceHasBecomeShorter)
{
    // Samples of such a long file are used where they lie.
    const std::string source = folder.write("long.f32", std::string(6'000'000, '?'));
    GraphDocument document;
    document.install(readDocumentData({source}, {}));
    const std::string picture = folder.write("picture.svg", "old");
    std::filesystem::resize_file(source, 5'999'999);
    try {
        exportDocument(document, picture, {640.0, 400.0}, 2.0);
        ADD_FAILURE() << "a sample is missing";
    } catch (const input::MeasurementError& error) {
        EXPECT_EQ(std::string(error.what()), source + ": became shorter while it was read, 5999999 bytes are left, expected 6000000");
    }
    EXPECT_EQ(folder.read("picture.svg"), "old");
}

} // namespace TOLVGraphing::app
