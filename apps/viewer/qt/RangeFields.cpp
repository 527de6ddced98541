#include "RangeFields.h"

#include "Words.h"

#include <TOLVGraphing/graph/TOLVGraph.h>

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>

#include <cmath>
#include <utility>

namespace TOLVGraphing::app {

namespace {

constexpr double kManyDays = 14.0;

} // namespace

RangeFields::RangeFields(Axis axis, QWidget* parent)
    : QWidget(parent)
    , m_axis(axis)
    , m_layout(new QBoxLayout(QBoxLayout::LeftToRight, this))
    , m_from(new QLineEdit)
    , m_between(new QLabel(tr("to")))
    , m_to(new QLineEdit)
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->addWidget(m_from);
    m_layout->addWidget(m_between);
    m_layout->addWidget(m_to);
    const QString name = axis == Axis::X ? tr("x") : tr("y");
    m_from->setAccessibleName(tr("Visible range of %1, from").arg(name));
    m_to->setAccessibleName(tr("Visible range of %1, to").arg(name));
    for (QLineEdit* edit : {m_from, m_to})
        connect(edit, &QLineEdit::editingFinished, this, &RangeFields::apply);
}

void RangeFields::setGraph(std::shared_ptr<TOLVGraph> graph, std::optional<double> dateOrigin)
{
    m_graph = std::move(graph);
    m_dateOrigin = dateOrigin;
    // Two dates with times are too wide for one row.
    m_layout->setDirection(dateOrigin ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    m_between->setVisible(!dateOrigin);
    refresh();
}

void RangeFields::refresh()
{
    const auto extents = m_graph && !m_graph->graphData().empty() ? m_graph->extents() : nullptr;
    const auto range = extents ? (m_axis == Axis::X ? extents->x() : extents->y()) : nullptr;
    // Of many days nobody reads the time of day.
    const bool isLong = range && range->max() - range->min() > kManyDays;
    for (QLineEdit* edit : {m_from, m_to}) {
        if (edit->isModified() && edit->hasFocus())
            continue;
        // Six digits of a range that was panned say enough; numbers of few digits are shown as they are.
        const auto shown = [&](double value) { return m_dateOrigin ? textOfValue(isLong ? std::floor(value) : value, m_dateOrigin) : QString::number(value, 'g', 6); };
        edit->setText(range ? shown(edit == m_from ? range->min() : range->max()) : QString());
        edit->setCursorPosition(0);
    }
}

void RangeFields::apply()
{
    if (!m_graph || (!m_from->isModified() && !m_to->isModified()))
        return;
    const auto range = m_axis == Axis::X ? m_graph->extents()->x() : m_graph->extents()->y();
    // An end that was left alone is the very one, not its six digits.
    const auto from = m_from->isModified() ? valueOfText(m_from->text(), m_dateOrigin) : range->min();
    const auto to = m_to->isModified() ? valueOfText(m_to->text(), m_dateOrigin) : range->max();
    m_from->setModified(false);
    m_to->setModified(false);
    const bool isLogarithmic = m_axis == Axis::X ? m_graph->XIsLog() : m_graph->YIsLog();
    QString reason;
    if (!from || !to)
        reason = m_dateOrigin ? tr("Both ends have to be dates such as 2026-11-21, or numbers of days.") : tr("Both ends have to be numbers.");
    else if (!(static_cast<float>(*from) < static_cast<float>(*to)))
        reason = tr("The second end has to be greater than the first.");
    else if (isLogarithmic && !(static_cast<float>(*from) > 0.0F))
        reason = tr("The axis is logarithmic: both ends have to be greater than 0.");
    else if (m_axis == Axis::X)
        m_graph->zoomXToFixedMin(static_cast<float>(*from), static_cast<float>(*to));
    else
        m_graph->zoomYToFixedMin(*from, *to);
    refresh();
    if (!reason.isEmpty())
        emit rejected(tr("The range cannot be shown."), reason);
}

} // namespace TOLVGraphing::app
