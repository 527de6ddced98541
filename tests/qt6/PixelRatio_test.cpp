// Run at the ratio of the environment (QT_SCALE_FACTOR), once for each.

#include "WidgetSetup.h"

#include <TOLVGraphing/graph/TOLVGraph.h>

#include <QImage>
#include <QScreen>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

double askedRatio()
{
    const char* text = std::getenv("QT_SCALE_FACTOR");
    return text ? std::strtod(text, nullptr) : 1.0;
}

/// What the screen shows of a window.
QImage screenshot(QWidget& window)
{
    return window.screen()->grabWindow(window.winId()).toImage();
}

/// The greys along a row of pixels, from one column to another.
std::set<int> greysInRow(const QImage& image, int row, int from, int to)
{
    std::set<int> greys;
    for (int column = from; column < to; ++column)
        greys.insert(qGray(image.pixel(column, row)));
    return greys;
}

std::set<int> greysInColumn(const QImage& image, int column, int from, int to)
{
    std::set<int> greys;
    for (int row = from; row < to; ++row)
        greys.insert(qGray(image.pixel(column, row)));
    return greys;
}

/// A window whose graph does not begin on a whole pixel at broken ratios: an empty graph of major lines only, in a layout with odd margins.
class PixelRatio : public testing::Test {
protected:
    PixelRatio() : m_graphWidget(new GraphWidget)
    {
        auto* layout = new QVBoxLayout(&m_window);
        layout->setContentsMargins(7, 5, 3, 9);
        layout->addWidget(m_graphWidget);
        m_graphWidget->addSeries(std::vector<float>{0.0F, 10.0F}, std::vector<float>{0.0F, 10.0F});
        const auto graph = m_graphWidget->graph();
        graph->setDrawingStrategy(nullptr);
        const auto style = TOLVLineStyle::solidLineWithColor(Color::blackColor(), 1.0);
        graph->setMajorLineStyle(style);
        graph->setMinorLineStyle(style);
        m_window.resize(401, 301);
        m_window.show();
        waitUntil([this] { return m_graphWidget->drawCount() > 0; });
        m_graphWidget->clearFocus();
        ShownWidget::settle();
    }

    QWidget m_window;
    GraphWidget* m_graphWidget;
};

TEST_F(PixelRatio, IsTheOneThatWasAskedFor)
{
    EXPECT_DOUBLE_EQ(m_graphWidget->devicePixelRatioF(), askedRatio());
}

TEST_F(PixelRatio, LinesAreFullyInkedOrNotAtAll)
{
    const double ratio = askedRatio();
    const QImage image = screenshot(m_window);
    const Rect bounds = m_graphWidget->view()->bounds();
    const Rect area = m_graphWidget->graph()->dataRectInRect(bounds);
    ASSERT_GT(area.width(), 100.0);
    const QPoint corner = m_graphWidget->pos();
    const auto pixel = [&](double position) { return static_cast<int>(position * ratio); };
    const int left = pixel(corner.x() + area.x() + 2.0);
    const int right = pixel(corner.x() + area.maxX() - 2.0);
    const int top = pixel(corner.y() + bounds.height() - area.maxY() + 2.0);
    const int bottom = pixel(corner.y() + bounds.height() - area.y() - 2.0);
    // Across the vertical lines between two horizontal ones, and the other way round: black and white, nothing between.
    std::set<int> across;
    for (int row = top; row < top + pixel(20.0); ++row) {
        if (auto greys = greysInRow(image, row, left, right); greys.size() > across.size())
            across = std::move(greys);
    }
    EXPECT_EQ(across, (std::set<int>{0, 255}));
    std::set<int> along;
    for (int column = left; column < left + pixel(20.0); ++column) {
        if (auto greys = greysInColumn(image, column, top, bottom); greys.size() > along.size())
            along = std::move(greys);
    }
    EXPECT_EQ(along, (std::set<int>{0, 255}));
}

} // namespace
