#pragma once

#include "../mapping/TOLVLinearMapping.h"
#include "TOLVAxis.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// An evenly scaled axis. Major values stand at whole multiples of a power of ten, so that there are one to ten of them; minor values at the finest of a tenth, a fifth and
/// a half of that step whose lines are at least 4 points apart.
class TOLV_EXPORT TOLVLinearAxis final : public TOLVAxis {
public:
    /// For a graph, which is referred to weakly; none is allowed. The steps are 0.
    TOLVLinearAxis();
    explicit TOLVLinearAxis(std::weak_ptr<TOLVGraph> graph);

    /// The base's copy with a copy of the mapping; the steps are chosen anew at the next preparation.
    [[nodiscard]] std::shared_ptr<TOLVAxis> copy() const override;
    /// The keys that every axis has; steps and mapping are not archived.
    [[nodiscard]] static std::shared_ptr<TOLVLinearAxis> initWithCoder(KeyedUnarchiver& coder);
    [[nodiscard]] std::string archiveClassName() const override { return "TOLVLinearAxis"; }
    [[nodiscard]] std::vector<std::string> archiveBaseClassNames() const override { return {"TOLVAxis"}; }

    /// The distance between major values in data units, 0 before the first preparation. Each preparation overwrites both steps. A step so small that it would give
    /// more than a million values lists the first million; one that is 0 or not finite lists none, a negative one at most one.
    [[nodiscard]] double majorStep() const { return m_majorStep; }
    void setMajorStep(double step) { m_majorStep = step; }
    /// The distance between minor values in data units, otherwise as `majorStep`.
    [[nodiscard]] double minorStep() const { return m_minorStep; }
    void setMinorStep(double step) { m_minorStep = step; }
    /// Shared. The mapping that `mappingForRect` sets up and answers; never null, setting null gives the axis a new one.
    [[nodiscard]] const std::shared_ptr<TOLVLinearMapping>& valueMap() const { return m_valueMap; }
    void setValueMap(std::shared_ptr<TOLVLinearMapping> map) { m_valueMap = map ? std::move(map) : std::make_shared<TOLVLinearMapping>(); }

    [[nodiscard]] float valueForPoint(double point, const Rect& inRect) const override;
    [[nodiscard]] float pointForValue(float value, const Rect& inRect) const override;
    void updateStepsInRect(const Rect& rect) override;
    /// Always the same object, set up anew: do not keep it across rectangles.
    [[nodiscard]] std::shared_ptr<TOLVMapping> mappingForRect(const Rect& rect) const override;
    /// A range that is empty, reversed or NaN gives no values. The first major value may lie up to half a step below the range.
    void getMajorValues(Values* majorValues, Values* minorValues) const override;

private:
    double m_minorStep = 0.0;
    double m_majorStep = 0.0;
    std::shared_ptr<TOLVLinearMapping> m_valueMap;
};

} // namespace TOLVGraphing
