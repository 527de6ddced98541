#include "GraphDocument.h"

#include "DocumentArchive.h"

#include <desktop/archive/ArchiveLimits.h>
#include <desktop/output/AtomicFile.h>

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/foundation/Exception.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <fstream>
#include <optional>
#include <system_error>
#include <utility>

namespace TOLVGraphing::app {

namespace {

namespace fs = std::filesystem;

/// What is not a document's is left out.
Options documentOptions(Options options)
{
    options.files.clear();
    options.outputs.clear();
    options.markers.clear();
    options.layout = std::nullopt;
    options.listsColumns = false;
    return options;
}

fs::path absolutePath(const fs::path& path)
{
    return fs::absolute(path).lexically_normal();
}

bool isFile(const fs::path& path)
{
    std::error_code error;
    return fs::exists(path, error);
}

bool isSameFile(const fs::path& one, const fs::path& other)
{
    std::error_code error;
    return one == other || fs::equivalent(one, other, error);
}

/// The way from the folder to a file in it or below it.
std::optional<std::string> wayBelow(const fs::path& folder, const fs::path& file)
{
    const fs::path way = file.lexically_relative(folder);
    if (way.empty() || way.is_absolute() || *way.begin() == "..")
        return std::nullopt;
    return way.string();
}

[[noreturn]] void failReading(const fs::path& path, const std::string& problem)
{
    throw DocumentError(path.string() + ": " + problem);
}

std::vector<std::byte> contentsOfFile(const fs::path& path)
{
    const std::size_t most = ArchiveLimits().bytes;
    std::error_code error;
    const auto size = fs::file_size(path, error);
    if (error)
        failReading(path, "cannot be read: " + error.message());
    if (size > most)
        failReading(path, "found " + std::to_string(size) + " bytes, expected a document of at most " + std::to_string(most));
    std::ifstream file(path, std::ios::binary);
    if (!file)
        failReading(path, "cannot be read: " + std::generic_category().message(errno));
    std::vector<std::byte> contents(static_cast<std::size_t>(size));
    if (!file.read(reinterpret_cast<char*>(contents.data()), static_cast<std::streamsize>(contents.size())))
        failReading(path, "found fewer than " + std::to_string(size) + " bytes, expected a file that can be read to its end");
    return contents;
}

/// Looks for the sources of one document.
class SourceSearch {
public:
    SourceSearch(fs::path document, const SourceFinder& findSource) : m_document(std::move(document)), m_findSource(findSource) {}

    DocumentSource found(const SourceReference& source)
    {
        MissingSource missing{m_document, fs::path(source.path).filename().string(), {}};
        if (source.relativePath)
            missing.places.push_back(absolutePath(m_document.parent_path() / *source.relativePath).string());
        if (missing.places.empty() || missing.places.front() != source.path)
            missing.places.push_back(source.path);
        for (const std::string& place : missing.places) {
            if (isFile(place))
                return {place, source.stamp, {}};
        }
        if (const auto place = placeElsewhere(missing))
            return {place->string(), source.stamp, {}};
        failReading(m_document,
            "source '" + missing.name + "': found no file at " + missing.places.front() + (missing.places.size() > 1 ? " or " + missing.places.back() : "")
                + ", expected the measurements there");
    }

    [[nodiscard]] bool hasFoundElsewhere() const { return m_hasFoundElsewhere; }

private:
    std::optional<fs::path> placeElsewhere(const MissingSource& missing)
    {
        for (const fs::path& folder : m_namedFolders) {
            if (isFile(folder / missing.name))
                return folder / missing.name;
        }
        const auto named = m_findSource ? m_findSource(missing) : std::nullopt;
        if (!named || !isFile(*named))
            return std::nullopt;
        const fs::path place = absolutePath(*named);
        m_namedFolders.push_back(place.parent_path());
        m_hasFoundElsewhere = true;
        return place;
    }

