// Drawings of many samples leave marks out that change nothing: their pictures have the bytes of all marks drawn one after the other.

#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/drawing/BarGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVDottedCurveGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVVerticalLineGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVXGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/platform/graphics/DarkContext.h>
#include <TOLVGraphing/platform/graphics/PixelAlignedContext.h>
#include <TOLVMath/TOLVRealVector.h>
#include <desktop/output/PixelDrawing.h>
#include <tests/support/ChangingSamples.h>
#include <tests/support/Generated.h>
#include <tests/support/PlainMarks.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::ChangingSamples;
using testing_support::drawPlainBars;
using testing_support::drawPlainDottedCurve;
using testing_support::drawPlainImpulses;
using testing_support::drawPlainXMarks;
using testing_support::Generated;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
const Rect kRect(0.0, 0.0, 140.0, 100.0);

using Pixels = std::vector<std::uint32_t>;
using Plain = void (*)(const TOLVGraph&, const Rect&);

/// Who puts rectangles on the grid: a context that aligns them, below one that changes colours or not, or nobody.
enum class Grid { Aligned, Dark, Own };

/// Counts what reaches the context.
class CountingContext final : public ForwardingContext {
public:
    /// One that is not quick is drawn into mark by mark.
    CountingContext(DrawingContext& target, bool isQuick) : ForwardingContext(target), m_isQuick(isQuick) {}

    void drawFilledPath(const Path& path, FillRule rule) override
    {
        ++m_count;
        ForwardingContext::drawFilledPath(path, rule);
    }
    void drawStrokedPath(const Path& path) override
    {
        ++m_count;
        ForwardingContext::drawStrokedPath(path);
    }
    [[nodiscard]] bool drawsRepeatsQuickly() const override { return m_isQuick && ForwardingContext::drawsRepeatsQuickly(); }
    void drawStrokedRepeats(const Path& path, std::span<const Point> places) override
    {
        m_count += places.size();
        ForwardingContext::drawStrokedRepeats(path, places);
    }
    [[nodiscard]] std::size_t count() const { return m_count; }

private:
    bool m_isQuick;
    std::size_t m_count = 0;
};

struct Picture {
    Pixels pixels;
    std::size_t shapes = 0;
};

/// Draws over a ground of many colours, because a mark changes each one in its own way.
Picture drawn(double pixelsPerPoint, Grid grid, const std::function<void()>& drawing, bool isQuick = false)
{
    const auto width = static_cast<int>(std::ceil(kRect.width() * pixelsPerPoint));
    const auto height = static_cast<int>(std::ceil(kRect.height() * pixelsPerPoint));
    Picture picture;
    picture.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    Generated ground(3);
    for (std::uint32_t& pixel : picture.pixels)
        pixel = 0xFF000000U | (ground.whole(256) << 16U) | (ground.whole(256) << 8U) | ground.whole(256);
    const PixelMemory memory{reinterpret_cast<unsigned char*>(picture.pixels.data()), width, height, static_cast<std::ptrdiff_t>(width) * 4};
    drawOnPixels(memory, pixelsPerPoint, [&](DrawingContext& pixels) {
        CountingContext counting(pixels, isQuick);
        PixelAlignedContext aligned(counting, pixelsPerPoint);
        DarkContext dark(aligned);
        DrawingContext& context = grid == Grid::Own ? static_cast<DrawingContext&>(counting) : grid == Grid::Dark ? static_cast<DrawingContext&>(dark) : aligned;
        const CurrentContextScope scope(context);
        drawing();
        picture.shapes = counting.count();
    });
    return picture;
}

std::size_t differingPixels(const Pixels& one, const Pixels& other)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < one.size(); ++i)
        count += one[i] != other[i] ? 1 : 0;
    return count;
}

std::shared_ptr<TOLVGraph> emptyGraph()
{
    const auto graph = TOLVGraph::graph();
    graph->setMargin({6.0, 8.0, 10.0, 12.0});
    graph->zoomXToFixedMin(0.0F, 1000.0F);
    graph->zoomYToFixedMin(1.0, 100.0);
    return graph;
}

