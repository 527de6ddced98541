#pragma once

#include "../data/TOLVGraphData.h"
#include "../platform/ui/Pasteboard.h"
#include "../platform/ui/View.h"
#include "TOLVLegendView.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing {

class TOLVGraph;
class TOLVGraphView;

/// One series as a data source describes it; absent entries pass none.
struct TOLVDataSet {
    TOLVGraphData::Samples x;
    TOLVGraphData::Samples y;
    std::optional<Color> color;
    std::shared_ptr<TOLVLineStyle> lineStyle;
};

/// What a graph view may ask for its series. Both operations are optional; a view asks for them only where both are there.
class TOLVGraphViewDataSource {
public:
    virtual ~TOLVGraphViewDataSource();

    /// True when both operations are implemented; false unless a subclass says so.
    [[nodiscard]] virtual bool hasDataSets() const { return false; }
    /// None when not greater than 0.
    [[nodiscard]] virtual std::int32_t numberOfDataSetsInPlotView(TOLVGraphView& view);
    [[nodiscard]] virtual TOLVDataSet plotViewDataSetForIndex(TOLVGraphView& view, std::int32_t index);
};

/// Names of the settings that copying reads.
inline constexpr std::string_view kUsesFixedCopySizeKey = "TOLVPlot_UsesFixedCopySize";
inline constexpr std::string_view kFixedCopyWidthKey = "TOLVPlot_FixedCopyWidth";
inline constexpr std::string_view kFixedCopyHeightKey = "TOLVPlot_FixedCopyHeight";

/// Shows one graph in a window, on a page or in a picture: a white background and the graph in the view's bounds. It asks for redisplay when the graph announces a change that shows, loads series from a data source and
/// copies itself to the pasteboard. It answers no mouse or keyboard: a host calls the graph's operations with the view's bounds. Not flipped: y grows upwards as in the graph.
///
/// A graph that cannot be drawn (no series, unknown ranges) leaves the background.
class TOLVGraphView final : public View, public TOLVLegendViewDataSource {
    struct ConstructionKey {
        explicit ConstructionKey() = default;
    };

public:
    /// A view of a new graph. Points of the holding view.
    [[nodiscard]] static std::shared_ptr<TOLVGraphView> initWithFrame(const Rect& frame);
    TOLVGraphView(ConstructionKey, const Rect& frame);
    ~TOLVGraphView() override;

    /// A view of the same frame that shows the same graph (shared). Data source, background and lock are those of a new view.
    [[nodiscard]] std::shared_ptr<TOLVGraphView> copy() const;

    // Properties.

    /// Kept for hosts; nothing looks at it. False by default.
    [[nodiscard]] bool extentsLocked() const { return m_extentsLocked; }
    void setExtentsLocked(bool locked) { setProperty(m_extentsLocked, locked, "extentsLocked"); }
    /// Fills the bounds with white before the graph. True by default.
    [[nodiscard]] bool drawsBackground() const { return m_drawsBackground; }
    /// Asks for redisplay.
    void setDrawsBackground(bool draws);
    /// Shared. Null by default. May be asked for and set from any thread.
    [[nodiscard]] std::shared_ptr<TOLVGraphViewDataSource> dataSource() const;
    void setDataSource(std::shared_ptr<TOLVGraphViewDataSource> dataSource);
    /// Shared. Null shows the background only. A new graph is listened to, and asks for redisplay.
    [[nodiscard]] const std::shared_ptr<TOLVGraph>& graph() const { return m_graph; }
    void setGraph(const std::shared_ptr<TOLVGraph>& graph);

    /// Replaces the graph's series by those of the data source; without one, or with one that has no data sets, the graph is left empty. Announces "canDrawGraph" before and after, but not after where there are no data
    /// sets to ask for. The ranges stay: fitting them is the host's call.
    void reloadData();

    // Drawing.

    void drawRect(const Rect& dirtyRect) override;
    /// The background over the bounds and the graph in the rectangle.
    void drawInRect(const Rect& rect);

    // Responding. Gaining and losing the keyboard asks for redisplay.

    bool becomeFirstResponder() override;
    bool resignFirstResponder() override;
    /// "copy" needs a graph with series; every other command may be chosen.
    [[nodiscard]] bool validateUserInterfaceItem(const UserInterfaceItem& item) const override;
    /// Nothing set for "extentsLocked" is false; for every other name it is ignored.
    void setNilValueForKey(std::string_view key) override;

    // Copying.

    /// Puts the view on the general pasteboard as PDF, PostScript and TIFF, and then as EPS, SVG, PNG and the data as tab-separated columns. With the setting "TOLVPlot_UsesFixedCopySize" pictures have the size of the two other settings, as
    /// a user's document wants it, and (0, 0) where those are missing; the view has its own size again afterwards. The sender is not looked at.
    void copy(const View* sender);
    void writePDFInsideRect(const Rect& rect, Pasteboard& toPasteboard);
    void writeEPSInsideRect(const Rect& rect, Pasteboard& toPasteboard);
    void writeTIFFInsideRect(const Rect& rect, Pasteboard& toPasteboard);

protected:
    bool setPresentValueForKey(const PropertyValue& value, std::string_view key) override;

private:
    void startObservingGraph(const std::shared_ptr<TOLVGraph>& graph);
    void stopObservingGraph(const std::shared_ptr<TOLVGraph>& graph);
    void graphDidChangeKeyPathAffectingDisplay(std::string_view keyPath);
    /// The types behind the first three; the EPS is that of the PostScript type.
    void writeFurtherTypes(Pasteboard& pasteboard, Pasteboard::Data eps);

    bool m_extentsLocked = false;
    bool m_drawsBackground = true;
    mutable std::mutex m_dataSourceMutex;
    std::shared_ptr<TOLVGraphViewDataSource> m_dataSource;
    std::shared_ptr<TOLVGraph> m_graph;
    std::vector<ObserverToken> m_graphTokens;
};

/// The samples of a graph's series as text: for each series two columns separated by tabs, x and y, under its name ("y" without one), in the order of the graph; columns of shorter series end in empty fields. Separators and
/// line ends in names become blanks. Numbers are the shortest texts that read back as the same float. Empty without series.
[[nodiscard]] std::string tabSeparatedData(const std::vector<std::shared_ptr<TOLVGraphData>>& series);

} // namespace TOLVGraphing
