// How often a frame asks for memory: as often for a long series as for a short one.

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVMath/TOLVRealVector.h>
#include <desktop/cairo/CairoContext.h>
#include <desktop/cairo/CairoPointers.h>
#include <desktop/text/PangoTextSystem.h>
#include <tests/support/Generated.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace {

thread_local std::size_t allocationCount = 0;

} // namespace

// The whole program's. Those of arrays and of types with an alignment of their own stay as they are.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    ++allocationCount;
    return std::malloc(size > 0 ? size : 1);
}

void* operator new(std::size_t size)
{
    if (void* memory = ::operator new(size, std::nothrow))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace TOLVGraphing::testing_support {

namespace {

constexpr int kWidth = 800;
constexpr int kHeight = 450;

/// A graph of noise in an image, drawn again and again.
class Frames {
public:
    explicit Frames(std::size_t sampleCount)
        : m_surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight))
        , m_target(cairo_create(m_surface.get()))
        , m_graph(TOLVGraph::graph())
    {
        cairo::setUpwardCoordinates(m_target.get(), kHeight, 1.0);
        Generated noise(5);
        std::vector<float> x(sampleCount);
        std::vector<float> y(sampleCount);
        for (std::size_t i = 0; i < sampleCount; ++i) {
            x[i] = static_cast<float>(100.0 * static_cast<double>(i) / static_cast<double>(sampleCount));
            y[i] = static_cast<float>(noise.number(-1.0, 1.0));
        }
        m_graph->addGraphData(
            TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), Color(0.0, 0.4, 0.7)));
        m_graph->extents()->setX(TOLVAxisExtents::extentsWithMin(0.0, 100.0));
        m_graph->extents()->setY(TOLVAxisExtents::extentsWithMin(-1.5, 1.5));
    }

    void draw()
    {
        const Rect rect{0.0, 0.0, kWidth, kHeight};
        cairo::CairoContext context(m_target.get());
        const CurrentContextScope scope(context);
        context.fill(rect, Color::whiteColor());
        m_graph->drawInRect(rect);
    }

private:
    cairo::SurfacePointer m_surface;
    cairo::ContextPointer m_target;
    std::shared_ptr<TOLVGraph> m_graph;
};

/// How often the third frame asks for memory, when everything that is remembered is there.
std::size_t allocationsOfWarmFrame(std::size_t sampleCount)
{
    const TextSystemScope scope(text::PangoTextSystem::shared());
    Frames frames(sampleCount);
    frames.draw();
    frames.draw();
    const std::size_t before = allocationCount;
    frames.draw();
    return allocationCount - before;
}

TEST(FrameAllocations, areAsManyForAMillionSamplesAsForTenThousand)
{
    const std::size_t few = allocationsOfWarmFrame(10'000);
    EXPECT_EQ(allocationsOfWarmFrame(1'000'000), few);
    // Some twenty labels, four sets of grid lines, a frame, a curve.
    EXPECT_LE(few, 250U);
    EXPECT_GT(few, 0U);
}

} // namespace

} // namespace TOLVGraphing::testing_support
