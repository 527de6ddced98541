#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

/// A fenced block of a page of the manual.
struct ManualBlock {
    /// The page's file name without its suffix, for example "first-graph-cpp".
    std::string page;
    /// The word behind the fence: "cpp", "sh", "cmake", "text", ...; empty without one.
    std::string language;
    /// The line of the fence, counted from 1.
    std::size_t line = 0;
    /// The lines between the fences, each ended by a newline.
    std::string text;
    /// What a comment directly above the fence says is there beforehand, for example {"graph", "sheet"} for `<!-- given: graph, sheet -->`.
    std::vector<std::string> given;
    /// The comment `<!-- printed -->` is directly above the fence: the block is what the block before it prints.
    bool isPrinted = false;

    /// A whole program; other C++ blocks are statements.
    [[nodiscard]] bool isProgram() const { return language == "cpp" && text.find("int main(") != std::string::npos; }
};

/// The blocks of a page in their order. Throws std::runtime_error for a file that cannot be read and a fence that is not closed.
[[nodiscard]] std::vector<ManualBlock> blocksOfPage(const std::string& path);

/// The pages in a folder, sorted by path.
[[nodiscard]] std::vector<std::string> manualPages(const std::string& folder);

} // namespace TOLVGraphing::testing_support
