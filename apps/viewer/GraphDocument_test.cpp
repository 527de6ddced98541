#include "GraphDocument.h"

#include <apps/plotting/OptionValues.h>
#include <desktop/archive/PropertyListArchive.h>

#include "tests/desktop/TemporaryFolder.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/viewer/HostThread.h"

#include <TOLVGraphing/axes/TOLVBarAxis.h>
#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/drawing/TOLVXGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/foundation/Exception.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/platform/graphics/RecordingContext.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <ostream>

namespace TOLVGraphing::app {

namespace {

using testing_support::readDocumentData;

constexpr const char* kRising = "t,v,w\n1,10,1\n2,20,2\n4,40,3\n";

std::vector<double> markerValues(const TOLVGraph& graph)
{
    std::vector<double> values;
    for (const auto& marker : graph.markers())
        values.push_back(marker->value());
    return values;
}

std::string ranges(const GraphDocument& document)
{
    return toString(*document.graph()->extents()->x()) + " " + toString(*document.graph()->extents()->y());
}

/// What cannot be told by equality of options: everything that was chosen away from its default.
Options unusualOptions()
{
    Options options;
    options.x = "t";
    options.y = {"v", "w"};
    options.xAxis = AxisKind::Logarithmic;
    options.yAxis = AxisKind::Logarithmic;
    options.drawing = DrawingKind::X;
    options.xFormat = NumberStyle::SI;
    options.yFormat = NumberStyle::Scientific;
    options.xRange = RangeText{"", "8"};
    options.yRange = RangeText{"0.5", ""};
    options.title = "gypsum \xE2\x80\x94 100 %";
    options.xLabel = "";
    options.yLabel = "height";
    options.colors = {Color(0.1, 1.0 / 3.0, 0.7, 0.5), Color(0.0, 0.0, 0.0)};
    options.patterns = {LinePattern::Dashed, LinePattern::DashDot};
    options.thicknesses = {0.1, 2.5};
    options.margin = EdgeInsets{1.0, 20.5, 3.0, 4.0};
    options.legend = true;
    options.size = {300.5, 200.0};
    options.scale = 1.5;
    return options;
}

class GraphDocumentTest : public testing::Test {
protected:
    std::string write(const std::string& name, const std::string& content) { return folder.write(name, content); }
    /// A document of one file, "data.csv".
    std::unique_ptr<GraphDocument> documentOf(const std::string& content, const Options& options = {})
    {
        auto document = std::make_unique<GraphDocument>();
        document->install(readDocumentData({write("data.csv", content)}, options));
        return document;
    }
    /// The document opened again and its sources read.
    std::unique_ptr<GraphDocument> savedAndOpened(GraphDocument& document)
    {
        document.save(folder.path("plot.tolvgraph"));
        return openedAndRead(folder.path("plot.tolvgraph"));
    }
    static std::unique_ptr<GraphDocument> openedAndRead(const std::string& path)
    {
        auto opened = GraphDocument::open(path);
        opened->install(readDocumentData(opened->sourcePaths(), opened->options()));
        return opened;
    }
    static void draw(const GraphDocument& document)
    {
        GraphSheet sheet = document.sheet();
        layoutSheet(sheet, document.options(), {0.0, 0.0, 640.0, 400.0});
        RecordingContext context;
        const CurrentContextScope scope(context);
        sheet.drawInRect({0.0, 0.0, 640.0, 400.0});
    }
    static std::string errorOfOpening(const std::string& path)
    {
        try {
            static_cast<void>(GraphDocument::open(path));
        } catch (const DocumentError& error) {
            return error.what();
        }
        return "no error";
    }

