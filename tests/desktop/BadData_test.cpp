// Bad data on real contexts: images, whose pixels tell what was painted where, and documents, which stay short.

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <desktop/layout/LayoutJson.h>
#include <desktop/output/GraphicsOutput.h>
#include <desktop/output/PixelDrawing.h>
#include <desktop/text/PangoTextSystem.h>
#include <tests/support/BadData.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

namespace {

constexpr int kWidth = 140;
constexpr int kHeight = 110;
/// A graph of a few samples with its fonts.
constexpr std::size_t kLongestDocument = 400'000;

struct NamedKind {
    std::string name;
    OutputKind kind;

    friend std::ostream& operator<<(std::ostream& stream, const NamedKind& named) { return stream << named.name; }
};

/// An image without anything on it, with a row of pixels above and below that nobody may touch.
class Image {
public:
    Image() : m_pixels(static_cast<std::size_t>(kWidth) * (kHeight + 2), 0) {}

    void draw(const std::function<void()>& drawing)
    {
        std::fill(m_pixels.begin(), m_pixels.end(), 0);
        const PixelMemory memory{reinterpret_cast<unsigned char*>(m_pixels.data() + kWidth), kWidth, kHeight, std::ptrdiff_t{4} * kWidth};
        drawOnPixels(memory, 1.0, [&](DrawingContext&) { drawing(); });
    }

    /// True when nothing was painted but in the rectangle, y growing upwards from the lower edge of the image.
    [[nodiscard]] bool isEmptyOutside(const Rect& rect) const
    {
        const auto first = [](double coordinate, int end) { return static_cast<int>(std::clamp(std::floor(coordinate), 0.0, static_cast<double>(end))); };
        const auto last = [](double coordinate, int end) { return static_cast<int>(std::clamp(std::ceil(coordinate), 0.0, static_cast<double>(end))); };
        const int left = first(rect.x(), kWidth);
        const int right = std::max(left, last(rect.maxX(), kWidth));
        const int top = first(static_cast<double>(kHeight) - rect.maxY(), kHeight);
        const int bottom = std::max(top, last(static_cast<double>(kHeight) - rect.y(), kHeight));
        for (int row = -1; row <= kHeight; ++row) {
            const std::uint32_t* pixels = m_pixels.data() + (row + 1) * kWidth;
            const bool isInRows = row >= top && row < bottom;
            if (!std::all_of(pixels, pixels + (isInRows ? left : kWidth), isUntouched) || (isInRows && !std::all_of(pixels + right, pixels + kWidth, isUntouched)))
                return false;
        }
        return true;
    }

private:
    static bool isUntouched(std::uint32_t pixel) { return pixel == 0; }

    std::vector<std::uint32_t> m_pixels;
};

/// What may be painted of a data area. One with negative sides is its mirror image, which the inset of a curve's clip enlarges by a point.
Rect paintedArea(const Rect& dataRect)
{
    const Rect upright(std::min(dataRect.x(), dataRect.maxX()), std::min(dataRect.y(), dataRect.maxY()), std::abs(dataRect.width()), std::abs(dataRect.height()));
    return dataRect.isEmpty() ? insetRect(upright, -1.0, -1.0) : upright;
}

/// One pair of axes, which each strategy draws on.
class BadDataOnImages : public testing::TestWithParam<NamedAxes> {
protected:
    static void TearDownTestSuite() { s_cells.print("cells of bad data on images"); }

    template <typename Operation>
    void forEachStrategy(Operation operation)
    {
        for (m_strategy = 0; m_strategy < allStrategies().size(); ++m_strategy) {
            graph = badDataGraph(allStrategies()[m_strategy], GetParam());
            SCOPED_TRACE(allStrategies()[m_strategy].name);
            ASSERT_NO_FATAL_FAILURE(operation());
        }
    }

    /// The data alone stays in its area; all of it is drawn without an error.
    void expectSoundPicture(std::size_t series, std::size_t range, BadEnds ends, std::size_t rectIndex)
    {
        const BadRect& rect = badRects()[rectIndex];
        s_cells.add(GetParam().name, {m_strategy, series, range, static_cast<std::size_t>(ends), rectIndex});
        SCOPED_TRACE("series " + std::to_string(series) + ", range " + badRanges()[range].name + ", rectangle " + rect.name);
        setBadRange(*graph, badRanges()[range], ends);
        ASSERT_NO_THROW(image.draw([&] {
            graph->prepareForDrawingInRect(rect.rect);
            graph->drawDataInRect(rect.rect);
            graph->drawMarkersInRect(rect.rect);
        }));
        if (rect.isFinite) {
            ASSERT_TRUE(image.isEmptyOutside(paintedArea(graph->dataRectInRect(rect.rect))));
        }
    }

