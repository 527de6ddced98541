#include "AllocationFailures.h"

#include <apps/viewer/DocumentArchive.h>

#include <TOLVGraphing/graph/TOLVGraph.h>

#include <gtest/gtest.h>

namespace TOLVGraphing::app {
namespace {

using testing_support::allocationsThatMayFail;
using testing_support::Failing;

DocumentContents richContents()
{
    DocumentContents contents;
    contents.sources = {{"/data/a file with a long name.csv", "a file with a long name.csv", FileStamp{12, -5}}, {"/elsewhere/far.csv", std::nullopt, std::nullopt}};
    contents.options.title = "a title that does not fit into a string without memory";
    contents.options.y = {"the first column of all", "the second column of all"};
    contents.options.colors = {Color(1.0, 0.5, 0.0), Color(0.0, 0.5, 1.0)};
    contents.options.thicknesses = {1.0, 2.0};
    contents.options.xRange = RangeText{"1", "2"};
    contents.graph = TOLVGraph::graph();
    contents.graph->zoomXToFixedMin(1.0F, 2.0F);
    contents.graph->placeHorizontalAxisMarkerWithValue(1.5);
    return contents;
}

class DocumentAllocation : public testing::TestWithParam<Failing> {};

TEST_P(DocumentAllocation, EveryFailureIsReportedAndLeavesNothingBehind)
{
    const DocumentContents stored = richContents();
    const std::vector<std::byte> data = documentData(stored);
    const std::int64_t allocations = allocationsThatMayFail(GetParam(), [&] {
        const DocumentContents read = documentContents(data);
        return read.sources == stored.sources && read.options == stored.options && read.graph->countOfMarkers() == 1;
    });
    // A document has more parts than that.
    EXPECT_GT(allocations, 200);
}

INSTANTIATE_TEST_SUITE_P(Failures, DocumentAllocation, testing::Values(Failing::Once, Failing::FromThereOn));

} // namespace
} // namespace TOLVGraphing::app
