// A graph that is drawn again and again needs no more memory after ten thousand frames than after a thousand.

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <desktop/output/PixelDrawing.h>
#include <desktop/text/PangoTextSystem.h>
#include <tests/support/BadData.h>

#include <gtest/gtest.h>

#include <malloc.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 110;
/// What the libraries below may keep of one frame more, such as a glyph that no frame before had.
constexpr std::size_t kMostMoreBytes = 4096;

/// A graph with everything on, which looks a little different in each frame.
class ChangingGraph {
public:
    explicit ChangingGraph(const NamedStrategy& strategy) : m_pixels(static_cast<std::size_t>(kWidth) * kHeight)
    {
        m_graph = badDataGraph(strategy, allAxes()[strategy.name == "lineWithCallouts" ? 12 : 0]);
        m_graph->addGraphData(badSeries().front().series());
        m_graph->horizontalAxis()->setDrawsMinorLabels(true);
    }

    void draw(int frame)
    {
        // Each state comes round many times in a thousand frames.
        const double shift = 0.25 * (frame % 16);
        m_graph->extents()->setX(TOLVAxisExtents::extentsWithMin(0.0, 10.0 + shift));
        m_graph->extents()->setY(TOLVAxisExtents::extentsWithMin(0.0, 9.0 + shift));
        const PixelMemory memory{reinterpret_cast<unsigned char*>(m_pixels.data()), kWidth, kHeight, std::ptrdiff_t{4} * kWidth};
        drawOnPixels(memory, 1.0, [&](DrawingContext&) { m_graph->drawInRect({0.0, 0.0, kWidth, kHeight}); });
    }

private:
    std::shared_ptr<TOLVGraph> m_graph;
    std::vector<std::uint32_t> m_pixels;
};

class RedrawMemory : public testing::TestWithParam<std::size_t> {};

TEST_P(RedrawMemory, isTheSameAfterTenThousandFrames)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer's own allocator keeps what was freed";
#endif
    const TextSystemScope text(text::PangoTextSystem::shared());
    ChangingGraph graph(allStrategies()[GetParam()]);
    int frame = 0;
    for (; frame < 1000; ++frame)
        graph.draw(frame);
    const std::size_t before = mallinfo2().uordblks;
    for (; frame < 10'000; ++frame)
        graph.draw(frame);
    const std::size_t after = mallinfo2().uordblks;
    EXPECT_LE(after, before + kMostMoreBytes);
}

INSTANTIATE_TEST_SUITE_P(Strategies, RedrawMemory, testing::Values(std::size_t{0}, std::size_t{3}),
    [](const testing::TestParamInfo<std::size_t>& strategy) { return allStrategies()[strategy.param].name; });

} // namespace

} // namespace TOLVGraphing::testing_support
