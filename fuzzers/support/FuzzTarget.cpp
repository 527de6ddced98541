#include "FuzzTarget.h"

#include <cstdlib>
#include <iostream>

namespace TOLVGraphing::fuzzing {

void require(bool holds, std::string_view whatMustHold)
{
    if (holds)
        return;
    std::cerr << "must hold: " << whatMustHold << "\n";
    std::abort();
}

} // namespace TOLVGraphing::fuzzing
