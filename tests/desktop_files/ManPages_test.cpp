// The manual pages: sound in the eyes of two judges, and true.

#include "InstalledFiles.h"

#include "../desktop/Process.h"
#include "../desktop/TemporaryFolder.h"
#include "../support/TextLines.h"

#include <apps/viewer/DocumentArchive.h>
#include <desktop/archive/PropertyListArchive.h>

#include <TOLVGraphing/graph/TOLVGraph.h>

#include <gmock/gmock.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <regex>
#include <sstream>

namespace TOLVGraphing::testing_support {

namespace {

constexpr const char* kPages[] = {"man/man1/tolvgraph.1", "man/man1/tolvgraph-viewer.1", "man/man5/tolvgraph.5"};

/// The lines between this heading and the next one.
std::vector<std::string> section(const std::string& page, const std::string& heading)
{
    std::vector<std::string> lines;
    bool isInside = false;
    for (const std::string& line : linesOf(contentOfFile(sharedFile(page)))) {
        if (line.starts_with(".Sh "))
            isInside = line == ".Sh " + heading;
        else if (isInside)
            lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> wordsOf(const std::string& line)
{
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

/// ".It Fl o , Fl -output Ar OUT" as "-o,--output" and "OUT".
std::pair<std::string, std::string> optionOfItem(const std::string& line)
{
    std::string name;
    std::string value;
    const auto words = wordsOf(line);
    for (std::size_t i = 1; i + 1 < words.size(); ++i) {
        if (words[i] == "Fl")
            name += (name.empty() ? "-" : ",-") + words[i + 1];
        if (words[i] == "Ar")
            value = words[i + 1];
    }
    return {name, value};
}

OptionTable pageOptions(const std::string& page)
{
    OptionTable options;
    for (const std::string& line : section(page, "OPTIONS")) {
        if (line.starts_with(".It "))
            options.insert(optionOfItem(line));
    }
    return options;
}

/// The words that the page has for an option's value.
std::set<std::string> pageWords(const std::string& page, const std::string& option)
{
    std::set<std::string> words;
    bool isInside = false;
    for (const std::string& line : section(page, "OPTIONS")) {
        if (line.starts_with(".It "))
            isInside = optionOfItem(line).first == option;
        else if (isInside && line.starts_with(".Cm "))
            words.insert(wordsOf(line).at(1));
    }
    return words;
}

/// A line as people read it and type it.
std::string plainText(const std::string& line)
{
    const auto replaced = [](const std::string& text, const char* escape, const char* character) { return std::regex_replace(text, std::regex(escape), character); };
    return replaced(replaced(replaced(line, R"(\\-)", "-"), R"(\\\(aq)", "'"), R"(\\e)", "\\");
}

/// The commands of the examples, of which a long one goes on behind a backslash.
std::vector<std::string> examples(const std::string& page)
{
    std::vector<std::string> commands;
    bool isInside = false;
    bool goesOn = false;
    for (const std::string& line : section(page, "EXAMPLES")) {
        if (line.starts_with(".")) {
            isInside = line.starts_with(".Bd ");
        } else if (isInside) {
            if (!goesOn)
                commands.emplace_back();
            commands.back() += plainText(line) + "\n";
            goesOn = line.ends_with("\\e");
        }
    }
    return commands;
}

/// A second of silence with one click, in a sound file of 16 bits.
std::string recording()
{
    constexpr std::uint32_t kRate = 8000;
    std::string samples(std::size_t{2} * kRate, '\0');
    samples[kRate] = 64;
    std::string bytes = "RIFF";
    const auto put = [&bytes](std::uint32_t number, int length) {
        for (int i = 0; i < length; ++i)
            bytes += static_cast<char>(number >> (8 * i) & 0xFFU);
    };
    put(36 + 2 * kRate, 4);
    bytes += "WAVEfmt ";
    put(16, 4);
    put(1, 2);
    put(1, 2);
    put(kRate, 4);
    put(2 * kRate, 4);
    put(2, 2);
    put(16, 2);
    bytes += "data";
    put(2 * kRate, 4);
    return bytes + samples;
}

TEST(ManPages, areSoundForTheManualsOwnReader)
{
    TOLV_REQUIRE_PROGRAM("man");
    for (const char* page : kPages) {
        const ProcessResult result = runProcess({"man", "--warnings=w", "-E", "UTF-8", "-l", "-Tutf8", "-Z", sharedFile(page)});
        EXPECT_EQ(result.status, 0) << page << ": " << result.error;
        EXPECT_EQ(result.error, "") << page;
        EXPECT_FALSE(result.output.empty()) << page;
    }
}

TEST(ManPages, areSoundForAnotherReader)
{
    TOLV_REQUIRE_PROGRAM("mandoc");
    for (const char* page : kPages) {
        const ProcessResult result = runProcess({"mandoc", "-T", "lint", "-W", "warning", sharedFile(page)});
        EXPECT_EQ(result.status, 0) << page;
        EXPECT_EQ(result.output + result.error, "") << page;
    }
}

TEST(ManPages, haveTheUsualSections)
{
    for (const char* page : kPages) {
        std::vector<std::string> headings;
        for (const std::string& line : linesOf(contentOfFile(sharedFile(page)))) {
            if (line.starts_with(".Sh "))
                headings.push_back(line.substr(4));
        }
        if (std::string(page).ends_with("5"))
            EXPECT_THAT(headings, testing::ElementsAre("NAME", "DESCRIPTION", "FILES", "EXAMPLES", "DIAGNOSTICS", "SEE ALSO", "CAVEATS")) << page;
        else
            EXPECT_THAT(headings,
                testing::ElementsAre("NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "ENVIRONMENT", "FILES", "EXIT STATUS", "EXAMPLES", "DIAGNOSTICS", "SEE ALSO", "CAVEATS"))
                << page;
    }
}

TEST(ManPages, haveTheOptionsThatTheProgramsHave)
{
    EXPECT_EQ(pageOptions("man/man1/tolvgraph.1"), helpOptions("tolvgraph"));
    EXPECT_EQ(pageOptions("man/man1/tolvgraph-viewer.1"), helpOptions("tolvgraph-viewer"));
}

TEST(ManPages, haveTheWordsThatOptionsTake)
{
    for (const char* option : {"--draw", "--x-axis", "--y-axis", "--x-format", "--pattern"})
        EXPECT_EQ(pageWords("man/man1/tolvgraph.1", option), wordsOfOption(option)) << option;
}

TEST(ManPages, haveExamplesThatWork)
{
    const TemporaryFolder folder;
    folder.write("recording.wav", recording());
    folder.write("weather.csv", "date,temp_max,temp_min\n2012-01-01,12.8,5\n2012-01-02,10.6,2.8\n2012-01-03,11.7,7.2\n");
    folder.write("scope.csv", "t,v\n-0.0002,0\n-0.0001,0.1\n0,1\n0.0001,0.7\n0.0002,0.5\n");
    folder.write("response.csv", "f,dB\n20,-3\n200,0\n2000,0.5\n20000,-6\n");
    folder.write("sales.csv", "year,north,south\n2024,10,12\n2025,11,9\n2026,14,15\n");
    folder.write("spectrum.csv", "f,level\n1,0.1\n2,0.001\n3,0.00002\n");
    ProcessSurroundings surroundings;
    surroundings.folder = folder.path();
    const std::string programs = std::filesystem::path(pathOfProgram("tolvgraph")).parent_path();
    const auto commands = examples("man/man1/tolvgraph.1");
    ASSERT_GE(commands.size(), 8U);
    const std::regex kOutput("(?:-o|--layout) ([^ \n]+)");
    for (const std::string& command : commands) {
        const ProcessResult result = runProcess({"env", "PATH=" + programs + ":" + std::getenv("PATH"), "sh", "-c", command}, surroundings);
        EXPECT_EQ(result.status, 0) << command << ": " << result.text();
        EXPECT_EQ(result.error, "") << command;
        for (std::sregex_iterator output(command.begin(), command.end(), kOutput); output != std::sregex_iterator(); ++output)
            EXPECT_GT(folder.read((*output)[1]).size(), 500U) << command;
    }
}

TEST(ManPages, haveMessagesThatTheProgramSays)
{
    std::vector<std::string> messages;
    for (const std::string& line : section("man/man1/tolvgraph.1", "DIAGNOSTICS")) {
        if (line.starts_with(".It \""))
            messages.push_back(plainText(line.substr(5, line.size() - 6)));
    }
    const std::string program = pathOfProgram("tolvgraph");
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(linesOf(runProcess({program, "table.csv", "-o", "picture.svg", "--draw", "steps"}).error).at(0), messages[0]);
    EXPECT_EQ(runProcess({program, "missing.csv", "-o", "picture.svg"}).error, messages[1] + "\n");
}

/// Classes and keys of an object and, but for those of graphs, of what it holds.
void collectNames(const ArchiveValue& value, std::set<std::string>& names)
{
    if (const auto* list = std::get_if<std::shared_ptr<ArchiveArray>>(&value)) {
        for (const ArchiveValue& element : (*list)->elements)
            collectNames(element, names);
    } else if (const auto* object = std::get_if<std::shared_ptr<ArchiveObject>>(&value)) {
        names.insert((*object)->className);
        if ((*object)->className == "TOLVGraph")
            return;
        for (const auto& [key, held] : (*object)->values) {
            names.insert(key);
            collectNames(held, names);
        }
    }
}

TEST(ManPages, haveEveryNameInADocument)
{
    app::DocumentContents contents;
    contents.graph = TOLVGraph::graph();
    contents.sources = {{"/measurements/a.csv", "a.csv", app::FileStamp{1, 2}}};
    app::Options& options = contents.options;
    options.xFormat = options.yFormat = app::NumberStyle::SI;
    options.x = options.categoryColumn = options.title = options.xLabel = options.yLabel = "text";
    options.channels = 2;
    options.dateOrigin = 20513.0;
    options.xRange = options.yRange = app::RangeText{"0", "1"};
    options.margin = EdgeInsets{1.0, 2.0, 3.0, 4.0};
    std::set<std::string> stored;
    collectNames(archiveObjectFromPropertyList(app::documentData(contents)), stored);
    std::set<std::string> named;
    for (const std::string& line : section("man/man5/tolvgraph.5", "DESCRIPTION")) {
        for (const char* start : {".Va ", ".It Va ", ".Vt "}) {
            if (line.starts_with(start) && line.find('$') == std::string::npos)
                named.insert(wordsOf(line.substr(std::strlen(start))).at(0));
        }
    }
    EXPECT_EQ(named, stored);
}

} // namespace

} // namespace TOLVGraphing::testing_support
