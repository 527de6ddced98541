#include "CopySettingsDialog.h"

#include <TOLVGraphing/platform/foundation/UserDefaults.h>
#include <TOLVGraphing/views/TOLVGraphView.h>
#include <apps/plotting/OptionValues.h>

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QSpinBox>
#include <QVBoxLayout>

#include <string_view>

namespace TOLVGraphing::app {

namespace {

QSpinBox* lengthBox(std::string_view key, int usual)
{
    auto* box = new QSpinBox;
    box->setRange(1, static_cast<int>(kLargestSide));
    box->setSuffix(CopySettingsDialog::tr(" pt"));
    const std::int64_t length = UserDefaults::standardUserDefaults()->integerForKey(key);
    box->setValue(length > 0 && length <= box->maximum() ? static_cast<int>(length) : usual);
    return box;
}

} // namespace

CopySettingsDialog::CopySettingsDialog(QWidget* parent)
    : QDialog(parent)
    , m_isFixed(new QCheckBox(tr("Copied pictures have a &fixed size")))
    , m_width(lengthBox(kFixedCopyWidthKey, kUsualWidth))
    , m_height(lengthBox(kFixedCopyHeightKey, kUsualHeight))
{
    setWindowTitle(tr("Copy Settings"));
    m_isFixed->setChecked(UserDefaults::standardUserDefaults()->boolForKey(kUsesFixedCopySizeKey));
    auto* form = new QFormLayout;
    form->addRow(m_isFixed);
    form->addRow(tr("&Width"), m_width);
    form->addRow(tr("&Height"), m_height);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(form);
    rows->addWidget(buttons);
    for (QSpinBox* box : {m_width, m_height}) {
        box->setEnabled(m_isFixed->isChecked());
        connect(m_isFixed, &QCheckBox::toggled, box, &QSpinBox::setEnabled);
    }
    connect(buttons, &QDialogButtonBox::accepted, this, &CopySettingsDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &CopySettingsDialog::reject);
}

void CopySettingsDialog::accept()
{
    const auto defaults = UserDefaults::standardUserDefaults();
    defaults->setInteger(m_width->value(), kFixedCopyWidthKey);
    defaults->setInteger(m_height->value(), kFixedCopyHeightKey);
    defaults->setBool(m_isFixed->isChecked(), kUsesFixedCopySizeKey);
    QDialog::accept();
}

} // namespace TOLVGraphing::app
