#pragma once

#include <apps/viewer/FileStamp.h>

#include <QObject>
#include <QTimer>

#include <optional>
#include <string>
#include <vector>

class QFileSystemWatcher;

namespace TOLVGraphing::app {

/// Tells when files have changed and come to rest: written to, replaced by another file of that name, or removed and made anew. A change is told once, after nothing has happened to the files for a while; files that are missing
/// are waited for.
class SourceWatcher final : public QObject {
    Q_OBJECT

public:
    /// How long nothing must happen, in milliseconds.
    static constexpr int kQuietTime = 300;

    explicit SourceWatcher(QObject* parent = nullptr);

    /// Watches these files (absolute paths) and no others; their present state is the one that changes are told from.
    void watch(const std::vector<std::string>& paths);

signals:
    void changed();

private:
    void folderHasChanged();
    void wait();
    void addPaths();
    void settle();
    [[nodiscard]] std::vector<std::optional<FileStamp>> stamps() const;

    QFileSystemWatcher* m_watcher = nullptr;
    QTimer m_quiet;
    std::vector<std::string> m_paths;
    std::vector<std::optional<FileStamp>> m_known;
    /// What was seen when the last quiet time began.
    std::vector<std::optional<FileStamp>> m_seen;
};

} // namespace TOLVGraphing::app
