#include "SeriesPanel.h"

#include "Words.h"

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <apps/viewer/GraphDocument.h>

#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace TOLVGraphing::app {

namespace {

constexpr QSize kIconSize(32, 14);
constexpr double kThinnest = 0.1;
constexpr double kThickest = 20.0;

LinePattern patternOf(const TOLVLineStyle& style)
{
    if (style.patternValues() == TOLVLineStyle::dashedLineStyle()->patternValues())
        return LinePattern::Dashed;
    if (style.patternValues() == TOLVLineStyle::dashDotLineStyle()->patternValues())
        return LinePattern::DashDot;
    return style.patternValues() == TOLVLineStyle::dottedLineStyle()->patternValues() ? LinePattern::Dotted : LinePattern::Solid;
}

QColor qtColor(const Color& color)
{
    const Color shown = color.clamped();
    return QColor::fromRgbF(static_cast<float>(shown.redComponent()), static_cast<float>(shown.greenComponent()), static_cast<float>(shown.blueComponent()));
}

/// The options with the looks of every series written out, so that one can be changed.
Options withLooks(Options options, const TOLVGraph& graph)
{
    options.colors.clear();
    options.patterns.clear();
    options.thicknesses.clear();
    for (const auto& series : graph.graphData()) {
        options.colors.push_back(series->color().value_or(Color::blackColor()));
        options.patterns.push_back(patternOf(*series->lineStyle()));
        options.thicknesses.push_back(series->lineStyle()->thickness());
    }
    return options;
}

/// A piece of the line, on the ground that the list has.
QIcon lineIcon(const TOLVLineStyle& style, qreal ratio)
{
    QPixmap pixmap(kIconSize * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    const double thickness = std::clamp(style.thickness(), 1.0, static_cast<double>(kIconSize.height()));
    QPen pen(qtColor(style.color().value_or(Color::blackColor())), thickness, Qt::SolidLine, Qt::FlatCap);
    if (style.patternValues() && !style.patternValues()->empty()) {
        QList<qreal> lengths;
        for (const float length : *style.patternValues())
            lengths << static_cast<qreal>(length) / thickness;
        pen.setDashPattern(lengths);
    }
    painter.setPen(pen);
    const double middle = kIconSize.height() * 0.5;
    painter.drawLine(QPointF(0.0, middle), QPointF(kIconSize.width(), middle));
    // A selected row has the very colours too.
    QIcon icon(pixmap);
    icon.addPixmap(pixmap, QIcon::Selected);
    return icon;
}

} // namespace

SeriesPanel::SeriesPanel(QWidget* parent)
    : QWidget(parent)
    , m_list(new QTreeWidget)
    , m_color(new QPushButton(tr("&Colour…")))
    , m_pattern(new QComboBox)
    , m_thickness(new QDoubleSpinBox)
{
    m_list->setRootIsDecorated(false);
    m_list->setHeaderHidden(true);
    m_list->setIconSize(kIconSize);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setUniformRowHeights(true);
    m_list->setAccessibleName(tr("Series"));
    for (const LinePattern pattern : kLinePatterns)
        m_pattern->addItem(nameOf(pattern), static_cast<int>(pattern));
    m_pattern->setAccessibleName(tr("Line pattern"));
    m_thickness->setRange(kThinnest, kThickest);
    m_thickness->setSingleStep(0.5);
    m_thickness->setDecimals(1);
    m_thickness->setSuffix(tr(" pt"));
    m_thickness->setKeyboardTracking(false);
    m_thickness->setAccessibleName(tr("Line thickness"));
    auto* looks = new QHBoxLayout;
    looks->addWidget(m_color);
    looks->addWidget(m_pattern, 1);
    looks->addWidget(m_thickness);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(m_list, 1);
    rows->addLayout(looks);
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, &SeriesPanel::showSelected);
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, &SeriesPanel::chooseColor);
    connect(m_color, &QPushButton::clicked, this, &SeriesPanel::chooseColor);
    connect(m_pattern, &QComboBox::activated, this, [this] { setPattern(static_cast<LinePattern>(m_pattern->currentData().toInt())); });
    connect(m_thickness, &QDoubleSpinBox::valueChanged, this, [this](double thickness) {
        if (!m_isShowing)
            setThickness(thickness);
    });
    showSelected();
}

void SeriesPanel::showDocument(const GraphDocument& document)
{
    m_graph = document.graph();
    m_options = withLooks(document.options(), *m_graph);
    const auto& entries = document.legendEntries();
    const auto series = m_graph->graphData();
    // Rows stay where they can, so that a selection does.
    while (m_list->topLevelItemCount() > static_cast<int>(entries.size()))
        delete m_list->takeTopLevelItem(m_list->topLevelItemCount() - 1);
    while (m_list->topLevelItemCount() < static_cast<int>(entries.size()))
        new QTreeWidgetItem(m_list);
    for (std::size_t i = 0; i < entries.size() && i < series.size(); ++i) {
        QTreeWidgetItem* row = m_list->topLevelItem(static_cast<int>(i));
        const QString title = QString::fromStdString(entries[i].title);
        row->setText(0, title.isEmpty() ? tr("Series %1").arg(i + 1) : title);
        row->setToolTip(0, row->text(0));
        row->setIcon(0, lineIcon(*series[i]->lineStyle(), devicePixelRatioF()));
    }
    showSelected();
}

std::vector<std::size_t> SeriesPanel::selected() const
{
    std::vector<std::size_t> rows;
    for (int row = 0; row < m_list->topLevelItemCount(); ++row) {
        if (m_list->topLevelItem(row)->isSelected() && static_cast<std::size_t>(row) < m_options.colors.size())
            rows.push_back(static_cast<std::size_t>(row));
    }
    return rows;
}

void SeriesPanel::showSelected()
{
    const QScopedValueRollback showing(m_isShowing, true);
    const auto rows = selected();
    for (QWidget* choice : std::initializer_list<QWidget*>{m_color, m_pattern, m_thickness})
        choice->setEnabled(!rows.empty());
    if (rows.empty())
        return;
    m_pattern->setCurrentIndex(m_pattern->findData(static_cast<int>(m_options.patterns[rows.front()])));
    m_thickness->setValue(m_options.thicknesses[rows.front()]);
}

void SeriesPanel::chooseColor()
{
    const auto rows = selected();
    if (rows.empty())
        return;
    const QColor color = QColorDialog::getColor(qtColor(m_options.colors[rows.front()]), this, tr("Colour of the series"));
    if (color.isValid())
        setColor(color);
}

void SeriesPanel::setColor(const QColor& color)
{
    // In the eight bits a component that a colour has as six digits.
    for (const std::size_t row : selected())
        m_options.colors[row] = Color(color.red() / 255.0, color.green() / 255.0, color.blue() / 255.0);
    emit optionsWanted(m_options);
}

void SeriesPanel::setPattern(LinePattern pattern)
{
    for (const std::size_t row : selected())
        m_options.patterns[row] = pattern;
    emit optionsWanted(m_options);
}

void SeriesPanel::setThickness(double thickness)
{
    for (const std::size_t row : selected())
        m_options.thicknesses[row] = thickness;
    emit optionsWanted(m_options);
}

} // namespace TOLVGraphing::app
