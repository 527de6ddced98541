#include "GraphAccessible.h"

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/views/GraphDescription.h>

namespace TOLVGraphing {

namespace {

QAccessibleInterface* makeInterface(const QString&, QObject* object)
{
    auto* widget = qobject_cast<GraphWidget*>(object);
    return widget ? new GraphAccessible(widget) : nullptr;
}

} // namespace

GraphAccessible::GraphAccessible(GraphWidget* widget) : QAccessibleWidget(widget, QAccessible::Chart) {}

GraphWidget& GraphAccessible::graphWidget() const
{
    return static_cast<GraphWidget&>(*widget());
}

QString GraphAccessible::text(QAccessible::Text kind) const
{
    const auto graph = graphWidget().graph();
    switch (kind) {
    case QAccessible::Name:
        if (widget()->accessibleName().isEmpty())
            return graph ? QString::fromStdString(graphName(*graph)) : QString("Graph");
        break;
    case QAccessible::Description:
        if (widget()->accessibleDescription().isEmpty())
            return graph ? QString::fromStdString(graphDescription(*graph)) : QString();
        break;
    case QAccessible::Value: return graphWidget().readoutText();
    default: break;
    }
    return QAccessibleWidget::text(kind);
}

void installGraphAccessibility()
{
    QAccessible::installFactory(makeInterface);
}

} // namespace TOLVGraphing
