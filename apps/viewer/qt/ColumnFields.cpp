#include "ColumnFields.h"

#include "Words.h"

#include <apps/viewer/GraphDocument.h>
#include <desktop/input/RawNumberReader.h>
#include <desktop/input/ReadSettings.h>

#include <QAction>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

#include <algorithm>

namespace TOLVGraphing::app {

namespace {

/// What stands for the row number.
constexpr const char* kIndex = "index";

QComboBox* columnBox(const QString& name)
{
    auto* box = new QComboBox;
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setAccessibleName(name);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(10);
    box->setToolTip(ColumnFields::tr("A column's name or its number, counted from 1"));
    return box;
}

} // namespace

ColumnFields::ColumnFields(QFormLayout* form, QObject* parent)
    : QObject(parent)
    , m_form(form)
    , m_x(columnBox(tr("Column of x")))
    , m_y(new QLineEdit)
    , m_menu(new QMenu(m_y))
    , m_categories(columnBox(tr("Column of the categories' texts")))
    , m_channels(new QSpinBox)
{
    m_y->setAccessibleName(tr("Columns of y"));
    m_y->setPlaceholderText(tr("All numbers"));
    m_y->setToolTip(tr("Names or numbers of columns, separated by commas"));
    auto* choose = new QPushButton(tr("Choose"));
    choose->setMenu(m_menu);
    auto* row = new QHBoxLayout;
    row->addWidget(m_y, 1);
    row->addWidget(choose);
    m_channels->setAccessibleName(tr("Channels"));
    m_channels->setToolTip(tr("How many channels stand side by side in files of raw numbers (.f32, .f64), each a column"));
    m_channels->setRange(1, static_cast<int>(input::kMaximumChannelCount));
    // While a number is written, what there is of it is none.
    m_channels->setKeyboardTracking(false);
    form->addRow(tr("Channels"), m_channels);
    form->addRow(tr("x column"), m_x);
    form->addRow(tr("y columns"), row);
    form->addRow(tr("Categories"), m_categories);
    connect(m_menu, &QMenu::aboutToShow, this, &ColumnFields::fillMenu);
    connect(m_y, &QLineEdit::editingFinished, this, &ColumnFields::changed);
    connect(m_channels, &QSpinBox::valueChanged, this, &ColumnFields::changed);
    for (QComboBox* box : {m_x, m_categories}) {
        connect(box, &QComboBox::activated, this, &ColumnFields::changed);
        connect(box->lineEdit(), &QLineEdit::editingFinished, this, &ColumnFields::changed);
    }
}

void ColumnFields::learnColumns(const GraphDocument& document)
{
    const Options& options = document.options();
    m_columns.clear();
    m_shownOrdinates.clear();
    for (std::size_t i = 0; i < document.sources().size(); ++i) {
        const std::string x = options.x.value_or(i < document.files().size() ? document.files()[i].selection.xName : "");
        for (const SourceColumn& column : document.sources()[i].columns) {
            const bool isKnown = std::find(m_columns.begin(), m_columns.end(), column.option) != m_columns.end();
            if (!isKnown)
                m_columns.push_back(column.option);
            const bool isNumber = column.kind == input::ColumnKind::Number && column.option != x;
            const bool isShown = options.y.empty() ? isNumber : std::find(options.y.begin(), options.y.end(), column.option) != options.y.end();
            if (isShown && !isKnown)
                m_shownOrdinates.push_back(column.option);
        }
    }
}

void ColumnFields::showIn(QComboBox* box, const std::optional<std::string>& column) const
{
    const QSignalBlocker quiet(box);
    box->clear();
    box->addItem(tr("Automatic"));
    box->addItem(tr("Row number"), QString::fromLatin1(kIndex));
    for (const std::string& name : m_columns)
        box->addItem(QString::fromStdString(name), QString::fromStdString(name));
    const QString wanted = QString::fromStdString(column.value_or(""));
    const int known = column ? box->findData(wanted) : 0;
    box->setCurrentIndex(known);
    if (known < 0)
        box->setEditText(wanted);
}

void ColumnFields::showDocument(const GraphDocument& document)
{
    learnColumns(document);
    const Options& options = document.options();
    showIn(m_x, options.x);
    showIn(m_categories, options.categoryColumn);
    m_form->setRowVisible(m_categories, options.hasCategories());
    const QSignalBlocker quiet(m_channels);
    m_channels->setValue(static_cast<int>(options.channels));
    const auto& sources = document.sources();
    m_form->setRowVisible(m_channels, std::any_of(sources.begin(), sources.end(), [](const DocumentSource& source) { return input::hasRawNumberSuffix(source.path); }));
    m_y->setText(textOfNames(options.y));
    m_y->setCursorPosition(0);
}

std::optional<std::string> ColumnFields::columnIn(const QComboBox* box)
{
    const QString text = box->currentText().trimmed();
    const int known = box->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (known == 0 || text.isEmpty())
        return std::nullopt;
    return (known > 0 ? box->itemData(known).toString() : text).toStdString();
}

void ColumnFields::putInto(Options& options) const
{
    options.x = columnIn(m_x);
    options.y = namesOfText(m_y->text());
    options.categoryColumn = options.hasCategories() ? columnIn(m_categories) : std::nullopt;
    options.channels = static_cast<std::size_t>(m_channels->value());
}

void ColumnFields::fillMenu()
{
    m_menu->clear();
    QAction* all = m_menu->addAction(tr("All numbers"));
    connect(all, &QAction::triggered, this, [this] {
        m_y->clear();
        emit changed();
    });
    m_menu->addSeparator();
    for (const std::string& name : m_columns) {
        QAction* action = m_menu->addAction(QString::fromStdString(name).replace(u'&', QLatin1String("&&")));
        action->setCheckable(true);
        action->setChecked(std::find(m_shownOrdinates.begin(), m_shownOrdinates.end(), name) != m_shownOrdinates.end());
        connect(action, &QAction::toggled, this, [this, name](bool isChosen) {
            std::vector<std::string> chosen;
            for (const std::string& column : m_columns) {
                const bool isShown = std::find(m_shownOrdinates.begin(), m_shownOrdinates.end(), column) != m_shownOrdinates.end();
                if (column == name ? isChosen : isShown)
                    chosen.push_back(column);
            }
            m_y->setText(textOfNames(chosen));
            emit changed();
        });
    }
}

} // namespace TOLVGraphing::app