void add(TOLVGraph& graph, std::vector<float> x, std::vector<float> y, const Color& color)
{
    graph.addGraphData(TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), color));
}

const Color kBlue(0.0, 0.45, 0.7);
const Color kRust(0.83, 0.37, 0.0);

struct Scene {
    std::string name;
    std::shared_ptr<TOLVGraph> graph;
};

/// Ascending abscissae, so that every drawing takes them; a fifth of the samples lies outside of the visible range of y.
void addNoise(TOLVGraph& graph, std::size_t count, std::uint32_t seed, const Color& color)
{
    Generated noise(seed);
    std::vector<float> x;
    std::vector<float> y;
    for (std::size_t i = 0; i < count; ++i) {
        x.push_back(static_cast<float>(i) * 1000.0F / static_cast<float>(count));
        y.push_back(static_cast<float>(noise.number(-10.0, 115.0)));
    }
    add(graph, std::move(x), std::move(y), color);
}

Scene noiseScene(const std::string& name, std::size_t count, const std::vector<Color>& colors)
{
    Scene scene{name, emptyGraph()};
    for (std::uint32_t i = 0; i < colors.size(); ++i)
        addNoise(*scene.graph, count - 100 * i, i + 1, colors[i]);
    return scene;
}

Scene waveScene()
{
    Scene scene{"a wave that is mostly still", emptyGraph()};
    std::vector<float> x;
    std::vector<float> y;
    for (int i = 0; i < 9000; ++i) {
        x.push_back(static_cast<float>(i / 9));
        y.push_back(50.0F + 40.0F * std::sin(static_cast<float>(i / 900)));
    }
    add(*scene.graph, std::move(x), std::move(y), kBlue);
    return scene;
}

/// Thousands of marks at two places that are far from each other, by turns; some of them near the second place follow.
Scene tiesScene()
{
    Scene scene{"ties", emptyGraph()};
    std::vector<float> x;
    std::vector<float> y;
    for (int i = 0; i < 8000; ++i) {
        x.push_back(i % 2 == 0 || i < 2000 ? 300.0F : 700.0F);
        y.push_back(i % 2 == 0 || i < 7000 ? 50.0F : static_cast<float>(50 + i % 3));
    }
    add(*scene.graph, x, y, kBlue);
    add(*scene.graph, x, y, Color(0.83, 0.37, 0.0, 0.02));
    return scene;
}

/// Marks that cover one another in every order.
Scene clusterScene()
{
    Scene scene{"clusters", emptyGraph()};
    Generated noise(9);
    std::vector<float> x;
    std::vector<float> y;
    for (int i = 0; i < 12000; ++i) {
        x.push_back(i < 6000 ? 300.0F : 500.0F);
        y.push_back(static_cast<float>(40 + noise.whole(5)));
    }
    add(*scene.graph, std::move(x), std::move(y), kBlue);
    return scene;
}

Scene oddSamplesScene()
{
    Scene scene{"samples that are not finite or far away", emptyGraph()};
    Generated noise(5);
    const float odd[] = {kNaN, kInfinity, -kInfinity, 1e30F, -1e30F, 3e9F, 1.0F, 100.0F, 1.2F};
    std::vector<float> x;
    std::vector<float> y;
    for (int i = 0; i < 4000; ++i) {
        x.push_back(static_cast<float>(i) * 0.25F);
        y.push_back(noise.whole(20) == 0 ? odd[noise.whole(9)] : static_cast<float>(noise.number(0.0, 100.0)));
    }
    add(*scene.graph, std::move(x), std::move(y), kBlue);
    return scene;
}

Scene logarithmicScene()
{
    Scene scene = noiseScene("logarithmic", 4000, {kBlue});
    scene.graph->setVerticalAxis(std::make_shared<TOLVLogarithmicAxis>());
    scene.graph->zoomYToFixedMin(0.5, 200.0);
    return scene;
}

Scene zoomedScene()
{
    Scene scene = noiseScene("zoomed", 4000, {kBlue, kRust});
    scene.graph->zoomXToFixedMin(100.0F, 160.0F);
    scene.graph->zoomYToFixedMin(40.0, 60.0);
    return scene;
}

