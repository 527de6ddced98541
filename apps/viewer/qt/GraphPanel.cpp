#include "GraphPanel.h"

#include "ColumnFields.h"
#include "RangeFields.h"
#include "Words.h"

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <apps/plotting/OptionRules.h>
#include <apps/viewer/GraphDocument.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <algorithm>

namespace TOLVGraphing::app {

namespace {

template <typename Values>
QComboBox* boxOf(const Values& values, const QString& name)
{
    auto* box = new QComboBox;
    for (const auto value : values)
        box->addItem(nameOf(value), static_cast<int>(value));
    box->setAccessibleName(name);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(12);
    return box;
}

QComboBox* formatBox(const QString& name)
{
    QComboBox* box = boxOf(kNumberStyles, name);
    box->insertItem(0, GraphPanel::tr("Automatic"));
    return box;
}

template <typename Value>
Value chosenIn(const QComboBox* box)
{
    return static_cast<Value>(box->currentData().toInt());
}

std::optional<NumberStyle> formatIn(const QComboBox* box)
{
    return box->currentData().isValid() ? std::optional(chosenIn<NumberStyle>(box)) : std::nullopt;
}

template <typename Value>
void choose(QComboBox* box, Value value)
{
    box->setCurrentIndex(box->findData(static_cast<int>(value)));
}

void showFormat(QComboBox* box, std::optional<NumberStyle> style)
{
    box->setCurrentIndex(style ? box->findData(static_cast<int>(*style)) : 0);
}

void showText(QLineEdit* edit, const std::optional<std::string>& text, const std::optional<std::string>& usual)
{
    // What somebody is writing stays.
    if (!edit->hasFocus() || !edit->isModified())
        edit->setText(QString::fromStdString(text.value_or("")));
    edit->setPlaceholderText(QString::fromStdString(usual.value_or("")));
}

/// An empty field leaves the text to the data.
std::optional<std::string> textIn(const QLineEdit* edit)
{
    return edit->text().isEmpty() ? std::nullopt : std::optional(edit->text().toStdString());
}

} // namespace

GraphPanel::GraphPanel(QWidget* parent) : QScrollArea(parent)
{
    auto* content = new QWidget;
    new QVBoxLayout(content);
    m_columns = new ColumnFields(addGroup(tr("Data"), content), this);
    createAxes(addGroup(tr("Drawing and axes"), content));
    createRanges(addGroup(tr("Visible range"), content));
    createTexts(addGroup(tr("Texts"), content));
    static_cast<QVBoxLayout*>(content->layout())->addStretch();
    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(m_columns, &ColumnFields::changed, this, &GraphPanel::ask);
}

QFormLayout* GraphPanel::addGroup(const QString& title, QWidget* content)
{
    auto* group = new QGroupBox(title);
    auto* form = new QFormLayout(group);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    content->layout()->addWidget(group);
    return form;
}

void GraphPanel::createAxes(QFormLayout* form)
{
    m_drawing = boxOf(kDrawingKinds, tr("Drawing"));
    m_xAxis = boxOf(kXAxisKinds, tr("x axis"));
    m_yAxis = boxOf(kYAxisKinds, tr("y axis"));
    m_xFormat = formatBox(tr("Numbers of x"));
    m_yFormat = formatBox(tr("Numbers of y"));
    form->addRow(tr("Drawing"), m_drawing);
    form->addRow(tr("x axis"), m_xAxis);
    form->addRow(tr("y axis"), m_yAxis);
    form->addRow(tr("x numbers"), m_xFormat);
    form->addRow(tr("y numbers"), m_yFormat);
    connect(m_drawing, &QComboBox::currentIndexChanged, this, &GraphPanel::chooseDrawing);
    connect(m_xAxis, &QComboBox::currentIndexChanged, this, &GraphPanel::chooseXAxis);
    for (QComboBox* box : {m_yAxis, m_xFormat, m_yFormat})
        connect(box, &QComboBox::currentIndexChanged, this, &GraphPanel::ask);
}

void GraphPanel::createRanges(QFormLayout* form)
{
    m_xRange = new RangeFields(RangeFields::Axis::X);
    m_yRange = new RangeFields(RangeFields::Axis::Y);
    form->addRow(tr("x"), m_xRange);
    form->addRow(tr("y"), m_yRange);
    for (RangeFields* fields : {m_xRange, m_yRange})
        connect(fields, &RangeFields::rejected, this, &GraphPanel::rejected);
}

void GraphPanel::createTexts(QFormLayout* form)
{
    m_title = new QLineEdit;
    m_xLabel = new QLineEdit;
    m_yLabel = new QLineEdit;
    m_legend = new QCheckBox(tr("Legend on exported pictures"));
    form->addRow(tr("Title"), m_title);
    form->addRow(tr("x label"), m_xLabel);
    form->addRow(tr("y label"), m_yLabel);
    form->addRow(m_legend);
    for (QLineEdit* edit : {m_title, m_xLabel, m_yLabel})
        connect(edit, &QLineEdit::editingFinished, this, &GraphPanel::ask);
    connect(m_legend, &QCheckBox::toggled, this, &GraphPanel::ask);
}

void GraphPanel::showDocument(const GraphDocument& document)
{
    const QScopedValueRollback showing(m_isShowing, true);
    m_options = document.options();
    const auto& graph = document.graph();
    m_columns->showDocument(document);
    choose(m_drawing, m_options.drawing);
    choose(m_xAxis, m_options.xAxis);
    choose(m_yAxis, m_options.yAxis);
    showFormat(m_xFormat, m_options.xFormat);
    showFormat(m_yFormat, m_options.yFormat);
    // Categories are texts, and their axis shows whole categories.
    m_xFormat->setEnabled(!m_options.hasCategories());
    m_xRange->setEnabled(!m_options.hasCategories());
    m_xRange->setGraph(graph, dateOriginOf(document.files()));
    m_yRange->setGraph(graph, std::nullopt);
    const auto label = [](const std::shared_ptr<TOLVAxis>& axis) { return axis ? axis->label() : std::nullopt; };
    showText(m_title, m_options.title, std::nullopt);
    showText(m_xLabel, m_options.xLabel, label(graph->horizontalAxis()));
    showText(m_yLabel, m_options.yLabel, label(graph->verticalAxis()));
    m_legend->setChecked(m_options.legend);
    widget()->setEnabled(document.hasData());
}

void GraphPanel::refreshRanges()
{
    m_xRange->refresh();
    m_yRange->refresh();
}

void GraphPanel::chooseDrawing()
{
    const auto drawing = chosenIn<DrawingKind>(m_drawing);
    if (!m_isShowing && !canDrawOnAxis(drawing, chosenIn<AxisKind>(m_xAxis))) {
        const QScopedValueRollback showing(m_isShowing, true);
        choose(m_xAxis, usualXAxis(drawing));
    }
    ask();
}

void GraphPanel::chooseXAxis()
{
    const auto axis = chosenIn<AxisKind>(m_xAxis);
    if (!m_isShowing && !canDrawOnAxis(chosenIn<DrawingKind>(m_drawing), axis)) {
        const QScopedValueRollback showing(m_isShowing, true);
        choose(m_drawing, usualDrawing(axis));
    }
    ask();
}

void GraphPanel::ask()
{
    if (m_isShowing)
        return;
    Options wanted = m_options;
    wanted.drawing = chosenIn<DrawingKind>(m_drawing);
    wanted.xAxis = chosenIn<AxisKind>(m_xAxis);
    wanted.yAxis = chosenIn<AxisKind>(m_yAxis);
    wanted.xFormat = wanted.hasCategories() ? std::nullopt : formatIn(m_xFormat);
    wanted.yFormat = formatIn(m_yFormat);
    m_columns->putInto(wanted);
    wanted.title = textIn(m_title);
    wanted.xLabel = textIn(m_xLabel);
    wanted.yLabel = textIn(m_yLabel);
    wanted.legend = m_legend->isChecked();
    for (QLineEdit* edit : {m_title, m_xLabel, m_yLabel})
        edit->setModified(false);
    if (wanted != m_options)
        emit optionsWanted(wanted);
}

} // namespace TOLVGraphing::app
