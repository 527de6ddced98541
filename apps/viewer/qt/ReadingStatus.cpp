#include "ReadingStatus.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

namespace TOLVGraphing::app {

namespace {

/// Readings shorter than this many milliseconds are not shown.
constexpr int kDelay = 150;
constexpr int kBarWidth = 160;

} // namespace

ReadingStatus::ReadingStatus(QWidget* parent) : QWidget(parent), m_file(new QLabel), m_bar(new QProgressBar), m_delay(new QTimer(this))
{
    m_bar->setFixedWidth(kBarWidth);
    m_bar->setAccessibleName(tr("Progress of reading"));
    auto* cancel = new QPushButton(tr("Cancel"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_file);
    row->addWidget(m_bar);
    row->addWidget(cancel);
    m_delay->setSingleShot(true);
    m_delay->setInterval(kDelay);
    connect(m_delay, &QTimer::timeout, this, &QWidget::show);
    connect(cancel, &QPushButton::clicked, this, &ReadingStatus::cancelled);
    hide();
}

void ReadingStatus::start(const QString& files)
{
    progress(files, -1);
    m_delay->start();
}

void ReadingStatus::progress(const QString& file, int percent)
{
    m_file->setText(tr("Reading %1").arg(file));
    m_bar->setRange(0, percent < 0 ? 0 : 100);
    m_bar->setValue(percent);
}

void ReadingStatus::end()
{
    m_delay->stop();
    hide();
}

} // namespace TOLVGraphing::app
