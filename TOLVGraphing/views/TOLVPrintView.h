#pragma once

#include "../platform/ui/PrintInfo.h"
#include "TOLVGraphView.h"
#include "TOLVLegendView.h"
#include <TOLVMath/Export.h>

#include <memory>
#include <vector>

namespace TOLVGraphing {

/// A page: a copy of a graph view in its upper part, two and a half times as wide as high, and a legend below it. Its frame is the printable area of the paper; nothing is drawn where the
/// margins leave none, and settings that are not finite give an empty frame. Flipped: y grows downwards.
class TOLV_EXPORT TOLVPrintView final : public View {
public:
    /// The lines of the legend.
    using Entries = TOLVLegendView::Entries;

    /// The view is copied, so that the one on the screen is not disturbed; both show the same graph. Entries are copied.
    [[nodiscard]] static std::shared_ptr<TOLVPrintView> initWithPrintInfo(const PrintInfo& printInfo, const TOLVGraphView& view, Entries entries);
    /// A page without a graph view and entries.
    explicit TOLVPrintView(const PrintInfo& printInfo);

    /// Copied. The settings of the page.
    [[nodiscard]] const PrintInfo& printInfo() const { return m_printInfo; }
    /// Asks for redisplay when the settings are others. The frame stays: the printable area is that of the settings that the page was made with.
    void setPrintInfo(const PrintInfo& printInfo);
    /// Copied on setting. Editing the entries in place asks for nothing.
    [[nodiscard]] Entries& entries() { return m_entries; }
    /// Asks for redisplay when the entries are others.
    void setEntries(Entries entries);
    /// Copied on setting; null for none. Setting asks for redisplay.
    [[nodiscard]] const std::shared_ptr<TOLVGraphView>& plotView() const { return m_plotView; }
    void setPlotView(const std::shared_ptr<const TOLVGraphView>& view);
    /// Shared. The legend of the last layout; null before the first drawing.
    [[nodiscard]] const std::shared_ptr<TOLVLegendView>& legendView() const { return m_legendView; }

    [[nodiscard]] bool isFlipped() const override { return true; }
    /// Lays the page out, with the legend that it has, and logs its size in one line tagged as an error; its subviews draw themselves.
    void drawRect(const Rect& dirtyRect) override;

private:
    PrintInfo m_printInfo;
    Entries m_entries;
    std::shared_ptr<TOLVGraphView> m_plotView;
    std::shared_ptr<TOLVLegendView> m_legendView;
};

/// The legend of a graph: each series' name (or "Series 3" where it has none) and colour, in order.
[[nodiscard]] TOLV_EXPORT TOLVLegendView::Entries legendEntriesOfGraph(const TOLVGraph& graph);

} // namespace TOLVGraphing
