#include "MarkersPanel.h"

#include "Words.h"

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <apps/viewer/GraphDocument.h>
#include <hosts/qt6/GraphWidget.h>

#include <QAction>
#include <QColor>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QPixmap>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace TOLVGraphing::app {

namespace {

/// In logical pixels.
constexpr int kWidestAbscissa = 160;
constexpr int kWidestColumn = 100;
constexpr int kHeaderMargin = 32;
constexpr int kSwatchSize = 10;

std::vector<double> valuesOf(const TOLVGraph& graph)
{
    std::vector<double> values;
    for (const auto& marker : graph.markers())
        values.push_back(marker->value());
    return values;
}

/// Tells series apart whose names are too long.
QIcon swatch(const TOLVGraphData& series)
{
    const Color color = series.color().value_or(Color::blackColor()).clamped();
    QPixmap pixmap(kSwatchSize, kSwatchSize);
    pixmap.fill(QColor::fromRgbF(static_cast<float>(color.redComponent()), static_cast<float>(color.greenComponent()), static_cast<float>(color.blueComponent())));
    return QIcon(pixmap);
}

QString sampleText(const TOLVGraphData& series, double value)
{
    if (!series.X() || !series.Y() || std::min(series.X()->length(), series.Y()->length()) == 0)
        return {};
    const float y = series.YValueAtX(static_cast<float>(value));
    return std::isnan(y) ? QString() : QString::number(static_cast<double>(y), 'g', 7);
}

} // namespace

MarkersPanel::MarkersPanel(GraphWidget* graphWidget, QWidget* parent)
    : QWidget(parent)
    , m_graphWidget(graphWidget)
    , m_table(new QTableWidget)
    , m_add(new QPushButton(tr("&Add")))
    , m_delete(new QPushButton(tr("&Delete")))
    , m_goTo(new QPushButton(tr("&Go To")))
{
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->setAccessibleName(tr("Markers"));
    m_add->setToolTip(tr("Places a marker in the middle of the graph"));
    m_goTo->setToolTip(tr("Moves the graph so that the marker is in its middle"));
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {m_add, m_delete, m_goTo})
        buttons->addWidget(button);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(m_table, 1);
    rows->addLayout(buttons);
    connect(m_add, &QPushButton::clicked, this, [this] { m_graphWidget->carryOut(GraphCommand::PlaceMarker); });
    connect(m_delete, &QPushButton::clicked, this, [this] { m_graphWidget->carryOut(GraphCommand::DeleteMarker); });
    connect(m_goTo, &QPushButton::clicked, this, [this] { goTo(m_table->currentRow()); });
    connect(m_table, &QTableWidget::cellChanged, this, &MarkersPanel::changeValue);
    connect(m_table, &QTableWidget::itemSelectionChanged, this, &MarkersPanel::selectInWidget);
    connect(m_graphWidget, &GraphWidget::markersChanged, this, &MarkersPanel::refresh);
    connect(m_graphWidget, &GraphWidget::selectedMarkerChanged, this, &MarkersPanel::selectInTable);
    updateButtons();
}

void MarkersPanel::showDocument(const GraphDocument& document)
{
    m_dateOrigin = dateOriginOf(document.files());
    QStringList headers;
    const auto& axis = document.graph()->horizontalAxis();
    const QString x = axis ? QString::fromStdString(axis->label().value_or("")) : QString();
    headers << (x.isEmpty() ? tr("x") : x);
    for (std::size_t i = 0; i < document.legendEntries().size(); ++i) {
        const QString title = QString::fromStdString(document.legendEntries()[i].title);
        headers << (title.isEmpty() ? tr("Series %1").arg(i + 1) : title);
    }
    {
        const QScopedValueRollback filling(m_isFilling, true);
        m_table->setColumnCount(static_cast<int>(headers.size()));
        // Shortened here: styles cut a long title off at both ends.
        const QFontMetrics metrics = m_table->horizontalHeader()->fontMetrics();
        for (int column = 0; column < m_table->columnCount(); ++column) {
            auto* header = new QTableWidgetItem(metrics.elidedText(headers[column], Qt::ElideMiddle, (column == 0 ? kWidestAbscissa : kWidestColumn) - kHeaderMargin));
            header->setToolTip(headers[column]);
            const auto series = static_cast<std::size_t>(column - 1);
            if (column > 0 && series < document.graph()->graphData().size())
                header->setIcon(swatch(*document.graph()->graphData()[series]));
            m_table->setHorizontalHeaderItem(column, header);
        }
    }
    fill();
}

