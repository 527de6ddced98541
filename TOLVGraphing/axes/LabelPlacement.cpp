#include "LabelPlacement.h"

#include <algorithm>
#include <span>

namespace TOLVGraphing {

std::shared_ptr<TOLVLabel> firstOverlappedLabel(const TOLVLabel& label, const std::vector<std::shared_ptr<TOLVLabel>>& labels, const std::optional<EdgeInsets>& withInsets)
{
    // Nothing overlaps a label without area, however many there are.
    if (label.rect().isEmpty())
        return nullptr;
    const auto overlaps = [&](const std::shared_ptr<TOLVLabel>& placed) {
        const std::span one(&placed, 1);
        return withInsets ? label.overlapsLabelInArray(one, *withInsets) : label.overlapsLabelInArray(one);
    };
    const auto found = std::find_if(labels.begin(), labels.end(), overlaps);
    return found == labels.end() ? nullptr : *found;
}

std::vector<std::shared_ptr<TOLVLabel>> keptLabels(const LabelPlacements& placements)
{
    std::vector<std::shared_ptr<TOLVLabel>> labels;
    labels.reserve(placements.size());
    for (const LabelPlacement& placement : placements) {
        if (placement.fate == LabelFate::Kept)
            labels.push_back(placement.label);
    }
    return labels;
}

} // namespace TOLVGraphing
