#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <utility>

namespace TOLVGraphing {

/// Something that is made when it is first asked for, once, whatever thread asks; asking again costs no lock. It may turn out to be nothing.
template <typename Part>
class LazyPart {
public:
    LazyPart() = default;
    /// Known from the start unless null.
    explicit LazyPart(std::shared_ptr<const Part> part) : m_part(std::move(part)), m_isKnown(m_part != nullptr) {}

    [[nodiscard]] bool isKnown() const { return m_isKnown.load(std::memory_order_acquire); }

    /// Null when `make` returned null. When it throws, nothing is known yet.
    template <typename Make>
    const Part* value(Make make) const
    {
        if (!isKnown()) {
            const std::lock_guard lock(m_mutex);
            if (!isKnown()) {
                m_part = make();
                m_isKnown.store(true, std::memory_order_release);
            }
        }
        return m_part.get();
    }

private:
    mutable std::mutex m_mutex;
    mutable std::shared_ptr<const Part> m_part;
    mutable std::atomic<bool> m_isKnown = false;
};

} // namespace TOLVGraphing
