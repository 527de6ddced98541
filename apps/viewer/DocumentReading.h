#pragma once

#include "FileStamp.h"

#include <apps/plotting/FileSeries.h>
#include <apps/plotting/Options.h>
#include <desktop/input/MeasurementTable.h>

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace TOLVGraphing::app {

/// A column that a file has.
struct SourceColumn {
    /// What options call it: its name or "column 3", or its number, counted from 1, where a column before it has the same name.
    std::string option;
    /// As the file states it, or empty.
    std::string unit;
    input::ColumnKind kind = input::ColumnKind::Number;

    friend bool operator==(const SourceColumn&, const SourceColumn&) = default;
};

/// A measurement file of a document.
struct DocumentSource {
    /// Absolute.
    std::string path;
    /// The file's state when it was last read, or of one not yet read in an opened document when that was saved; nothing where it is not known.
    std::optional<FileStamp> stamp;
    /// All columns of the file, drawn or not, for a user to choose from; none while it has not been read.
    std::vector<SourceColumn> columns;

    friend bool operator==(const DocumentSource&, const DocumentSource&) = default;
};

/// What a reading brings: the series, where they come from, and the options that chose their columns.
struct ReadDocumentData {
    Options options;
    std::vector<DocumentSource> sources;
    /// One for each source, in the same order.
    std::vector<FileSeries> files;
    /// Sentences that the user should read: rows that are too short, samples left out.
    std::vector<std::string> notes;
};

/// How far a reading has come.
struct DocumentProgress {
    std::string file;
    /// Counted from 0.
    std::size_t index = 0;
    std::size_t count = 0;
    /// The part of the file that has been read, 0 to 1; nothing where its length is not known.
    std::optional<double> fraction;

    friend bool operator==(const DocumentProgress&, const DocumentProgress&) = default;
};

/// Reads the sources of a document beside the host's thread, one reading at a time: a new one cancels the former. What was read is handed over as a whole; the reading thread does not touch it afterwards.
///
/// All operations and all callbacks are the host's thread's. Only regular files are read: a pipe or a device could keep the reading waiting for ever.
class DocumentReading {
public:
    using HostCall = std::function<void()>;
    /// Runs a call in the host's thread, soon and in order; it is asked from the reading thread and must not run the call right there. It may outlive this object and drop calls.
    using HostQueue = std::function<void(HostCall)>;

    /// None of them is called after the reading was cancelled. They may start another reading, and may end this object. Empty ones are passed over.
    struct Callbacks {
        /// At the start of each file, and then whenever a hundredth more of it has been read.
        std::function<void(const DocumentProgress&)> progress;
        std::function<void(ReadDocumentData)> finished;
        /// With one line of text that names the file, what was found and what was expected.
        std::function<void(const std::string&)> failed;
    };

    explicit DocumentReading(HostQueue queue);
    /// Cancels, and waits until the reading thread has noticed: it looks every few megabytes.
    ~DocumentReading();
    DocumentReading(const DocumentReading&) = delete;
    DocumentReading& operator=(const DocumentReading&) = delete;

    /// Reads the files (paths are made absolute, in the working folder of this moment) with the columns that the options ask for. Cancels a former reading without waiting for it. Of no files nothing is read, and that succeeds.
    void start(std::vector<std::string> paths, Options options, Callbacks callbacks);
    /// Calls that are on their way are dropped.
    void cancel();
    /// From the start until the host has been told the end, or until it was cancelled.
    [[nodiscard]] bool isReading() const;

private:
    struct Task;

    static void run(const std::shared_ptr<Task>& task, const HostQueue& queue);
    void joinFinished();

    HostQueue m_queue;
    std::shared_ptr<Task> m_current;
    /// Threads with their tasks, the current one and cancelled ones that may still run.
    std::vector<std::pair<std::shared_ptr<Task>, std::jthread>> m_threads;
};

} // namespace TOLVGraphing::app
