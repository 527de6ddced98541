#include "DocumentController.h"

#include "Paths.h"
#include "Words.h"

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <apps/plotting/GraphBuilder.h>

#include <QFileInfo>
#include <QMetaObject>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <new>
#include <utility>

namespace TOLVGraphing::app {

namespace {

QString namesOfFiles(const std::vector<std::string>& paths)
{
    if (paths.size() == 1)
        return nameOfFile(paths.front());
    return DocumentController::tr("%n files", nullptr, static_cast<int>(paths.size()));
}

bool isDocumentFile(const QString& path)
{
    return path.endsWith(QLatin1String(GraphDocument::kSuffix), Qt::CaseInsensitive);
}

} // namespace

DocumentController::DocumentController(QObject* parent)
    : QObject(parent)
    , m_watcher(new SourceWatcher(this))
    , m_reading([this](DocumentReading::HostCall call) { QMetaObject::invokeMethod(this, std::move(call), Qt::QueuedConnection); })
{
    connect(m_watcher, &SourceWatcher::changed, this, &DocumentController::sourcesChanged);
    replaceDocument(std::make_unique<GraphDocument>());
}

DocumentController::~DocumentController()
{
    m_document->setChangeHandler(nullptr);
}

void DocumentController::replaceDocument(std::unique_ptr<GraphDocument> document)
{
    // The former one lives until everybody has let go of its graph.
    const auto former = std::exchange(m_document, std::move(document));
    m_undoSteps.clear();
    if (former)
        former->setChangeHandler(nullptr);
    m_document->setChangeHandler([this] { emit nameChanged(); });
    emit documentReplaced();
    contentDidChange();
}

void DocumentController::contentDidChange()
{
    m_watcher->watch(m_document->sourcePaths());
    announceContent();
    emit nameChanged();
}

void DocumentController::announceContent()
{
    // Of several files, series are told apart by what the legend calls them, also in read-outs and on paper.
    const auto series = m_document->graph()->graphData();
    const auto& entries = m_document->legendEntries();
    for (std::size_t i = 0; m_document->files().size() > 1 && i < std::min(series.size(), entries.size()); ++i)
        series[i]->setName(entries[i].title);
    emit contentChanged();
}

// Reading.

void DocumentController::start(const std::vector<std::string>& paths, const Options& options, const Plan& plan)
{
    m_pendingUndoStep = nullptr;
    emit readingStarted(namesOfFiles(paths));
    DocumentReading::Callbacks callbacks;
    callbacks.progress = [this](const DocumentProgress& progress) {
        const int percent = progress.fraction ? static_cast<int>(100.0 * (static_cast<double>(progress.index) + *progress.fraction) / static_cast<double>(progress.count)) : -1;
        emit readingProgressed(nameOfFile(progress.file), percent);
    };
    callbacks.finished = [this, plan](ReadDocumentData data) { finish(plan, std::move(data)); };
    callbacks.failed = [this, plan](const std::string& error) {
        emit readingEnded();
        fail(plan, plainText(error));
    };
    m_reading.start(paths, options, std::move(callbacks));
}

void DocumentController::finish(const Plan& plan, ReadDocumentData data)
{
    emit readingEnded();
    try {
        plan.install(std::move(data));
    } catch (const std::bad_alloc&) {
        fail(plan, tr("There is too little memory for it. Close other programs or use less data."));
        return;
    } catch (const std::exception& problem) {
        fail(plan, plainText(problem.what()));
        return;
    }
    if (m_pendingUndoStep)
        m_undoSteps.push_back(std::exchange(m_pendingUndoStep, nullptr));
    if (std::exchange(m_reloadIsDue, false))
        sourcesChanged();
}

void DocumentController::fail(const Plan& plan, const QString& reason)
{
    m_reloadIsDue = false;
    m_pendingUndoStep = nullptr;
    // Panels show the options that hold.
    announceContent();
    if (plan.isQuiet)
        emit message(plan.failure + QLatin1Char(' ') + reason);
    else
        emit failed(plan.failure, reason);
}

void DocumentController::cancelReading()
{
    if (!isReading())
        return;
    m_reading.cancel();
    m_reloadIsDue = false;
    m_pendingUndoStep = nullptr;
    emit readingEnded();
    announceContent();
    emit message(tr("Reading was cancelled."));
}

void DocumentController::open(const QStringList& paths)
{
    if (paths.isEmpty())
        return;
    if (paths.size() == 1 && isDocumentFile(paths.front()))
        return openDocument(paths.front());
    for (const QString& path : paths) {
        if (isDocumentFile(path)) {
            emit failed(tr("The files could not be opened together."), tr("%1 is a graph document. Open it alone, or choose measurements only.").arg(QFileInfo(path).fileName()));
            return;
        }
    }
    start(filesOfTexts(paths), Options(),
        {[this, paths](ReadDocumentData data) {
             auto document = std::make_unique<GraphDocument>();
             document->install(std::move(data));
             replaceDocument(std::move(document));
             emit opened(paths);
         },
            tr("The measurements could not be opened."), false});
}

void DocumentController::openDocument(const QString& path)
{
    const QString failure = tr("The graph document could not be opened.");
    // Shared, because what holds it until the data are there is copied.
    const auto document = std::make_shared<std::unique_ptr<GraphDocument>>();
    bool hasGivenUp = false;
    const SourceFinder find = [&](const MissingSource& missing) {
        auto place = m_findSource ? m_findSource(missing) : std::nullopt;
        hasGivenUp = m_findSource && !place;
        return place;
    };
    try {
        *document = GraphDocument::open(fileOfText(path), find);
    } catch (const std::exception& problem) {
        if (hasGivenUp)
            emit message(tr("%1 was not opened.").arg(QFileInfo(path).fileName()));
        else
            emit failed(failure, plainText(problem.what()));
        return;
    }
    start((*document)->sourcePaths(), (*document)->options(),
        {[this, document, path](ReadDocumentData data) {
             (*document)->install(std::move(data));
             replaceDocument(std::move(*document));
             emit opened({path});
         },
            failure, false});
}

void DocumentController::addFiles(const QStringList& paths)
{
    if (!m_document->hasData() || (paths.size() == 1 && isDocumentFile(paths.front())))
        return open(paths);
    std::vector<std::string> all = m_document->sourcePaths();
    const auto added = filesOfTexts(paths);
    all.insert(all.end(), added.begin(), added.end());
    start(all, m_document->options(),
        {[this, paths](ReadDocumentData data) {
             m_document->install(std::move(data));
             contentDidChange();
             emit opened(paths);
         },
            tr("The measurements could not be added."), false});
}

void DocumentController::reload()
{
    readAgain(false);
}

void DocumentController::readAgain(bool isQuiet)
{
    if (!m_document->hasData())
        return;
    start(m_document->sourcePaths(), m_document->options(),
        {[this](ReadDocumentData data) {
             m_document->install(std::move(data));
             contentDidChange();
             emit message(tr("The measurements were read again."));
         },
            tr("The measurements could not be read again."), isQuiet});
}

void DocumentController::setReloadsAutomatically(bool reloads)
{
    m_reloadsAutomatically = reloads;
    if (reloads && m_document->hasData() && !m_document->changedSources().empty())
        sourcesChanged();
}

void DocumentController::sourcesChanged()
{
    if (!m_reloadsAutomatically)
        return;
    if (isReading())
        m_reloadIsDue = true;
    else if (!m_document->changedSources().empty())
        readAgain(true);
}

// The document.

void DocumentController::close()
{
    cancelReading();
    replaceDocument(std::make_unique<GraphDocument>());
}

void DocumentController::save(const QString& path)
{
    m_document->save(fileOfText(path));
}

std::shared_ptr<const void> DocumentController::registerUndo(const Options& former)
{
    auto step = std::make_shared<const int>(0);
    m_document->undoManager()->registerUndoWithTarget(step, [this, former] { setOptions(former); });
    return step;
}

/// Bars and impulses stand on zero, and dots in cells of their own: ranges that were chosen for others do not suit them.
bool DocumentController::fitsAfterChange(const Options& former) const
{
    const auto needs = [](const Options& options) {
        const bool standsOnZero = options.drawing == DrawingKind::Bar || options.drawing == DrawingKind::Impulse;
        return std::pair(standsOnZero, options.drawing == DrawingKind::Dotted);
    };
    return needs(former) != needs(m_document->options());
}

void DocumentController::setOptions(const Options& wanted)
{
    const Options former = m_document->options();
    if (wanted == former)
        return;
    const QString failure = tr("The graph cannot be drawn so.");
    if (m_document->needsReading(wanted)) {
        // Registered before the reading, so that it is the counterpart of a step that is being undone.
        auto step = registerUndo(former);
        Options asked = wanted;
        // Other dates have another beginning.
        if (asked.x != former.x)
            asked.dateOrigin = std::nullopt;
        start(m_document->sourcePaths(), asked,
            {[this, former](ReadDocumentData data) {
                 m_document->install(std::move(data));
                 if (fitsAfterChange(former))
                     m_document->fitRanges();
                 contentDidChange();
             },
                failure, false});
        m_pendingUndoStep = std::move(step);
        return;
    }
    try {
        m_document->setOptions(wanted);
        m_undoSteps.push_back(registerUndo(former));
        if (fitsAfterChange(former))
            m_document->fitRanges();
    } catch (const std::exception& problem) {
        emit failed(failure, plainText(problem.what()));
    }
    // Also after a failure: panels show the options that hold.
    announceContent();
}

void DocumentController::fitRanges()
{
    m_document->fitRanges();
    announceContent();
}

void DocumentController::layOut(const Rect& rect) const
{
    if (!m_document->hasData())
        return;
    Options options = m_document->options();
    options.legend = false;
    GraphSheet sheet = sheetOfGraph(m_document->graph(), {}, options);
    layoutSheet(sheet, options, rect);
}

} // namespace TOLVGraphing::app
