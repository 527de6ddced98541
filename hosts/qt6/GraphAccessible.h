#pragma once

#include "GraphWidget.h"

#include <QAccessibleWidget>

namespace TOLVGraphing {

/// What assistive programs hear of a graph widget: a chart, named by the graph's title, described by its axes, series, ranges and markers, with the values under the pointer as its value. A name or description that the host
/// has given the widget goes before.
class GraphAccessible final : public QAccessibleWidget {
public:
    explicit GraphAccessible(GraphWidget* widget);

    [[nodiscard]] QString text(QAccessible::Text kind) const override;

private:
    [[nodiscard]] GraphWidget& graphWidget() const;
};

/// Makes Qt ask for a GraphAccessible where it meets a GraphWidget.
void installGraphAccessibility();

} // namespace TOLVGraphing
