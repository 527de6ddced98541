#pragma once

#include "../platform/foundation/KeyedArchiver.h"
#include <TOLVMath/Export.h>

#include <cstdint>
#include <memory>

namespace TOLVGraphing {

/// A mark that a user places at one data value of one axis.
class TOLV_EXPORT TOLVMarker : public Codable {
public:
    /// A marker is always made with a value.
    TOLVMarker() = delete;
    /// On the horizontal axis; any number will do, but one that the axis has no place for, as NaN, gets no badge.
    explicit TOLVMarker(double value) : m_value(value) {}
    [[nodiscard]] static std::shared_ptr<TOLVMarker> markerWithValue(double value);

    /// In data units, double precision; axes narrow it to single precision to place it.
    [[nodiscard]] double value() const { return m_value; }
    void setValue(double value) { m_value = value; }
    /// 0, the default, is the horizontal axis and 1 the vertical one; others belong to no axis.
    [[nodiscard]] std::int64_t axisIndex() const { return m_axisIndex; }
    void setAxisIndex(std::int64_t axisIndex) { m_axisIndex = axisIndex; }

    /// An equal, independent marker. A subclass overrides it: what is dragged and what a picture is taken of are copies.
    [[nodiscard]] virtual std::shared_ptr<TOLVMarker> copy() const;

    /// Keys "value" and "axisIndex".
    void encodeWithCoder(KeyedArchiver& coder) const override;
    /// Null when there is no "value"; a missing "axisIndex" is 0.
    [[nodiscard]] static std::shared_ptr<TOLVMarker> initWithCoder(KeyedUnarchiver& coder);
    [[nodiscard]] std::string archiveClassName() const override { return "TOLVMarker"; }

private:
    double m_value;
    std::int64_t m_axisIndex = 0;
};

} // namespace TOLVGraphing
