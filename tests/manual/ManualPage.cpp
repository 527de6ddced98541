#include "ManualPage.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace TOLVGraphing::testing_support {

namespace {

const std::string kFence = "```";
const std::string kGiven = "<!-- given: ";
const std::string kCommentEnd = " -->";

/// The names between commas.
std::vector<std::string> namesOfComment(const std::string& line)
{
    std::vector<std::string> names;
    if (!line.starts_with(kGiven) || !line.ends_with(kCommentEnd))
        return names;
    std::istringstream list(line.substr(kGiven.size(), line.size() - kGiven.size() - kCommentEnd.size()));
    for (std::string name; std::getline(list >> std::ws, name, ',');)
        names.push_back(name);
    return names;
}

} // namespace

std::vector<ManualBlock> blocksOfPage(const std::string& path)
{
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error(path + ": cannot be read");
    std::vector<ManualBlock> blocks;
    std::string before;
    std::size_t number = 0;
    bool isInside = false;
    for (std::string line; std::getline(file, line); before = line) {
        ++number;
        if (isInside && line != kFence) {
            blocks.back().text += line + "\n";
        } else if (line.starts_with(kFence)) {
            isInside = !isInside;
            if (isInside)
                blocks.push_back({std::filesystem::path(path).stem().string(), line.substr(kFence.size()), number, "", namesOfComment(before), before == "<!-- printed -->"});
        }
    }
    if (isInside)
        throw std::runtime_error(path + ":" + std::to_string(blocks.back().line) + ": found a fence that is not closed, expected ``` below it");
    return blocks;
}

std::vector<std::string> manualPages(const std::string& folder)
{
    std::vector<std::string> pages;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".md")
            pages.push_back(entry.path().string());
    }
    std::sort(pages.begin(), pages.end());
    return pages;
}

} // namespace TOLVGraphing::testing_support