    const TextSystemScope text{text::PangoTextSystem::shared()};
    std::shared_ptr<TOLVGraph> graph;
    Image image;

private:
    static inline CellCount s_cells;
    std::size_t m_strategy = 0;
};

TEST_P(BadDataOnImages, isPaintedInTheDataAreaOnly)
{
    forEachStrategy([&] {
        for (std::size_t series = 0; series < badSeries().size(); ++series) {
            graph->clearGraphData();
            graph->addGraphData(badSeries()[series].series());
            for (std::size_t range = series % kCellStep; range < badRanges().size(); range += kCellStep) {
                const auto ends = static_cast<BadEnds>((series + range) % 3);
                const std::size_t rect = (series + range) % 2 == 0 ? 0 : (5 * series + 3 * range) % badRects().size();
                ASSERT_NO_FATAL_FAILURE(expectSoundPicture(series, range, ends, rect));
            }
        }
    });
}

TEST_P(BadDataOnImages, isDrawnWithItsAxesIntoEveryRectangle)
{
    for (const BadRect& rect : badRects()) {
        graph = badDataGraph(allStrategies()[rect.name.size() % allStrategies().size()], GetParam());
        for (const BadSeries& series : badSeries())
            graph->addGraphData(series.series());
        for (std::size_t range = rect.name.size() % 3; range < badRanges().size(); range += 3) {
            setBadRange(*graph, badRanges()[range], BadEnds::Both);
            SCOPED_TRACE("range " + badRanges()[range].name + ", rectangle " + rect.name);
            ASSERT_NO_THROW(image.draw([&] { graph->drawInRect(rect.rect); }));
            ASSERT_TRUE(image.isEmptyOutside({0.0, 0.0, kWidth, kHeight})) << "the rows above and below belong to others";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Axes, BadDataOnImages, testing::ValuesIn(allAxes()), [](const testing::TestParamInfo<NamedAxes>& axes) { return axes.param.name; });

/// Documents of every kind: fewer, because each takes its time.
class BadDataInDocuments : public testing::TestWithParam<NamedKind> {
protected:
    static void TearDownTestSuite() { s_cells.print("cells of bad data in documents"); }

    std::vector<std::byte> rendered(TOLVGraph& graph, const Rect& rect) const
    {
        OutputSettings settings;
        settings.size = {120.0, 90.0};
        settings.scale = 1.0;
        return renderToBytes(GetParam().kind, settings, [&](DrawingContext&, const Rect&) { graph.drawInRect(rect); });
    }

    static inline CellCount s_cells;
    const TextSystemScope text{text::PangoTextSystem::shared()};
};

TEST_P(BadDataInDocuments, isShort)
{
    std::size_t cell = 0;
    for (std::size_t strategy = 0; strategy < allStrategies().size(); ++strategy) {
        for (const std::size_t axes : {std::size_t{0}, std::size_t{5}, std::size_t{8}, std::size_t{13}}) {
            const auto graph = badDataGraph(allStrategies()[strategy], allAxes()[axes]);
            for (const BadSeries& series : badSeries())
                graph->addGraphData(series.series());
            for (std::size_t range = cell % 4; range < badRanges().size(); range += 4) {
                const BadRect& rect = badRects()[cell++ % badRects().size()];
                setBadRange(*graph, badRanges()[range], static_cast<BadEnds>(cell % 3));
                s_cells.add(GetParam().name, {strategy, axes, range, cell});
                SCOPED_TRACE(allStrategies()[strategy].name + " " + allAxes()[axes].name + ", range " + badRanges()[range].name + ", rectangle " + rect.name);
                std::vector<std::byte> bytes;
                ASSERT_NO_THROW(bytes = rendered(*graph, rect.rect));
                ASSERT_FALSE(bytes.empty());
                ASSERT_LE(bytes.size(), kLongestDocument);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, BadDataInDocuments, testing::Values(NamedKind{"PDF", OutputKind::PDF}, NamedKind{"SVG", OutputKind::SVG}, NamedKind{"EPS", OutputKind::EPS}),
    [](const testing::TestParamInfo<NamedKind>& kind) { return kind.param.name; });

TEST(BadDataInReports, isNullWhereItIsNoNumber)
{
    const TextSystemScope text(text::PangoTextSystem::shared());
    for (const NamedAxes& axes : allAxes()) {
        const auto graph = badDataGraph(allStrategies().front(), axes);
        for (const BadSeries& series : badSeries())
            graph->addGraphData(series.series());
        for (std::size_t range = 0; range < badRanges().size(); ++range) {
            setBadRange(*graph, badRanges()[range], BadEnds::Both);
            for (std::size_t rect = range % 4; rect < badRects().size(); rect += 4) {
                const std::string report = layoutJson(graph->layoutInRect(badRects()[rect].rect));
                ASSERT_EQ(report.find("nan,"), std::string::npos) << report;
                ASSERT_EQ(report.find("inf,"), std::string::npos) << report;
                ASSERT_TRUE(report.ends_with("}\n"));
            }
        }
    }
}

} // namespace

} // namespace TOLVGraphing::testing_support