    testing_support::TemporaryFolder folder;
};

} // namespace

// Data and looks.

TEST_F(GraphDocumentTest, isEmptyAndUntitledAtFirst)
{
    GraphDocument document;
    EXPECT_FALSE(document.hasData());
    EXPECT_FALSE(document.isModified());
    EXPECT_EQ(document.displayName(), "Untitled");
    EXPECT_TRUE(document.path().empty());
    EXPECT_FALSE(document.graph()->canDraw());
    document.fitRanges();
    EXPECT_FALSE(document.needsReading(unusualOptions()));
    document.setOptions(unusualOptions());
    EXPECT_EQ(document.options(), unusualOptions());
    EXPECT_FALSE(document.isModified());
}

TEST_F(GraphDocumentTest, showsWhatWasRead)
{
    Options options;
    options.markers = {"2", "3"};
    const auto document = documentOf(kRising, options);
    EXPECT_EQ(document->graph()->graphData().size(), 2U);
    EXPECT_EQ(document->legendEntries().size(), 2U);
    EXPECT_EQ(markerValues(*document->graph()), (std::vector<double>{2.0, 3.0}));
    EXPECT_EQ(document->displayName(), "data.csv");
    EXPECT_EQ(document->sourcePaths(), (std::vector<std::string>{folder.path("data.csv")}));
    EXPECT_FALSE(document->isModified());
    EXPECT_FALSE(document->undoManager()->canUndo());
}

TEST_F(GraphDocumentTest, keepsRangesMarkersAndUndoWhenItsFilesAreReadAgain)
{
    const auto document = documentOf(kRising);
    const auto graph = document->graph();
    graph->zoomXToFixedMin(1.5F, 3.5F);
    graph->zoomYToFixedMin(12.0, 34.0);
    graph->placeHorizontalAxisMarkerWithValue(2.5);
    write("data.csv", "t,v,w\n1,100,1\n2,200,2\n4,400,3\n");
    document->install(readDocumentData(document->sourcePaths(), document->options()));
    EXPECT_EQ(document->graph(), graph);
    EXPECT_EQ(graph->graphData()[0]->Y()->components()[0], 100.0F);
    EXPECT_EQ(ranges(*document), "[1.5, 3.5] [12, 34]");
    EXPECT_EQ(markerValues(*graph), (std::vector<double>{2.5}));
    document->undoManager()->undo();
    EXPECT_EQ(markerValues(*graph), std::vector<double>{});
}

TEST_F(GraphDocumentTest, fitsTheRangesThatOtherColumnsAndFilesNeed)
{
    const auto document = documentOf(kRising);
    const std::string another = write("another.csv", "t,v\n5,6\n6,7\n");
    const auto graph = document->graph();
    struct Case {
        const char* name;
        std::function<void(Options&, std::vector<std::string>&)> change;
        bool keepsX;
        bool keepsY;
    };
    const Case cases[] = {
        {"nothing", [](Options&, std::vector<std::string>&) {}, true, true},
        {"looks", [](Options& options, std::vector<std::string>&) { options.title = "a"; }, true, true},
        {"y", [](Options& options, std::vector<std::string>&) { options.y = {"w"}; }, true, false},
        {"x", [](Options& options, std::vector<std::string>&) { options.x = "index"; }, false, false},
        {"xRange",
            [](Options& options, std::vector<std::string>&) {
                options.xRange = RangeText{"0", ""};
            },
            false, true},
        {"yRange",
            [](Options& options, std::vector<std::string>&) {
                options.yRange = RangeText{"0", ""};
            },
            true, false},
        {"channels", [](Options& options, std::vector<std::string>&) { options.channels = 2; }, false, false},
        {"files", [&](Options&, std::vector<std::string>& paths) { paths.push_back(another); }, false, false},
    };
    for (const Case& one : cases) {
        document->install(readDocumentData({folder.path("data.csv")}, {}));
        graph->zoomXToFixedMin(1.5F, 3.5F);
        graph->zoomYToFixedMin(1.25, 2.75);
        Options options;
        std::vector<std::string> paths = document->sourcePaths();
        one.change(options, paths);
        document->install(readDocumentData(paths, options));
        EXPECT_EQ(toString(*graph->extents()->x()) == "[1.5, 3.5]", one.keepsX) << one.name;
        EXPECT_EQ(toString(*graph->extents()->y()) == "[1.25, 2.75]", one.keepsY) << one.name;
    }
}

TEST_F(GraphDocumentTest, staysAsItWasWhenReadDataCannotBeShown)
{
    const auto document = documentOf(kRising);
    const std::string formerRanges = ranges(*document);
    Options options;
    options.yAxis = AxisKind::Logarithmic;
    const std::string negative = write("negative.csv", "t,v\n1,-1\n2\n");
    EXPECT_THROW(document->install(readDocumentData({negative}, options)), UsageError);
    EXPECT_EQ(document->sourcePaths(), (std::vector<std::string>{folder.path("data.csv")}));
    EXPECT_EQ(document->options(), Options());
    EXPECT_EQ(document->graph()->graphData().size(), 2U);
    EXPECT_EQ(ranges(*document), formerRanges);
    EXPECT_EQ(document->notes(), std::vector<std::string>());
    EXPECT_FALSE(document->isModified());
}

TEST_F(GraphDocumentTest, setsOptionsThatNeedNoReading)
{
    const auto document = documentOf(kRising);
    document->graph()->zoomXToFixedMin(1.5F, 3.5F);
    Options options = document->options();
    options.drawing = DrawingKind::X;
    options.legend = true;
    EXPECT_FALSE(document->needsReading(options));
    document->setOptions(options);
    EXPECT_EQ(document->options(), options);
    EXPECT_NE(std::dynamic_pointer_cast<TOLVXGraphDrawing>(document->graph()->drawingStrategy()), nullptr);
    EXPECT_EQ(toString(*document->graph()->extents()->x()), "[1.5, 3.5]");
    EXPECT_TRUE(document->isModified());
}

TEST_F(GraphDocumentTest, refusesOptionsThatNeedReadingOrCannotBeMet)
{
    const auto document = documentOf(kRising);
    Options columns;
    columns.y = {"w"};
    EXPECT_TRUE(document->needsReading(columns));
    EXPECT_THROW(document->setOptions(columns), Exception);
    Options range;
    range.xRange = RangeText{"mica", ""};
    EXPECT_THROW(document->setOptions(range), UsageError);
    EXPECT_EQ(document->options(), Options());
    EXPECT_FALSE(document->isModified());
}

TEST_F(GraphDocumentTest, fitsItsRangesWhenAsked)
{
    const auto document = documentOf(kRising);
    const std::string fitting = ranges(*document);
    document->graph()->zoomXToFixedMin(1.5F, 3.5F);
    document->graph()->zoomYToFixedMin(1.5, 3.5);
    document->fitRanges();
    EXPECT_EQ(ranges(*document), fitting);
    EXPECT_FALSE(document->isModified());
}

TEST_F(GraphDocumentTest, isModifiedByEditsAndTellsOfThem)
{
    const auto document = documentOf(kRising);
    int calls = 0;
    document->setChangeHandler([&] { ++calls; });
    document->graph()->placeHorizontalAxisMarkerWithValue(2.0);
    EXPECT_TRUE(document->isModified());
    EXPECT_EQ(calls, 1);
    document->save(folder.path("plot.tolvgraph"));
    EXPECT_FALSE(document->isModified());
    EXPECT_EQ(calls, 2);
    document->undoManager()->undo();
    EXPECT_TRUE(document->isModified());
    document->save(folder.path("plot.tolvgraph"));
    document->graph()->zoomXToFixedMin(1.5F, 3.5F);
    document->install(readDocumentData(document->sourcePaths(), document->options()));
    EXPECT_FALSE(document->isModified());
    document->install(readDocumentData({folder.path("data.csv"), write("another.csv", kRising)}, document->options()));
    EXPECT_TRUE(document->isModified());
}

TEST_F(GraphDocumentTest, becomesEmptyWithoutSources)
{
    const auto document = documentOf(kRising);
    document->install(readDocumentData({}, document->options()));
    EXPECT_FALSE(document->hasData());
    EXPECT_TRUE(document->graph()->graphData().empty());
    EXPECT_TRUE(document->legendEntries().empty());
    EXPECT_TRUE(document->isModified());
}

TEST_F(GraphDocumentTest, tellsWhichSourcesHaveChangedSinceTheyWereRead)
{
    const auto document = documentOf(kRising);
    const std::string path = folder.path("data.csv");
    EXPECT_EQ(document->changedSources(), std::vector<std::string>());
    write("data.csv", "t,v,w\n1,10,1\n");
    EXPECT_EQ(document->changedSources(), (std::vector<std::string>{path}));
    document->install(readDocumentData({path}, {}));
    EXPECT_EQ(document->changedSources(), std::vector<std::string>());
    std::filesystem::remove(path);
    EXPECT_EQ(document->changedSources(), (std::vector<std::string>{path}));
}

// Files.

TEST_F(GraphDocumentTest, reopensWithOptionsRangesMarkersAndData)
{
    const auto document = documentOf(kRising, unusualOptions());
    document->graph()->zoomXToFixedMin(1.1F, 3.3F);
    document->graph()->zoomYToFixedMin(0.1, 1.0e12);
    document->graph()->placeHorizontalAxisMarkerWithValue(1.0 / 3.0);
    document->graph()->verticalAxis()->setDrawsMinorLines(false);
    const auto opened = savedAndOpened(*document);
    EXPECT_EQ(opened->options(), unusualOptions());
    EXPECT_EQ(opened->sources(), document->sources());
    EXPECT_EQ(toString(*opened->graph()->extents()), toString(*document->graph()->extents()));
    EXPECT_EQ(opened->graph()->extents()->y()->min(), 0.1);
    EXPECT_EQ(markerValues(*opened->graph()), (std::vector<double>{1.0 / 3.0}));
    EXPECT_TRUE(opened->graph()->XIsLog());
    EXPECT_TRUE(opened->graph()->YIsLog());
    EXPECT_TRUE(opened->graph()->verticalAxis()->drawsMajorLines());
    EXPECT_FALSE(opened->graph()->verticalAxis()->drawsMinorLines());
    EXPECT_NE(std::dynamic_pointer_cast<TOLVXGraphDrawing>(opened->graph()->drawingStrategy()), nullptr);
    EXPECT_EQ(opened->graph()->horizontalAxis()->tickLabelFormatter()->stringFromNumber(2000.0), "2k");
    ASSERT_EQ(opened->graph()->graphData().size(), 2U);
    EXPECT_EQ(opened->graph()->graphData()[1]->name(), "w");
    EXPECT_EQ(opened->graph()->graphData()[0]->color(), Color(0.1, 1.0 / 3.0, 0.7, 0.5));
    EXPECT_EQ(opened->graph()->title(), unusualOptions().title);
    EXPECT_FALSE(opened->isModified());
    EXPECT_EQ(opened->displayName(), "plot.tolvgraph");
    EXPECT_EQ(opened->notes(), std::vector<std::string>());
    // Markers of the file can be edited, and those edits undone.
    opened->graph()->placeHorizontalAxisMarkerWithValue(2.0);
    opened->undoManager()->undo();
    EXPECT_EQ(markerValues(*opened->graph()), (std::vector<double>{1.0 / 3.0}));
}

TEST_F(GraphDocumentTest, keepsWhatItsDatesAreCountedFrom)
{
    const auto document = documentOf("time,v\n2026-03-01 06:00:00,1\n2026-03-01 18:00:00,2\n2026-03-02,3\n");
    EXPECT_EQ(document->options().dateOrigin, 20513.0);
    document->graph()->zoomXToFixedMin(0.25F, 0.75F);
    document->graph()->placeHorizontalAxisMarkerWithValue(0.5);
    document->save(folder.path("plot.tolvgraph"));
    // The first lines of the file have gone, and others have come.
    write("data.csv", "time,v\n2026-03-02 06:00:00,1\n2026-03-04 12:00:00,2\n");
    document->install(readDocumentData(document->sourcePaths(), document->options()));
    const auto opened = GraphDocument::open(folder.path("plot.tolvgraph"));
    opened->install(readDocumentData(opened->sourcePaths(), opened->options()));
    for (const GraphDocument* each : {document.get(), opened.get()}) {
        const TOLVRealVector& x = *std::dynamic_pointer_cast<const TOLVRealVector>(each->graph()->graphData()[0]->X());
        EXPECT_EQ(x.components()[0], 1.25F);
        EXPECT_EQ(x.components()[1], 3.5F);
        EXPECT_EQ(toString(*each->graph()->extents()->x()), "[0.25, 0.75]");
        EXPECT_EQ(markerValues(*each->graph()), std::vector<double>{0.5});
        EXPECT_EQ(each->options().dateOrigin, 20513.0);
    }
    // Of another column the days are others, and so is the range.
    write("data.csv", "time,v,when\n2026-03-02 06:00:00,1,2012-01-01 12:00\n2026-03-04 12:00:00,2,2012-01-02\n");
    Options other = opened->options();
    other.x = "when";
    other.dateOrigin = std::nullopt;
    opened->install(readDocumentData(opened->sourcePaths(), other));
    EXPECT_EQ(opened->options().dateOrigin, 15340.0);
    EXPECT_EQ(opened->graph()->minXValue(), 0.5F);
    EXPECT_GT(opened->graph()->extents()->x()->max(), 0.9F);
}

TEST_F(GraphDocumentTest, reopensCategories)
{
    Options options;
    options.xAxis = AxisKind::Bar;
    options.drawing = DrawingKind::Bar;
    const auto document = documentOf("name,v\nquartz,1\nmica,2\ngypsum,3\n", options);
    document->graph()->zoomXToFixedMin(0.0F, 1.0F);
    const auto opened = savedAndOpened(*document);
    const auto axis = std::dynamic_pointer_cast<TOLVBarAxis>(opened->graph()->horizontalAxis());
    ASSERT_NE(axis, nullptr);
    EXPECT_EQ(*axis->tickLabels(), (std::vector<std::string>{"quartz", "mica", "gypsum"}));
    EXPECT_EQ(toString(*opened->graph()->extents()->x()), "[0, 1]");
}

TEST_F(GraphDocumentTest, reopensWithoutSourcesAndData)
{
    GraphDocument document;
    document.save(folder.path("empty.tolvgraph"));
    const auto opened = GraphDocument::open(folder.path("empty.tolvgraph"));
    EXPECT_TRUE(opened->sources().empty());
    EXPECT_EQ(opened->options(), Options());
}

TEST_F(GraphDocumentTest, fitsRangesThatCouldNotBeSaved)
{
    const auto document = documentOf(kRising);
    const std::string fitting = ranges(*document);
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    document->graph()->zoomXToFixedMin(3.0F, -std::numeric_limits<float>::infinity());
    document->graph()->zoomYToFixedMin(kNan, kNan);
    document->graph()->placeHorizontalAxisMarkerWithValue(kNan);
    const auto opened = savedAndOpened(*document);
    EXPECT_EQ(ranges(*opened), fitting);
    EXPECT_EQ(markerValues(*opened->graph()), std::vector<double>{});
    // The document that is shown keeps them.
    EXPECT_EQ(document->graph()->countOfMarkers(), 1U);
}

TEST_F(GraphDocumentTest, canBeDrawnBeforeItsSourcesAreRead)
{
    struct Case {
        DrawingKind drawing;
        AxisKind axis;
    };
    for (const Case& one :
        {Case{DrawingKind::Curve, AxisKind::Linear}, Case{DrawingKind::X, AxisKind::Logarithmic}, Case{DrawingKind::Bar, AxisKind::Bar}, Case{DrawingKind::Line, AxisKind::Line}}) {
        Options options;
        options.drawing = one.drawing;
        options.xAxis = one.axis;
        documentOf(kRising, options)->save(folder.path("plot.tolvgraph"));
        const auto opened = GraphDocument::open(folder.path("plot.tolvgraph"));
        EXPECT_NO_THROW(draw(*opened)) << wordFor(one.axis);
    }
    EXPECT_NO_THROW(draw({}));
}

TEST_F(GraphDocumentTest, findsSourcesThatMovedAlongWithIt)
{
    std::filesystem::create_directories(folder.path("one/data"));
    std::filesystem::create_directories(folder.path("elsewhere"));
    const std::string below = write("one/data/below.csv", kRising);
    const std::string elsewhere = write("elsewhere/far.csv", kRising);
    GraphDocument document;
    document.install(readDocumentData({below, elsewhere}, {}));
    document.save(folder.path("one/plot.tolvgraph"));
    std::filesystem::rename(folder.path("one"), folder.path("two"));
    const auto opened = GraphDocument::open(folder.path("two/plot.tolvgraph"));
    EXPECT_EQ(opened->sourcePaths(), (std::vector<std::string>{folder.path("two/data/below.csv"), elsewhere}));
    EXPECT_EQ(opened->changedSources(), std::vector<std::string>());
}

TEST_F(GraphDocumentTest, findsSourcesWhereTheyWereWhenItMovesAlone)
{
    const auto document = documentOf(kRising);
    document->save(folder.path("plot.tolvgraph"));
    std::filesystem::create_directory(folder.path("sub"));
    std::filesystem::rename(folder.path("plot.tolvgraph"), folder.path("sub/plot.tolvgraph"));
    EXPECT_EQ(GraphDocument::open(folder.path("sub/plot.tolvgraph"))->sourcePaths(), document->sourcePaths());
}

TEST_F(GraphDocumentTest, namesTheSourceThatIsMissingAndWhereItWasLookedFor)
{
    const auto document = documentOf(kRising);
    document->save(folder.path("plot.tolvgraph"));
    std::filesystem::remove(folder.path("data.csv"));
    EXPECT_EQ(errorOfOpening(folder.path("plot.tolvgraph")),
        folder.path("plot.tolvgraph") + ": source 'data.csv': found no file at " + folder.path("data.csv") + ", expected the measurements there");
    std::filesystem::create_directory(folder.path("sub"));
    std::filesystem::rename(folder.path("plot.tolvgraph"), folder.path("sub/plot.tolvgraph"));
    EXPECT_EQ(errorOfOpening(folder.path("sub/plot.tolvgraph")),
        folder.path("sub/plot.tolvgraph") + ": source 'data.csv': found no file at " + folder.path("sub/data.csv") + " or " + folder.path("data.csv")
            + ", expected the measurements there");
}

TEST_F(GraphDocumentTest, asksOnceWhereMissingSourcesAreNow)
{
    std::filesystem::create_directories(folder.path("data"));
    const std::string one = write("data/one.csv", kRising);
    const std::string two = write("data/two.csv", kRising);
    const std::string three = write("data/three.csv", kRising);
    GraphDocument document;
    document.install(readDocumentData({one, two, three}, {}));
    document.graph()->placeHorizontalAxisMarkerWithValue(1.5);
    document.save(folder.path("plot.tolvgraph"));
    // Two of them go elsewhere, one of these with another name.
    std::filesystem::create_directories(folder.path("archive"));
    std::filesystem::rename(one, folder.path("archive/first.csv"));
    std::filesystem::rename(three, folder.path("archive/three.csv"));
    std::vector<MissingSource> asked;
    const auto opened = GraphDocument::open(folder.path("plot.tolvgraph"), [&](const MissingSource& missing) {
        asked.push_back(missing);
        return folder.path("archive/./first.csv");
    });
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0].document, folder.path("plot.tolvgraph"));
    EXPECT_EQ(asked[0].name, "one.csv");
    EXPECT_EQ(asked[0].places, std::vector<std::string>{one});
    EXPECT_EQ(opened->sourcePaths(), (std::vector<std::string>{folder.path("archive/first.csv"), two, folder.path("archive/three.csv")}));
    EXPECT_TRUE(opened->isModified()) << "the file still names the former places";
    opened->install(readDocumentData(opened->sourcePaths(), opened->options()));
    EXPECT_EQ(opened->notes(), std::vector<std::string>()) << "they are the same files";
    EXPECT_EQ(opened->graph()->countOfMarkers(), 1U);
    opened->save(folder.path("plot.tolvgraph"));
    EXPECT_FALSE(opened->isModified());
    EXPECT_EQ(GraphDocument::open(folder.path("plot.tolvgraph"))->sourcePaths(), opened->sourcePaths()) << "nobody is asked any more";
}

