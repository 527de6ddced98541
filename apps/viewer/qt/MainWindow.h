#pragma once

#include <QMainWindow>
#include <QStringList>

class QLabel;
class QStackedWidget;
class QTimer;
class QToolButton;

namespace TOLVGraphing {
class GraphWidget;
}

namespace TOLVGraphing::app {

class DocumentController;
class FileCommands;
class GraphPanel;
class MarkersPanel;
class ReadingStatus;
class SeriesPanel;
class WindowMenus;

/// The window of the program: a graph in its middle, panels around it, what is read and read out at the bottom. Files dropped on it are opened, or added while Control is held.
class MainWindow final : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    /// Asks about unsaved changes first.
    void openFiles(const QStringList& paths);

    // Parts, the window's own.

    [[nodiscard]] DocumentController* controller() const { return m_controller; }
    [[nodiscard]] FileCommands* files() const { return m_files; }
    [[nodiscard]] GraphWidget* graphWidget() const { return m_graphWidget; }
    [[nodiscard]] GraphPanel* graphPanel() const { return m_graphPanel; }
    [[nodiscard]] MarkersPanel* markersPanel() const { return m_markersPanel; }
    [[nodiscard]] SeriesPanel* seriesPanel() const { return m_seriesPanel; }
    [[nodiscard]] QToolButton* notesButton() const { return m_notes; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void createCentralWidget();
    void createPanels();
    void createStatusBar();
    void connectController();
    QDockWidget* addPanel(const QString& title, const QString& name, QWidget* content);
    void restoreLooks();
    void showContent();
    void showName();
    void showNotesCount();

    DocumentController* m_controller = nullptr;
    GraphWidget* m_graphWidget = nullptr;
    FileCommands* m_files = nullptr;
    WindowMenus* m_menus = nullptr;
    QStackedWidget* m_pages = nullptr;
    GraphPanel* m_graphPanel = nullptr;
    SeriesPanel* m_seriesPanel = nullptr;
    MarkersPanel* m_markersPanel = nullptr;
    ReadingStatus* m_reading = nullptr;
    QLabel* m_readout = nullptr;
    QToolButton* m_notes = nullptr;
    QList<QDockWidget*> m_panels;
    /// Runs out when a drawing is over.
    QTimer* m_afterDrawing = nullptr;
};

} // namespace TOLVGraphing::app
