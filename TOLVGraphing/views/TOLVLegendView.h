#pragma once

#include "../platform/graphics/Color.h"
#include "../platform/ui/View.h"
#include <TOLVMath/Export.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing {

class TOLVLegendView;

/// One line of a legend: a title and the colour of the swatch beside it (none draws no swatch).
struct TOLVLegendEntry {
    /// In UTF-8.
    std::string title;
    /// Nothing draws no swatch.
    std::optional<Color> color;

    friend bool operator==(const TOLVLegendEntry&, const TOLVLegendEntry&) = default;
};

/// What a legend view may ask for its entries. The operation is optional.
class TOLV_EXPORT TOLVLegendViewDataSource {
public:
    /// The lines of a legend, from the top.
    using Entries = std::vector<TOLVLegendEntry>;

    virtual ~TOLVLegendViewDataSource();

    /// True when `entriesForLegendView` is implemented; false unless a subclass says so.
    [[nodiscard]] virtual bool hasEntriesForLegendView() const { return false; }
    /// The entries for the view; none unless a subclass says so.
    [[nodiscard]] virtual Entries entriesForLegendView(TOLVLegendView& view);
};

/// A list of titles in Helvetica at 10 points, right-aligned, each with a swatch of its colour at the right edge. Flipped: y grows downwards from the upper edge.
class TOLV_EXPORT TOLVLegendView final : public View {
public:
    /// The lines of a legend, from the top.
    using Entries = TOLVLegendViewDataSource::Entries;

    /// The entries are copied.
    [[nodiscard]] static std::shared_ptr<TOLVLegendView> initWithEntries(Entries entries, const Rect& frame);
    /// A legend without entries.
    explicit TOLVLegendView(const Rect& frame) : View(frame) {}

    /// Copied. Asks for redisplay when the entries are others.
    [[nodiscard]] const Entries& entries() const { return m_entries; }
    void setEntries(Entries entries);
    /// Weak. Where it has entries, they replace the view's own each time the view is drawn. Asks for redisplay when it is another one.
    [[nodiscard]] std::shared_ptr<TOLVLegendViewDataSource> dataSource() const { return m_dataSource.lock(); }
    void setDataSource(std::weak_ptr<TOLVLegendViewDataSource> dataSource);

    [[nodiscard]] bool isFlipped() const override { return true; }
    /// Swatches are placed in the bounds, titles in the rectangle; the two agree when the whole view is drawn.
    void drawRect(const Rect& dirtyRect) override;

private:
    Entries m_entries;
    std::weak_ptr<TOLVLegendViewDataSource> m_dataSource;
};

} // namespace TOLVGraphing
