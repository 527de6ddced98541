#include "ExportDialog.h"

#include <apps/plotting/OptionValues.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace TOLVGraphing::app {

namespace {

struct PictureKind {
    const char* suffix;
    const char* name;
    bool isImage;
};

constexpr PictureKind kKinds[] = {{".pdf", QT_TRANSLATE_NOOP("ExportDialog", "PDF"), false}, {".svg", QT_TRANSLATE_NOOP("ExportDialog", "SVG"), false},
    {".png", QT_TRANSLATE_NOOP("ExportDialog", "PNG image"), true}, {".tiff", QT_TRANSLATE_NOOP("ExportDialog", "TIFF image"), true},
    {".eps", QT_TRANSLATE_NOOP("ExportDialog", "Encapsulated PostScript"), false}, {".ps", QT_TRANSLATE_NOOP("ExportDialog", "PostScript"), false}};

const QString kKindKey = QStringLiteral("export/suffix");
const QString kWidthKey = QStringLiteral("export/width");
const QString kHeightKey = QStringLiteral("export/height");
const QString kScaleKey = QStringLiteral("export/scale");

QDoubleSpinBox* lengthBox(const QString& key, double usual)
{
    auto* box = new QDoubleSpinBox;
    box->setRange(1.0, kLargestSide);
    box->setDecimals(1);
    box->setSuffix(ExportDialog::tr(" pt"));
    box->setValue(QSettings().value(key, usual).toDouble());
    return box;
}

} // namespace

ExportDialog::ExportDialog(QWidget* parent)
    : QDialog(parent)
    , m_kind(new QComboBox)
    , m_width(lengthBox(kWidthKey, 640.0))
    , m_height(lengthBox(kHeightKey, 400.0))
    , m_scale(new QDoubleSpinBox)
    , m_result(new QLabel)
{
    setWindowTitle(tr("Export"));
    for (const PictureKind& kind : kKinds)
        m_kind->addItem(tr("%1 (*%2)").arg(tr(kind.name), QLatin1String(kind.suffix)), QLatin1String(kind.suffix));
    m_kind->setCurrentIndex(std::max(0, m_kind->findData(QSettings().value(kKindKey, QStringLiteral(".pdf")))));
    m_scale->setRange(0.1, kLargestScale);
    m_scale->setValue(QSettings().value(kScaleKey, 2.0).toDouble());
    auto* form = new QFormLayout;
    form->addRow(tr("&Kind"), m_kind);
    form->addRow(tr("&Width"), m_width);
    form->addRow(tr("&Height"), m_height);
    form->addRow(tr("&Pixels per point"), m_scale);
    form->addRow(m_result);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    QPushButton* choose = buttons->addButton(tr("Choose File…"), QDialogButtonBox::AcceptRole);
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(form);
    rows->addWidget(buttons);
    choose->setDefault(true);
    m_kind->setFocus();
    connect(buttons, &QDialogButtonBox::accepted, this, &ExportDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ExportDialog::reject);
    connect(m_kind, &QComboBox::currentIndexChanged, this, &ExportDialog::update);
    for (QDoubleSpinBox* box : {m_width, m_height, m_scale})
        connect(box, &QDoubleSpinBox::valueChanged, this, &ExportDialog::update);
    update();
}

void ExportDialog::update()
{
    const bool isImage = kKinds[m_kind->currentIndex()].isImage;
    m_scale->setEnabled(isImage);
    constexpr double kMillimetresPerPoint = 25.4 / 72.0;
    m_result->setText(isImage ? tr("%1 × %2 pixels").arg(std::ceil(m_width->value() * m_scale->value())).arg(std::ceil(m_height->value() * m_scale->value()))
                              : tr("%1 × %2 mm").arg(m_width->value() * kMillimetresPerPoint, 0, 'f', 1).arg(m_height->value() * kMillimetresPerPoint, 0, 'f', 1));
}

Size ExportDialog::size() const
{
    return {m_width->value(), m_height->value()};
}

double ExportDialog::scale() const
{
    return m_scale->value();
}

QString ExportDialog::suffix() const
{
    return m_kind->currentData().toString();
}

QString ExportDialog::filter() const
{
    return m_kind->currentText();
}

void ExportDialog::accept()
{
    QSettings settings;
    settings.setValue(kKindKey, suffix());
    settings.setValue(kWidthKey, m_width->value());
    settings.setValue(kHeightKey, m_height->value());
    settings.setValue(kScaleKey, m_scale->value());
    QDialog::accept();
}

} // namespace TOLVGraphing::app
