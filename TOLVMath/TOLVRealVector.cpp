#include "TOLVRealVector.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace TOLVGraphing {

namespace {

/// Finds the first sample that no other sample is `better` than, NaN passed over.
template <typename Better>
bool findExtreme(const float* samples, std::size_t length, float* extreme, std::size_t* location, Better better)
{
    std::size_t best = 0;
    while (best < length && std::isnan(samples[best]))
        ++best;
    if (best == length)
        return false;
    // A comparison with NaN is false, so NaN never wins.
    for (std::size_t i = best + 1; i < length; ++i) {
        if (better(samples[i], samples[best]))
            best = i;
    }
    if (extreme)
        *extreme = samples[best];
    if (location)
        *location = best;
    return true;
}

} // namespace

TOLVRealVector::TOLVRealVector(Storage storage, const float* components, std::size_t length)
    : m_storage(std::move(storage))
    , m_components(components)
    , m_length(length)
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

bool TOLVRealVector::getMinimum(float* minimum, std::size_t* location) const
{
    return findExtreme(m_components, m_length, minimum, location, [](float a, float b) { return a < b; });
}

bool TOLVRealVector::getMaximum(float* maximum, std::size_t* location) const
{
    return findExtreme(m_components, m_length, maximum, location, [](float a, float b) { return a > b; });
}

std::shared_ptr<const TOLVRealVector> TOLVRealVector::realVectorInRange(std::uint64_t location, std::uint64_t length) const
{
    const auto start = static_cast<std::size_t>(std::min<std::uint64_t>(location, m_length));
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(length, m_length - start));
    return std::shared_ptr<const TOLVRealVector>(new TOLVRealVector(m_storage, m_components + start, count));
}

std::shared_ptr<const TOLVRealVector> TOLVRealVector::copy() const
{
    return realVectorInRange(0, m_length);
}

} // namespace TOLVGraphing
