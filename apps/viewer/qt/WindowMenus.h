#pragma once

#include <QList>
#include <QObject>

#include <cstdint>
#include <functional>

class QAction;
class QDockWidget;
class QMainWindow;
class QMenu;

namespace TOLVGraphing {
class GraphWidget;
enum class GraphCommand : std::uint8_t;
} // namespace TOLVGraphing

namespace TOLVGraphing::app {

class DocumentController;
class FileCommands;

/// What the menus command.
struct MenuTargets {
    QMainWindow* window = nullptr;
    DocumentController* controller = nullptr;
    FileCommands* files = nullptr;
    GraphWidget* graphWidget = nullptr;
    QList<QDockWidget*> panels;
};

/// The menu bar of a window. Actions of the graph's widget become the window's: their keys work wherever the keyboard is.
class WindowMenus final : public QObject {
    Q_OBJECT

public:
    explicit WindowMenus(const MenuTargets& targets);

    /// Actions that need data are enabled with it.
    void showDocument();

private:
    void createFileMenu();
    void createEditMenu();
    void createViewMenu();
    void createAppearanceMenu(QMenu* menu);
    void createHelpMenu();
    void fillRecentMenu();
    void addWidgetAction(QMenu* menu, GraphCommand command);
    QAction* addAction(QMenu* menu, const QString& text, const QString& keys, const std::function<void()>& work);

    MenuTargets m_targets;
    QMenu* m_recent = nullptr;
    /// Those that need data.
    QList<QAction*> m_dataActions;
};

} // namespace TOLVGraphing::app
