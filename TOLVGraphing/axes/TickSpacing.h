#pragma once

#include <TOLVMath/Export.h>

#include <memory>
#include <optional>

namespace TOLVGraphing {

class TOLVAxis;

/// How far apart an axis's tick values stand, which is what decides how exactly its labels, callouts and badges are written. The ticks are the major and minor values of the
/// axis's last preparation together, ascending as the axis lists them, each narrowed to single precision, because labels are made of floats; equal ones count once and those
/// that are not finite not at all. Two ticks that lie within a few units in the last place of each other, and a hundred times further from the others, count as one: they stand at one place.
///
/// The axis is referred to weakly and looked at anew by each question. A question takes a time logarithmic in the number of ticks and no memory. Distances are in data units.
class TOLV_EXPORT TickSpacing {
public:
    /// What a value has to be told apart from.
    struct Resolution {
        /// For a tick the distance to the nearest other one; for any other value a hundredth of the distance between the ticks on both its sides, or outside of all ticks
        /// between the two nearest ones. Positive and finite.
        double distance = 0.0;
        /// The value is a tick.
        bool isTick = false;
    };

    /// All ticks at once; there are two or more of them.
    struct Span {
        /// The first tick and the last, in data units.
        double smallest = 0.0;
        double largest = 0.0;
        /// The smaller one of the distances between the first two ticks and between the last two.
        double distance = 0.0;
        /// The two distances are of one size, as on a linear axis. On a logarithmic one they are not, unless it shows hardly more than a decade.
        bool isEven = false;
    };

    /// No axis is allowed: then nothing is known.
    explicit TickSpacing(std::weak_ptr<const TOLVAxis> axis = {});

    /// Null when there is none any more.
    [[nodiscard]] std::shared_ptr<const TOLVAxis> axis() const { return m_axis.lock(); }

    /// Nothing without an axis, with less than two ticks, or for a value that is not finite in single precision.
    [[nodiscard]] std::optional<Resolution> resolutionForValue(double value) const;
    /// Nothing without an axis or with less than two ticks.
    [[nodiscard]] std::optional<Span> span() const;

private:
    std::weak_ptr<const TOLVAxis> m_axis;
};

} // namespace TOLVGraphing
