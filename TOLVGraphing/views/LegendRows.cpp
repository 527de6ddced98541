#include "LegendRows.h"

#include "../data/TOLVCurve.h"
#include "../platform/text/AttributedString.h"

#include <algorithm>
#include <cmath>
#include <iterator>
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

double sampleWidth(const LegendEntry& entry)
{
    return entry.lineStyle ? kSampleLength + kSampleGap : 0.0;
}

double entryWidth(const LegendEntry& entry)
{
    return sampleWidth(entry) + titleText(entry).size().width;
}

/// The entry with as much of its name as fits the width, and an ellipsis where that is not all.
LegendEntry fittingEntry(const LegendEntry& entry, double width)
{
    if (entryWidth(entry) <= width)
        return entry;
    const auto shortened = [&](std::size_t length) { return LegendEntry{entry.title.substr(0, length) + "\xE2\x80\xA6", entry.lineStyle}; };
    std::vector<std::size_t> lengths;
    for (std::size_t i = 0; i < entry.title.size(); ++i) {
        // Only where a character starts: 10xxxxxx continues one.
        if ((static_cast<unsigned char>(entry.title[i]) & 0xC0U) != 0x80U)
            lengths.push_back(i);
    }
    const auto end = std::partition_point(lengths.begin(), lengths.end(), [&](std::size_t length) { return entryWidth(shortened(length)) <= width; });
    return shortened(end == lengths.begin() ? 0 : *std::prev(end));
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

LegendRows::LegendRows(const std::vector<LegendEntry>& entries, double width, std::size_t maximumRows)
{
    for (const LegendEntry& original : entries) {
        LegendEntry entry = fittingEntry(original, width);
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
