// What the shells offer behind the programs' names, each shell asked itself.

#include "InstalledFiles.h"

#include "../desktop/Process.h"
#include "../desktop/TemporaryFolder.h"
#include "../support/TextLines.h"

#include <TestPaths.h>

#include <desktop/input/RawNumberReader.h>
#include <desktop/input/SoundReader.h>
#include <desktop/output/GraphicsOutput.h>

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>

namespace TOLVGraphing::testing_support {

namespace {

constexpr const char* kReadable[] = {"a.csv", "a.tsv", "a.txt", "a.dat", "a.asc", "a.npy", "a.f32", "a.f64", "a.wav", "a.wave", "a.flac", "a.aif", "a.aiff", "a.aifc", "a.ogg",
    "a.oga", "a.opus", "a.au", "a.snd", "a.caf", "a.w64", "a.rf64", "a.mp3", "a.voc", "b.CSV"};
constexpr const char* kPictures[] = {"a.pdf", "a.ps", "a.eps", "a.svg", "a.png", "a.tif", "a.tiff"};

class Completions : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override
    {
        TOLV_REQUIRE_PROGRAM(GetParam());
        if (GetParam() == "bash" && !std::filesystem::exists("/usr/share/bash-completion/bash_completion"))
            GTEST_SKIP() << "bash-completion is not installed";
        for (const char* name : kReadable)
            m_folder.write(name, "");
        for (const char* name : kPictures)
            m_folder.write(name, "");
        for (const char* name : {"a.json", "a.tolvgraph", "a.doc"})
            m_folder.write(name, "");
        std::filesystem::create_directory(m_folder.path("below"));
    }

    using Words = std::set<std::string>;

    /// What is offered when Tab is pressed behind each of the lines, which begin with the same program, in the folder of the test: without what stands before it in the same word, and folders without a slash.
    [[nodiscard]] std::vector<Words> offeredEach(const std::vector<std::string>& lines) const
    {
        const ProcessResult result = runProcess(shell(lines), surroundings());
        EXPECT_EQ(result.status, 0) << result.text();
        EXPECT_EQ(result.error, "");
        std::vector<Words> answers(1);
        for (const std::string& answer : linesOf(result.output)) {
            if (answer == "==")
                answers.emplace_back();
            else if (const std::string word = plainWord(answer); !word.empty())
                answers.back().insert(word);
        }
        EXPECT_EQ(answers.size(), lines.size() + 1);
        answers.resize(lines.size());
        return answers;
    }
    [[nodiscard]] Words offered(const std::string& line) const { return offeredEach({line}).front(); }

private:
    [[nodiscard]] ProcessSurroundings surroundings() const
    {
        ProcessSurroundings result;
        result.folder = m_folder.path();
        return result;
    }

    /// The shell with a script that asks it, and nothing of the user's.
    [[nodiscard]] std::vector<std::string> shell(const std::vector<std::string>& lines) const
    {
        std::string path = std::getenv("PATH");
        // Shells may pass over programs that they do not find.
        for (const char* program : {"tolvgraph", "tolvgraph-viewer"})
            path = std::filesystem::path(pathOfProgram(program)).parent_path().string() + ":" + path;
        std::vector<std::string> words{"env", "HOME=" + m_home.path(), "XDG_CONFIG_HOME=" + m_home.path(), "XDG_DATA_HOME=" + m_home.path(), "XDG_DATA_DIRS=" + sharedFile(""),
            "LC_ALL=C.UTF-8", "PATH=" + path};
        const std::string scripts = TOLV_SOURCE_DIR "/tests/desktop_files/complete.";
        if (GetParam() == "bash")
            words.insert(words.end(), {"bash", "--norc", scripts + "bash"});
        else if (GetParam() == "zsh")
            words.insert(words.end(), {"zsh", "-f", scripts + "zsh", sharedFile("zsh/site-functions")});
        else
            words.insert(words.end(), {"fish", "-c", "for line in $argv; complete --do-complete $line; echo ==; end"});
        words.insert(words.end(), lines.begin(), lines.end());
        return words;
    }

