// What the shells offer behind the programs' names, each shell asked itself.

#include "InstalledFiles.h"

#include "../desktop/Process.h"
#include "../desktop/TemporaryFolder.h"

#include <TestPaths.h>

#include <desktop/input/RawNumberReader.h>
#include <desktop/input/SoundReader.h>
#include <desktop/output/GraphicsOutput.h>

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>

namespace TOLVGraphing::testing_support {

namespace {

using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;

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

    /// What is offered when Tab is pressed behind the line, in the folder of the test: without what stands before it in the same word, and folders without a slash.
    [[nodiscard]] std::set<std::string> offered(const std::string& line) const
    {
        ProcessSurroundings surroundings;
        surroundings.folder = m_folder.path();
        std::string path = std::getenv("PATH");
        std::vector<std::string> words{
            "env", "HOME=" + m_home.path(), "XDG_CONFIG_HOME=" + m_home.path(), "XDG_DATA_HOME=" + m_home.path(), "XDG_DATA_DIRS=" + sharedFile(""), "LC_ALL=C.UTF-8"};
        // Shells may pass over programs that they do not find.
        for (const char* program : {"tolvgraph", "tolvgraph-viewer"})
            path = std::filesystem::path(pathOfProgram(program)).parent_path().string() + ":" + path;
        words.push_back("PATH=" + path);
        const std::string scripts = TOLV_SOURCE_DIR "/tests/desktop_files/complete.";
        if (GetParam() == "bash")
            words.insert(words.end(), {"bash", "--norc", scripts + "bash", line});
        else if (GetParam() == "zsh")
            words.insert(words.end(), {"zsh", "-f", scripts + "zsh", sharedFile("zsh/site-functions"), line});
        else
            words.insert(words.end(), {"fish", "-c", "complete --do-complete '" + line + "'"});
        const ProcessResult result = runProcess(words, surroundings);
        EXPECT_EQ(result.status, 0) << result.text();
        EXPECT_EQ(result.error, "");
        std::set<std::string> answers;
        for (const std::string& answer : linesOf(result.output)) {
            std::string word = answer.substr(0, answer.find('\t'));
            word.erase(0, word.find_last_of("=,") + 1);
            if (word.ends_with('/'))
                word.pop_back();
            if (!word.empty())
                answers.insert(word);
        }
        return answers;
    }

private:
    TemporaryFolder m_folder;
    TemporaryFolder m_home;
};

TEST_P(Completions, offerEveryOptionAndNoOther)
{
    for (const char* program : {"tolvgraph", "tolvgraph-viewer"})
        EXPECT_EQ(offered(program + std::string(" -")), namesOf(helpOptions(program)));
    EXPECT_THAT(offered("tolvgraph --dr"), UnorderedElementsAre("--draw"));
}

TEST_P(Completions, offerTheWordsThatOptionsTake)
{
    for (const char* option : {"--draw", "--x-axis", "--y-axis", "--x-format", "--y-format", "--pattern"}) {
        EXPECT_EQ(offered("tolvgraph " + std::string(option) + " "), wordsOfOption(option)) << option;
        EXPECT_EQ(offered("tolvgraph " + std::string(option) + "="), wordsOfOption(option)) << option;
    }
    EXPECT_THAT(offered("tolvgraph a.csv --draw=d"), UnorderedElementsAre("dotted"));
    EXPECT_THAT(offered("tolvgraph --pattern solid,da"), UnorderedElementsAre("dashed", "dash-dot"));
    EXPECT_THAT(offered("tolvgraph --x i"), UnorderedElementsAre("index"));
}

TEST_P(Completions, offerNothingWhereOnlyTheUserKnows)
{
    for (const char* option :
        {"--size", "--scale", "--y", "--channels", "--x-range", "--y-range", "--title", "--x-label", "--y-label", "--color", "--thickness", "--marker", "--margin"})
        EXPECT_THAT(offered("tolvgraph " + std::string(option) + " "), testing::IsEmpty()) << option;
}

TEST_P(Completions, offerFilesThatCanBeRead)
{
    std::set<std::string> readable(std::begin(kReadable), std::end(kReadable));
    readable.insert("below");
    EXPECT_EQ(offered("tolvgraph "), readable);
    EXPECT_EQ(offered("tolvgraph -- "), readable);
    EXPECT_THAT(offered("tolvgraph b"), UnorderedElementsAre("b.CSV", "below"));
    readable.insert("a.tolvgraph");
    EXPECT_EQ(offered("tolvgraph-viewer "), readable);
}

TEST_P(Completions, offerFilesThatCanBeWritten)
{
    std::set<std::string> pictures(std::begin(kPictures), std::end(kPictures));
    pictures.insert("below");
    EXPECT_EQ(offered("tolvgraph a.csv -o "), pictures);
    EXPECT_EQ(offered("tolvgraph a.csv --output="), pictures);
    EXPECT_THAT(offered("tolvgraph a.csv --layout "), UnorderedElementsAre("a.json", "below"));
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
