#include "DocumentReading.h"

#include <apps/plotting/TableSeries.h>
#include <desktop/input/MeasurementReader.h>
#include <desktop/output/FileError.h>

#include <cerrno>
#include <cmath>
#include <exception>
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

namespace TOLVGraphing::app {

/// One reading. The reading thread has paths and options for itself; the callbacks are the host's thread's; the flags are shared.
struct DocumentReading::Task {
    std::vector<std::string> paths;
    Options options;
    Callbacks callbacks;
    std::atomic<bool> isCancelled = false;
    /// The reading thread is about to end.
    std::atomic<bool> hasRun = false;
    /// The host has been told the end. The host's thread's.
    bool isOver = false;
};

namespace {

/// Reads the files of one task, and tells what it has come to through `report`, which answers false to cancel.
class SourceReader {
public:
    using Report = std::function<bool(const DocumentProgress&)>;

    SourceReader(const std::vector<std::string>& paths, Options options, Report report) : m_paths(paths), m_options(std::move(options)), m_report(std::move(report)) {}

    ReadDocumentData read()
    {
        ReadDocumentData data;
        for (std::size_t i = 0; i < m_paths.size(); ++i)
            readInto(data, i);
        data.options = m_options;
        return data;
    }

private:
    void readInto(ReadDocumentData& data, std::size_t index)
    {
        const std::string& path = m_paths[index];
        requireRegularFile(path);
        // What changes while it is read counts as changed since.
        const auto stamp = stampOfFile(path);
        input::MeasurementTable table = input::readMeasurements(path, settings(index));
        const std::vector<std::string> ragged = notesOnRaggedRows(table);
        data.notes.insert(data.notes.end(), ragged.begin(), ragged.end());
        std::vector<SourceColumn> columns = columnsOf(table);
        FileSeries series = seriesOfTable(std::move(table), m_options);
        keepDateOrigin(series, m_options);
        // Found here once, so that a window that fits its ranges to them need not look through the samples.
        for (const auto& one : series.selection.series) {
            one.data->Y()->getMinimum(nullptr, nullptr);
            one.data->Y()->getMaximum(nullptr, nullptr);
        }
        for (const std::string& note : series.selection.notes)
            data.notes.push_back(std::string(path).append(": ").append(note));
        data.sources.push_back({path, stamp, std::move(columns)});
        data.files.push_back(std::move(series));
    }

    static std::vector<SourceColumn> columnsOf(const input::MeasurementTable& table)
    {
        std::vector<SourceColumn> columns;
        for (const input::MeasurementColumn& column : table.columns) {
            const std::string name = column.displayName();
            const bool isFirst = table.indexOfColumn(name) == columns.size();
            columns.push_back({isFirst ? name : std::to_string(column.number), column.unit, column.kind});
        }
        return columns;
    }

    static void requireRegularFile(const std::string& path)
    {
        std::error_code error;
        const auto status = std::filesystem::status(path, error);
        if (!std::filesystem::exists(status))
            throw FileError(path, "cannot be opened", error ? error.value() : ENOENT);
        // Folders have an error of their own.
        if (!std::filesystem::is_regular_file(status) && !std::filesystem::is_directory(status))
            throw FileError(path, "found a pipe or device, expected a regular file");
    }

    input::ReadSettings settings(std::size_t index) const
    {
        DocumentProgress progress{m_paths[index], index, m_paths.size(), std::nullopt};
        if (!m_report(progress))
            throw input::ReadingCancelled(progress.file);
        input::ReadSettings settings = readSettings(m_options);
        settings.progress = [report = m_report, progress](const input::ReadProgress& read) mutable {
            const auto former = progress.fraction;
            if (read.totalBytes && *read.totalBytes > 0)
                progress.fraction = std::floor(100.0 * static_cast<double>(read.bytesRead) / static_cast<double>(*read.totalBytes)) / 100.0;
            return report(progress.fraction == former ? DocumentProgress() : progress);
        };
        return settings;
    }

    const std::vector<std::string>& m_paths;
    Options m_options;
    Report m_report;
};

} // namespace

DocumentReading::DocumentReading(HostQueue queue) : m_queue(std::move(queue)) {}

DocumentReading::~DocumentReading()
{
    cancel();
}

void DocumentReading::start(std::vector<std::string> paths, Options options, Callbacks callbacks)
{
    cancel();
    joinFinished();
    for (std::string& path : paths)
        path = std::filesystem::absolute(path).lexically_normal().string();
    auto task = std::make_shared<Task>();
    task->paths = std::move(paths);
    task->options = std::move(options);
    task->callbacks = std::move(callbacks);
    m_current = task;
    m_threads.emplace_back(task, std::jthread([task, queue = m_queue] { run(task, queue); }));
}

void DocumentReading::cancel()
{
    if (m_current)
        m_current->isCancelled = true;
    m_current = nullptr;
}

bool DocumentReading::isReading() const
{
    return m_current && !m_current->isOver;
}

void DocumentReading::joinFinished()
{
    std::erase_if(m_threads, [](const auto& entry) { return entry.first->hasRun.load(); });
}

void DocumentReading::run(const std::shared_ptr<Task>& task, const HostQueue& queue)
{
    // Each call looks in the host's thread whether it is still wanted, because there nobody cancels in between.
    const auto end = [&](std::function<void(const Callbacks&)> tell) {
        queue([task, tell = std::move(tell)] {
            if (task->isCancelled)
                return;
            task->isOver = true;
            tell(task->callbacks);
        });
    };
    const auto fail = [&](std::string text) {
        end([text = std::move(text)](const Callbacks& callbacks) {
            if (callbacks.failed)
                callbacks.failed(text);
        });
    };
    const auto report = [&](const DocumentProgress& progress) {
        if (!progress.file.empty() && !task->isCancelled) {
            queue([task, progress] {
                if (!task->isCancelled && task->callbacks.progress)
                    task->callbacks.progress(progress);
            });
        }
        return !task->isCancelled;
    };
    try {
        auto data = std::make_shared<ReadDocumentData>(SourceReader(task->paths, task->options, report).read());
        end([data = std::move(data)](const Callbacks& callbacks) {
            if (callbacks.finished)
                callbacks.finished(std::move(*data));
        });
    } catch (const input::ReadingCancelled&) {
        // Nobody waits for it.
    } catch (const std::bad_alloc&) {
        fail("found too little memory for these data, expected smaller files or more memory");
    } catch (const std::exception& problem) {
        fail(problem.what());
    }
    task->hasRun = true;
}

} // namespace TOLVGraphing::app
