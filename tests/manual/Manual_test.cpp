// Every block of code on the manual's pages is carried out: C++ is compiled and run, commands are typed, CMake files configured. Pictures that the pages show are those that their blocks write; TOLV_REGENERATE_GOLDEN=1 writes them anew.

#include "ManualPage.h"
#include "MeasuredFiles.h"

#include <TestPaths.h>

#include <tests/desktop/ImageComparison.h>
#include <tests/desktop/Process.h>
#include <tests/desktop/TemporaryFolder.h>
#include <tests/golden/GoldenText.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iterator>
#include <optional>
#include <ostream>
#include <regex>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

/// What a failed test prints of its parameter.
void PrintTo(const ManualBlock& block, std::ostream* out)
{
    *out << block.page << ".md:" << block.line;
}

namespace {

const std::string kManual = TOLV_SOURCE_DIR "/docs/manual";
const std::string kImages = kManual + "/images/";

std::vector<ManualBlock> blocksOfManual()
{
    std::vector<ManualBlock> blocks;
    for (const std::string& page : manualPages(kManual)) {
        for (ManualBlock& block : blocksOfPage(page))
            blocks.push_back(std::move(block));
    }
    return blocks;
}

std::vector<ManualBlock> blocksIn(const std::string& language)
{
    std::vector<ManualBlock> blocks = blocksOfManual();
    std::erase_if(blocks, [&](const ManualBlock& block) { return block.language != language; });
    return blocks;
}

/// Names a test by the block's page and line.
std::string blockName(const testing::TestParamInfo<ManualBlock>& info)
{
    std::string name = info.param.page + "_" + std::to_string(info.param.line);
    std::replace_if(
        name.begin(), name.end(), [](unsigned char character) { return std::isalnum(character) == 0; }, '_');
    return name;
}

/// What a page shows of its folder of pictures, by name.
std::set<std::string> picturesOfPage(const std::string& page)
{
    const std::string text = contentOfFile(kManual + "/" + page + ".md");
    static const std::regex kPicture("\\(images/([^)]+)\\)");
    std::set<std::string> names;
    for (std::sregex_iterator match(text.begin(), text.end(), kPicture), end; match != end; ++match)
        names.insert((*match)[1]);
    return names;
}

testing::AssertionResult isPictureOfManual(const TemporaryFolder& folder, const std::string& name)
{
    const std::string found = folder.read(name);
    if (!name.ends_with(".png"))
        return isTextOfFile(found, kImages + name);
    const auto bytes = std::as_bytes(std::span(found));
    return isImageOfFile({bytes.begin(), bytes.end()}, kImages + name);
}

/// Carries a block out in a folder of its own.
class Manual : public testing::TestWithParam<ManualBlock> {
protected:
    [[nodiscard]] ProcessResult run(std::vector<std::string> arguments) const
    {
        const std::string programs = std::filesystem::path(TOLV_PROGRAM_TOLVGRAPH).parent_path().string();
        std::vector<std::string> all{"env", "PATH=" + programs + ":/usr/bin:/bin", "HOME=" + m_folder.path(), "XDG_CACHE_HOME=" + m_folder.path("cache"),
            "XDG_CONFIG_HOME=" + m_folder.path("config"), "XDG_RUNTIME_DIR=" + m_folder.path(), "QT_QPA_PLATFORM=offscreen"};
        std::move(arguments.begin(), arguments.end(), std::back_inserter(all));
        ProcessSurroundings surroundings;
        surroundings.folder = m_folder.path();
        return runProcess(all, surroundings);
    }

    /// The page shows what the block has written.
    void expectPicturesOfPage() const
    {
        if (!hasPinnedFonts())
            GTEST_SKIP() << "the pictures are made with other fonts";
        for (const std::string& name : picturesOfPage(GetParam().page)) {
            if (std::filesystem::exists(m_folder.path(name))) {
                EXPECT_TRUE(isPictureOfManual(m_folder, name));
            }
        }
    }

    void writeGivenFiles() const
    {
        for (const std::string& name : GetParam().given)
            writeMeasuredFile(m_folder, name);
    }

    /// What the block prints where the page says so directly below it; nothing otherwise.
    [[nodiscard]] static std::optional<std::string> printedText()
    {
        const auto blocks = blocksOfPage(kManual + "/" + GetParam().page + ".md");
        const auto block = std::find_if(blocks.begin(), blocks.end(), [](const ManualBlock& each) { return each.line == GetParam().line; });
        return block + 1 != blocks.end() && (block + 1)->isPrinted ? std::optional((block + 1)->text) : std::nullopt;
    }

