#include "MainWindow.h"

#include "DocumentController.h"
#include "FileCommands.h"
#include "GraphPanel.h"
#include "InformationDialogs.h"
#include "MarkersPanel.h"
#include "ReadingStatus.h"
#include "SeriesPanel.h"
#include "WindowMenus.h"
#include "Words.h"

#include <TOLVGraphing/views/TOLVGraphView.h>
#include <hosts/qt6/GraphWidget.h>
#include <hosts/qt6/ProblemDialog.h>
#include <hosts/qt6/QtServices.h>

#include <QCloseEvent>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

namespace TOLVGraphing::app {

namespace {

const QString kGeometryKey = QStringLiteral("window/geometry");
const QString kStateKey = QStringLiteral("window/panels");
/// Other numbers are states of windows with other panels.
constexpr int kStateVersion = 1;
/// How long a message stays, in milliseconds.
constexpr int kMessageTime = 5000;

QStringList localFiles(const QMimeData& data)
{
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile())
            paths << url.toLocalFile();
    }
    return paths;
}

} // namespace

MainWindow::MainWindow(QWidget* parent) : QMainWindow(parent)
{
    installQtServices();
    m_controller = new DocumentController(this);
    createCentralWidget();
    m_files = new FileCommands(m_controller, m_graphWidget, this);
    createPanels();
    createStatusBar();
    m_menus = new WindowMenus({this, m_controller, m_files, m_graphWidget, m_panels});
    connectController();
    setAcceptDrops(true);
    setDockNestingEnabled(true);
    restoreLooks();
    showContent();
    showName();
}

MainWindow::~MainWindow()
{
    // The widget's calls need the controller, which would end first.
    m_graphWidget->setPreparation({});
    m_graphWidget->setFitting({});
}

// Parts.

void MainWindow::createCentralWidget()
{
    m_graphWidget = new GraphWidget(TOLVGraphView::initWithFrame({}));
    m_graphWidget->setGraph(m_controller->document().graph());
    m_afterDrawing = new QTimer(this);
    m_afterDrawing->setSingleShot(true);
    m_graphWidget->setPreparation([this] {
        m_controller->layOut(m_graphWidget->view()->bounds());
        m_afterDrawing->start(0);
    });
    m_graphWidget->setFitting([this] { m_controller->fitRanges(); });

    auto* empty = new QWidget;
    auto* hint = new QLabel(tr("Open measurements or a graph document, or drop files here."));
    hint->setAlignment(Qt::AlignCenter);
    hint->setWordWrap(true);
    auto* open = new QPushButton(tr("Open…"));
    connect(open, &QPushButton::clicked, this, [this] { m_files->chooseAndOpen(); });
    auto* rows = new QVBoxLayout(empty);
    rows->addStretch();
    rows->addWidget(hint);
    rows->addWidget(open, 0, Qt::AlignCenter);
    rows->addStretch();

    m_pages = new QStackedWidget;
    m_pages->addWidget(empty);
    m_pages->addWidget(m_graphWidget);
    setCentralWidget(m_pages);
}

QDockWidget* MainWindow::addPanel(const QString& title, const QString& name, QWidget* content)
{
    auto* panel = new QDockWidget(title);
    panel->setObjectName(name);
    panel->setWidget(content);
    addDockWidget(Qt::RightDockWidgetArea, panel);
    m_panels << panel;
    return panel;
}

void MainWindow::createPanels()
{
    m_graphPanel = new GraphPanel;
    m_seriesPanel = new SeriesPanel;
    m_markersPanel = new MarkersPanel(m_graphWidget);
    addPanel(tr("Graph"), QStringLiteral("graph"), m_graphPanel);
    addPanel(tr("Legend"), QStringLiteral("legend"), m_seriesPanel);
    addPanel(tr("Markers"), QStringLiteral("markers"), m_markersPanel);
    tabifyDockWidget(m_panels[0], m_panels[1]);
    tabifyDockWidget(m_panels[1], m_panels[2]);
    m_panels[0]->raise();
    connect(m_graphPanel, &GraphPanel::optionsWanted, m_controller, &DocumentController::setOptions);
    connect(m_seriesPanel, &SeriesPanel::optionsWanted, m_controller, &DocumentController::setOptions);
    const auto reject = [this](const QString& failure, const QString& reason) { showProblem(this, failure, reason); };
    connect(m_graphPanel, &GraphPanel::rejected, this, reject);
    connect(m_markersPanel, &MarkersPanel::rejected, this, reject);
    // Panels show what is drawn: of several changes between two drawings the widget tells the first only.
    connect(m_afterDrawing, &QTimer::timeout, m_graphPanel, &GraphPanel::refreshRanges);
    connect(m_afterDrawing, &QTimer::timeout, m_markersPanel, &MarkersPanel::refresh);
}

