#include "PixelFills.h"

#include "../platform/graphics/DrawingContext.h"
#include "../platform/graphics/GraphicsStateSaver.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace TOLVGraphing {

namespace {

/// So many fills take longer than a look at all pixels does.
constexpr std::size_t kManyFills = 2048;
/// So many translucent fills to one that may be left of them, one above another in each column, are worth counting them.
constexpr double kFillsForOne = 4.0;
/// How far a clip that is put on the grid may reach beyond the pixels of a fill of the same rectangle, with one to spare.
constexpr double kMargin = 2.0;
constexpr double kLargestSide = 32768.0;
constexpr double kMostPixels = 67108864.0;
constexpr std::size_t kMostColors = std::numeric_limits<std::uint8_t>::max();

} // namespace

PixelFills::PixelFills(DrawingContext& context, const Rect& clip, std::size_t expectedFills) : m_context(context), m_expectedFills(expectedFills)
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
    const std::optional<Rect> pixels = mayWait(color) ? m_context.wholePixelsOfFill(rect) : std::nullopt;
    if (!pixels) {
        flush();
        m_context.fillRect(rect);
    } else if (color.alphaComponent() >= 1.0) {
        if (m_translucentColor)
            flush();
        cover(*pixels, numberOfColor(color));
    } else {
        if (m_translucentColor != color) {
            flush();
            m_translucentColor = color;
            m_mostBlends = mostBlends(color.alphaComponent());
        }
        count(*pixels);
    }
}

void PixelFills::flush()
{
    if (m_firstColumn < m_endColumn) {
        const GraphicsStateSaver saver(m_context);
        if (m_translucentColor)
            flushCounts();
        else
            flushColors();
    }
    m_translucentColor.reset();
    m_colors.clear();
    m_firstColumn = m_width;
    m_endColumn = 0;
}

std::uint8_t PixelFills::mostBlends(double alpha)
{
    constexpr double kMost = std::numeric_limits<std::uint8_t>::max();
    // The alpha itself is rounded.
    const double part = alpha - 1.0 / kMost;
    if (!(part > 0.0) || part >= 1.0)
        return std::numeric_limits<std::uint8_t>::max();
    const double farthest = kMost + 1.0 + 1.0 / part;
    const double longSteps = std::log(farthest * part * 0.5) / -std::log1p(-0.5 * part);
    return static_cast<std::uint8_t>(std::min(std::ceil(longSteps + 3.0 / part + 1.0), kMost));
}

bool PixelFills::mayWait(const Color& color) const
{
    const double alpha = color.alphaComponent();
    if (m_width == 0 || !(alpha > 0.0))
        return false;
    return alpha >= 1.0 || m_translucentColor == color
        || static_cast<double>(m_expectedFills) >= kFillsForOne * static_cast<double>(m_width) * static_cast<double>(mostBlends(alpha));
}

void PixelFills::flushColors()
{
    for (std::int32_t i = m_firstColumn; i < m_endColumn; ++i) {
        collectRuns(i);
        joinRuns(i);
        emptyColumn(i);
    }
    for (const Run& run : m_open)
        paintRun(run, m_endColumn);
    m_open.clear();
}

void PixelFills::flushCounts()
{
    m_context.setFillColor(m_translucentColor);
    for (std::int32_t i = m_firstColumn; i < m_endColumn;) {
        std::int32_t end = i + 1;
        while (end < m_endColumn && areEqualColumns(i, end))
            ++end;
        paintCounts(i, end);
        for (; i < end; ++i)
            emptyColumn(i);
    }
}

bool PixelFills::areEqualColumns(std::int32_t one, std::int32_t other)
{
    const Rows rows = m_touched[static_cast<std::size_t>(one)];
    const Rows otherRows = m_touched[static_cast<std::size_t>(other)];
    return rows.low == otherRows.low && rows.high == otherRows.high && rows.low < rows.high
        && std::memcmp(column(one) + rows.low, column(other) + rows.low, static_cast<std::size_t>(rows.high - rows.low)) == 0;
}

/// Fills each pixel of equal columns as often as it was counted: what is counted once or more, what is counted twice or more, and so on.
void PixelFills::paintCounts(std::int32_t firstColumn, std::int32_t endColumn)
{
    const Rows touched = m_touched[static_cast<std::size_t>(firstColumn)];
    const std::uint8_t* counts = column(firstColumn);
    bool isMore = touched.low < touched.high;
    for (int times = 1; isMore; ++times) {
        isMore = false;
        for (std::int32_t row = touched.low; row < touched.high; ++row) {
            const std::int32_t low = row;
            for (; row < touched.high && counts[row] >= times; ++row)
                isMore = isMore || counts[row] > times;
            if (low < row)
                m_context.fillRect(m_context.fillOfWholePixels(Rect(m_left + firstColumn, m_bottom + low, endColumn - firstColumn, row - low)));
        }
    }
}

void PixelFills::emptyColumn(std::int32_t columnIndex)
{
    Rows& touched = m_touched[static_cast<std::size_t>(columnIndex)];
    if (touched.low < touched.high)
        std::memset(column(columnIndex) + touched.low, 0, static_cast<std::size_t>(touched.high - touched.low));
    touched = {m_height, 0};
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

template <typename Change>
void PixelFills::change(const Rect& pixels, Change change)
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
        change(column(i) + rows.low, static_cast<std::size_t>(rows.high - rows.low));
        Rows& touched = m_touched[static_cast<std::size_t>(i)];
        touched.low = std::min(touched.low, rows.low);
        touched.high = std::max(touched.high, rows.high);
    }
}

void PixelFills::cover(const Rect& pixels, std::uint8_t color)
{
    change(pixels, [color](std::uint8_t* first, std::size_t length) { std::memset(first, color, length); });
}

void PixelFills::count(const Rect& pixels)
{
    change(pixels, [most = m_mostBlends](std::uint8_t* first, std::size_t length) {
        for (std::size_t i = 0; i < length; ++i)
            first[i] = static_cast<std::uint8_t>(first[i] + (first[i] < most ? 1 : 0));
    });
}

/// Finds what the column shows.
void PixelFills::collectRuns(std::int32_t columnIndex)
{
    m_runs.clear();
    const Rows touched = m_touched[static_cast<std::size_t>(columnIndex)];
    const std::uint8_t* pixels = column(columnIndex);
    for (std::int32_t row = touched.low; row < touched.high;) {
        const std::uint8_t color = pixels[row];
        const std::int32_t low = row;
        while (row < touched.high && pixels[row] == color)
            ++row;
        if (color != 0)
            m_runs.push_back({columnIndex, {low, row}, color});
    }
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
