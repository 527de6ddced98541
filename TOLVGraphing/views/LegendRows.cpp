#include "LegendRows.h"

#include "../data/TOLVCurve.h"
#include "../platform/text/AttributedString.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace TOLVGraphing {

namespace {

constexpr double kSampleLength = 20.0;
constexpr double kSampleGap = 5.0;
constexpr double kEntryGap = 16.0;

AttributedString titleText(const LegendEntry& entry)
{
    return AttributedString(entry.title, TextAttributes{Font{"Helvetica", 10.0}, Color::blackColor()});
}

double entryWidth(const LegendEntry& entry)
{
    return (entry.lineStyle ? kSampleLength + kSampleGap : 0.0) + titleText(entry).size().width;
}

void drawEntry(const LegendEntry& entry, Point lowerLeft)
{
    const AttributedString text = titleText(entry);
    double x = lowerLeft.x;
    if (entry.lineStyle) {
        // On the middle of a point, so that thin lines stay crisp.
        const double y = std::floor(lowerLeft.y + LegendRows::kRowHeight * 0.5) + 0.5;
        TOLVCurve sample;
        sample.setLineStyle(entry.lineStyle->copy());
        sample.addPoint({x, y});
        sample.addPoint({x + kSampleLength, y});
        sample.stroke();
        x += kSampleLength + kSampleGap;
    }
    text.drawAtPoint({x, lowerLeft.y + (LegendRows::kRowHeight - text.size().height) * 0.5});
}

} // namespace

LegendRows::LegendRows(std::vector<LegendEntry> entries, double width, std::size_t maximumRows)
{
    for (LegendEntry& entry : entries) {
        const double needed = entryWidth(entry);
        if (m_rows.empty() || m_rows.back().width + kEntryGap + needed > width)
            m_rows.push_back({{}, 0.0});
        Row& row = m_rows.back();
        row.width += (row.entries.empty() ? 0.0 : kEntryGap) + needed;
        row.entries.push_back(std::move(entry));
    }
    dropRowsBeyond(std::max<std::size_t>(maximumRows, 1));
}

void LegendRows::dropRowsBeyond(std::size_t maximumRows)
{
    if (m_rows.size() <= maximumRows)
        return;
    std::size_t dropped = 0;
    for (std::size_t i = maximumRows; i < m_rows.size(); ++i)
        dropped += m_rows[i].entries.size();
    m_rows.resize(maximumRows);
    // The last entry makes room for the note.
    m_rows.back().entries.back() = {"and " + std::to_string(dropped + 1) + " more", nullptr};
}

double LegendRows::height() const
{
    return kRowHeight * static_cast<double>(m_rows.size());
}

void LegendRows::drawInRect(const Rect& rect) const
{
    double y = rect.maxY();
    for (const Row& row : m_rows) {
        y -= kRowHeight;
        double x = rect.x();
        for (const LegendEntry& entry : row.entries) {
            drawEntry(entry, {x, y});
            x += entryWidth(entry) + kEntryGap;
        }
    }
}

} // namespace TOLVGraphing
