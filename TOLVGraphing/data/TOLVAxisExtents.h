#pragma once

#include "../platform/foundation/KeyedArchiver.h"
#include "../platform/foundation/Observable.h"
#include <TOLVMath/Export.h>

#include <memory>
#include <string>

namespace TOLVGraphing {

/// The visible range of one axis in data units, double precision; axes narrow it to single precision. Nothing is enforced: the minimum may exceed the maximum and both may be anything, NaN included; what then becomes of
/// ticks and positions, TOLVAxis says. Changes of "min" and "max" are announced.
class TOLV_EXPORT TOLVAxisExtents final : public Codable, public Observable {
public:
    /// Both ends at 0.
    TOLVAxisExtents() = default;
    /// The range from one end to the other, in data units.
    [[nodiscard]] static std::shared_ptr<TOLVAxisExtents> extentsWithMin(double min, double max);

    /// An end of the range, in data units. 0 by default. Setting announces the change.
    [[nodiscard]] double min() const { return m_min; }
    void setMin(double min) { setProperty(m_min, min, "min"); }
    [[nodiscard]] double max() const { return m_max; }
    void setMax(double max) { setProperty(m_max, max, "max"); }

    /// An equal, independent object; observers are not copied.
    [[nodiscard]] std::shared_ptr<TOLVAxisExtents> copy() const;

    /// Keys "min" and "max".
    void encodeWithCoder(KeyedArchiver& coder) const override;
    /// A missing key gives 0.
    [[nodiscard]] static std::shared_ptr<TOLVAxisExtents> initWithCoder(KeyedUnarchiver& coder);
    [[nodiscard]] std::string archiveClassName() const override { return "TOLVAxisExtents"; }

    friend bool operator==(const TOLVAxisExtents& a, const TOLVAxisExtents& b) { return a.m_min == b.m_min && a.m_max == b.m_max; }

private:
    double m_min = 0.0;
    double m_max = 0.0;
};

/// "[min, max]".
[[nodiscard]] TOLV_EXPORT std::string toString(const TOLVAxisExtents& extents);

} // namespace TOLVGraphing
