#pragma once

#include <TOLVGraphing/platform/geometry/Point.h>
#include <apps/viewer/GraphDocument.h>

#include <QObject>
#include <QString>
#include <QStringList>

#include <filesystem>
#include <optional>

class QWidget;

namespace TOLVGraphing {
class GraphWidget;
}

namespace TOLVGraphing::app {

class DocumentController;

/// What the file menu does: dialogs to choose files, the question where the measurements of a document have gone, that about unsaved changes, saving, exporting and printing. Errors are shown in dialogs above the window.
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
    /// Asks where a source of an opened document is now; nothing when the user gives up.
    [[nodiscard]] std::optional<std::filesystem::path> askForSource(const MissingSource& missing);
    [[nodiscard]] QStringList chooseFiles(const QString& title, const QStringList& filters);

    DocumentController* m_controller = nullptr;
    GraphWidget* m_graphWidget = nullptr;
    QWidget* m_window = nullptr;
};

} // namespace TOLVGraphing::app
