#pragma once

#include "../data/TOLVGraphData.h"
#include "../platform/geometry/EdgeInsets.h"
#include "../platform/ui/Pasteboard.h"
#include "../platform/ui/View.h"
#include "TOLVLegendView.h"
#include <TOLVMath/Export.h>

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
    /// Shared, in data units.
    TOLVGraphData::Samples x;
    TOLVGraphData::Samples y;
    /// What the series' line is drawn in. Shared. Without a line style the series has none, whatever the colour; with one it has the style's own colour: see TOLVGraphData::graphDataWithX.
    std::optional<Color> color;
    std::shared_ptr<TOLVLineStyle> lineStyle;
};

/// What a graph view may ask for its series. Both operations are optional; a view asks for them only where both are there.
class TOLV_EXPORT TOLVGraphViewDataSource {
public:
    virtual ~TOLVGraphViewDataSource();

    /// True when both operations are implemented; false unless a subclass says so.
    [[nodiscard]] virtual bool hasDataSets() const { return false; }
    /// How many series there are; none when not greater than 0. 0 unless a subclass says so.
    [[nodiscard]] virtual std::int32_t numberOfDataSetsInPlotView(TOLVGraphView& view);
    /// The series at a position, from 0 to before that number. An empty one unless a subclass says so.
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
class TOLV_EXPORT TOLVGraphView final : public View, public TOLVLegendViewDataSource {
    friend class MarginsOnlyGrow;

    struct ConstructionKey {
        explicit ConstructionKey() = default;
    };

public:
    /// A view of a new graph. The frame is in the coordinates of the view that will hold it, in points.
    [[nodiscard]] static std::shared_ptr<TOLVGraphView> initWithFrame(const Rect& frame);
    /// For `initWithFrame` only.
    TOLVGraphView(ConstructionKey, const Rect& frame);
    ~TOLVGraphView() override;

    /// A view of the same frame that shows the same graph (shared) and fits its margins as this one does. Data source, background and lock are those of a new view.
    [[nodiscard]] std::shared_ptr<TOLVGraphView> copy() const;

    // Properties.

    /// Kept for hosts; nothing looks at it. False by default.
    [[nodiscard]] bool extentsLocked() const { return m_extentsLocked; }
    void setExtentsLocked(bool locked) { setProperty(m_extentsLocked, locked, "extentsLocked"); }
    /// Fills the bounds with white before the graph. True by default.
    [[nodiscard]] bool drawsBackground() const { return m_drawsBackground; }
    /// Asks for redisplay.
    void setDrawsBackground(bool draws);
    /// Fits the graph's margins to its labels, as `fitMargins` does, each time `drawRect` draws: on the screen, on a page and in a copy each for its own size. False by default: the margins are the host's. Asks for redisplay.
    [[nodiscard]] bool fitsMarginsToLabels() const { return m_fitsMarginsToLabels; }
    void setFitsMarginsToLabels(bool fits);
    /// Shared. Null by default. May be asked for and set from any thread.
    [[nodiscard]] std::shared_ptr<TOLVGraphViewDataSource> dataSource() const;
    void setDataSource(std::shared_ptr<TOLVGraphViewDataSource> dataSource);
    /// Shared. Null shows the background only. A new graph is listened to, and asks for redisplay.
    [[nodiscard]] const std::shared_ptr<TOLVGraph>& graph() const { return m_graph; }
    void setGraph(const std::shared_ptr<TOLVGraph>& graph);

    /// Replaces the graph's series by those of the data source; without one, or with one that has no data sets, the graph is left empty. Announces "canDrawGraph" before and after, but not after where there are no data
    /// sets to ask for. The ranges stay: fitting them is the host's call. What the data source throws passes through, with the series that it gave before and the announcement made.
    void reloadData();

    // Margins.

    /// Sets the graph's margins to the smallest that leave every label whole in the bounds (fitMarginsToLabels). A graph without any padding gets one of 8 points on each side, white space around everything as a sheet has it; another padding
    /// stays as it is. Does nothing for a graph that cannot be drawn. Asks for no redisplay.
    void fitMargins();
    /// Gives the graph the margins that this view fitted last, which another view of the same graph may have fitted to its own size since; what follows then answers for this view. Does nothing while the view does not fit margins.
    void useFittedMargins();

    // Drawing.

