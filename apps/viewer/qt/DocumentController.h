#pragma once

#include "SourceWatcher.h"

#include <TOLVGraphing/platform/geometry/Rect.h>
#include <apps/viewer/DocumentReading.h>
#include <apps/viewer/GraphDocument.h>

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace TOLVGraphing::app {

/// The document of a window and the readings that bring its data: opening, adding and reloading files run beside the window, and a document takes the place of the former one only when its data are there. Changes of options are
/// steps of the document's undo manager.
class DocumentController final : public QObject {
    Q_OBJECT

public:
    explicit DocumentController(QObject* parent = nullptr);
    ~DocumentController() override;

    [[nodiscard]] const GraphDocument& document() const { return *m_document; }
    [[nodiscard]] bool isReading() const { return m_reading.isReading(); }

    /// Who is asked for sources of an opened document that are not where they were; nobody by default, which is a failure. Where it gives up, the document is not opened and nothing is said.
    void setSourceFinder(SourceFinder finder) { m_findSource = std::move(finder); }

    /// Opens a document file, or measurements as a new document. A document file counts only alone.
    void open(const QStringList& paths);
    /// Adds measurements to the document.
    void addFiles(const QStringList& paths);
    /// Reads the sources again; ranges and markers stay.
    void reload();
    void cancelReading();
    /// An empty document.
    void close();
    /// Shows the document so, at once or after another reading; an undo step.
    void setOptions(const Options& wanted);
    void fitRanges();
    /// Throws DocumentError.
    void save(const QString& path);
    /// Lays the graph out in a rectangle of a window, without the legend, which windows show beside it.
    void layOut(const Rect& rect) const;

    /// Reads the sources again whenever one has changed. True by default.
    [[nodiscard]] bool reloadsAutomatically() const { return m_reloadsAutomatically; }
    void setReloadsAutomatically(bool reloads);

signals:
    /// Another document is there; its graph is another object.
    void documentReplaced();
    /// Series, options or ranges of the document are others; also after a document was replaced.
    void contentChanged();
    /// Name or state of modification may be others.
    void nameChanged();
    void readingStarted(const QString& files);
    /// In hundredths of all files; less than 0 where nobody knows.
    void readingProgressed(const QString& file, int percent);
    /// Finished, failed or cancelled.
    void readingEnded();
    /// Measurements or a document were opened.
    void opened(const QStringList& paths);
    /// What failed, and why.
    void failed(const QString& failure, const QString& reason);
    /// Something to know that needs no answer.
    void message(const QString& text);

private:
    /// What happens with the data that were read, and what is said when nothing was.
    struct Plan {
        std::function<void(ReadDocumentData)> install;
        QString failure;
        /// Nobody has asked for the reading: a failure is a message.
        bool isQuiet = false;
    };

    void start(const std::vector<std::string>& paths, const Options& options, const Plan& plan);
    void finish(const Plan& plan, ReadDocumentData data);
    void fail(const Plan& plan, const QString& reason);
    void openDocument(const QString& path);
    void replaceDocument(std::unique_ptr<GraphDocument> document);
    /// A step back to these options that holds as long as what is answered.
    [[nodiscard]] std::shared_ptr<const void> registerUndo(const Options& former);
    void readAgain(bool isQuiet);
    void sourcesChanged();
    void contentDidChange();
    void announceContent();
    [[nodiscard]] bool fitsAfterChange(const Options& former) const;

    std::unique_ptr<GraphDocument> m_document;
    SourceFinder m_findSource;
    SourceWatcher* m_watcher = nullptr;
    bool m_reloadsAutomatically = true;
    /// A source changed while something else was read.
    bool m_reloadIsDue = false;
    /// What the undo steps of this document hold as long as.
    std::vector<std::shared_ptr<const void>> m_undoSteps;
    /// That of a change whose data are being read: there is nothing to undo when they do not come.
    std::shared_ptr<const void> m_pendingUndoStep;
    /// Last, so that it ends first.
    DocumentReading m_reading;
};

} // namespace TOLVGraphing::app
