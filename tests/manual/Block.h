#pragma once

#include <string>

namespace TOLVGraphing::testing_support {

/// A C++ block of the manual as a function.
using BlockFunction = int (*)(int argumentCount, char** arguments);

/// Makes a block known under its page and line, for example "first-graph-cpp:31".
class BlockRegistration {
public:
    BlockRegistration(const std::string& name, BlockFunction function);
};

/// Null for a block that is not there.
[[nodiscard]] BlockFunction registeredBlock(const std::string& name);

} // namespace TOLVGraphing::testing_support
