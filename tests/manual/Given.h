#pragma once

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/views/GraphSheet.h>
#include <TOLVGraphing/views/TOLVGraphView.h>
#include <desktop/input/MeasurementTable.h>

#include <memory>
#include <vector>

/// What the statements on the manual's pages find: what a reader has at that place of the page.
namespace TOLVGraphing::testing_support::given {

/// Ten seconds of a dying tone, 100,000 samples.
[[nodiscard]] std::vector<float> abscissae();
[[nodiscard]] std::vector<float> ordinates();
/// A graph of it that shows everything, with the desktop's fonts installed.
[[nodiscard]] std::shared_ptr<TOLVGraph> graph();
/// A view of the graph, 640 by 400 points.
[[nodiscard]] std::shared_ptr<TOLVGraphView> view(const std::shared_ptr<TOLVGraph>& graph);
/// A table with the columns "time" and "voltage".
[[nodiscard]] input::MeasurementTable table();
/// Writes "graph.png", so that every graph is drawn and can be looked at.
void draw(const std::shared_ptr<TOLVGraph>& graph);

} // namespace TOLVGraphing::testing_support::given
