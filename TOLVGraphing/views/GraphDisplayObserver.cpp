#include "GraphDisplayObserver.h"

#include "../graph/TOLVGraph.h"

namespace TOLVGraphing {

GraphDisplayObserver::GraphDisplayObserver(const std::shared_ptr<TOLVGraph>& graph, const std::function<void()>& handler) : m_graph(graph)
{
    if (!graph || !handler)
        return;
    for (const std::string& key : observedKeys())
        m_tokens.push_back(graph->addObserver(key, [handler](const PropertyChange&) { handler(); }));
}

GraphDisplayObserver::~GraphDisplayObserver()
{
    const auto observed = graph();
    if (!observed)
        return;
    for (const ObserverToken token : m_tokens)
        observed->removeObserver(token);
}

std::vector<std::string> GraphDisplayObserver::observedKeys()
{
    // The ranges are part of "canDraw", the attributes of labels and tick labels part of their font heights.
    return {"canDraw", "title", "titleAttributes", "labelFontHeight", "tickLabelFontHeight", "horizontalAxis", "verticalAxis", "majorLineStyle", "minorLineStyle",
        "drawingStrategy", "markers", "padding"};
}

} // namespace TOLVGraphing