Scene fractionalScene()
{
    Scene scene = noiseScene("edges between points", 4000, {kBlue, kRust});
    scene.graph->setMargin({6.3, 8.6, 10.45, 12.7});
    return scene;
}

/// Margins that meet: what is drawn then goes on to the other side.
Scene noRoomScene()
{
    Scene scene = noiseScene("no room", 3000, {kBlue});
    scene.graph->setMargin({6.0, 200.0, 10.0, 190.0});
    return scene;
}

Scene hostScene()
{
    Scene scene{"a host's own samples", emptyGraph()};
    Generated noise(8);
    std::vector<float> samples;
    for (int i = 0; i < 4000; ++i)
        samples.push_back(static_cast<float>(noise.number(0.0, 100.0)));
    const auto shared = std::make_shared<ChangingSamples>(samples);
    scene.graph->addGraphData(TOLVGraphData::graphDataWithX(shared, shared, kBlue));
    return scene;
}

std::vector<Scene> scenes()
{
    return {
        noiseScene("few", 40, {kBlue}),
        noiseScene("as many as count as few", 2047, {kBlue}),
        noiseScene("as few as count as many", 2048, {kBlue}),
        noiseScene("many", 6000, {kBlue}),
        noiseScene("series over one another", 3000, {kBlue, kRust, Color::blackColor()}),
        noiseScene("translucent", 3000, {Color(0.0, 0.45, 0.7, 0.3)}),
        noiseScene("hardly visible", 3000, {Color(1.0, 0.45, 0.0, 0.003)}),
        noiseScene("opaque and translucent", 3000, {kBlue, Color(0.83, 0.37, 0.0, 0.5), kRust}),
        waveScene(),
        tiesScene(),
        clusterScene(),
        oddSamplesScene(),
        logarithmicScene(),
        zoomedScene(),
        fractionalScene(),
        noRoomScene(),
    };
}

/// So many samples that translucent marks are counted.
std::vector<Scene> denseScenes()
{
    return {
        noiseScene("dense and translucent", 40000, {Color(0.0, 0.45, 0.7, 0.6)}),
        noiseScene("dense, opaque and translucent", 25000, {kBlue, Color(0.83, 0.37, 0.0, 0.5), Color(0.2, 0.0, 0.4, 0.7)}),
    };
}

/// Both pictures of each scene, on each grid.
void expectEqualPictures(TOLVGraphDrawing& drawing, Plain drawPlain, const std::vector<Scene>& pictured)
{
    const std::pair<Grid, double> pixels[]
        = {{Grid::Aligned, 1.0}, {Grid::Aligned, 1.25}, {Grid::Aligned, 2.0}, {Grid::Aligned, 0.6}, {Grid::Dark, 1.25}, {Grid::Own, 1.0}, {Grid::Own, 1.25}};
    for (const Scene& scene : pictured) {
        for (const auto& [grid, scale] : pixels) {
            const Picture ours = drawn(scale, grid, [&] { drawing.drawGraph(scene.graph, kRect); });
            const Picture plain = drawn(scale, grid, [&] { drawPlain(*scene.graph, kRect); });
            const Picture quick = drawn(
                scale, grid, [&] { drawing.drawGraph(scene.graph, kRect); }, true);
            EXPECT_EQ(differingPixels(quick.pixels, plain.pixels), 0U) << scene.name << ", repeats, grid " << static_cast<int>(grid) << ", scale " << scale;
            EXPECT_EQ(differingPixels(ours.pixels, plain.pixels), 0U) << scene.name << ", grid " << static_cast<int>(grid) << ", scale " << scale;
            EXPECT_LE(ours.shapes, plain.shapes) << scene.name << ", grid " << static_cast<int>(grid) << ", scale " << scale;
        }
    }
}

TEST(ManyMarks, ImpulsesHaveThePictureOfAllMarks)
{
    TOLVVerticalLineGraphDrawing drawing;
    auto pictured = scenes();
    pictured.push_back(hostScene());
    expectEqualPictures(drawing, drawPlainImpulses, pictured);
    expectEqualPictures(drawing, drawPlainImpulses, denseScenes());
}

