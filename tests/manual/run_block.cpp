// Runs one C++ block of the manual in the current folder. Usage: run_block PAGE:LINE

#include "Block.h"

#include <exception>
#include <iostream>
#include <map>

namespace TOLVGraphing::testing_support {

namespace {

std::map<std::string, BlockFunction>& registeredBlocks()
{
    static std::map<std::string, BlockFunction> blocks;
    return blocks;
}

} // namespace

BlockRegistration::BlockRegistration(const std::string& name, BlockFunction function)
{
    registeredBlocks()[name] = function;
}

BlockFunction registeredBlock(const std::string& name)
{
    const auto found = registeredBlocks().find(name);
    return found == registeredBlocks().end() ? nullptr : found->second;
}

} // namespace TOLVGraphing::testing_support

int main(int argumentCount, char** arguments)
{
    const std::string name = argumentCount > 1 ? arguments[1] : "";
    const auto block = TOLVGraphing::testing_support::registeredBlock(name);
    if (!block) {
        std::cerr << "run_block: found no C++ block " << name << ", expected PAGE:LINE of one\n";
        return 2;
    }
    try {
        // The block sees the arguments of a program of its own.
        return block(argumentCount - 1, arguments + 1);
    } catch (const std::exception& problem) {
        std::cerr << "run_block: " << problem.what() << "\n";
        return 1;
    }
}
