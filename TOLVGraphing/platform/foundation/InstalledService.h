#pragma once

#include <memory>
#include <mutex>
#include <utility>

namespace TOLVGraphing {

/// The one object of a kind that a desktop or a host has installed for the whole process (shared), or null. Safe to use from any thread.
template <typename Service>
class InstalledService {
public:
    [[nodiscard]] std::shared_ptr<const Service> get() const
    {
        const std::lock_guard lock(m_mutex);
        return m_service;
    }

    void set(std::shared_ptr<const Service> service)
    {
        const std::lock_guard lock(m_mutex);
        // The former one ends, if this was its last reference, when the lock is gone.
        m_service.swap(service);
    }

private:
    mutable std::mutex m_mutex;
    std::shared_ptr<const Service> m_service;
};

} // namespace TOLVGraphing