TEST(ManyMarks, XMarksHaveThePictureOfAllMarks)
{
    TOLVXGraphDrawing drawing;
    auto pictured = scenes();
    pictured.push_back(hostScene());
    expectEqualPictures(drawing, drawPlainXMarks, pictured);
}

TEST(ManyMarks, DottedCurvesHaveThePictureOfAllMarks)
{
    TOLVDottedCurveGraphDrawing drawing;
    auto pictured = scenes();
    pictured.push_back(hostScene());
    expectEqualPictures(drawing, drawPlainDottedCurve, pictured);
    expectEqualPictures(drawing, drawPlainDottedCurve, denseScenes());
}

TEST(ManyMarks, BarsHaveThePictureOfAllMarks)
{
    BarGraphDrawing drawing;
    auto pictured = scenes();
    // Bars show the samples of the visible range only, which the plain drawing does not know.
    pictured.push_back(denseScenes().front());
    std::erase_if(pictured, [](const Scene& scene) { return scene.name == "zoomed"; });
    for (const Scene& scene : pictured)
        scene.graph->zoomXToFixedMin(-10.0F, 1010.0F);
    expectEqualPictures(drawing, drawPlainBars, pictured);
}

/// What reaches the pixels of 6,000 samples in 120 columns.
std::size_t shapesOf(TOLVGraphDrawing& drawing, double scale, const Scene& scene)
{
    return drawn(scale, Grid::Aligned, [&] { drawing.drawGraph(scene.graph, kRect); }).shapes;
}

TEST(ManyMarks, ImpulsesAreOneForEachColumnAtMost)
{
    TOLVVerticalLineGraphDrawing drawing;
    const Scene scene = noiseScene("", 6000, {kBlue});
    EXPECT_LE(shapesOf(drawing, 1.0, scene), 120U);
    EXPECT_LE(shapesOf(drawing, 2.0, scene), 120U);
}

TEST(ManyMarks, ImpulsesOnWholePixelsAreOneForEachColumnWithoutAlignmentToo)
{
    TOLVVerticalLineGraphDrawing drawing;
    const Scene scene = noiseScene("", 6000, {kBlue});
    EXPECT_LE(drawn(2.0, Grid::Own, [&] { drawing.drawGraph(scene.graph, kRect); }).shapes, 120U);
    // Between pixels each of them counts.
    EXPECT_GE(drawn(1.25, Grid::Own, [&] { drawing.drawGraph(scene.graph, kRect); }).shapes, 4000U);
}

TEST(ManyMarks, TranslucentImpulsesAreNoMoreForEachColumnThanChangeIt)
{
    TOLVVerticalLineGraphDrawing drawing;
    const Scene scene = noiseScene("", 24000, {Color(0.0, 0.45, 0.7, 0.5)});
    EXPECT_LE(shapesOf(drawing, 1.0, scene), 120U * 23U);
    EXPECT_GE(shapesOf(drawing, 1.0, scene), 120U * 8U);
}

TEST(ManyMarks, DotsAndBarsAreFewerThanPixelColumns)
{
    TOLVDottedCurveGraphDrawing dots;
    BarGraphDrawing bars;
    const Scene scene = noiseScene("", 6000, {kBlue});
    EXPECT_LE(shapesOf(dots, 1.0, scene), 240U);
    EXPECT_LE(shapesOf(bars, 1.0, scene), 120U);
}

TEST(ManyMarks, XMarksAtOnePlaceAreDrawnUntilTheyChangeNothing)
{
    TOLVXGraphDrawing drawing;
    // Of 14,500 marks at two places, and then of 1,500 that the near ones among them begin anew.
    EXPECT_LE(shapesOf(drawing, 1.0, tiesScene()), 4U * 255U + 2U * 1000U);
}

TEST(ManyMarks, XMarksFarFromTheDataAreaAreLeftOut)
{
    TOLVXGraphDrawing drawing;
    const Scene scene = noiseScene("", 6000, {kBlue});
    scene.graph->zoomXToFixedMin(500.0F, 510.0F);
    // 60 samples to 120 points, and 100 points more on either side.
    EXPECT_LE(shapesOf(drawing, 1.0, scene), 170U);
}

} // namespace
} // namespace TOLVGraphing