TEST_F(GraphDocumentTest, isNotOpenedWhereNobodyKnowsWhereItsSourcesAre)
{
    const auto document = documentOf(kRising);
    document->save(folder.path("plot.tolvgraph"));
    std::filesystem::remove(folder.path("data.csv"));
    const std::string expected = folder.path("plot.tolvgraph") + ": source 'data.csv': found no file at " + folder.path("data.csv") + ", expected the measurements there";
    for (const std::optional<std::filesystem::path>& answer : {std::optional<std::filesystem::path>(), std::optional<std::filesystem::path>(folder.path("nothing.csv"))}) {
        int count = 0;
        try {
            static_cast<void>(GraphDocument::open(folder.path("plot.tolvgraph"), [&](const MissingSource&) {
                ++count;
                return answer;
            }));
            FAIL() << "expected an error";
        } catch (const DocumentError& problem) {
            EXPECT_EQ(problem.what(), expected);
        }
        EXPECT_EQ(count, 1);
    }
}

TEST_F(GraphDocumentTest, notesSourcesThatHaveChangedSinceItWasSaved)
{
    const auto document = documentOf(kRising);
    document->save(folder.path("plot.tolvgraph"));
    write("data.csv", "t,v,w\n1,10,1\n2,3,4\n");
    const auto opened = GraphDocument::open(folder.path("plot.tolvgraph"));
    EXPECT_EQ(opened->changedSources(), (std::vector<std::string>{folder.path("data.csv")}));
    opened->install(readDocumentData(opened->sourcePaths(), opened->options()));
    EXPECT_EQ(opened->notes(), (std::vector<std::string>{folder.path("data.csv") + ": has changed since the document was saved"}));
    EXPECT_EQ(opened->changedSources(), std::vector<std::string>());
    opened->install(readDocumentData(opened->sourcePaths(), opened->options()));
    EXPECT_EQ(opened->notes(), std::vector<std::string>());
}

