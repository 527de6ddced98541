#include "RecentFiles.h"

#include "PathText.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <system_error>
#include <utility>

namespace TOLVGraphing::app {

namespace {

/// Between two paths; no path's text has one, because it is a control character.
constexpr char kSeparator = '\t';

} // namespace

RecentFiles::RecentFiles(std::shared_ptr<UserDefaults> defaults) : m_defaults(std::move(defaults)) {}

std::vector<std::string> RecentFiles::paths() const
{
    std::vector<std::string> paths;
    std::istringstream text(m_defaults->stringForKey(kKey));
    for (std::string part; paths.size() < kMaximumCount && std::getline(text, part, kSeparator);) {
        // People may have edited the settings.
        const std::string path = pathOfText(part);
        if (std::filesystem::path(path).is_absolute() && std::find(paths.begin(), paths.end(), path) == paths.end())
            paths.push_back(path);
    }
    return paths;
}

void RecentFiles::add(const std::string& path)
{
    if (path.empty())
        return;
    const std::string absolute = std::filesystem::absolute(path).lexically_normal().string();
    std::vector<std::string> paths = this->paths();
    std::erase(paths, absolute);
    paths.insert(paths.begin(), absolute);
    store(paths);
}

void RecentFiles::dropMissing()
{
    std::vector<std::string> paths = this->paths();
    const auto isMissing = [](const std::string& path) {
        std::error_code error;
        return !std::filesystem::exists(path, error);
    };
    if (std::erase_if(paths, isMissing) > 0)
        store(paths);
}

void RecentFiles::clear()
{
    store({});
}

void RecentFiles::store(const std::vector<std::string>& paths)
{
    std::string text;
    for (std::size_t i = 0; i < std::min(paths.size(), kMaximumCount); ++i)
        text += (i == 0 ? "" : std::string(1, kSeparator)) + textOfPath(paths[i]);
    m_defaults->setString(text, kKey);
}

} // namespace TOLVGraphing::app
