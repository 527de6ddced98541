// The viewer's desktop file, its type of document and the metadata of both programs.

#include "InstalledFiles.h"

#include "../desktop/Process.h"
#include "../desktop/TemporaryFolder.h"
#include "../support/TextLines.h"

#include <apps/viewer/DocumentArchive.h>
#include <apps/viewer/GraphDocument.h>

#include <TOLVGraphing/graph/TOLVGraph.h>

#include <gmock/gmock.h>

#include <filesystem>
#include <regex>

namespace TOLVGraphing::testing_support {

namespace {

constexpr const char* kDesktopFile = "applications/io.github.tolvgraphing.Viewer.desktop";
constexpr const char* kTypeFile = "mime/packages/io.github.tolvgraphing.Viewer.xml";
constexpr const char* kMetadata[] = {"metainfo/io.github.tolvgraphing.Viewer.metainfo.xml", "metainfo/io.github.tolvgraphing.tolvgraph.metainfo.xml"};
constexpr const char* kDocumentType = "application/x-tolvgraph";

/// The value of a key in the desktop file.
std::string desktopValue(const std::string& key)
{
    for (const std::string& line : linesOf(contentOfFile(sharedFile(kDesktopFile)))) {
        if (line.starts_with(key + "="))
            return line.substr(key.size() + 1);
    }
    return "";
}

/// The texts of all elements of this name, without attributes.
std::vector<std::string> elements(const std::string& xml, const std::string& name)
{
    const std::regex kElement("<" + name + ">([^<]*)</" + name + ">");
    std::vector<std::string> texts;
    for (std::sregex_iterator match(xml.begin(), xml.end(), kElement); match != std::sregex_iterator(); ++match)
        texts.push_back((*match)[1]);
    return texts;
}

TEST(DesktopEntry, isValid)
{
    TOLV_REQUIRE_PROGRAM("desktop-file-validate");
    const ProcessResult result = runProcess({"desktop-file-validate", sharedFile(kDesktopFile)});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output + result.error, "");
}

TEST(DesktopEntry, startsTheProgramWithFilesAndHasAnIconThatIsInstalled)
{
    EXPECT_EQ(desktopValue("Exec"), "tolvgraph-viewer %F");
    EXPECT_EQ(desktopValue("TryExec"), std::filesystem::path(pathOfProgram("tolvgraph-viewer")).filename());
    EXPECT_EQ(desktopValue("Icon"), std::filesystem::path(kDesktopFile).stem());
    EXPECT_TRUE(std::filesystem::exists(sharedFile("icons/hicolor/scalable/apps/" + desktopValue("Icon") + ".svg")));
}

TEST(Metadata, isValid)
{
    TOLV_REQUIRE_PROGRAM("appstreamcli");
    for (const char* file : kMetadata) {
        const ProcessResult result = runProcess({"appstreamcli", "validate", "--no-net", "--no-color", "--pedantic", sharedFile(file)});
        EXPECT_EQ(result.status, 0) << result.text();
        for (const std::string& line : linesOf(result.output + result.error)) {
            // An identifier may have upper case letters, as long as it is the name of the desktop file.
            EXPECT_TRUE((!line.starts_with("E:") && !line.starts_with("W:") && !line.starts_with("I:") && !line.starts_with("P:"))
                || line.find("cid-contains-uppercase-letter") != std::string::npos)
                << line;
        }
    }
}

TEST(Metadata, isOfThisVersion)
{
    for (const char* file : kMetadata)
        EXPECT_THAT(contentOfFile(sharedFile(file)), testing::HasSubstr("<release version=\"" TOLV_VERSION "\" date=\"")) << file;
}

TEST(Metadata, goesWithTheDesktopEntry)
{
    const std::string xml = contentOfFile(sharedFile(kMetadata[0]));
    const std::filesystem::path desktopFile(kDesktopFile);
    EXPECT_THAT(elements(xml, "id"), testing::ElementsAre(desktopFile.stem()));
    EXPECT_THAT(xml, testing::HasSubstr("<launchable type=\"desktop-id\">" + desktopFile.filename().string() + "</launchable>"));
    std::string types;
    for (const std::string& type : elements(xml, "mediatype"))
        types += type + ";";
    EXPECT_EQ(types, desktopValue("MimeType"));
    EXPECT_THAT(elements(xml, "binary"), testing::ElementsAre("tolvgraph-viewer"));
    EXPECT_THAT(elements(contentOfFile(sharedFile(kMetadata[1])), "binary"), testing::ElementsAre("tolvgraph"));
}

/// A folder of types of its own, beside those of the desktop.
class DocumentType : public testing::Test {
protected:
    void SetUp() override
    {
        TOLV_REQUIRE_PROGRAM("update-mime-database");
        std::filesystem::create_directories(m_folder.path("data/mime/packages"));
        std::filesystem::copy_file(sharedFile(kTypeFile), m_folder.path(std::string("data/") + kTypeFile));
        const ProcessResult result = runProcess({"env", "XDG_DATA_HOME=" + m_folder.path("data"), "update-mime-database", m_folder.path("data/mime")});
        EXPECT_EQ(result.status, 0) << result.text();
        EXPECT_EQ(result.output + result.error, "");
    }

