#include "TOLVRealVector.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <mutex>
#include <utility>

namespace TOLVGraphing {

namespace {

/// The index of the first sample that no other one is `better` than, NaN passed over; nothing when no sample is left.
template <typename Better>
std::optional<std::size_t> indexOfExtreme(const float* samples, std::size_t length, Better better)
{
    std::size_t best = 0;
    while (best < length && std::isnan(samples[best]))
        ++best;
    if (best == length)
        return std::nullopt;
    // A comparison with NaN is false, so NaN never wins.
    for (std::size_t i = best + 1; i < length; ++i) {
        if (better(samples[i], samples[best]))
            best = i;
    }
    return best;
}

} // namespace

/// What is known of a range of samples.
struct TOLVRealVector::Extremes {
    std::once_flag minimumIsKnown;
    std::once_flag maximumIsKnown;
    std::optional<std::size_t> minimum;
    std::optional<std::size_t> maximum;
};

TOLVRealVector::TOLVRealVector(Storage storage, const float* components, std::size_t length)
    : m_storage(std::move(storage))
    , m_components(components)
    , m_length(length)
    , m_extremes(std::make_shared<Extremes>())
{
}

std::shared_ptr<const TOLVRealVector> TOLVRealVector::vectorWithComponents(std::vector<float> components)
{
    auto storage = std::make_shared<const std::vector<float>>(std::move(components));
    const float* first = storage->data();
    const std::size_t length = storage->size();
    return std::shared_ptr<const TOLVRealVector>(new TOLVRealVector(std::move(storage), first, length));
}

std::shared_ptr<const TOLVRealVector> TOLVRealVector::vector()
{
    return vectorWithComponents({});
}

bool TOLVRealVector::report(const std::optional<std::size_t>& found, float* extreme, std::size_t* location) const
{
    if (!found)
        return false;
    if (extreme)
        *extreme = m_components[*found];
    if (location)
        *location = *found;
    return true;
}

bool TOLVRealVector::getMinimum(float* minimum, std::size_t* location) const
{
    std::call_once(m_extremes->minimumIsKnown, [this] { m_extremes->minimum = indexOfExtreme(m_components, m_length, std::less<float>()); });
    return report(m_extremes->minimum, minimum, location);
}

bool TOLVRealVector::getMaximum(float* maximum, std::size_t* location) const
{
    std::call_once(m_extremes->maximumIsKnown, [this] { m_extremes->maximum = indexOfExtreme(m_components, m_length, std::greater<float>()); });
    return report(m_extremes->maximum, maximum, location);
}

std::shared_ptr<const TOLVRealVector> TOLVRealVector::realVectorInRange(std::uint64_t location, std::uint64_t length) const
{
    const auto start = static_cast<std::size_t>(std::min<std::uint64_t>(location, m_length));
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(length, m_length - start));
    auto slice = std::shared_ptr<TOLVRealVector>(new TOLVRealVector(m_storage, m_components + start, count));
    if (count == m_length)
        slice->m_extremes = m_extremes;
    return slice;
}

std::shared_ptr<const TOLVRealVector> TOLVRealVector::copy() const
{
    return realVectorInRange(0, m_length);
}

} // namespace TOLVGraphing