    const TemporaryFolder& folder() const { return m_folder; }

private:
    TemporaryFolder m_folder;
};

class ManualCode : public Manual {};
class ManualCommands : public Manual {};
class ManualBuildFile : public Manual {};

TEST_P(ManualCode, runs)
{
    if (GetParam().isProgram())
        writeGivenFiles();
    const ProcessResult result = run({TOLV_RUN_BLOCK, GetParam().page + ":" + std::to_string(GetParam().line)});
    EXPECT_EQ(result.status, 0) << result.text();
    // What the desktop says on the way is no part of the page.
    if (const auto printed = printedText()) {
        EXPECT_EQ(result.output + result.error, *printed);
    }
    expectPicturesOfPage();
}

TEST_P(ManualCommands, run)
{
    writeGivenFiles();
    const ProcessResult result = run({"bash", "-eu", "-c", "exec 2>&1\n" + GetParam().text});
    EXPECT_EQ(result.status, 0) << result.text();
    EXPECT_EQ(result.output + result.error, printedText().value_or(""));
    expectPicturesOfPage();
}

TEST_P(ManualBuildFile, configures)
{
    // A whole file, or what a project with a program says besides.
    std::string text = GetParam().text;
    if (text.find("cmake_minimum_required") == std::string::npos)
        text = "cmake_minimum_required(VERSION 3.25)\nproject(program LANGUAGES CXX)\nadd_executable(program program.cpp)\n" + text;
    folder().write("CMakeLists.txt", text);
    for (const char* name : {"program.cpp", "decay.cpp"})
        folder().write(name, "int main() {}\n");
    std::filesystem::create_directory_symlink(TOLV_SOURCE_DIR, folder().path("TOLVGraphing"));
    // The package is this source tree.
    folder().write("FindTOLVGraphing.cmake",
        "set(TOLVGRAPHING_QT6 ON)\nset(TOLVGRAPHING_OPENGL ON)\nadd_subdirectory(\"" TOLV_SOURCE_DIR "\" tolvgraphing EXCLUDE_FROM_ALL)\nset(TOLVGraphing_FOUND ON)\n");
    const ProcessResult result = run({"cmake", "-S", ".", "-B", "build", "-G", "Ninja", "-DCMAKE_MODULE_PATH=" + folder().path(), "-DCMAKE_CXX_COMPILER=" TOLV_COMPILER});
    EXPECT_EQ(result.status, 0) << result.text();
}

INSTANTIATE_TEST_SUITE_P(Blocks, ManualCode, testing::ValuesIn(blocksIn("cpp")), blockName);
INSTANTIATE_TEST_SUITE_P(Blocks, ManualCommands, testing::ValuesIn(blocksIn("sh")), blockName);
INSTANTIATE_TEST_SUITE_P(Blocks, ManualBuildFile, testing::ValuesIn(blocksIn("cmake")), blockName);

TEST(ManualPages, EveryBlockIsCarriedOutOrIsNoCode)
{
    // "console" is what only an installed package or an administrator can do.
    const std::set<std::string> carriedOut{"cpp", "sh", "cmake"};
    const std::set<std::string> noCode{"text", "json", "console"};
    for (const ManualBlock& block : blocksOfManual())
        EXPECT_TRUE(carriedOut.contains(block.language) || noCode.contains(block.language))
            << block.page << ".md:" << block.line << ": a block of the language '" << block.language << "'";
}

TEST(ManualPages, ShowEveryPictureOfTheirFolder)
{
    std::set<std::string> shown;
    for (const std::string& page : manualPages(kManual))
        shown.merge(picturesOfPage(std::filesystem::path(page).stem().string()));
    std::set<std::string> kept;
    for (const auto& entry : std::filesystem::directory_iterator(kImages))
        kept.insert(entry.path().filename().string());
    EXPECT_EQ(shown, kept);
}

TEST(ManualPages, AreAllInTheTableOfTheFirstPage)
{
    const std::string first = contentOfFile(kManual + "/README.md");
    for (const std::string& page : manualPages(kManual)) {
        const std::string name = std::filesystem::path(page).filename().string();
        EXPECT_TRUE(name == "README.md" || first.find("](" + name + ")") != std::string::npos) << name;
    }
}

/// Links within the project, without what follows '#'.
std::vector<std::string> relativeLinks(std::string text)
{
    static const std::regex kLink("\\]\\(([^)#\\s]+)");
    static const std::regex kCode("```[^`]*```");
    text = std::regex_replace(text, kCode, "");
    std::vector<std::string> links;
    for (std::sregex_iterator match(text.begin(), text.end(), kLink), end; match != end; ++match) {
        if ((*match)[1].str().find("://") == std::string::npos)
            links.push_back((*match)[1]);
    }
    return links;
}

TEST(ManualPages, LinkToFilesThatExist)
{
    for (const std::string& folder : {kManual, std::string(TOLV_SOURCE_DIR "/docs/gallery"), std::string(TOLV_SOURCE_DIR)}) {
        for (const std::string& page : manualPages(folder)) {
            for (const std::string& link : relativeLinks(contentOfFile(page)))
                EXPECT_TRUE(std::filesystem::exists(folder + "/" + link)) << page << ": " << link;
        }
    }
}

TEST(ManualPages, ReadmeHasTheFirstGraphWhole)
{
    const std::string program = contentOfFile(TOLV_SOURCE_DIR "/examples/first_graph.cpp");
    const auto blocks = blocksOfPage(TOLV_SOURCE_DIR "/README.md");
    EXPECT_TRUE(std::any_of(blocks.begin(), blocks.end(), [&](const ManualBlock& block) { return block.text == program; }));
}

TEST(ManualPages, GalleryShowsEachPictureWithItsProgram)
{
    const std::string page = contentOfFile(TOLV_SOURCE_DIR "/docs/gallery/README.md");
    for (const auto& entry : std::filesystem::directory_iterator(TOLV_SOURCE_DIR "/docs/gallery")) {
        if (entry.path().extension() != ".png")
            continue;
        const std::string name = entry.path().stem().string();
        std::string program = name + ".cpp";
        std::replace(program.begin(), program.end(), '-', '_');
        EXPECT_NE(page.find("![](" + name + ".png)"), std::string::npos) << name;
        EXPECT_NE(page.find("[SVG](" + name + ".svg)"), std::string::npos) << name;
        EXPECT_NE(page.find("](../../examples/" + program + ")"), std::string::npos) << name;
    }
}

} // namespace

} // namespace TOLVGraphing::testing_support