    /// Type and icon of a file of the folder.
    [[nodiscard]] std::string information(const std::string& file) const
    {
        const ProcessResult result = runProcess({"env", "HOME=" + m_folder.path(), "XDG_DATA_HOME=" + m_folder.path("data"), "XDG_DATA_DIRS=/usr/share", "gio", "info", "-a",
            "standard::content-type,standard::icon", m_folder.path(file)});
        EXPECT_EQ(result.status, 0) << result.text();
        return result.output;
    }

    TemporaryFolder m_folder;
};

TEST(DocumentTypeFile, isWellFormed)
{
    TOLV_REQUIRE_PROGRAM("xmllint");
    const ProcessResult result = runProcess({"xmllint", "--noout", sharedFile(kTypeFile), sharedFile(kMetadata[0]), sharedFile(kMetadata[1])});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output + result.error, "");
}

TEST_F(DocumentType, isThatOfASavedDocument)
{
    app::GraphDocument document;
    document.save(m_folder.path("saved.tolvgraph"));
    TOLV_REQUIRE_PROGRAM("gio");
    EXPECT_THAT(information("saved.tolvgraph"), testing::HasSubstr(std::string("standard::content-type: ") + kDocumentType + "\n"));
    EXPECT_THAT(information("saved.tolvgraph"), testing::HasSubstr("standard::icon: application-x-tolvgraph,"));
}

TEST_F(DocumentType, isFoundFromTheContentsAlone)
{
    TOLV_REQUIRE_PROGRAM("gio");
    for (const std::size_t sourceCount : {0U, 1U, 256U}) {
        app::DocumentContents contents;
        contents.graph = TOLVGraph::graph();
        for (std::size_t i = 0; i < sourceCount; ++i)
            contents.sources.push_back({"/measurements/" + std::to_string(i) + ".csv", std::nullopt, std::nullopt});
        const auto bytes = app::documentData(contents);
        m_folder.write("saved", {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        EXPECT_THAT(information("saved"), testing::HasSubstr(kDocumentType)) << sourceCount;
    }
    m_folder.write("list", "bplist00" + std::string(100, '\0') + "another archive");
    EXPECT_THAT(information("list"), testing::Not(testing::HasSubstr(kDocumentType)));
}

TEST_F(DocumentType, isOneThatTheViewerOpens)
{
    EXPECT_THAT(desktopValue("MimeType"), testing::StartsWith(std::string(kDocumentType) + ";"));
    EXPECT_THAT(contentOfFile(sharedFile(kTypeFile)), testing::HasSubstr("<glob pattern=\"*" + std::string(app::GraphDocument::kSuffix) + "\"/>"));
    EXPECT_TRUE(std::filesystem::exists(sharedFile("icons/hicolor/scalable/mimetypes/application-x-tolvgraph.svg")));
}

} // namespace

} // namespace TOLVGraphing::testing_support