void MarkersPanel::refresh()
{
    const auto graph = m_graphWidget->graph();
    if (graph && valuesOf(*graph) != m_values)
        fill();
    updateButtons();
}

void MarkersPanel::fill()
{
    const auto graph = m_graphWidget->graph();
    if (!graph)
        return;
    const QScopedValueRollback filling(m_isFilling, true);
    const std::vector<double> former = std::exchange(m_values, valuesOf(*graph));
    m_table->setRowCount(static_cast<int>(m_values.size()));
    for (std::size_t i = 0; i < m_values.size(); ++i)
        fillRow(static_cast<int>(i), m_values[i]);
    if (former.empty())
        fitColumns();
    selectInTable();
    updateButtons();
}

/// Long names of series must not push the values out of sight.
void MarkersPanel::fitColumns()
{
    m_table->resizeColumnsToContents();
    for (int column = 0; column < m_table->columnCount(); ++column)
        m_table->setColumnWidth(column, std::min(m_table->columnWidth(column), column == 0 ? kWidestAbscissa : kWidestColumn));
}

void MarkersPanel::fillRow(int row, double value)
{
    const auto item = [&](int column) {
        if (!m_table->item(row, column))
            m_table->setItem(row, column, new QTableWidgetItem);
        return m_table->item(row, column);
    };
    item(0)->setText(textOfValue(value, m_dateOrigin));
    const auto series = m_graphWidget->graph()->graphData();
    for (int column = 1; column < m_table->columnCount(); ++column) {
        const auto index = static_cast<std::size_t>(column - 1);
        item(column)->setText(index < series.size() ? sampleText(*series[index], value) : QString());
        item(column)->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        item(column)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
}

void MarkersPanel::changeValue(int row, int column)
{
    const auto graph = m_graphWidget->graph();
    const auto index = static_cast<std::size_t>(row);
    if (m_isFilling || column != 0 || !graph || index >= graph->markers().size())
        return;
    const auto value = valueOfText(m_table->item(row, 0)->text(), m_dateOrigin);
    if (!value) {
        const QString text = m_table->item(row, 0)->text();
        fill();
        emit rejected(tr("The marker was not moved."),
            m_dateOrigin ? tr("Found “%1”, expected a date such as 2026-11-21 or a number of days.").arg(text) : tr("Found “%1”, expected a number.").arg(text));
        return;
    }
    const auto moved = graph->markers()[index]->copy();
    moved->setValue(*value);
    graph->replaceMarkersAtIndexes({index}, {moved});
    m_graphWidget->selectMarker(index);
    fill();
}

void MarkersPanel::goTo(int row)
{
    const auto graph = m_graphWidget->graph();
    if (!graph || row < 0 || static_cast<std::size_t>(row) >= m_values.size())
        return;
    const Rect rect = m_graphWidget->view()->bounds();
    const Rect area = graph->dataRectInRect(rect);
    const float x = graph->XForValue(static_cast<float>(m_values[static_cast<std::size_t>(row)]), rect);
    graph->offsetDisplayByX(x - static_cast<float>(area.x() + area.width() * 0.5), 0.0F, rect);
    m_graphWidget->selectMarker(static_cast<std::size_t>(row));
}

void MarkersPanel::selectInWidget()
{
    if (!m_isFilling && m_table->currentRow() >= 0 && !m_table->selectedItems().isEmpty())
        m_graphWidget->selectMarker(static_cast<std::size_t>(m_table->currentRow()));
    updateButtons();
}

void MarkersPanel::selectInTable()
{
    const auto graph = m_graphWidget->graph();
    if (!graph)
        return;
    const QScopedValueRollback filling(m_isFilling, true);
    const auto& markers = graph->markers();
    const auto found = std::find(markers.begin(), markers.end(), m_graphWidget->selectedMarker());
    if (found == markers.end())
        m_table->clearSelection();
    else if (found - markers.begin() < m_table->rowCount())
        m_table->selectRow(static_cast<int>(found - markers.begin()));
    updateButtons();
}

void MarkersPanel::updateButtons()
{
    const bool hasSelection = !m_table->selectedItems().isEmpty();
    m_add->setEnabled(m_graphWidget->action(GraphCommand::PlaceMarker)->isEnabled());
    m_delete->setEnabled(hasSelection && m_graphWidget->selectedMarker());
    m_goTo->setEnabled(hasSelection);
}

} // namespace TOLVGraphing::app
