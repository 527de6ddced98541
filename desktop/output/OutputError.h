#pragma once

#include <TOLVMath/Export.h>

#include <stdexcept>
#include <string>

namespace TOLVGraphing {

/// A drawing could not be made: the message names the library's reason, or the limit and the wish.
class TOLV_EXPORT OutputError : public std::runtime_error {
public:
    /// With its text, which `what()` gives back.
    using std::runtime_error::runtime_error;
};

} // namespace TOLVGraphing
