#pragma once

#include <cstddef>

namespace TOLVGraphing {

/// Floats between the place that a pass over memory reads and the one that it asks for: 1 KB hides the memory's delay.
inline constexpr std::size_t kPrefetchDistance = 256;

/// Asks for the memory at an address, which need not exist, to be brought near. Has no other effect.
inline void prefetch(const void* address)
{
#if defined(__GNUC__)
    __builtin_prefetch(address);
#else
    (void)address;
#endif
}

/// Reads a number, so that its memory is near when it is needed: unlike a prefetch also where the processor does not know yet where the page is. Nothing waits for it.
inline void touch(const float* number)
{
    [[maybe_unused]] const float read = *static_cast<const volatile float*>(number);
}

} // namespace TOLVGraphing
