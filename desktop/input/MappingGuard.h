#pragma once

#include <cstddef>

namespace TOLVGraphing::input {

/// Keeps the process alive where pages of a mapped file are gone.
///
/// A page that lies behind the end of a file which somebody has cut, or that the disk cannot give, ends a process that touches it with the signal SIGBUS. While a guard exists, such pages of its range become pages
/// of zeros instead, and the guard tells so. The handler of the signal is installed with the first guard; signals from elsewhere go on to the handler that was there before. A program that installs a handler of
/// its own later, without passing on, is not protected.
class MappingGuard {
public:
    /// A range of whole pages. Where too many ranges are guarded already, isGuarding() is false.
    MappingGuard(const void* begin, std::size_t length);
    /// Before the range is unmapped.
    ~MappingGuard();
    MappingGuard(const MappingGuard&) = delete;
    MappingGuard& operator=(const MappingGuard&) = delete;

    [[nodiscard]] bool isGuarding() const { return m_range != nullptr; }
    /// Some pages that were touched were gone and are zeros now.
    [[nodiscard]] bool hasLostPages() const;

    struct Range;

private:
    Range* m_range = nullptr;
};

} // namespace TOLVGraphing::input
