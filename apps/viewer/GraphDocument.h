#pragma once

#include "DocumentReading.h"

#include <apps/plotting/FileSeries.h>
#include <apps/plotting/GraphBuilder.h>
#include <apps/plotting/Options.h>

#include <TOLVGraphing/platform/foundation/Observable.h>
#include <TOLVGraphing/platform/foundation/UndoManager.h>
#include <TOLVGraphing/views/GraphSheet.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace TOLVGraphing {
class TOLVGraph;
}

namespace TOLVGraphing::app {

/// A document that cannot be opened, saved or exported. `what()` is one line that begins with the document's path.
class DocumentError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A source of a document file that is in none of the places where it was.
struct MissingSource {
    /// Of the document. Absolute.
    std::filesystem::path document;
    /// The source's file name.
    std::string name;
    /// Where it was looked for, absolute.
    std::vector<std::string> places;
};
/// Says where a missing source is now; nothing gives up.
using SourceFinder = std::function<std::optional<std::filesystem::path>(const MissingSource&)>;

/// A graph of measurement files with its looks, as a window shows it and a file keeps it. Used from one thread, that of the window.
///
/// Files are not read here: a DocumentReading reads them, and `install()` takes what it brings. Until then a document has no data; its graph is there, empty.
///
/// What the options say of files, outputs, markers, the layout file and the listing of columns is not a document's: it is dropped, except for the markers of the first data that a new document gets. Texts of options in error
/// messages are those of the command line.
class GraphDocument {
public:
    /// What the names of document files end in.
    static constexpr const char* kSuffix = ".tolvgraph";

    /// A new document without a file, sources and data.
    GraphDocument();
    ~GraphDocument();
    GraphDocument(const GraphDocument&) = delete;
    GraphDocument& operator=(const GraphDocument&) = delete;

    /// The document in a file, without data yet. Its sources are looked for beside the document or below its folder first, where they were when it was saved, and then at their absolute paths.
    /// A source in neither place is looked for under its name in the folders that the finder has named for others before it; then the finder is asked, once. A document whose sources were found so is modified.
    /// Throws DocumentError where the file cannot be read or holds no document, and where a source is not found; the text then names both places.
    [[nodiscard]] static std::unique_ptr<GraphDocument> open(const std::filesystem::path& path, const SourceFinder& findSource = nullptr);

    // The file.

    /// Absolute; empty for a document that was never saved.
    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }
    /// The file's name, that of the first source for a document without a file, or "Untitled".
    [[nodiscard]] std::string displayName() const;
    /// Options, sources or markers are others than those in the file, or in a new document than at first. Visible ranges do not count, though they are saved.
    [[nodiscard]] bool isModified() const { return m_isModified; }
    /// Writes the document, whose file this is from now on. The file is replaced as a whole or stays as it was. Throws DocumentError where it cannot be written, where it is one of the sources, or where the document has more than
    /// 256 sources or other things that no document file can have.
    void save(const std::filesystem::path& path);
    /// Called after `isModified()`, the name or the data may have changed; an empty function for nobody.
    void setChangeHandler(std::function<void()> handler) { m_changeHandler = std::move(handler); }

    // Sources and data.

    [[nodiscard]] const std::vector<DocumentSource>& sources() const { return m_sources; }
    /// What a reading of this document is started with, together with `options()`.
    [[nodiscard]] std::vector<std::string> sourcePaths() const;
    /// The paths of the sources whose size or time of modification are others than when they were read, or in an opened document not yet read, than when it was saved; also of those that are missing now.
    [[nodiscard]] std::vector<std::string> changedSources() const;
    /// Shows what was read: the first data, the same files once more, other files or other columns. Options and sources become those of the data. Markers stay with their undo steps. Visible ranges stay where files, channels, columns and range
    /// texts are the same as before; for other ordinates that of x stays. Of no files, the graph becomes empty.
    /// Throws UsageError when the options cannot be met with these data; the document is then as it was.
    void install(ReadDocumentData data);
    [[nodiscard]] bool hasData() const { return !m_files.empty(); }
    [[nodiscard]] const std::vector<FileSeries>& files() const { return m_files; }
    /// What the user should know: rows and samples that are not shown, sources that have changed since the document was saved.
    [[nodiscard]] const std::vector<std::string>& notes() const { return m_notes; }

    // Looks.

    [[nodiscard]] const Options& options() const { return m_options; }
    /// True when these options need another reading, whose data are installed; otherwise they can be set.
    [[nodiscard]] bool needsReading(const Options& wanted) const;
    /// Sets options that need no reading: visible ranges (but for an axis whose kind or range text changes), markers and undo steps stay. Throws UsageError when they cannot be met, and Exception "OptionsNeedReading" when they need
    /// a reading; the document is then as it was.
    void setOptions(const Options& wanted);
    /// Shows all data, or what the options' range texts say, with the room that the drawing needs. Does nothing without data.
    void fitRanges();

    // The graph.

    /// The same object as long as the document lives, with the undo manager attached. Nobody is told of changes but by `setChangeHandler` and by the graph itself: windows draw again after each operation here.
    [[nodiscard]] const std::shared_ptr<TOLVGraph>& graph() const { return m_graph; }
    [[nodiscard]] const std::shared_ptr<UndoManager>& undoManager() const { return m_undoManager; }
    /// One entry for each series, whether the legend is shown or not.
    [[nodiscard]] const std::vector<LegendEntry>& legendEntries() const { return m_legendEntries; }
    /// A sheet of the document's own graph, with margin and legend as the options say. See layoutSheet().
    [[nodiscard]] GraphSheet sheet() const;

private:
    explicit GraphDocument(std::shared_ptr<TOLVGraph> graph);
    [[nodiscard]] KeptView viewKeptWith(const ReadDocumentData& data) const;
    /// Configures the graph, and has the rest follow.
    void configure(const std::vector<FileSeries>& files, const Options& options, const KeptView& kept);
    void announceChange() const;
    void markersDidChange();

    std::filesystem::path m_path;
    bool m_isModified = false;
    std::function<void()> m_changeHandler;
    std::vector<DocumentSource> m_sources;
    Options m_options;
    std::vector<FileSeries> m_files;
    /// The notes of the reading and those of the graph.
    std::vector<std::string> m_readingNotes;
    std::vector<std::string> m_notes;
    std::vector<LegendEntry> m_legendEntries;
    std::shared_ptr<TOLVGraph> m_graph;
    std::shared_ptr<UndoManager> m_undoManager;
    ObserverToken m_markersToken = 0;
    /// The graph's ranges and markers are worth keeping: they are a file's or those of data shown before.
    bool m_hasView = false;
    /// Changes of markers are this document's own at the moment.
    bool m_isConfiguring = false;
};

} // namespace TOLVGraphing::app
