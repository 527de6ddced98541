#pragma once

#include <stdexcept>
#include <string>

namespace TOLVGraphing {

/// A drawing could not be made: the message names the library's reason, or the limit and the wish.
class OutputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace TOLVGraphing
