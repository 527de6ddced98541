#include "TOLVGraphExtents.h"

#include "../graph/TOLVGraph.h"

#include <gtest/gtest.h>

#include <vector>

namespace TOLVGraphing {
namespace {

std::shared_ptr<TOLVGraphExtents> sample()
{
    auto extents = std::make_shared<TOLVGraphExtents>();
    extents->setX(TOLVAxisExtents::extentsWithMin(0.1, 0.2));
    extents->setY(TOLVAxisExtents::extentsWithMin(-3.0, 1e300));
    extents->setZ(TOLVAxisExtents::extentsWithMin(5e-324, 7.0));
    return extents;
}

TEST(TOLVGraphExtents, StartsWithThreeRangesAtZeroAndNoGraph)
{
    const TOLVGraphExtents extents;
    EXPECT_EQ(toString(extents), "x [0, 0] y [0, 0] z [0, 0]");
    EXPECT_FALSE(extents.graph());
}

TEST(TOLVGraphExtents, SettersStoreCopies)
{
    TOLVGraphExtents extents;
    const auto range = TOLVAxisExtents::extentsWithMin(1.0, 2.0);
    extents.setX(range);
    extents.setY(range);
    extents.setZ(range);
    range->setMin(-9.0);
    EXPECT_EQ(toString(extents), "x [1, 2] y [1, 2] z [1, 2]");
}

TEST(TOLVGraphExtents, ARangeMayBeSetToItself)
{
    const auto extents = sample();
    extents->setX(extents->x());
    EXPECT_EQ(toString(*extents->x()), "[0.1, 0.2]");
}

TEST(TOLVGraphExtents, CopyHasIndependentRangesAndNoGraph)
{
    const auto graph = TOLVGraph::graph();
    const auto extents = sample();
    extents->setGraph(graph);
    const auto copy = extents->copy();
    EXPECT_EQ(toString(*copy), toString(*extents));
    EXPECT_FALSE(copy->graph());
    copy->x()->setMin(99.0);
    copy->y()->setMin(99.0);
    copy->z()->setMin(99.0);
    EXPECT_EQ(toString(*extents), toString(*sample()));
}

TEST(TOLVGraphExtents, DoesNotKeepItsGraphAlive)
{
    const auto extents = sample();
    auto graph = TOLVGraph::graph();
    extents->setGraph(graph);
    EXPECT_EQ(extents->graph(), graph);
    const std::weak_ptr<TOLVGraph> weak = graph;
    graph.reset();
    EXPECT_TRUE(weak.expired());
    EXPECT_FALSE(extents->graph());
}

TEST(TOLVGraphExtents, ArchiveRestoresTheSixNumbersAndNoGraph)
{
    const auto graph = TOLVGraph::graph();
    const auto extents = sample();
    extents->setGraph(graph);
    const auto archive = KeyedArchiver::archivedObject(*extents);
    ASSERT_EQ(archive->values.size(), 3U);
    EXPECT_EQ(archive->values[0].first, "x");
    EXPECT_EQ(archive->values[1].first, "y");
    EXPECT_EQ(archive->values[2].first, "z");
    const auto back = std::dynamic_pointer_cast<TOLVGraphExtents>(KeyedUnarchiver::unarchivedObject(archive));
    ASSERT_TRUE(back);
    EXPECT_EQ(*back->x(), *extents->x());
    EXPECT_EQ(*back->y(), *extents->y());
    EXPECT_EQ(*back->z(), *extents->z());
    EXPECT_FALSE(back->graph());
}

TEST(TOLVGraphExtents, AMissingRangeReadsAsNone)
{
    const auto archive = KeyedArchiver::archivedObject(*sample());
    archive->values.erase(archive->values.begin() + 1);
    const auto back = std::dynamic_pointer_cast<TOLVGraphExtents>(KeyedUnarchiver::unarchivedObject(archive));
    ASSERT_TRUE(back);
    EXPECT_TRUE(back->x());
    EXPECT_FALSE(back->y());
    EXPECT_EQ(toString(*back), "x [0.1, 0.2] y none z [5e-324, 7]");
    // Such extents survive another copy and another archive.
    const auto again = KeyedUnarchiver::unarchivedObject(KeyedArchiver::archivedObject(*back->copy()));
    EXPECT_EQ(toString(dynamic_cast<TOLVGraphExtents&>(*again)), toString(*back));
}

TEST(TOLVGraphExtents, ARangeOfAnotherClassIsAnError)
{
    const auto archive = KeyedArchiver::archivedObject(*sample());
    archive->values[0].second = KeyedArchiver::archivedObject(*TOLVMarker::markerWithValue(1.0));
    EXPECT_THROW((void)KeyedUnarchiver::unarchivedObject(archive), ArchiveError);
}

TEST(TOLVGraphExtents, ValidationAsksTheGraph)
{
    const auto graph = TOLVGraph::graph();
    graph->zoomXToFixedMin(0.0F, 5.0F);
    PropertyValue value = 10.0;
    EXPECT_TRUE(graph->extents()->validateValue(value, "x.min"));
    EXPECT_EQ(std::get<double>(value), 0.0);
}

TEST(TOLVGraphExtents, ValidationFailsWhenTheGraphHasGone)
{
    const auto extents = sample();
    PropertyValue value = 1.0;
    EXPECT_FALSE(extents->validateValue(value, "x.min"));
    auto graph = TOLVGraph::graph();
    extents->setGraph(graph);
    EXPECT_TRUE(extents->validateValue(value, "x.min"));
    graph.reset();
    std::string error = "untouched";
    EXPECT_FALSE(extents->validateValue(value, "x.min", &error));
    EXPECT_EQ(error, "untouched");
}

TEST(TOLVGraphExtents, AnnouncesARangeForItsObjectAndForItsEnds)
{
    TOLVGraphExtents extents;
    std::vector<std::string> keys;
    for (const char* key : {"x", "y", "z"})
        extents.addObserver(key, [&](const PropertyChange& change) { keys.push_back(change.key); });
    extents.setX(TOLVAxisExtents::extentsWithMin(1.0, 2.0));
    extents.x()->setMin(0.0);
    extents.y()->setMax(4.0);
    extents.setZ(nullptr);
    EXPECT_EQ(keys, (std::vector<std::string>{"x", "x", "y", "z"}));
}

TEST(TOLVGraphExtents, ARangeThatWasReplacedIsNoLongerListenedTo)
{
    TOLVGraphExtents extents;
    const auto former = extents.x();
    extents.setX(TOLVAxisExtents::extentsWithMin(1.0, 2.0));
    int told = 0;
    extents.addObserver("x", [&](const PropertyChange&) { ++told; });
    former->setMin(5.0);
    EXPECT_EQ(told, 0);
    EXPECT_EQ(toString(*extents.x()), "[1, 2]");
}

TEST(TOLVGraphExtents, ARangeMayOutliveItsExtents)
{
    auto extents = sample();
    const auto range = extents->x();
    extents.reset();
    range->setMin(5.0);
    EXPECT_EQ(range->min(), 5.0);
}

TEST(TOLVGraphExtents, AnObserverMayReplaceTheRangeThatIsBeingAnnounced)
{
    TOLVGraphExtents extents;
    bool replaced = false;
    extents.addObserver("x", [&](const PropertyChange&) {
        if (!std::exchange(replaced, true))
            extents.setX(TOLVAxisExtents::extentsWithMin(7.0, 8.0));
    });
    extents.x()->setMin(1.0);
    EXPECT_EQ(toString(*extents.x()), "[7, 8]");
}

} // namespace
} // namespace TOLVGraphing
