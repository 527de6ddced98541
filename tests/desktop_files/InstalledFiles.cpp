#include "InstalledFiles.h"

#include "../desktop/Process.h"
#include "../desktop/TemporaryFolder.h"
#include "../support/TextLines.h"

#include <TestPaths.h>

#include <gtest/gtest.h>

#include <regex>
#include <sstream>
#include <string_view>

namespace TOLVGraphing::testing_support {

namespace {

class Prefix {
public:
    Prefix()
    {
        for (const char* component : {"tolvgraph", "tolvgraph-viewer"}) {
            const ProcessResult result = runProcess({"cmake", "--install", TOLV_BINARY_DIR, "--prefix", m_folder.path(), "--component", component});
            EXPECT_EQ(result.status, 0) << result.text();
        }
    }

    [[nodiscard]] std::string path(const std::string& name) const { return m_folder.path(name); }

private:
    TemporaryFolder m_folder;
};

ProcessResult runWithoutDisplay(const std::string& program, const std::vector<std::string>& arguments)
{
    std::vector<std::string> words{"env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", "-u", "QT_QPA_PLATFORM", pathOfProgram(program)};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return runProcess(words);
}

} // namespace

std::string sharedFile(const std::string& name)
{
    static const Prefix prefix;
    return prefix.path("share/" + name);
}

std::string pathOfProgram(const std::string& name)
{
    return name == "tolvgraph" ? TOLV_PROGRAM_TOLVGRAPH : TOLV_PROGRAM_TOLVGRAPH_VIEWER;
}

OptionTable helpOptions(const std::string& program)
{
    const ProcessResult help = runWithoutDisplay(program, {"--help"});
    EXPECT_EQ(help.status, 0) << help.text();
    const std::regex kOption("  ((?:-[a-z], ?)?--[a-z-]+)(?: ([^ ]+))?.*");
    OptionTable options;
    for (const std::string& line : linesOf(help.output)) {
        std::smatch match;
        if (std::regex_match(line, match, kOption))
            options[std::regex_replace(match[1].str(), std::regex(" "), "")] = match[2].str();
    }
    EXPECT_GE(options.size(), 3U) << help.output;
    return options;
}

std::set<std::string> namesOf(const OptionTable& options)
{
    std::set<std::string> names;
    for (const auto& [together, value] : options) {
        std::istringstream stream(together);
        for (std::string name; std::getline(stream, name, ',');)
            names.insert(name);
    }
    return names;
}

std::set<std::string> wordsOfOption(const std::string& option)
{
    constexpr std::string_view kStart = "expected one of ";
    const ProcessResult result = runProcess({pathOfProgram("tolvgraph"), "missing.csv", "-o", "picture.svg", option, "nonsense"});
    const std::string line = linesOf(result.error).at(0);
    const std::size_t start = line.find(kStart);
    EXPECT_NE(start, std::string::npos) << result.text();
    std::istringstream stream(std::regex_replace(line.substr(std::min(start, line.size() - kStart.size()) + kStart.size()), std::regex(","), ""));
    std::set<std::string> words;
    for (std::string word; stream >> word;)
        words.insert(word);
    return words;
}

} // namespace TOLVGraphing::testing_support
