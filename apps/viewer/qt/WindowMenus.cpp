#include "WindowMenus.h"

#include "Appearance.h"
#include "CopySettingsDialog.h"
#include "DocumentController.h"
#include "FileCommands.h"
#include "InformationDialogs.h"
#include "Paths.h"

#include <apps/viewer/RecentFiles.h>

#include <QAction>
#include <QActionGroup>
#include <QDir>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>

#include <utility>

namespace TOLVGraphing::app {

namespace {

const QString kReadoutKey = QStringLiteral("showsReadout");
const QString kReloadsKey = QStringLiteral("reloadsAutomatically");

} // namespace

WindowMenus::WindowMenus(const MenuTargets& targets) : QObject(targets.window), m_targets(targets)
{
    createFileMenu();
    createEditMenu();
    createViewMenu();
    createHelpMenu();
    connect(m_targets.controller, &DocumentController::opened, this, [](const QStringList& paths) {
        RecentFiles recent;
        for (const QString& path : paths)
            recent.add(fileOfText(path));
    });
    showDocument();
}

QAction* WindowMenus::addAction(QMenu* menu, const QString& text, const QString& keys, const std::function<void()>& work)
{
    QAction* action = menu->addAction(text);
    action->setShortcut(QKeySequence(keys));
    connect(action, &QAction::triggered, this, work);
    return action;
}

void WindowMenus::addWidgetAction(QMenu* menu, GraphCommand command)
{
    QAction* action = m_targets.graphWidget->action(command);
    action->setShortcutContext(Qt::WindowShortcut);
    menu->addAction(action);
}

void WindowMenus::showDocument()
{
    for (QAction* action : m_dataActions)
        action->setEnabled(m_targets.controller->document().hasData());
}

// File.

void WindowMenus::createFileMenu()
{
    FileCommands* files = m_targets.files;
    DocumentController* controller = m_targets.controller;
    QMenu* menu = m_targets.window->menuBar()->addMenu(tr("&File"));
    addAction(menu, tr("&Open…"), QStringLiteral("Ctrl+O"), [files] { files->chooseAndOpen(); });
    m_recent = menu->addMenu(tr("Open &Recent"));
    connect(m_recent, &QMenu::aboutToShow, this, &WindowMenus::fillRecentMenu);
    fillRecentMenu();
    m_dataActions << addAction(menu, tr("&Add Files…"), QStringLiteral("Ctrl+Shift+O"), [files] { files->chooseAndAdd(); });
    m_dataActions << addAction(menu, tr("Re&load"), QStringLiteral("F5"), [controller] { controller->reload(); });
    QAction* reloads = menu->addAction(tr("Reload &When Files Change"));
    reloads->setCheckable(true);
    connect(reloads, &QAction::toggled, this, [controller](bool isOn) {
        QSettings().setValue(kReloadsKey, isOn);
        controller->setReloadsAutomatically(isOn);
    });
    const bool reloadsAutomatically = QSettings().value(kReloadsKey, true).toBool();
    controller->setReloadsAutomatically(reloadsAutomatically);
    reloads->setChecked(reloadsAutomatically);
    menu->addSeparator();
    m_dataActions << addAction(menu, tr("&Save"), QStringLiteral("Ctrl+S"), [files] { files->save(); });
    m_dataActions << addAction(menu, tr("Save &As…"), QStringLiteral("Ctrl+Shift+S"), [files] { files->saveAs(); });
    m_dataActions << addAction(menu, tr("&Export…"), QStringLiteral("Ctrl+E"), [files] { files->chooseAndExport(); });
    menu->addSeparator();
    m_dataActions << addAction(menu, tr("Print Pre&view…"), QStringLiteral("Ctrl+Shift+P"), [files] { files->showPrintPreview(); });
    addWidgetAction(menu, GraphCommand::Print);
    menu->addSeparator();
    m_dataActions << addAction(menu, tr("&Close"), QStringLiteral("Ctrl+W"), [files] { files->closeDocument(); });
    addAction(menu, tr("&Quit"), QStringLiteral("Ctrl+Q"), [window = m_targets.window] { window->close(); });
}

void WindowMenus::fillRecentMenu()
{
    m_recent->clear();
    RecentFiles recent;
    recent.dropMissing();
    for (const std::string& path : recent.paths()) {
        const QString text = textOfFile(path);
        const QString folder = QDir(text + QStringLiteral("/..")).dirName();
        QAction* action = m_recent->addAction(tr("%1 — %2").arg(nameOfFile(path), folder).replace(u'&', QLatin1String("&&")));
        action->setToolTip(text);
        action->setStatusTip(text);
        connect(action, &QAction::triggered, this, [this, text] { m_targets.files->openFiles({text}); });
    }
    const bool isEmpty = m_recent->isEmpty();
    if (!isEmpty)
        m_recent->addSeparator();
    QAction* clear = addAction(m_recent, tr("&Clear List"), {}, [] { RecentFiles().clear(); });
    clear->setEnabled(!isEmpty);
}

// Edit.

void WindowMenus::createEditMenu()
{
    QMenu* menu = m_targets.window->menuBar()->addMenu(tr("&Edit"));
    addWidgetAction(menu, GraphCommand::Undo);
    addWidgetAction(menu, GraphCommand::Redo);
    menu->addSeparator();
    addWidgetAction(menu, GraphCommand::Copy);
    addAction(menu, tr("Copy &Settings…"), {}, [window = m_targets.window] { CopySettingsDialog(window).exec(); });
    menu->addSeparator();
    for (const GraphCommand command : {GraphCommand::PlaceMarker, GraphCommand::DeleteMarker, GraphCommand::NextMarker, GraphCommand::PreviousMarker})
        addWidgetAction(menu, command);
}

// View.

void WindowMenus::createViewMenu()
{
    QMenu* menu = m_targets.window->menuBar()->addMenu(tr("&View"));
    for (const GraphCommand command : {GraphCommand::ZoomIn, GraphCommand::ZoomOut, GraphCommand::Fit})
        addWidgetAction(menu, command);
    menu->addSeparator();
    QAction* readout = menu->addAction(tr("&Values Under the Pointer"));
    readout->setCheckable(true);
    connect(readout, &QAction::toggled, this, [graphWidget = m_targets.graphWidget](bool isOn) {
        QSettings().setValue(kReadoutKey, isOn);
        graphWidget->setShowsReadout(isOn);
    });
    const bool showsReadout = QSettings().value(kReadoutKey, true).toBool();
    m_targets.graphWidget->setShowsReadout(showsReadout);
    readout->setChecked(showsReadout);
    createAppearanceMenu(menu->addMenu(tr("&Appearance")));
    menu->addSeparator();
    for (QDockWidget* panel : std::as_const(m_targets.panels))
        menu->addAction(panel->toggleViewAction());
}

void WindowMenus::createAppearanceMenu(QMenu* menu)
{
    auto* group = new QActionGroup(this);
    const std::pair<GraphAppearance, QString> choices[]
        = {{GraphAppearance::FollowsPalette, tr("As the &Desktop")}, {GraphAppearance::Light, tr("&Light")}, {GraphAppearance::Dark, tr("Dar&k")}};
    for (const auto& [appearance, name] : choices) {
        QAction* action = group->addAction(menu->addAction(name));
        action->setCheckable(true);
        action->setChecked(appearance == chosenAppearance());
        connect(action, &QAction::triggered, this, [chosen = appearance] {
            storeAppearance(chosen);
            applyAppearance(chosen);
        });
    }
}

// Help.

void WindowMenus::createHelpMenu()
{
    QMenu* menu = m_targets.window->menuBar()->addMenu(tr("&Help"));
    addAction(menu, tr("&Keys and Gestures"), QStringLiteral("F1"), [window = m_targets.window] { showKeysAndGestures(window); });
    addAction(menu, tr("&About"), {}, [window = m_targets.window] { showAbout(window); });
}

} // namespace TOLVGraphing::app
