#include "SourceWatcher.h"

#include "Paths.h"

#include <QFileInfo>
#include <QFileSystemWatcher>

#include <algorithm>

namespace TOLVGraphing::app {

SourceWatcher::SourceWatcher(QObject* parent) : QObject(parent), m_watcher(new QFileSystemWatcher(this))
{
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(kQuietTime);
    connect(m_watcher, &QFileSystemWatcher::fileChanged, this, &SourceWatcher::wait);
    connect(m_watcher, &QFileSystemWatcher::directoryChanged, this, &SourceWatcher::folderHasChanged);
    connect(&m_quiet, &QTimer::timeout, this, &SourceWatcher::settle);
}

void SourceWatcher::watch(const std::vector<std::string>& paths)
{
    m_quiet.stop();
    const QStringList former = m_watcher->files() + m_watcher->directories();
    if (!former.isEmpty())
        m_watcher->removePaths(former);
    m_paths = paths;
    m_known = stamps();
    addPaths();
}

void SourceWatcher::wait()
{
    m_seen = stamps();
    m_quiet.start();
}

/// What happens to other files of the folder must not keep these waiting.
void SourceWatcher::folderHasChanged()
{
    addPaths();
    if (stamps() != (m_quiet.isActive() ? m_seen : m_known))
        wait();
}

/// A file that was replaced is no longer watched, but its folder tells that it is there again.
void SourceWatcher::addPaths()
{
    const QStringList files = m_watcher->files();
    const QStringList folders = m_watcher->directories();
    for (const std::string& path : m_paths) {
        const QFileInfo file(textOfFile(path));
        if (file.exists() && !files.contains(file.filePath()))
            m_watcher->addPath(file.filePath());
        if (QFileInfo::exists(file.path()) && !folders.contains(file.path()))
            m_watcher->addPath(file.path());
    }
}

std::vector<std::optional<FileStamp>> SourceWatcher::stamps() const
{
    std::vector<std::optional<FileStamp>> all;
    for (const std::string& path : m_paths)
        all.push_back(stampOfFile(path));
    return all;
}

void SourceWatcher::settle()
{
    addPaths();
    const auto present = stamps();
    if (present != m_seen) {
        m_seen = present;
        m_quiet.start();
        return;
    }
    const bool isComplete = std::all_of(present.begin(), present.end(), [](const auto& stamp) { return stamp.has_value(); });
    if (!isComplete || present == m_known)
        return;
    m_known = present;
    emit changed();
}

} // namespace TOLVGraphing::app
