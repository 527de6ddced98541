#include "DocumentArchive.h"

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/foundation/KeyedArchive.h>

#include <gtest/gtest.h>

namespace TOLVGraphing::app {

namespace {

DocumentContents usualContents()
{
    DocumentContents contents;
    contents.sources = {{"/data/scope.csv", "scope.csv", FileStamp{12, -5}}, {"/elsewhere/far.csv", std::nullopt, std::nullopt}};
    contents.options.title = "gypsum";
    contents.options.channels = 3;
    contents.options.dateOrigin = 20513.0;
    contents.options.colors = {Color(1.0, 0.5, 0.0)};
    contents.graph = TOLVGraph::graph();
    contents.graph->zoomXToFixedMin(1.0F, 2.0F);
    contents.graph->placeHorizontalAxisMarkerWithValue(1.5);
    return contents;
}

} // namespace

TEST(DocumentArchive, readsBackWhatItStores)
{
    const DocumentContents stored = usualContents();
    const DocumentContents read = documentContents(documentData(stored));
    EXPECT_EQ(read.sources, stored.sources);
    EXPECT_EQ(read.options, stored.options);
    EXPECT_EQ(toString(*read.graph->extents()), "x [1, 2] y [0, 0] z [0, 0]");
    ASSERT_EQ(read.graph->countOfMarkers(), 1U);
    EXPECT_EQ(read.graph->markers()[0]->value(), 1.5);
}

TEST(DocumentArchive, givesTheSameBytesForTheSameDocument)
{
    EXPECT_EQ(documentData(usualContents()), documentData(usualContents()));
}

TEST(DocumentArchive, refusesToStoreWhatItCouldNotRead)
{
    DocumentContents contents = usualContents();
    contents.sources.resize(257, contents.sources[0]);
    EXPECT_THROW(static_cast<void>(documentData(contents)), ArchiveError);
    contents.sources.resize(256);
    EXPECT_EQ(documentContents(documentData(contents)).sources.size(), 256U);
    contents.options.scale = 0.0;
    EXPECT_THROW(static_cast<void>(documentData(contents)), ArchiveError);
}

TEST(DocumentArchive, tellsTheBeginningOfALongText)
{
    DocumentContents contents = usualContents();
    // The 120th byte of the path is in the middle of a character.
    contents.sources[0].path = std::string(119, 'a') + "éé";
    try {
        static_cast<void>(documentData(contents));
        ADD_FAILURE();
    } catch (const ArchiveError& error) {
        EXPECT_EQ(std::string(error.what()), "sources[0].path: found '" + std::string(119, 'a') + "…', expected the absolute path of a file");
    }
    contents = usualContents();
    contents.options.xRange = RangeText{std::string(5000, 'x'), ""};
    try {
        static_cast<void>(documentData(contents));
        ADD_FAILURE();
    } catch (const ArchiveError& error) {
        EXPECT_EQ(std::string(error.what()).size(), 500 + std::string("…").size());
    }
}

TEST(DocumentArchive, refusesEveryBeginningOfADocument)
{
    const std::vector<std::byte> data = documentData(usualContents());
    for (std::size_t length = 0; length < data.size(); ++length)
        EXPECT_THROW(static_cast<void>(documentContents(std::span(data).first(length))), ArchiveError) << length << " of " << data.size() << " bytes";
}

TEST(DocumentArchive, refusesOrReadsDamagedDocuments)
{
    const std::vector<std::byte> whole = documentData(usualContents());
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (const std::byte damage : {std::byte{0x01}, std::byte{0x10}, std::byte{0x80}, std::byte{0xFF}}) {
            std::vector<std::byte> data = whole;
            data[i] ^= damage;
            try {
                const DocumentContents contents = documentContents(data);
                EXPECT_NE(contents.graph, nullptr);
                EXPECT_LE(contents.sources.size(), 256U);
            } catch (const ArchiveError&) {
                // Said what was wrong. Any other exception fails the test.
            }
        }
    }
}

} // namespace TOLVGraphing::app
