#include "ArgumentProblems.h"

#include <apps/plotting/OptionValues.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstddef>
#include <optional>

namespace TOLVGraphing::app {

namespace {

std::string withoutDashes(const std::string& name)
{
    return name.substr(std::min(name.find_first_not_of('-'), name.size()));
}

/// How many letters were left out, added, changed or swapped with the next one.
std::size_t letterChanges(const std::string& from, const std::string& to)
{
    std::vector<std::vector<std::size_t>> changes(from.size() + 1, std::vector<std::size_t>(to.size() + 1));
    for (std::size_t i = 0; i <= from.size(); ++i) {
        for (std::size_t j = 0; j <= to.size(); ++j) {
            if (i == 0 || j == 0) {
                changes[i][j] = i + j;
                continue;
            }
            changes[i][j] = std::min({changes[i - 1][j] + 1, changes[i][j - 1] + 1, changes[i - 1][j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1)});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1])
                changes[i][j] = std::min(changes[i][j], changes[i - 2][j - 2] + 1);
        }
    }
    return changes.back().back();
}

std::vector<std::string> longNames(const CLI::App& command)
{
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options()) {
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    }
    return names;
}

std::string unknownOption(const CLI::App& command, const std::string& word)
{
    const std::string written = word.substr(0, word.find('='));
    const std::string nearest = nearestOption(longNames(command), written);
    return written + ": no option of this name, expected " + (nearest.empty() ? "one that --help lists" : nearest + " perhaps, or another one that --help lists");
}

/// The option that a word names, without what stands behind "="; null for a file or a value.
const CLI::Option* optionOfWord(const CLI::App& command, const std::string& word)
{
    return word.size() > 1 && word.starts_with('-') ? command.get_option_no_throw(word.substr(0, word.find('='))) : nullptr;
}

/// About the first word that cannot stand where it does: an option without its value, a value where there must be none.
std::optional<std::string> misplacedWord(const CLI::App& command, const std::vector<std::string>& words)
{
    for (std::size_t i = 0; i < words.size() && words[i] != "--"; ++i) {
        const CLI::Option* option = optionOfWord(command, words[i]);
        if (!option)
            continue;
        const std::size_t equalSign = words[i].find('=');
        const bool takesValue = option->get_items_expected_max() > 0;
        if (!takesValue && equalSign != std::string::npos)
            return UsageError(words[i].substr(0, equalSign), words[i].substr(equalSign + 1), "no value for it").what();
        if (!takesValue || equalSign != std::string::npos)
            continue;
        // Whatever follows is the value.
        if (i + 1 == words.size())
            return UsageError(words[i], "its value, " + option->get_type_name()).what();
        ++i;
    }
    return std::nullopt;
}

} // namespace

std::string nearestOption(const std::vector<std::string>& names, const std::string& written)
{
    const std::string start = withoutDashes(written);
    std::string nearest;
    std::size_t fewest = std::max<std::size_t>(start.size() / 3, start.size() > 1 ? 1 : 0) + 1;
    for (const std::string& name : names) {
        const std::string bare = withoutDashes(name);
        const std::size_t changes = start.size() > 1 && bare.starts_with(start) ? 0 : letterChanges(start, bare);
        if (changes < fewest) {
            fewest = changes;
            nearest = name;
        }
    }
    return nearest;
}

std::string explanationOf(const CLI::ParseError& problem, const CLI::App& command, const std::vector<std::string>& words)
{
    if (const auto unknown = command.remaining(); !unknown.empty())
        return unknownOption(command, unknown.front());
    if (const auto misplaced = misplacedWord(command, words))
        return *misplaced;
    for (const CLI::Option* option : command.get_options()) {
        if (option->get_multi_option_policy() == CLI::MultiOptionPolicy::Throw && !option->get_positional() && option->count() > 1)
            return option->get_name() + ": found " + std::to_string(option->count()) + " times, expected once";
    }
    return problem.what();
}

} // namespace TOLVGraphing::app
