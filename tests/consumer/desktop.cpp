// Pictures of a measurement that is read from a file.
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/views/GraphSheet.h>
#include <desktop/input/MeasurementReader.h>
#include <desktop/input/SeriesSelection.h>
#include <desktop/output/GraphicsOutput.h>
#include <desktop/text/PangoTextSystem.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>

using namespace TOLVGraphing;

namespace {

/// What the library throws is caught as what it is, also across the border of a shared library.
bool namesMissingFile()
{
    try {
        (void)input::readMeasurements("missing.csv");
    } catch (const input::MeasurementError& error) {
        return std::string(error.what()).find("missing.csv") != std::string::npos;
    }
    return false;
}

} // namespace

int main()
{
    installDesktopTextSystem();
    std::ofstream("measured.csv") << "time,level\n0,1\n1,3\n2,2\n";
    const auto graph = TOLVGraph::graph();
    for (const input::SelectedSeries& series : input::selectSeries(input::readMeasurements("measured.csv"), {}).series)
        graph->addGraphData(series.data);
    graph->setExtents(graph->extentsFittingGraphData());
    graph->horizontalAxis()->setLabel("Time (s)");
    GraphSheet sheet(graph);
    for (const auto& [path, kind] : {std::pair("picture.pdf", OutputKind::PDF), std::pair("picture.png", OutputKind::PNG), std::pair("picture.svg", OutputKind::SVG)}) {
        writeToFile(path, kind, OutputSettings(), [&](DrawingContext&, const Rect& bounds) { sheet.drawInRect(bounds); });
        std::printf("%s: %ju bytes\n", path, static_cast<std::uintmax_t>(std::filesystem::file_size(path)));
    }
    std::ifstream svg("picture.svg");
    const std::string text(std::istreambuf_iterator<char>(svg), {});
    return text.find("Time (s)") != std::string::npos && namesMissingFile() ? 0 : 1;
}
