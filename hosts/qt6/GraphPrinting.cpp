#include "GraphPrinting.h"

#include "ProblemDialog.h"

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/views/TOLVGraphView.h>
#include <TOLVGraphing/views/TOLVPrintView.h>
#include <desktop/printing/PagePrinting.h>
#include <desktop/printing/PrintQueue.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QPageLayout>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QVBoxLayout>
#include <QVariant>

#include <algorithm>
#include <array>
#include <chrono>
#include <exception>

namespace TOLVGraphing {

namespace {

constexpr std::array kPapers{QPageSize::A4, QPageSize::A3, QPageSize::A5, QPageSize::Letter, QPageSize::Legal};

/// Before a dialog opens, nobody wants to wait.
constexpr std::chrono::milliseconds kServerPatience{3000};

/// The layout of the sheet; sizes that are none of the known ones become their own.
QPageLayout layoutOf(const PrintInfo& info)
{
    const auto [shorter, longer] = std::minmax(info.paperSize.width, info.paperSize.height);
    const QPageSize size(QSizeF(shorter, longer), QPageSize::Point, QString(), QPageSize::FuzzyMatch);
    const auto direction = info.isLandscape() ? QPageLayout::Landscape : QPageLayout::Portrait;
    return {size, direction, QMarginsF(info.leftMargin, info.topMargin, info.rightMargin, info.bottomMargin), QPageLayout::Point};
}

void takePaper(PrintInfo& info, const QPageLayout& layout)
{
    const QSizeF sheet = layout.fullRect(QPageLayout::Point).size();
    const QMarginsF margins = layout.margins(QPageLayout::Point);
    info.paperSize = {sheet.width(), sheet.height()};
    info.leftMargin = margins.left();
    info.rightMargin = margins.right();
    info.topMargin = margins.top();
    info.bottomMargin = margins.bottom();
}

void printToFile(TOLVPrintView& page, const QString& path)
{
    if (path.endsWith(".ps", Qt::CaseInsensitive))
        printPageToPostScript(page, path.toStdString());
    else
        printPageToPDF(page, path.toStdString());
}

} // namespace

std::shared_ptr<TOLVPrintView> printViewOfGraphView(const TOLVGraphView& view, const PrintInfo& printInfo)
{
    return TOLVPrintView::initWithPrintInfo(printInfo, view, view.graph() ? legendEntriesOfGraph(*view.graph()) : TOLVPrintView::Entries());
}

bool printWithDialog(const TOLVGraphView& view, PrintInfo& printInfo, QWidget* parent)
{
    requireAnsweringPrintServer(kServerPatience);
    QPrinter printer;
    printer.setPageLayout(layoutOf(printInfo));
    printer.setCopyCount(printInfo.copies);
    printer.setDocName(QString::fromStdString(printInfo.jobTitle));
    QPrintDialog dialog(&printer, parent);
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    takePaper(printInfo, printer.pageLayout());
    printInfo.copies = std::max(1, printer.copyCount());
    const auto page = printViewOfGraphView(view, printInfo);
    if (printer.outputFileName().isEmpty())
        printPage(*page, {printer.printerName().toStdString(), {}, false});
    else
        printToFile(*page, printer.outputFileName());
    return true;
}

PrintPreviewDialog::PrintPreviewDialog(std::shared_ptr<TOLVGraphView> view, const PrintInfo& printInfo, QWidget* parent)
    : QDialog(parent)
    , m_view(std::move(view))
    , m_printInfo(printInfo)
    , m_paper(new QComboBox)
    , m_direction(new QComboBox)
    , m_page(new QLabel)
{
    setWindowTitle(tr("Print preview"));
    const QPageLayout layout = layoutOf(printInfo);
    for (const QPageSize::PageSizeId id : kPapers)
        m_paper->addItem(QPageSize::name(id), QVariant::fromValue(QPageSize(id)));
    const auto* const known = std::find(kPapers.begin(), kPapers.end(), layout.pageSize().id());
    if (known == kPapers.end())
        m_paper->addItem(layout.pageSize().name(), QVariant::fromValue(layout.pageSize()));
    m_paper->setCurrentIndex(static_cast<int>(known - kPapers.begin()));
    m_paper->setAccessibleName(tr("Paper"));
    m_direction->addItem(tr("Portrait"), static_cast<int>(QPageLayout::Portrait));
    m_direction->addItem(tr("Landscape"), static_cast<int>(QPageLayout::Landscape));
    m_direction->setCurrentIndex(layout.orientation() == QPageLayout::Landscape ? 1 : 0);
    m_direction->setAccessibleName(tr("Direction"));
    m_page->setAlignment(Qt::AlignCenter);
    m_page->setMinimumSize(240, 240);
    m_page->setAccessibleName(tr("The page"));
    m_page->setTextFormat(Qt::PlainText);
    // The picture follows the dialog's size, not the other way round.
    m_page->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);

    auto* choices = new QHBoxLayout;
    choices->addWidget(m_paper);
    choices->addWidget(m_direction);
    choices->addStretch();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton* print = buttons->addButton(tr("&Print…"), QDialogButtonBox::ActionRole);
    QPushButton* save = buttons->addButton(tr("&Save as PDF…"), QDialogButtonBox::ActionRole);
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(choices);
    rows->addWidget(m_page, 1);
    rows->addWidget(buttons);
    connect(m_paper, &QComboBox::currentIndexChanged, this, &PrintPreviewDialog::choosePaper);
    connect(m_direction, &QComboBox::currentIndexChanged, this, &PrintPreviewDialog::choosePaper);
    connect(print, &QPushButton::clicked, this, &PrintPreviewDialog::print);
    connect(save, &QPushButton::clicked, this, &PrintPreviewDialog::savePDF);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(520, 640);
    choosePaper();
}

PrintPreviewDialog::~PrintPreviewDialog() = default;

void PrintPreviewDialog::choosePaper()
{
    QPageLayout layout = layoutOf(m_printInfo);
    layout.setPageSize(m_paper->currentData().value<QPageSize>(), layout.minimumMargins());
    layout.setOrientation(static_cast<QPageLayout::Orientation>(m_direction->currentData().toInt()));
    takePaper(m_printInfo, layout);
    showPage();
}

void PrintPreviewDialog::showPage()
{
    try {
        const auto bytes = dataOfPage(*printViewOfGraphView(*m_view, m_printInfo), OutputKind::PNG);
        m_image = QImage::fromData(reinterpret_cast<const uchar*>(bytes.data()), static_cast<int>(bytes.size()), "PNG");
    } catch (const std::exception& problem) {
        m_image = {};
        m_page->setText(QString::fromStdString(problem.what()));
        return;
    }
    const qreal ratio = devicePixelRatioF();
    QPixmap sheet = QPixmap::fromImage(m_image.scaled(m_page->size() * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    sheet.setDevicePixelRatio(ratio);
    m_page->setPixmap(sheet);
}

void PrintPreviewDialog::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    showPage();
}

void PrintPreviewDialog::print()
{
    const bool isPrinted = attempt(this, tr("The graph could not be printed."), [&] {
        if (printWithDialog(*m_view, m_printInfo, this))
            accept();
    });
    if (!isPrinted)
        showPage();
}

void PrintPreviewDialog::savePDF()
{
    const QString path = QFileDialog::getSaveFileName(this, tr("Save the page as PDF"), QString(), tr("PDF (*.pdf);;PostScript (*.ps)"));
    if (!path.isEmpty())
        attempt(this, tr("The page could not be saved."), [&] { printToFile(*printViewOfGraphView(*m_view, m_printInfo), path); });
}

} // namespace TOLVGraphing