    static std::string plainWord(const std::string& answer)
    {
        std::string word = answer.substr(0, answer.find('\t'));
        word.erase(0, word.find_last_of("=,") + 1);
        if (word.ends_with('/'))
            word.pop_back();
        return word;
    }

    TemporaryFolder m_folder;
    TemporaryFolder m_home;
};

TEST_P(Completions, offerEveryOptionAndNoOther)
{
    for (const char* program : {"tolvgraph", "tolvgraph-viewer"})
        EXPECT_EQ(offered(program + std::string(" -")), namesOf(helpOptions(program)));
    EXPECT_EQ(offered("tolvgraph --dr"), Words{"--draw"});
}

TEST_P(Completions, offerTheWordsThatOptionsTake)
{
    for (const char* name : {"--draw", "--x-axis", "--y-axis", "--x-format", "--y-format", "--pattern"}) {
        const std::string option = name;
        EXPECT_THAT(offeredEach({"tolvgraph " + option + " ", "tolvgraph " + option + "="}), testing::Each(wordsOfOption(option))) << option;
    }
    EXPECT_THAT(offeredEach({"tolvgraph a.csv --draw=d", "tolvgraph --pattern solid,da", "tolvgraph --x i"}),
        testing::ElementsAre(Words{"dotted"}, Words{"dashed", "dash-dot"}, Words{"index"}));
}

TEST_P(Completions, offerNothingWhereOnlyTheUserKnows)
{
    std::vector<std::string> lines;
    for (const char* option :
        {"--size", "--scale", "--y", "--channels", "--x-range", "--y-range", "--title", "--x-label", "--y-label", "--color", "--thickness", "--marker", "--margin"})
        lines.push_back("tolvgraph " + std::string(option) + " ");
    EXPECT_THAT(offeredEach(lines), testing::Each(testing::IsEmpty()));
}

TEST_P(Completions, offerFilesThatCanBeRead)
{
    Words readable(std::begin(kReadable), std::end(kReadable));
    readable.insert("below");
    EXPECT_THAT(
        offeredEach({"tolvgraph ", "tolvgraph -- ", "tolvgraph --legend a.csv ", "tolvgraph b"}), testing::ElementsAre(readable, readable, readable, Words{"b.CSV", "below"}));
    readable.insert("a.tolvgraph");
    EXPECT_THAT(offeredEach({"tolvgraph-viewer ", "tolvgraph-viewer -- "}), testing::Each(readable));
}

TEST_P(Completions, offerFilesThatCanBeWritten)
{
    Words pictures(std::begin(kPictures), std::end(kPictures));
    pictures.insert("below");
    EXPECT_THAT(offeredEach({"tolvgraph a.csv -o ", "tolvgraph a.csv --output=", "tolvgraph -o a.pdf -o "}), testing::Each(pictures));
    EXPECT_EQ(offered("tolvgraph a.csv --layout "), (Words{"a.json", "below"}));
}

INSTANTIATE_TEST_SUITE_P(Shells, Completions, testing::Values("bash", "zsh", "fish"), [](const auto& shell) { return shell.param; });

TEST(CompletedFiles, areThoseThatTheLibraryKnows)
{
    const std::set<std::string> kTexts{".csv", ".tsv", ".txt", ".dat", ".asc", ".npy", ".CSV"};
    for (const char* name : kReadable)
        EXPECT_TRUE(kTexts.contains(std::filesystem::path(name).extension()) || input::hasRawNumberSuffix(name) || input::hasSoundSuffix(name)) << name;
    for (const char* name : kPictures)
        EXPECT_TRUE(outputKindForSuffix(name)) << name;
}

} // namespace

} // namespace TOLVGraphing::testing_support
