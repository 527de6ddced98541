#include "PixelFills.h"

#include "../platform/graphics/DrawingContext.h"
#include "../platform/graphics/GraphicsStateSaver.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <optional>

namespace TOLVGraphing {

namespace {

/// So many fills take longer than a look at all pixels does.
constexpr std::size_t kManyFills = 2048;
/// How far a clip that is put on the grid may reach beyond the pixels of a fill of the same rectangle, with one to spare.
constexpr double kMargin = 2.0;
constexpr double kLargestSide = 32768.0;
constexpr double kMostPixels = 67108864.0;
constexpr std::size_t kMostColors = std::numeric_limits<std::uint8_t>::max();

} // namespace

PixelFills::PixelFills(DrawingContext& context, const Rect& clip, std::size_t expectedFills)
    : m_context(context)
{
    const std::optional<Rect> pixels = expectedFills >= kManyFills && !clip.isEmpty() ? context.wholePixelsOfFill(clip) : std::nullopt;
    if (!pixels)
        return;
    const Rect area = insetRect(*pixels, -kMargin, -kMargin);
    if (!(area.width() <= kLargestSide) || !(area.height() <= kLargestSide) || !(area.width() * area.height() <= kMostPixels))
        return;
    m_left = area.x();
    m_bottom = area.y();
    m_width = static_cast<std::int32_t>(area.width());
    m_height = static_cast<std::int32_t>(area.height());
    m_pixels.assign(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height), 0);
    m_touched.assign(static_cast<std::size_t>(m_width), {m_height, 0});
    m_firstColumn = m_width;
}

void PixelFills::fill(const Rect& rect, const Color& color)
{
    const bool mayWait = m_width > 0 && color.alphaComponent() >= 1.0;
    const std::optional<Rect> pixels = mayWait ? m_context.wholePixelsOfFill(rect) : std::nullopt;
    if (pixels) {
        cover(*pixels, numberOfColor(color));
        return;
    }
    flush();
    m_context.fillRect(rect);
}

void PixelFills::flush()
{
    if (m_firstColumn >= m_endColumn)
        return;
    const GraphicsStateSaver saver(m_context);
    for (std::int32_t i = m_firstColumn; i < m_endColumn; ++i) {
        collectRuns(i);
        joinRuns(i);
    }
    for (const Run& run : m_open)
        paintRun(run, m_endColumn);
    m_open.clear();
    m_colors.clear();
    m_firstColumn = m_width;
    m_endColumn = 0;
}

std::uint8_t PixelFills::numberOfColor(const Color& color)
{
    if (m_lastColor >= m_colors.size() || m_colors[m_lastColor] != color) {
        m_lastColor = static_cast<std::size_t>(std::find(m_colors.begin(), m_colors.end(), color) - m_colors.begin());
        if (m_lastColor == kMostColors) {
            flush();
            m_lastColor = 0;
        }
        if (m_lastColor == m_colors.size())
            m_colors.push_back(color);
    }
    return static_cast<std::uint8_t>(m_lastColor + 1);
}

void PixelFills::cover(const Rect& pixels, std::uint8_t color)
{
    const auto within = [](double place, std::int32_t end) { return static_cast<std::int32_t>(std::clamp(place, 0.0, static_cast<double>(end))); };
    const std::int32_t left = within(pixels.x() - m_left, m_width);
    const std::int32_t right = within(pixels.maxX() - m_left, m_width);
    const Rows rows{within(pixels.y() - m_bottom, m_height), within(pixels.maxY() - m_bottom, m_height)};
    if (left >= right || rows.low >= rows.high)
        return;
    m_firstColumn = std::min(m_firstColumn, left);
    m_endColumn = std::max(m_endColumn, right);
    for (std::int32_t i = left; i < right; ++i) {
        std::memset(column(i) + rows.low, color, static_cast<std::size_t>(rows.high - rows.low));
        Rows& touched = m_touched[static_cast<std::size_t>(i)];
        touched.low = std::min(touched.low, rows.low);
        touched.high = std::max(touched.high, rows.high);
    }
}

/// Finds what the column shows and empties it.
void PixelFills::collectRuns(std::int32_t columnIndex)
{
    m_runs.clear();
    Rows& touched = m_touched[static_cast<std::size_t>(columnIndex)];
    std::uint8_t* pixels = column(columnIndex);
    for (std::int32_t row = touched.low; row < touched.high;) {
        const std::uint8_t color = pixels[row];
        const std::int32_t low = row;
        while (row < touched.high && pixels[row] == color)
            ++row;
        if (color != 0)
            m_runs.push_back({columnIndex, {low, row}, color});
    }
    if (touched.low < touched.high)
        std::memset(pixels + touched.low, 0, static_cast<std::size_t>(touched.high - touched.low));
    touched = {m_height, 0};
}

/// Lets the runs of the columns before go on where the column has the same one, and paints those that end.
void PixelFills::joinRuns(std::int32_t columnIndex)
{
    m_joined.clear();
    auto open = m_open.begin();
    for (Run run : m_runs) {
        for (; open != m_open.end() && open->rows.low < run.rows.low; ++open)
            paintRun(*open, columnIndex);
        if (open != m_open.end() && open->rows.low == run.rows.low && open->rows.high == run.rows.high && open->color == run.color) {
            run.column = open->column;
            ++open;
        }
        m_joined.push_back(run);
    }
    for (; open != m_open.end(); ++open)
        paintRun(*open, columnIndex);
    m_open.swap(m_joined);
}

void PixelFills::paintRun(const Run& run, std::int32_t endColumn)
{
    const Rect pixels(m_left + run.column, m_bottom + run.rows.low, endColumn - run.column, run.rows.high - run.rows.low);
    m_context.setFillColor(m_colors[static_cast<std::size_t>(run.color - 1)]);
    m_context.fillRect(m_context.fillOfWholePixels(pixels));
}

} // namespace TOLVGraphing
