#include "../support/Comparison.h"
#include "../support/GraphSetup.h"
#include "../support/JsonValues.h"
#include "../support/RecordedCalls.h"
#include "../support/RecordingServices.h"
#include "../support/StubTextSystem.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/platform/foundation/Log.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/views/TOLVGraphView.h>
#include <TOLVGraphing/views/TOLVLegendView.h>
#include <TOLVGraphing/views/TOLVPrintView.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

PrintInfo printInfoOf(const Json& json)
{
    PrintInfo info;
    info.paperSize = sizeOf(json["paperSize"]);
    info.leftMargin = json["leftMargin"].number();
    info.rightMargin = json["rightMargin"].number();
    info.topMargin = json["topMargin"].number();
    info.bottomMargin = json["bottomMargin"].number();
    return info;
}

/// A page with these bounds: a sheet without margins.
std::shared_ptr<TOLVPrintView> pageWithBounds(const Rect& bounds)
{
    PrintInfo info;
    info.paperSize = bounds.size;
    info.leftMargin = info.rightMargin = info.topMargin = info.bottomMargin = 0.0;
    auto page = TOLVPrintView::initWithPrintInfo(info, *TOLVGraphView::initWithFrame({0.0, 0.0, 100.0, 80.0}), {});
    page->setBoundsOrigin(bounds.origin);
    return page;
}

/// Where a flipped text stands: the transform before it turns the letters upright about the lower edge of their line box, and it is drawn at the origin.
Rect uprightTextRect(const AffineTransform& transform, const Size& size)
{
    EXPECT_TRUE(same(transform.a, 1.0) && same(transform.b, 0.0) && same(transform.c, 0.0) && same(transform.d, -1.0)) << toString(transform);
    return {transform.tx, transform.ty - size.height, size.width, size.height};
}

void expectTitles(const RecordedCalls& calls, const std::vector<Rect>& expected, double tolerance)
{
    const auto texts = callsOf(calls, "text");
    const auto transforms = callsOf(calls, "transform");
    ASSERT_EQ(texts.size(), expected.size());
    ASSERT_EQ(transforms.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(texts[i].arguments(), "\"title " + std::to_string(i) + "\" Helvetica 10 (0, 0, 0, 1) at (0, 0)");
        EXPECT_TRUE(within(uprightTextRect(transforms[i].transform(), expected[i].size), expected[i], tolerance)) << "title " << i;
    }
}

/// A pasteboard that notes how large the view is whenever data come from it.
class SizeNotingPasteboard final : public MemoryPasteboard {
public:
    explicit SizeNotingPasteboard(const View& view) : m_view(view) {}

    bool setDataForType(Data data, std::string_view type) override
    {
        m_sizes[std::string(type)] = m_view.bounds().size;
        return MemoryPasteboard::setDataForType(std::move(data), type);
    }
    [[nodiscard]] Size sizeAtType(const std::string& type) const { return m_sizes.at(type); }

private:
    const View& m_view;
    std::map<std::string, Size> m_sizes;
};

std::string mediaType(const std::string& name)
{
    const std::map<std::string, std::string_view> types{{"PDF", kPasteboardTypePDF}, {"PostScript", kPasteboardTypePostScript}, {"TIFF", kPasteboardTypeTIFF}};
    return std::string(types.at(name));
}

/// Reports a number of data sets and notes which are fetched.
class CountingSource final : public TOLVGraphViewDataSource {
public:
    explicit CountingSource(std::int64_t count) : m_count(static_cast<std::int32_t>(count)) {}

    [[nodiscard]] bool hasDataSets() const override { return true; }
    std::int32_t numberOfDataSetsInPlotView(TOLVGraphView&) override { return m_count; }
    TOLVDataSet plotViewDataSetForIndex(TOLVGraphView&, std::int32_t index) override
    {
        fetched.push_back(static_cast<std::size_t>(index));
        return {};
    }

    std::vector<std::size_t> fetched;

private:
    std::int32_t m_count;
};

} // namespace

EXPECTED_VALUES_TEST(views, pageFrame)
{
    const auto page = TOLVPrintView::initWithPrintInfo(printInfoOf(testCase.input), *TOLVGraphView::initWithFrame({}), {});
    EXPECT_TRUE(same(page->frame(), rectOf(testCase.expected["frame"])));
}