    void drawRect(const Rect& dirtyRect) override;
    /// The background over the bounds and the graph in the rectangle (own coordinates), into the current context; nothing without one.
    void drawInRect(const Rect& rect);

    // Responding. Gaining and losing the keyboard asks for redisplay.

    bool becomeFirstResponder() override;
    bool resignFirstResponder() override;
    /// "copy" needs a graph with series; every other command may be chosen.
    [[nodiscard]] bool validateUserInterfaceItem(const UserInterfaceItem& item) const override;
    /// Nothing set for "extentsLocked" is false; for every other name it is ignored.
    void setNilValueForKey(std::string_view key) override;

    // Copying.

    /// Puts the view on the general pasteboard as PDF, PostScript and TIFF, and then as EPS, SVG, PNG and the data as tab-separated columns. SVG, PNG and text are made when somebody asks for them,
    /// of a snapshot: they show the graph as it is now. The SVG and the PNG of a view that holds other views are made at once. With the setting "TOLVPlot_UsesFixedCopySize" pictures have the size of the two other settings, as
    /// a user's document wants it, and (0, 0) where those are missing; the view has its own size again afterwards. The sender is not looked at and may be null. Data are
    /// empty without a document renderer; what it throws passes through, and the pasteboard is then not finished.
    void copy(const View* sender);
    /// Puts the part of the view that lies in the rectangle (own coordinates) as a document on the pasteboard: PDF, EPS under the type of PostScript, or TIFF. The type has to be declared, otherwise nothing happens.
    void writePDFInsideRect(const Rect& rect, Pasteboard& toPasteboard);
    void writeEPSInsideRect(const Rect& rect, Pasteboard& toPasteboard);
    void writeTIFFInsideRect(const Rect& rect, Pasteboard& toPasteboard);

protected:
    bool setPresentValueForKey(const PropertyValue& value, std::string_view key) override;

private:
    void startObservingGraph(const std::shared_ptr<TOLVGraph>& graph);
    void stopObservingGraph(const std::shared_ptr<TOLVGraph>& graph);
    void graphDidChangeKeyPathAffectingDisplay(std::string_view keyPath);
    /// A view that draws what this one draws now, whatever becomes of this one, its frame and its graph.
    [[nodiscard]] std::shared_ptr<TOLVGraphView> snapshot();
    void writeDocument(OutputKind kind, std::string_view type, const std::shared_ptr<TOLVGraphView>& shown, Pasteboard& pasteboard);
    /// The types behind the first three; the EPS is that of the PostScript type.
    void writeFurtherTypes(Pasteboard& pasteboard, Pasteboard::Data eps);

    bool m_extentsLocked = false;
    bool m_drawsBackground = true;
    bool m_fitsMarginsToLabels = false;
    /// How many scopes keep the margins from shrinking.
    int m_growingScopes = 0;
    std::optional<EdgeInsets> m_fittedMargin;
    mutable std::mutex m_dataSourceMutex;
    std::shared_ptr<TOLVGraphViewDataSource> m_dataSource;
    std::shared_ptr<TOLVGraph> m_graph;
    std::vector<ObserverToken> m_graphTokens;
};

/// Keeps the margins that a view fits to its labels from becoming smaller for the life of the scope, so that the data area does not go to and fro while something is dragged. Scopes nest. Afterwards a view that fits margins is asked to draw again.
class TOLV_EXPORT MarginsOnlyGrow {
public:
    /// The view is shared. Throws Exception "NullView" for null.
    explicit MarginsOnlyGrow(std::shared_ptr<TOLVGraphView> view);
    ~MarginsOnlyGrow();
    MarginsOnlyGrow(const MarginsOnlyGrow&) = delete;
    MarginsOnlyGrow& operator=(const MarginsOnlyGrow&) = delete;

private:
    std::shared_ptr<TOLVGraphView> m_view;
};

/// The samples of a graph's series as text: for each series two columns separated by tabs, x and y, under its name ("y" without one), in the order of the graph; columns of shorter series end in empty fields. Separators and
/// line ends in names become blanks. Numbers are the shortest texts that read back as the same float. A null is left out. Empty without series.
[[nodiscard]] TOLV_EXPORT std::string tabSeparatedData(const std::vector<std::shared_ptr<TOLVGraphData>>& graphData);

} // namespace TOLVGraphing
