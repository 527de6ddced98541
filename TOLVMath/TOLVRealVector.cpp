#include "TOLVRealVector.h"

#include "ExtremePyramid.h"
#include "LazyPart.h"
#include "SortedSamples.h"

#include <algorithm>
#include <cmath>
#include <mutex>
#include <span>
#include <utility>

namespace TOLVGraphing {

namespace {

/// Parts of a storage at least this many times smaller than it are looked through themselves.
constexpr std::size_t kSmallPart = 16;

/// The first index of a number that equals the value.
std::size_t firstIndexOf(float value, std::span<const float> numbers)
{
    return static_cast<std::size_t>(std::find(numbers.begin(), numbers.end(), value) - numbers.begin());
}

} // namespace

/// The numbers, and what is known of all of them.
class TOLVRealVector::Storage {
public:
    Storage(std::shared_ptr<const void> owner, std::span<const float> numbers, std::shared_ptr<const ExtremePyramid> pyramid)
        : m_owner(std::move(owner))
        , m_numbers(numbers)
        , m_pyramid(std::move(pyramid))
    {
    }

    [[nodiscard]] const float* first() const { return m_numbers.data(); }
    [[nodiscard]] bool isLong() const { return m_numbers.size() >= kLongStorage; }

    [[nodiscard]] const SortedSamples* sorted() const
    {
        return isLong() ? m_sorted.value([this] { return std::shared_ptr<const SortedSamples>(SortedSamples::of(m_numbers)); }) : nullptr;
    }

    [[nodiscard]] const ExtremePyramid* pyramid(std::size_t count) const
    {
        return isWorth(count, m_pyramid.isKnown()) ? m_pyramid.value([this] { return std::make_shared<const ExtremePyramid>(m_numbers); }) : nullptr;
    }

    [[nodiscard]] const ExtremePyramid* logarithms(std::size_t count) const
    {
        constexpr float kFloor = -std::numeric_limits<float>::min();
        // Larger blocks keep all that is known of the storage below a twentieth of it.
        constexpr unsigned kBlockShift = 10;
        return isWorth(count, m_logarithms.isKnown()) ? m_logarithms.value([&] { return std::make_shared<const ExtremePyramid>(m_numbers, kBlockShift, kFloor); }) : nullptr;
    }

private:
    bool isWorth(std::size_t count, bool isKnown) const { return isLong() && (isKnown || count >= m_numbers.size() / kSmallPart); }

