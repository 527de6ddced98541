#pragma once

#include "../platform/foundation/Observable.h"
#include <TOLVMath/Export.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace TOLVGraphing {

class TOLVGraph;

/// Tells of every announced change of a graph that shows: title, axes, ranges, markers, strategy, line styles, text attributes and font heights, padding. A graph view by itself asks for redisplay only when the ranges change; a host that
/// edits the rest makes one of these for the graph that it shows and has its handler call `setNeedsDisplay`.
///
/// Not told are the margin and the tick label paddings, which are written while drawing, nor what announces nothing: series added or cleared, and changes inside an axis, a line style, a marker or a series. Whoever makes those asks for redisplay.
/// One change may be told more than once.
class TOLV_EXPORT GraphDisplayObserver {
public:
    /// The graph is referred to weakly and may end first; null is observed by nobody. The handler is copied; an empty one is not called. It may end this object.
    GraphDisplayObserver(const std::shared_ptr<TOLVGraph>& graph, const std::function<void()>& handler);
    ~GraphDisplayObserver();
    GraphDisplayObserver(const GraphDisplayObserver&) = delete;
    GraphDisplayObserver& operator=(const GraphDisplayObserver&) = delete;

    /// Null when there is none any more.
    [[nodiscard]] std::shared_ptr<TOLVGraph> graph() const { return m_graph.lock(); }

    /// The names of the properties that are observed.
    [[nodiscard]] static std::vector<std::string> observedKeys();

private:
    std::weak_ptr<TOLVGraph> m_graph;
    std::vector<ObserverToken> m_tokens;
};

} // namespace TOLVGraphing
