#pragma once

#include "../data/TOLVLabel.h"
#include "../platform/geometry/EdgeInsets.h"
#include "../platform/geometry/Rect.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace TOLVGraphing {

/// What became of a label that was placed.
enum class LabelFate : std::uint8_t {
    Kept,      ///< it is drawn
    Collides,  ///< it overlaps a label kept before it
    Outside,   ///< its centre lies beyond the ends of its strip
    NotFinite, ///< its place is no number, as that of a negative value on a logarithmic axis
};

/// A label that an axis placed for a value, and what became of it.
struct LabelPlacement {
    /// In data units.
    double value = 0.0;
    /// Its rectangle is in view units (points, y growing upwards). Never null.
    std::shared_ptr<TOLVLabel> label;
    /// The label belongs to a major value; markers and categories have no other kind.
    bool isMajor = true;
    /// What became of it.
    LabelFate fate = LabelFate::Kept;
    /// The label kept before that this one collides with, the first of several; null unless the fate is Collides.
    std::shared_ptr<const TOLVLabel> collidesWith;
};

/// Placed labels in the order in which they were chosen.
using LabelPlacements = std::vector<LabelPlacement>;

/// The first of the labels that the label overlaps, see TOLVLabel::overlapsLabelInArray, whose default insets (points) hold without others; null for none, as for a label without area. Nulls in the list are passed over.
[[nodiscard]] TOLV_EXPORT std::shared_ptr<TOLVLabel> firstOverlappedLabel(
    const TOLVLabel& label, const std::vector<std::shared_ptr<TOLVLabel>>& labels, const std::optional<EdgeInsets>& withInsets = std::nullopt);
/// The labels that are drawn, in order.
[[nodiscard]] TOLV_EXPORT std::vector<std::shared_ptr<TOLVLabel>> keptLabels(const LabelPlacements& placements);

} // namespace TOLVGraphing