TEST_F(GraphDocumentTest, keepsSourcesWhoseNamesAreNoTexts)
{
    const std::string path = write("100%\xFF.csv", kRising);
    GraphDocument document;
    document.install(readDocumentData({path}, {}));
    EXPECT_EQ(savedAndOpened(document)->sourcePaths(), (std::vector<std::string>{path}));
}

TEST_F(GraphDocumentTest, isNotSavedOverItsOwnSources)
{
    const auto document = documentOf(kRising);
    std::filesystem::create_symlink(folder.path("data.csv"), folder.path("link"));
    for (const char* name : {"data.csv", "link"}) {
        EXPECT_THROW(document->save(folder.path(name)), DocumentError);
        EXPECT_EQ(folder.read("data.csv"), kRising);
    }
    EXPECT_TRUE(document->path().empty());
}

TEST_F(GraphDocumentTest, staysModifiedWhenItCannotBeSaved)
{
    const auto document = documentOf(kRising);
    document->graph()->placeHorizontalAxisMarkerWithValue(2.0);
    const std::string path = folder.path("missing/plot.tolvgraph");
    try {
        document->save(path);
        FAIL();
    } catch (const DocumentError& error) {
        EXPECT_TRUE(std::string(error.what()).starts_with(path + ": ")) << error.what();
    }
    EXPECT_TRUE(document->isModified());
    EXPECT_TRUE(document->path().empty());
}