    fs::path m_document;
    const SourceFinder& m_findSource;
    std::vector<fs::path> m_namedFolders;
    bool m_hasFoundElsewhere = false;
};

} // namespace

GraphDocument::GraphDocument() : GraphDocument(TOLVGraph::graph()) {}

GraphDocument::GraphDocument(std::shared_ptr<TOLVGraph> graph) : m_graph(std::move(graph)), m_undoManager(std::make_shared<UndoManager>())
{
    m_graph->attachUndoManager(m_undoManager);
    m_markersToken = m_graph->addObserver("markers", [this](const PropertyChange&) { markersDidChange(); });
}

GraphDocument::~GraphDocument()
{
    m_graph->removeObserver(m_markersToken);
}

// The file.

std::unique_ptr<GraphDocument> GraphDocument::open(const fs::path& path, const SourceFinder& findSource)
{
    const fs::path file = absolutePath(path);
    const std::vector<std::byte> data = contentsOfFile(file);
    DocumentContents contents;
    try {
        contents = documentContents(data);
    } catch (const ArchiveError& problem) {
        failReading(file, problem.what());
    }
    std::unique_ptr<GraphDocument> document(new GraphDocument(contents.graph));
    SourceSearch search(file, findSource);
    for (const SourceReference& source : contents.sources)
        document->m_sources.push_back(search.found(source));
    document->m_isModified = search.hasFoundElsewhere();
    document->m_path = file;
    document->m_options = std::move(contents.options);
    document->m_hasView = true;
    return document;
}

std::string GraphDocument::displayName() const
{
    if (!m_path.empty())
        return m_path.filename().string();
    return m_sources.empty() ? "Untitled" : fs::path(m_sources.front().path).filename().string();
}

void GraphDocument::save(const fs::path& path)
{
    const fs::path file = absolutePath(path);
    DocumentContents contents{{}, m_options, m_graph};
    for (const DocumentSource& source : m_sources) {
        if (isSameFile(file, source.path))
            failReading(file, "found one of the document's own sources, expected another name");
        contents.sources.push_back({source.path, wayBelow(file.parent_path(), source.path), source.stamp});
    }
    try {
        writeFileAtomically(file, documentData(contents));
    } catch (const ArchiveError& problem) {
        failReading(file, problem.what());
    } catch (const FileError& problem) {
        throw DocumentError(problem.what());
    }
    m_path = file;
    m_isModified = false;
    announceChange();
}

// Sources and data.

std::vector<std::string> GraphDocument::sourcePaths() const
{
    std::vector<std::string> paths;
    for (const DocumentSource& source : m_sources)
        paths.push_back(source.path);
    return paths;
}

std::vector<std::string> GraphDocument::changedSources() const
{
    std::vector<std::string> changed;
    for (const DocumentSource& source : m_sources) {
        const auto stamp = stampOfFile(source.path);
        if (!stamp || (source.stamp && stamp != source.stamp))
            changed.push_back(source.path);
    }
    return changed;
}

KeptView GraphDocument::viewKeptWith(const ReadDocumentData& data) const
{
    const Options& wanted = data.options;
    const bool areFilesSame
        = std::equal(m_sources.begin(), m_sources.end(), data.sources.begin(), data.sources.end(), [](const auto& one, const auto& other) { return one.path == other.path; });
    // Other channels are other rows, and another origin other numbers.
    const bool areRowsSame = areFilesSame && wanted.channels == m_options.channels && wanted.dateOrigin.value_or(0.0) == m_options.dateOrigin.value_or(0.0);
    const bool isXSame = areRowsSame && wanted.x == m_options.x && wanted.hasCategories() == m_options.hasCategories() && wanted.categoryColumn == m_options.categoryColumn;
    return {isXSame && wanted.xRange == m_options.xRange, isXSame && wanted.y == m_options.y && wanted.yRange == m_options.yRange, true};
}

void GraphDocument::install(ReadDocumentData data)
{
    const bool isFirst = !m_hasView;
    const bool wasRead = hasData();
    // The former notes are those of a former reading.
    std::vector<std::string> notes = std::move(data.notes);
    for (std::size_t i = 0; !wasRead && i < std::min(m_sources.size(), data.sources.size()); ++i) {
        const DocumentSource& saved = m_sources[i];
        const DocumentSource& read = data.sources[i];
        if (saved.path == read.path && saved.stamp && saved.stamp != read.stamp)
            notes.push_back(read.path + ": has changed since the document was saved");
    }
    std::swap(m_readingNotes, notes);
    try {
        configure(data.files, data.options, isFirst ? KeptView() : viewKeptWith(data));
    } catch (...) {
        std::swap(m_readingNotes, notes);
        throw;
    }
    const Options options = documentOptions(std::move(data.options));
    const auto paths = sourcePaths();
    m_sources = std::move(data.sources);
    m_files = std::move(data.files);
    m_isModified = m_isModified || (!isFirst && (options != m_options || sourcePaths() != paths));
    m_options = options;
    m_hasView = m_hasView || hasData();
    announceChange();
}

// Looks.

bool GraphDocument::needsReading(const Options& wanted) const
{
    return hasData() && needFilesBeReadAgain(m_options, documentOptions(wanted));
}

void GraphDocument::setOptions(const Options& wanted)
{
    if (needsReading(wanted))
        throw Exception("OptionsNeedReading", "These options choose other columns or categories, which have to be read first");
    const Options options = documentOptions(wanted);
    if (options == m_options)
        return;
    if (hasData())
        configure(m_files, options, {options.xRange == m_options.xRange, options.yRange == m_options.yRange, true});
    m_options = options;
    m_isModified = m_isModified || m_hasView;
    announceChange();
}

void GraphDocument::fitRanges()
{
    if (!hasData())
        return;
    configure(m_files, m_options, {false, false, true});
    announceChange();
}

void GraphDocument::configure(const std::vector<FileSeries>& files, const Options& options, const KeptView& kept)
{
    std::vector<std::string> notes;
    m_isConfiguring = true;
    try {
        if (files.empty()) {
            m_graph->clearGraphData();
            m_legendEntries.clear();
        } else {
            m_legendEntries = configureGraph(m_graph, files, options, kept, notes);
        }
    } catch (...) {
        m_isConfiguring = false;
        throw;
    }
    m_isConfiguring = false;
    m_notes = m_readingNotes;
    m_notes.insert(m_notes.end(), notes.begin(), notes.end());
}

// The graph.

GraphSheet GraphDocument::sheet() const
{
    return sheetOfGraph(m_graph, m_legendEntries, m_options);
}

void GraphDocument::markersDidChange()
{
    if (m_isConfiguring)
        return;
    m_isModified = true;
    announceChange();
}

void GraphDocument::announceChange() const
{
    // The handler may set another one.
    if (const auto handler = m_changeHandler)
        handler();
}

} // namespace TOLVGraphing::app
