#pragma once

#include <TOLVGraphing/platform/geometry/Point.h>

#include <QObject>
#include <QString>
#include <QStringList>

class QWidget;

namespace TOLVGraphing {
class GraphWidget;
}

namespace TOLVGraphing::app {

class DocumentController;

/// What the file menu does: dialogs to choose files, the question about unsaved changes, saving, exporting and printing. Errors are shown in dialogs above the window.
class FileCommands final : public QObject {
    Q_OBJECT

public:
    /// All three are the window's.
    FileCommands(DocumentController* controller, GraphWidget* graphWidget, QWidget* window);

    void chooseAndOpen();
    void chooseAndAdd();
    /// Asks about unsaved changes first.
    void openFiles(const QStringList& paths);
    /// False when the document is not saved now.
    bool save();
    bool saveAs();
    bool saveTo(const QString& path);
    void chooseAndExport();
    bool exportTo(const QString& path, const Size& size, double scale);
    void showPrintPreview();
    void closeDocument();
    /// Asks what to do with unsaved changes. False when the document has to stay.
    bool mayLoseDocument();

signals:
    void message(const QString& text);

private:
    [[nodiscard]] QStringList chooseFiles(const QString& title, const QStringList& filters);

    DocumentController* m_controller = nullptr;
    GraphWidget* m_graphWidget = nullptr;
    QWidget* m_window = nullptr;
};

} // namespace TOLVGraphing::app