    std::shared_ptr<const void> m_owner;
    std::span<const float> m_numbers;
    LazyPart<SortedSamples> m_sorted;
    LazyPart<ExtremePyramid> m_pyramid;
    LazyPart<ExtremePyramid> m_logarithms;
};

/// What is known of this vector's part of the storage.
struct TOLVRealVector::Knowledge {
    std::once_flag minimumIsKnown;
    std::once_flag maximumIsKnown;
    std::once_flag orderIsKnown;
    std::once_flag nanIsKnown;
    std::optional<std::size_t> minimum;
    std::optional<std::size_t> maximum;
    bool isAscending = false;
    bool hasNaN = false;
};

TOLVRealVector::TOLVRealVector(std::shared_ptr<const Storage> storage, const float* components, std::size_t length)
    : m_storage(std::move(storage))
    , m_components(components)
    , m_length(length)
    , m_knowledge(std::make_shared<Knowledge>())
{
}

std::shared_ptr<const TOLVRealVector> TOLVRealVector::vectorWithComponents(std::vector<float> components)
{
    const auto owner = std::make_shared<const std::vector<float>>(std::move(components));
    return vectorWithStorage(owner, owner->data(), owner->size());
}

std::shared_ptr<const TOLVRealVector> TOLVRealVector::vectorWithStorage(
    std::shared_ptr<const void> owner, const float* components, std::size_t length, std::shared_ptr<const ExtremePyramid> pyramid)
{
    auto storage = std::make_shared<const Storage>(std::move(owner), std::span(components, length), std::move(pyramid));
    return std::shared_ptr<const TOLVRealVector>(new TOLVRealVector(std::move(storage), components, length));
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

std::optional<std::size_t> TOLVRealVector::findExtreme(bool isMaximum) const
{
    const std::span numbers(m_components, m_length);
    if (m_length == 0)
        return std::nullopt;
    if (m_length >= kLongStorage && isAscending())
        return isMaximum ? static_cast<std::size_t>(std::lower_bound(numbers.begin(), numbers.end(), numbers.back()) - numbers.begin()) : std::size_t{0};
    const ExtremePyramid* pyramid = pyramidOfStorage(m_length);
    const std::size_t location = locationInStorage();
    const std::span whole(m_storage->first(), location + m_length);
    const auto extremesIn = [&](std::size_t from, std::size_t end) {
        return pyramid ? pyramid->extremesInRange(whole, location + from, location + end) : extremesOf(numbers.subspan(from, end - from));
    };
    const Extremes extremes = extremesIn(0, m_length);
    if (extremes.areOfNothing())
        return std::nullopt;
    const auto isIn = [&](std::size_t from, std::size_t end) {
        const Extremes part = extremesIn(from, end);
        return isMaximum ? part.maximum == extremes.maximum : part.minimum == extremes.minimum;
    };
    // The first place lies in ever smaller parts.
    std::size_t from = 0;
    std::size_t end = m_length;
    while (pyramid && end - from > kLongStorage / kSmallPart) {
        const std::size_t middle = from + (end - from) / 2;
        if (isIn(from, middle))
            end = middle;
        else
            from = middle;
    }
    // Within the vector also when somebody has changed the numbers of a mapped file since their extremes were found.
    return std::min(from + firstIndexOf(isMaximum ? extremes.maximum : extremes.minimum, numbers.subspan(from, end - from)), m_length - 1);
}

bool TOLVRealVector::getMinimum(float* minimum, std::size_t* location) const
{
    std::call_once(m_knowledge->minimumIsKnown, [this] { m_knowledge->minimum = findExtreme(false); });
    return report(m_knowledge->minimum, minimum, location);
}

bool TOLVRealVector::getMaximum(float* maximum, std::size_t* location) const
{
    std::call_once(m_knowledge->maximumIsKnown, [this] { m_knowledge->maximum = findExtreme(true); });
    return report(m_knowledge->maximum, maximum, location);
}

bool TOLVRealVector::isAscending() const
{
    std::call_once(m_knowledge->orderIsKnown, [this] { m_knowledge->isAscending = sortedStorage() || TOLVGraphing::isAscending({m_components, m_length}); });
    return m_knowledge->isAscending;
}

bool TOLVRealVector::hasNaN() const
{
    std::call_once(m_knowledge->nanIsKnown, [this] {
        const ExtremePyramid* pyramid = pyramidOfStorage(m_length);
        const auto isNaN = [](float number) { return std::isnan(number); };
        m_knowledge->hasNaN = (!pyramid || pyramid->hasNaN()) && std::any_of(m_components, m_components + m_length, isNaN);
    });
    return m_knowledge->hasNaN;
}

std::size_t TOLVRealVector::locationInStorage() const
{
    return static_cast<std::size_t>(m_components - m_storage->first());
}

const SortedSamples* TOLVRealVector::sortedStorage() const
{
    return m_storage->sorted();
}

const ExtremePyramid* TOLVRealVector::pyramidOfStorage(std::size_t count) const
{
    return m_storage->pyramid(count);
}

const ExtremePyramid* TOLVRealVector::pyramidOfLogarithms(std::size_t count) const
{
    return m_storage->logarithms(count);
}

std::shared_ptr<const TOLVRealVector> TOLVRealVector::realVectorInRange(std::uint64_t location, std::uint64_t length) const
{
    const auto start = static_cast<std::size_t>(std::min<std::uint64_t>(location, m_length));
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(length, m_length - start));
    auto slice = std::shared_ptr<TOLVRealVector>(new TOLVRealVector(m_storage, m_components + start, count));
    if (count == m_length)
        slice->m_knowledge = m_knowledge;
    return slice;
}

std::shared_ptr<const TOLVRealVector> TOLVRealVector::copy() const
{
    return realVectorInRange(0, m_length);
}

} // namespace TOLVGraphing