void MainWindow::createStatusBar()
{
    m_readout = new QLabel;
    // However much is read out, the window keeps its width.
    m_readout->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_readout->setIndent(6);
    m_notes = new QToolButton;
    m_notes->setAutoRaise(true);
    m_reading = new ReadingStatus;
    statusBar()->addWidget(m_readout, 1);
    statusBar()->addPermanentWidget(m_reading);
    statusBar()->addPermanentWidget(m_notes);
    connect(m_graphWidget, &GraphWidget::readoutChanged, m_readout, &QLabel::setText);
    connect(m_reading, &ReadingStatus::cancelled, m_controller, &DocumentController::cancelReading);
    connect(m_notes, &QToolButton::clicked, this, [this] {
        QStringList notes;
        for (const std::string& note : m_controller->document().notes())
            notes << plainText(note);
        showNotes(this, notes);
    });
}

void MainWindow::connectController()
{
    const auto showMessage = [this](const QString& text) { statusBar()->showMessage(text, kMessageTime); };
    connect(m_controller, &DocumentController::documentReplaced, this, [this] { m_graphWidget->setGraph(m_controller->document().graph()); });
    connect(m_controller, &DocumentController::contentChanged, this, &MainWindow::showContent);
    connect(m_controller, &DocumentController::nameChanged, this, &MainWindow::showName);
    connect(m_controller, &DocumentController::readingStarted, m_reading, &ReadingStatus::start);
    connect(m_controller, &DocumentController::readingProgressed, m_reading, &ReadingStatus::progress);
    connect(m_controller, &DocumentController::readingEnded, m_reading, &ReadingStatus::end);
    connect(m_controller, &DocumentController::message, this, showMessage);
    connect(m_controller, &DocumentController::failed, this, [this](const QString& failure, const QString& reason) { showProblem(this, failure, reason); });
    connect(m_controller, &DocumentController::opened, this, [this] { m_graphWidget->setFocus(); });
    connect(m_files, &FileCommands::message, this, showMessage);
}

// The document.

void MainWindow::openFiles(const QStringList& paths)
{
    m_files->openFiles(paths);
}

void MainWindow::showContent()
{
    const GraphDocument& document = m_controller->document();
    m_pages->setCurrentIndex(document.hasData() ? 1 : 0);
    m_graphPanel->showDocument(document);
    m_seriesPanel->showDocument(document);
    m_markersPanel->showDocument(document);
    m_menus->showDocument();
    showNotesCount();
    // Copies and pages fit their margins themselves, each for its own size.
    m_graphWidget->view()->setFitsMarginsToLabels(!document.options().margin);
    // The model announces not everything that changes a picture.
    m_graphWidget->view()->setNeedsDisplay();
    m_graphWidget->updateActions();
}

void MainWindow::showName()
{
    const GraphDocument& document = m_controller->document();
    setWindowTitle(tr("%1[*] — Graph Viewer").arg(QString::fromStdString(document.displayName())));
    setWindowModified(document.isModified());
    PrintInfo printInfo = m_graphWidget->printInfo();
    printInfo.jobTitle = document.displayName();
    m_graphWidget->setPrintInfo(printInfo);
}

void MainWindow::showNotesCount()
{
    const auto count = static_cast<int>(m_controller->document().notes().size());
    m_notes->setVisible(count > 0);
    m_notes->setText(count == 1 ? tr("1 note") : tr("%1 notes").arg(count));
    m_notes->setToolTip(tr("What to know about these measurements"));
}

// The window.

void MainWindow::restoreLooks()
{
    const QSettings settings;
    if (!restoreGeometry(settings.value(kGeometryKey).toByteArray()))
        resize(1100, 700);
    restoreState(settings.value(kStateKey).toByteArray(), kStateVersion);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (!m_files->mayLoseDocument()) {
        event->ignore();
        return;
    }
    m_controller->cancelReading();
    QSettings settings;
    settings.setValue(kGeometryKey, saveGeometry());
    settings.setValue(kStateKey, saveState(kStateVersion));
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!localFiles(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const QStringList paths = localFiles(*event->mimeData());
    event->acceptProposedAction();
    // Dialogs come when the drop is over.
    const bool adds = event->modifiers().testFlag(Qt::ControlModifier);
    QMetaObject::invokeMethod(
        this, [this, paths, adds] { adds ? m_controller->addFiles(paths) : openFiles(paths); }, Qt::QueuedConnection);
}

} // namespace TOLVGraphing::app
