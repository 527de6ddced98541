#pragma once

#include <TOLVGraphing/platform/foundation/UserDefaults.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace TOLVGraphing::app {

/// The documents and measurements that were opened last, the latest first, each once. They are kept in the user's settings as one text, so that every window and a later start of the program have the same list: it is looked up
/// anew each time. What setting a text throws (a settings file that cannot be written) passes through.
class RecentFiles {
public:
    /// The setting's name.
    static constexpr const char* kKey = "TOLVViewer_RecentFiles";
    static constexpr std::size_t kMaximumCount = 10;

    /// In the process's settings, or others (shared).
    explicit RecentFiles(std::shared_ptr<UserDefaults> defaults = UserDefaults::standardUserDefaults());

    /// Absolute paths, at most kMaximumCount.
    [[nodiscard]] std::vector<std::string> paths() const;
    /// Puts a file in front; a relative path is one of the working folder. The last one of too many is forgotten. An empty path is ignored.
    void add(const std::string& path);
    /// Forgets the files that are not there, and those that nobody may ask for.
    void dropMissing();
    void clear();

private:
    void store(const std::vector<std::string>& paths);

    std::shared_ptr<UserDefaults> m_defaults;
};

} // namespace TOLVGraphing::app
