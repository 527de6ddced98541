#include "FuzzTarget.h"

#include <cstdint>

/// What libFuzzer calls with each input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace TOLVGraphing::fuzzing;
    // Inputs that are refused stay in the corpus too: what is refused in another way is another path.
    static_cast<void>(tryInput(std::as_bytes(std::span(data, size))));
    return 0;
}
