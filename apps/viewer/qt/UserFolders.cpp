#include "UserFolders.h"

#include "Paths.h"

#include <QFileInfo>
#include <QSettings>

#include <cerrno>
#include <filesystem>

#include <sys/stat.h>

namespace TOLVGraphing::app {

namespace {

constexpr const char* kFolderVariables[] = {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"};

bool isMade(const std::filesystem::path& folder)
{
    return ::mkdir(folder.c_str(), S_IRWXU) == 0 || errno == EEXIST;
}

void makeFolder(const std::filesystem::path& folder)
{
    if (isMade(folder) || errno != ENOENT || !folder.has_relative_path())
        return;
    makeFolder(folder.parent_path());
    static_cast<void>(isMade(folder));
}

} // namespace

void dropRelativeUserFolders()
{
    for (const char* variable : kFolderVariables) {
        if (!qgetenv(variable).startsWith('/'))
            qunsetenv(variable);
    }
}

void makeSettingsFolder()
{
    makeFolder(fileOfText(QFileInfo(QSettings().fileName()).absolutePath()));
}

} // namespace TOLVGraphing::app
