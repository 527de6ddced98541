#pragma once

#include "DateStep.h"
#include "TOLVAxis.h"
#include <TOLVMath/Export.h>

#include <optional>

namespace TOLVGraphing {

/// An evenly scaled axis of instants. Values are days since `origin()`, whole or not, and days have 86400 seconds, in UTC. Values are single precision, which knows today's date since 1970 to three minutes: whoever has seconds
/// takes the first day as the origin and subtracts it in double precision.
///
/// Ticks stand at natural instants. Major ones stand at the shortest of these steps whose ticks are at least 80 points apart: 1, 2, 5, 10, 15, 30 seconds; 1, 2, 5, 10, 15, 30 minutes; 1, 2, 3, 6, 12 hours; 1, 2, 7 days (7: on Mondays); 1, 3, 6 months;
/// 1, 2, 5, 10, 20, 50, ... 5000 years; below a second 0.5, 0.2, 0.1, 0.05, ... seconds, down to a nanosecond. Minor ones stand at the shortest of the same steps that has all major ticks among its own, and is at least 6 points long; between months that have no room for days they stand at Mondays, without those next to the first of a month. Months and years are those of the
/// calendar and count as long as the shortest of them. No step is shorter than four times the distance of the floats at the ends of the range or than a two-hundredth of the range, a thousandth for minor ones.
///
/// Only instants of the years 0 to 9999 are ticks, and a range has none where even 5000 years would stand too close; an empty range and one that is reversed or not finite have none either. Labels are
/// dates with a DateTickFormatter:
///
///     graph->setHorizontalAxis(std::make_shared<TOLVDateAxis>());
///     graph->horizontalAxis()->setTickLabelFormatter(std::make_shared<DateTickFormatter>(graph->horizontalAxis()));
class TOLV_EXPORT TOLVDateAxis final : public TOLVAxis {
public:
    /// For a graph, which is referred to weakly; none is allowed. The origin is 0.
    TOLVDateAxis();
    explicit TOLVDateAxis(std::weak_ptr<TOLVGraph> graph);

    /// The base's copy with the origin; the steps are chosen anew at the next preparation.
    [[nodiscard]] std::shared_ptr<TOLVAxis> copy() const override;
    /// The keys that every axis has, and "origin".
    void encodeWithCoder(KeyedArchiver& coder) const override;
    /// A missing origin reads as 0. Throws ArchiveError for one that is not finite or lies outside the years 0 to 9999.
    [[nodiscard]] static std::shared_ptr<TOLVDateAxis> initWithCoder(KeyedUnarchiver& coder);
    [[nodiscard]] std::string archiveClassName() const override { return "TOLVDateAxis"; }
    [[nodiscard]] std::vector<std::string> archiveBaseClassNames() const override { return {"TOLVAxis"}; }

    /// What the value 0 stands for, in days since 1970-01-01 00:00 UTC, whole or not. 0 by default. Setting one that is not finite or lies outside the years 0 to 9999 sets 0. Values and range are not changed: they mean other instants
    /// then. Ticks follow at the next preparation.
    [[nodiscard]] double origin() const { return m_origin; }
    void setOrigin(double origin);

    /// The steps between major and between minor values; nothing before the first preparation, and where the range or the rectangle has no room for one.
    [[nodiscard]] const std::optional<DateStep>& majorStep() const { return m_majorStep; }
    [[nodiscard]] const std::optional<DateStep>& minorStep() const { return m_minorStep; }

    [[nodiscard]] float valueForPoint(double point, const Rect& inRect) const override;
    [[nodiscard]] float pointForValue(float value, const Rect& inRect) const override;
    void updateStepsInRect(const Rect& rect) override;
    /// A new object each time.
    [[nodiscard]] std::shared_ptr<TOLVMapping> mappingForRect(const Rect& rect) const override;
    /// Values inside the range, both ends included, once they are narrowed to single precision: each is the instant less the origin in double precision. No more than ten thousand of either kind, whatever range has been set since the steps were chosen.
    void getMajorValues(Values* majorValues, Values* minorValues) const override;

private:
    double m_origin = 0.0;
    std::optional<DateStep> m_majorStep;
    std::optional<DateStep> m_minorStep;
};

} // namespace TOLVGraphing
