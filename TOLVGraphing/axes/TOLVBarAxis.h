#pragma once

#include "CategoryRanges.h"
#include "TOLVAxis.h"
#include <TOLVMath/Export.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing {

/// The horizontal axis of a bar chart: a row of equally wide category slots, one for each sample of the series shown, with texts that the host supplies. There are no numeric ticks and no grid lines.
///
/// Each of the graph's series is cut to the samples whose abscissae lie in the axis's range; the longest such cut, that of the representative series, says how many slots there are and which
/// abscissae they stand for. Where the range lies between two samples of one series there are no categories, whatever the other series have.
///
/// Slots depend on the horizontal extent of a rectangle only. Conversions go between a value and the centre of the slot whose abscissa is nearest to it, so a zoom step ends at abscissae and does nothing while
/// its ends stay nearest to the same slots, or without slots. What lies outside the visible range has no slot, so that zooming out and panning cannot show it: hosts set a wider range or fit to the data. The number of slots is that of the last preparation; until one, or without categories, conversions answer 0 and nothing is drawn. A value that is NaN and
/// a coordinate that is not finite give NaN.
///
/// As the axis has no continuous scale, `mappingForRect`, `getPoints` and `getMajorPoints` throw UnrecognizedOperation.
class TOLV_EXPORT TOLVBarAxis : public TOLVAxis {
public:
    /// The texts of categories, in UTF-8.
    using TickLabels = std::vector<std::string>;
    using TOLVAxis::TOLVAxis;

    /// The base's copy with the same tick labels (shared); the slots are counted at the next preparation.
    [[nodiscard]] std::shared_ptr<TOLVAxis> copy() const override;
    /// The keys that every axis has. The slots and their texts are not archived.
    [[nodiscard]] static std::shared_ptr<TOLVBarAxis> initWithCoder(KeyedUnarchiver& coder);
    [[nodiscard]] std::string archiveClassName() const override { return "TOLVBarAxis"; }
    [[nodiscard]] std::vector<std::string> archiveBaseClassNames() const override { return {"TOLVAxis"}; }

    // Properties.

    /// The number of slots; 0 before the first preparation.
    [[nodiscard]] std::uint64_t dataPointCount() const { return m_dataPointCount; }
    /// The next preparation counts anew.
    void setDataPointCount(std::uint64_t count) { m_dataPointCount = count; }
    /// Copied. The texts of the categories, one for each sample of a full series, so that zooming does not move them; null by default, and for nothing set. With fewer texts than slots no category is labelled.
    [[nodiscard]] const std::shared_ptr<const TickLabels>& tickLabels() const { return m_tickLabels; }
    void setTickLabels(std::optional<TickLabels> tickLabels);

    // Categories.

    /// One range of indices for each series of the graph, as `visibleSampleRange` has them; nothing when the axis's range lies between two samples of one of them, or without a graph.
    [[nodiscard]] std::optional<std::vector<IndexRange>> extentsConstrainedGraphDataRanges() const;
    /// The series with the longest range, the first of several; kNotFoundIndex when the graph has no series, 0 when there are no ranges.
    [[nodiscard]] std::int64_t indexOfRepresentativeXData() const;
    /// The representative series' abscissae in its range, or null.
    [[nodiscard]] std::shared_ptr<const TOLVRealVector> representativeXData() const;
    /// The representative series' range; its location is kNotFoundIndex when there is none.
    [[nodiscard]] IndexRange representativeXDataRange() const;
    /// The centre (points) of a slot on the axis, for any index from 0, also one past the last slot: slots are 20 points apart and from both ends, and run backwards in a rectangle narrower than that. Not finite while there are no slots.
    [[nodiscard]] double pointForDataAtIndex(std::uint64_t index, const Rect& inRect) const;

    // What TOLVAxis has, for categories.

    /// Both lists are empty.
    void getMajorValues(Values* majorValues, Values* minorValues) const override;
    /// Counts the slots.
    void updateStepsInRect(const Rect& rect) override;
    /// The abscissa of the slot whose centre is nearest to the coordinate.
    [[nodiscard]] float valueForPoint(double point, const Rect& inRect) const override;
    /// The centre of the slot whose abscissa is nearest to the value.
    [[nodiscard]] float pointForValue(float value, const Rect& inRect) const override;
    /// The frame around the data area.
    void drawMajorLinesInRect(const Rect& rect) const override;
    /// Nothing.
    void drawMinorLinesInRect(const Rect& rect) const override;
    /// The texts of the categories at their slots, centred, without those that would come closer than 2 points to one before them.
    void drawTickLabelsInRect(const Rect& rect) const override;
    /// The same; categories beyond the end of the axis are not listed.
    [[nodiscard]] LabelPlacements tickLabelPlacements(const Rect& inRect) const override;

    /// Counts the slots first: those of the last preparation may be others than the range has now. Does nothing without slots, whose conversions mean nothing.
    void zoomToPoints(double fromPoint, double toPoint, const Rect& inRect) override;

protected:
    /// Gives the other axis the same tick labels (shared).
    void copyTickLabelsInto(TOLVBarAxis& axis) const { axis.m_tickLabels = m_tickLabels; }

private:
    const CategoryRanges& currentRanges() const;
    [[nodiscard]] std::shared_ptr<TOLVLabel> labelForCategory(const std::string& text, double centre, const Rect& strip) const;

    std::uint64_t m_dataPointCount = 0;
    std::shared_ptr<const TickLabels> m_tickLabels;
    mutable CategoryRanges m_ranges;
};

} // namespace TOLVGraphing
