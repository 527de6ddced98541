#pragma once

#include <TOLVGraphing/axes/TOLVAxis.h>
#include <TOLVGraphing/data/TOLVGraphData.h>
#include <TOLVGraphing/drawing/TOLVGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/geometry/Rect.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// What a graph may be handed that is not what it expects, as tables whose products the tests go through.
namespace TOLVGraphing::testing_support {

/// Of the cells of a large product one in so many is gone through: all of them, but where a sanitizer makes each many times as long. Every row and column of the tables has its turn.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr std::size_t kCellStep = 8;
#else
inline constexpr std::size_t kCellStep = 1;
#endif

struct BadSeries {
    std::string name;
    std::vector<float> x;
    std::vector<float> y;

    [[nodiscard]] std::shared_ptr<TOLVGraphData> series() const;
};

struct BadRange {
    std::string name;
    double min = 0.0;
    double max = 0.0;
};

/// Which ends of a graph's ranges a bad range goes to; the others are ordinary.
enum class BadEnds : std::uint8_t { X, Y, Both };

struct BadRect {
    std::string name;
    Rect rect;
    /// All of it, and what is computed of it in single precision, is finite: so is everything that reaches a context then.
    bool isFinite = true;

    friend std::ostream& operator<<(std::ostream& stream, const BadRect& bad) { return stream << bad.name; }
};

struct NamedStrategy {
    std::string name;
    std::function<std::shared_ptr<TOLVGraphDrawing>()> make;
};

struct NamedAxes {
    std::string name;
    std::shared_ptr<const TOLVAxis> horizontal;
    std::shared_ptr<const TOLVAxis> vertical;

    friend std::ostream& operator<<(std::ostream& stream, const NamedAxes& axes) { return stream << axes.name; }
};

/// Values that are no numbers or at their ends, abscissae without order, few samples, lengths that differ.
[[nodiscard]] const std::vector<BadSeries>& badSeries();
/// The first is an ordinary one.
[[nodiscard]] const std::vector<BadRange>& badRanges();
/// The first is an ordinary one.
[[nodiscard]] const std::vector<BadRect>& badRects();
/// Every strategy of the library.
[[nodiscard]] const std::vector<NamedStrategy>& allStrategies();
/// Every kind of axis in either direction: linear, logarithmic, bars, lines.
[[nodiscard]] const std::vector<NamedAxes>& allAxes();

/// A graph with the strategy and the axes, with titles, labels of categories and markers on both axes at values of every kind, without series.
[[nodiscard]] std::shared_ptr<TOLVGraph> badDataGraph(const NamedStrategy& strategy, const NamedAxes& axes);
/// An ordinary range of the graph's axes is 1 to 10.
void setBadRange(TOLVGraph& graph, const BadRange& range, BadEnds ends);

/// Counts the different cells of a product, each a name and a list of positions in tables.
class CellCount {
public:
    void add(const std::string& name, std::initializer_list<std::size_t> positions);
    [[nodiscard]] std::size_t count() const { return m_cells.size(); }
    /// One line on standard output.
    void print(const std::string& ofWhat) const;

private:
    std::set<std::pair<std::string, std::vector<std::size_t>>> m_cells;
};

} // namespace TOLVGraphing::testing_support
