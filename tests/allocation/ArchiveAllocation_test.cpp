#include "AllocationFailures.h"

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/foundation/KeyedArchiver.h>

#include <desktop/archive/PropertyListArchive.h>

#include <gtest/gtest.h>

#include <string>

namespace TOLVGraphing {
namespace {

using testing_support::allocationsThatMayFail;
using testing_support::Failing;

using Bytes = std::vector<std::byte>;

Bytes binaryArchive()
{
    const auto graph = TOLVGraph::graph();
    graph->zoomXToFixedMin(1.0F, 2.0F);
    graph->zoomYToFixedMin(-10.0, 1e6);
    for (const double value : {1.25, 1.5, 1.75})
        graph->placeHorizontalAxisMarkerWithValue(value);
    return propertyListData(KeyedArchiver::archivedObject(*graph));
}

/// A graph with one marker, the names of its classes and keys longer than what a string holds without memory of its own.
Bytes xmlArchive()
{
    const auto reference = [](int number) { return "<dict><key>CF$UID</key><integer>" + std::to_string(number) + "</integer></dict>"; };
    const auto classObject = [](const std::string& name) {
        return "<dict><key>$classname</key><string>" + name + "</string><key>$classes</key><array><string>" + name + "</string><string>NSObject</string></array></dict>";
    };
    const std::string text
        = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist "
          "version=\"1.0\"><dict><key>$version</key><integer>100000</integer><key>$archiver</key><string>NSKeyedArchiver</string><key>$top</key><dict><key>root</key>"
        + reference(1) + "</dict><key>$objects</key><array><string>$null</string><dict><key>extents</key>" + reference(3) + "<key>markers</key><array>" + reference(5)
        + "</array><key>a key that nobody reads at all</key>" + "<data>AQIDBAUGBwgJCgsMDQ4PEA==</data><key>$class</key>" + reference(2) + "</dict>" + classObject("TOLVGraph")
        + "<dict><key>x</key>" + reference(7) + "<key>y</key>" + reference(7) + "<key>$class</key>" + reference(4) + "</dict>" + classObject("TOLVGraphExtents")
        + "<dict><key>value</key><real>1.5</real><key>axisIndex</key><integer>0</integer><key>$class</key>" + reference(6) + "</dict>" + classObject("TOLVMarker")
        + "<dict><key>min</key><real>1</real><key>max</key><real>2</real><key>$class</key>" + reference(8) + "</dict>" + classObject("TOLVAxisExtents") + "</array></dict></plist>";
    const auto bytes = std::as_bytes(std::span(text.data(), text.size()));
    return {bytes.begin(), bytes.end()};
}

std::shared_ptr<TOLVGraph> graphIn(const Bytes& data)
{
    return std::dynamic_pointer_cast<TOLVGraph>(KeyedUnarchiver::unarchivedObject(archiveObjectFromPropertyList(data)));
}

class ArchiveAllocation : public testing::TestWithParam<std::tuple<bool, Failing>> {};

TEST_P(ArchiveAllocation, EveryFailureIsReportedAndLeavesNothingBehind)
{
    const auto [isXml, failing] = GetParam();
    const Bytes data = isXml ? xmlArchive() : binaryArchive();
    const std::size_t markers = isXml ? 1 : 3;
    const std::int64_t allocations = allocationsThatMayFail(failing, [&] {
        const auto graph = graphIn(data);
        return graph && graph->countOfMarkers() == markers;
    });
    // A graph has more parts than that.
    EXPECT_GT(allocations, 200);
}

INSTANTIATE_TEST_SUITE_P(BinaryAndXml, ArchiveAllocation, testing::Combine(testing::Bool(), testing::Values(Failing::Once, Failing::FromThereOn)));

} // namespace
} // namespace TOLVGraphing