EXPECTED_VALUES_TEST(views, pageLayout)
{
    std::vector<std::string> log;
    const LogSinkScope sink([&](std::string_view line) { log.emplace_back(line); });
    const auto page = pageWithBounds(rectOf(testCase.input["bounds"]));
    page->drawRect(page->bounds());
    ASSERT_TRUE(page->plotView() && page->legendView());
    EXPECT_TRUE(same(page->plotView()->frame(), rectOf(testCase.expected["plotFrame"])));
    EXPECT_TRUE(same(page->legendView()->frame(), rectOf(testCase.expected["legendFrame"])));
    EXPECT_EQ(log, std::vector<std::string>{"(ERROR) TOLVGraphing/TOLVPrintView : " + testCase.expected["logText"].text()});
}

EXPECTED_VALUES_TEST(views, legend)
{
    const StubTextScope text;
    TOLVLegendView::Entries entries;
    for (const Json& size : testCase.input["titleSizes"].elements()) {
        entries.push_back({"title " + std::to_string(entries.size()), Color(0.25, 0.5, 0.75)});
        text->setSize(entries.back().title, sizeOf(size));
    }
    const Rect bounds = rectOf(testCase.input["bounds"]);
    const auto view = TOLVLegendView::initWithEntries(entries, {{}, bounds.size});
    view->setBoundsOrigin(bounds.origin);
    const auto calls = recorded([&] {
        const FlippedCoordinatesScope flipped(view->isFlipped());
        view->drawRect(rectOf(testCase.input["dirtyRect"]));
    });

    const double tolerance = testCase.expected["tolAbs"].number();
    const auto swatches = callsOf(calls, "fill");
    const auto expectedSwatches = rectsOf(testCase.expected["swatches"]);
    ASSERT_EQ(swatches.size(), expectedSwatches.size());
    for (std::size_t i = 0; i < swatches.size(); ++i)
        EXPECT_TRUE(samePath(swatches[i].path(), Path::pathWithRect(expectedSwatches[i]), tolerance)) << "swatch " << i;
    expectTitles(calls, rectsOf(testCase.expected["titles"]), tolerance);
}

EXPECTED_VALUES_TEST(views, copySize)
{
    const auto view = TOLVGraphView::initWithFrame({{10.0, 20.0}, sizeOf(testCase.input["boundsSize"])});
    const auto pasteboard = std::make_shared<SizeNotingPasteboard>(*view);
    const PasteboardScope pasteboardScope(pasteboard);
    const auto renderer = std::make_shared<RecordingRenderer>();
    const RendererScope rendererScope(renderer);
    const UserDefaultsScope defaults;
    defaults->setBool(testCase.input["usesFixedCopySize"].boolean(), "TOLVPlot_UsesFixedCopySize");
    defaults->setInteger(testCase.input["fixedCopyWidth"].integer(), "TOLVPlot_FixedCopyWidth");
    defaults->setInteger(testCase.input["fixedCopyHeight"].integer(), "TOLVPlot_FixedCopyHeight");

    view->copy(nullptr);

    const Size expectedSize = sizeOf(testCase.expected["renderedSize"]);
    const Json& types = testCase.expected["types"];
    for (std::size_t i = 0; i < types.size(); ++i) {
        const std::string type = mediaType(types[i].text());
        EXPECT_EQ(pasteboard->types().at(i), type);
        EXPECT_TRUE(same(pasteboard->sizeAtType(type), expectedSize)) << type;
    }
    EXPECT_EQ(renderer->documents().empty(), Rect({}, expectedSize).isEmpty());
    for (const RenderedDocument& document : renderer->documents())
        EXPECT_TRUE(same(document.size, expectedSize));
    EXPECT_TRUE(same(view->bounds().size, sizeOf(testCase.expected["sizeAfterwards"])));
}

EXPECTED_VALUES_TEST(views, reload)
{
    const auto view = TOLVGraphView::initWithFrame({0.0, 0.0, 100.0, 80.0});
    const auto source = std::make_shared<CountingSource>(testCase.input["count"].integer());
    view->setDataSource(source);
    view->reloadData();
    EXPECT_EQ(source->fetched, indexesOf(testCase.expected["fetched"]));
    EXPECT_EQ(view->graph()->graphData().size(), testCase.expected["seriesCount"].unsignedInteger());
}
