#pragma once

#include "../platform/text/NumberFormatter.h"
#include "../platform/text/TextAttributes.h"
#include "CalloutLabel.h"
#include "TOLVGraphDrawing.h"
#include <TOLVMath/Export.h>

#include <memory>
#include <vector>

namespace TOLVGraphing {

/// Draws series over the categories of a TOLVLineAxis: a tinted area, a line through the samples, a dot at each sample and above it a callout with its value. Later series lie on top of earlier ones, the callouts on
/// top of all. A callout that would cover a dot or one chosen before it is left out: lower categories go first, within a category the higher callout.
///
/// The dots are those of CurveGraphDrawing::drawDotsForPoints. A series without a line style or a colour has neither area nor dots, and its line is stroked as the context is set or in black.
///
/// With any other horizontal axis nothing is drawn, and neither while the visible x range lies between two samples of a series. Samples without a finite position have neither dot nor callout, and the line
/// passes them over.
class TOLV_EXPORT LineGraphDrawing final : public TOLVGraphDrawing, public TOLVGraphCalloutLayout {
public:
    /// Callouts in decimal style.
    LineGraphDrawing();
    /// Callouts in a host's own style; the formatter is copied. Null, and values that it has no text for, give no callouts.
    explicit LineGraphDrawing(const std::shared_ptr<const NumberFormatter>& calloutLabelFormatter);

    /// Copied. Turns ordinates into the callouts' texts; null for none.
    [[nodiscard]] const std::shared_ptr<NumberFormatter>& calloutLabelFormatter() const { return m_calloutLabelFormatter; }
    /// Black, HelveticaNeue at 11 points.
    [[nodiscard]] const SharedTextAttributes& calloutLabelAttributes() const { return m_calloutLabelAttributes; }

    void drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect) override;
    [[nodiscard]] std::vector<CalloutPlacement> calloutPlacements(const TOLVGraph& graph, const Rect& inRect) const override;

private:
    std::shared_ptr<NumberFormatter> m_calloutLabelFormatter;
    SharedTextAttributes m_calloutLabelAttributes;
};

/// The largest number of ordinates that a series has in the graph's visible x range; 0 when there are none.
[[nodiscard]] TOLV_EXPORT std::size_t maximumGraphDataLength(const TOLVGraph& graph);

} // namespace TOLVGraphing