TEST_F(GraphDocumentTest, leavesTheOldFileWhenWhatItHasCannotBeStored)
{
    const auto document = documentOf(kRising);
    const std::string path = folder.path("plot.tolvgraph");
    document->save(path);
    const std::string saved = folder.read("plot.tolvgraph");
    Options options;
    options.title = std::string(70'000, 'a');
    document->setOptions(options);
    try {
        document->save(path);
        FAIL();
    } catch (const DocumentError& error) {
        EXPECT_EQ(error.what(), path + ": options.title: found a text of 70000 bytes, expected at most 65536");
    }
    EXPECT_EQ(folder.read("plot.tolvgraph"), saved);
    EXPECT_TRUE(document->isModified());
}

TEST_F(GraphDocumentTest, leavesTheOldFileOnAFullDisk)
{
    const auto document = documentOf(kRising);
    const std::string path = folder.path("plot.tolvgraph");
    document->save(path);
    const std::string saved = folder.read("plot.tolvgraph");
    const auto names = folder.names();
    document->graph()->placeHorizontalAxisMarkerWithValue(2.0);
    try {
        const testing_support::FileSizeLimit limit(100);
        document->save(path);
        FAIL();
    } catch (const DocumentError& error) {
        EXPECT_EQ(error.what(), path + ": cannot be written: File too large");
    }
    EXPECT_EQ(folder.read("plot.tolvgraph"), saved);
    EXPECT_EQ(folder.names(), names) << "no temporary file is left";
    EXPECT_TRUE(document->isModified());
}

// Bad files.

TEST_F(GraphDocumentTest, namesFilesThatAreNoDocuments)
{
    const auto document = documentOf(kRising);
    document->save(folder.path("plot.tolvgraph"));
    const std::string whole = folder.read("plot.tolvgraph");
    struct Case {
        const char* name;
        std::string content;
    };
    const Case cases[] = {{"nothing", ""}, {"text", "gypsum"}, {"half", whole.substr(0, whole.size() / 2)}, {"xml", "<plist></plist>"}, {"measurements", kRising}};
    for (const Case& one : cases) {
        const std::string path = write(one.name, one.content);
        const std::string error = errorOfOpening(path);
        EXPECT_TRUE(error.starts_with(path + ": ")) << error;
        EXPECT_NE(error.find("expected"), std::string::npos) << error;
    }
    EXPECT_EQ(errorOfOpening(folder.path("missing")), folder.path("missing") + ": cannot be read: No such file or directory");
    EXPECT_EQ(errorOfOpening(folder.path()), folder.path() + ": cannot be read: Is a directory");
}

namespace {

using Object = std::shared_ptr<ArchiveObject>;
using List = std::shared_ptr<ArchiveArray>;

ArchiveValue& valueOf(const Object& object, std::string_view key)
{
    for (auto& [name, value] : object->values) {
        if (name == key)
            return value;
    }
    object->values.emplace_back(std::string(key), ArchiveValue());
    return object->values.back().second;
}

Object objectOf(const Object& object, std::string_view key)
{
    return std::get<Object>(valueOf(object, key));
}

ArchiveValue listOf(std::vector<ArchiveValue> elements)
{
    auto list = std::make_shared<ArchiveArray>();
    list->elements = std::move(elements);
    return list;
}

struct BadDocument {
    const char* name;
    std::function<void(Object&)> change;
    const char* error;
};

std::ostream& operator<<(std::ostream& stream, const BadDocument& badDocument)
{
    return stream << badDocument.name;
}

/// A change of one of the options.
BadDocument badOption(const char* name, const char* key, ArchiveValue value, const char* error)
{
    return {name, [key, value](Object& root) { valueOf(objectOf(root, "options"), key) = value; }, error};
}

BadDocument badSource(const char* name, const char* key, ArchiveValue value, const char* error)
{
    return {name, [key, value](Object& root) { valueOf(std::get<Object>(std::get<List>(valueOf(root, "sources"))->elements[0]), key) = value; }, error};
}

BadDocument badRange(const char* name, const char* axis, ArchiveValue min, ArchiveValue max, const char* error)
{
    return {name,
        [=](Object& root) {
            const Object range = objectOf(objectOf(objectOf(root, "graph"), "extents"), axis);
            valueOf(range, "min") = min;
            valueOf(range, "max") = max;
        },
        error};
}

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

class BadDocuments : public GraphDocumentTest, public testing::WithParamInterface<BadDocument> {};

} // namespace

TEST_P(BadDocuments, areRefusedWithAReason)
{
    const auto document = documentOf(kRising);
    document->graph()->placeHorizontalAxisMarkerWithValue(2.0);
    document->save(folder.path("plot.tolvgraph"));
    const std::string saved = folder.read("plot.tolvgraph");
    Object root = archiveObjectFromPropertyList(std::as_bytes(std::span(saved)));
    GetParam().change(root);
    const std::vector<std::byte> data = propertyListData(root);
    const std::string path = write("bad.tolvgraph", {reinterpret_cast<const char*>(data.data()), data.size()});
    EXPECT_EQ(errorOfOpening(path), path + ": " + GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(Each, BadDocuments,
    testing::Values(BadDocument{"empty", [](Object& root) { root = nullptr; }, "the archive: found nothing, expected an object of class TOLVGraphDocument"},
        BadDocument{"otherRoot", [](Object& root) { root = objectOf(root, "graph"); }, "the archive: found an object of class TOLVGraph, expected one of class TOLVGraphDocument"},
        BadDocument{"noVersion", [](Object& root) { valueOf(root, "version") = {}; }, "version: found nothing, expected a whole number"},
        BadDocument{"laterVersion", [](Object& root) { valueOf(root, "version") = std::int64_t{2}; }, "version: found 2, expected 1, the version that this program can read"},
        BadDocument{"noSources", [](Object& root) { valueOf(root, "sources") = {}; }, "sources: found nothing, expected a list of objects"},
        BadDocument{"sourcesAreText", [](Object& root) { valueOf(root, "sources") = std::string("a.csv"); }, "sources: found a text, expected a list of objects"},
        BadDocument{"sourceIsText", [](Object& root) { valueOf(root, "sources") = listOf({std::string("a.csv")}); }, "sources: found a text, expected a list of objects"},
        BadDocument{"sourceIsMarker", [](Object& root) { valueOf(root, "sources") = listOf({objectOf(root, "graph")}); },
            "sources[0]: found an object of class TOLVGraph, expected one of class TOLVDocumentSource"},
        BadDocument{"manySources",
            [](Object& root) {
                auto& sources = *std::get<List>(valueOf(root, "sources"));
                sources.elements.resize(5000, sources.elements[0]);
            },
            "sources: found a list of 5000, expected at most 256"},
        badSource("sourceWithoutPath", "path", {}, "sources[0].path: found nothing, expected a text"),
        badSource("relativePath", "path", std::string("data.csv"), "sources[0].path: found 'data.csv', expected the absolute path of a file"),
        badSource("emptyPath", "path", std::string(), "sources[0].path: found '', expected the absolute path of a file"),
        badSource("zeroInPath", "path", std::string("/a%00b"), "sources[0].path: found '/a%00b', expected the absolute path of a file"),
        badSource("absoluteWay", "relativePath", std::string("/data.csv"), "sources[0].relativePath: found '/data.csv', expected a path without a slash at its beginning"),
        badSource("negativeSize", "size", std::int64_t{-1}, "sources[0].size: found -1, expected a whole number of at least 0"),
        badSource("sizeIsText", "size", std::string("5"), "sources[0].size: found a text, expected a whole number"),
        badSource("noTime", "modified", {}, "sources[0].modified: found nothing, expected a whole number")));

INSTANTIATE_TEST_SUITE_P(Options, BadDocuments,
    testing::Values(BadDocument{"noOptions", [](Object& root) { valueOf(root, "options") = {}; }, "options: found nothing, expected an object"},
        badOption("unknownDrawing", "drawing", std::string("pie"), "options.drawing: found 'pie', expected one of curve, plain-curve, dotted, line, bar, x, impulse"),
        badOption("noDrawing", "drawing", {}, "options.drawing: found nothing, expected a text"),
        badOption("drawingIsNumber", "drawing", std::int64_t{1}, "options.drawing: found a whole number, expected a text"),
        badOption("barsOnLinearAxis", "drawing", std::string("bar"), "options.drawing: found 'bar', expected one that goes with the x axis 'linear'"),
        badOption("unknownXAxis", "xAxis", std::string("polar"), "options.xAxis: found 'polar', expected one of linear, log, bar, line"),
        badOption("categoriesOfY", "yAxis", std::string("bar"), "options.yAxis: found 'bar', expected one of linear, log"),
        badOption("unknownFormat", "xFormat", std::string("roman"), "options.xFormat: found 'roman', expected one of decimal, adaptive, si, scientific, date"),
        badOption("unknownPattern", "patterns", listOf({std::string("wavy")}), "options.patterns: found 'wavy', expected one of solid, dashed, dash-dot, dotted"),
        badOption("patternIsNumber", "patterns", listOf({2.5}), "options.patterns: found a number, expected a text"),
        badOption("columnsAreText", "y", std::string("v"), "options.y: found a text, expected a list of texts"),
        badOption("manyColumns", "y", listOf(std::vector<ArchiveValue>(20'000, std::string("v"))), "options.y: found a list of 20000, expected at most 16384"),
        badOption("hugeTitle", "title", std::string(1'000'000, 'a'), "options.title: found a text of 1000000 bytes, expected at most 65536"),
        badOption("titleIsObject", "title", listOf({}), "options.title: found a list, expected a text"),
        badOption("legendIsText", "legend", std::string("yes"), "options.legend: found a text, expected a boolean"),
        badOption("noSize", "width", {}, "options.width: found nothing, expected a number from 1 to 14400"),
        badOption("hugeSize", "height", 1e300, "options.height: found 1e+300, expected a number from 1 to 14400"),
        badOption("sizeIsNoNumber", "width", kNan, "options.width: found nan, expected a number from 1 to 14400"),
        badOption("negativeScale", "scale", -1.0, "options.scale: found -1, expected a number from 2.2250738585072014e-308 to 64"),
        badOption("thickLines", "thicknesses", listOf({1.0, kInfinity}), "options.thicknesses: found inf, expected a number from 2.2250738585072014e-308 to 1000"),
        badOption("halfColor", "colors", listOf({0.0, 0.5}), "options.colors: found 2 numbers, expected four for each colour"),
        badOption("brightColor", "colors", listOf({0.0, 0.5, 1.5, 1.0}), "options.colors: found 1.5, expected a number from 0 to 1"),
        badOption("threeMargins", "margin", listOf({1.0, 2.0, 3.0}), "options.margin: found 3 numbers, expected four, for top, left, bottom and right"),
        badOption("originBeyondTheYears", "dateOrigin", 2932898.0, "options.dateOrigin: found 2932898, expected a number from -719528 to 2932897"),
        badOption("originIsNoNumber", "dateOrigin", kNan, "options.dateOrigin: found nan, expected a number from -719528 to 2932897"),
        badOption("originIsText", "dateOrigin", std::string("2026-03-01"), "options.dateOrigin: found a text, expected a number from -719528 to 2932897"),
        badOption("oneEnd", "xRange", listOf({std::string("1")}), "options.xRange: found 1 texts, expected two, for the ends of a range"),
        badOption("wordAsEnd", "xRange", listOf({std::string("mica"), std::string()}), "options.xRange: found 'mica', expected a number or a date such as 2026-11-21"),
        badOption("dateOfY", "yRange", listOf({std::string(), std::string("2026-11-21")}), "options.yRange: found '2026-11-21', expected a number")));

INSTANTIATE_TEST_SUITE_P(Graph, BadDocuments,
    testing::Values(BadDocument{"noGraph", [](Object& root) { valueOf(root, "graph") = {}; }, "graph: found nothing, expected an object"},
        BadDocument{"graphIsText", [](Object& root) { valueOf(root, "graph") = std::string("curve"); }, "graph: found a text, expected an object"},
        BadDocument{"graphIsAxis", [](Object& root) { valueOf(root, "graph") = objectOf(objectOf(root, "graph"), "horizontalAxis"); },
            "graph: found an object of class TOLVLinearAxis, expected one of class TOLVGraph"},
        BadDocument{
            "unknownClass", [](Object& root) { objectOf(root, "graph")->className = "Sheet"; }, "found an object of the unknown class Sheet, expected a class that can be read"},
        BadDocument{"axisIsMarkerList", [](Object& root) { valueOf(objectOf(root, "graph"), "horizontalAxis") = listOf({}); },
            "TOLVGraph \"horizontalAxis\": found a list, expected an object"},
        BadDocument{"abstractAxis", [](Object& root) { objectOf(objectOf(root, "graph"), "horizontalAxis")->className = "TOLVAxis"; },
            "graph: found an axis of class TOLVAxis for x, expected a linear or logarithmic one or one of dates or categories"},
        BadDocument{"barsOfY", [](Object& root) { objectOf(objectOf(root, "graph"), "verticalAxis")->className = "TOLVBarAxis"; },
            "graph: found an axis of class TOLVBarAxis for y, expected a linear or logarithmic one"},
        badRange("rangeIsNoNumber", "x", kNan, 1.0, "graph: found the range [nan, 1] of x, expected finite ends, the first not greater than the second"),
        badRange("rangeIsInfinite", "y", 0.0, kInfinity, "graph: found the range [0, inf] of y, expected finite ends, the first not greater than the second"),
        badRange("rangeRunsBackwards", "x", 2.0, 1.0, "graph: found the range [2, 1] of x, expected finite ends, the first not greater than the second"),
        badRange("rangeIsText", "x", std::string("0"), 1.0, "TOLVAxisExtents \"min\": found a text, expected a number"),
        BadDocument{"noRange", [](Object& root) { valueOf(objectOf(objectOf(root, "graph"), "extents"), "y") = {}; },
            "graph: found no range of y, expected finite ends, the first not greater than the second"},
        BadDocument{"markerIsNoNumber",
            [](Object& root) {
                const auto markers = std::get<List>(valueOf(objectOf(root, "graph"), "markers"));
                valueOf(std::get<Object>(markers->elements[0]), "value") = kNan;
            },
            "graph: found a marker that is no finite number, expected numbers"},
        BadDocument{"manyMarkers",
            [](Object& root) {
                auto& markers = *std::get<List>(valueOf(objectOf(root, "graph"), "markers"));
                markers.elements.resize(20'000, markers.elements[0]);
            },
            "graph: found 20000 markers, expected at most 10000"}));

} // namespace TOLVGraphing::app
