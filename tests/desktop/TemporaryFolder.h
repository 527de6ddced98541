#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing::testing_support {

/// A new empty folder, removed with everything in it at the end of the object's life.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] std::string path() const { return m_path.string(); }
    /// The path of a file in the folder, whether it exists or not.
    [[nodiscard]] std::string path(const std::string& name) const { return (m_path / name).string(); }
    /// Writes a file and answers its path.
    std::string write(const std::string& name, std::string_view content) const;
    /// A file's content; empty where it does not exist.
    [[nodiscard]] std::string read(const std::string& name) const;
    /// The names in the folder, hidden ones too, in order.
    [[nodiscard]] std::vector<std::string> names() const;

private:
    std::filesystem::path m_path;
};

/// A file's content. Throws std::runtime_error where it cannot be read.
[[nodiscard]] std::string contentOfFile(const std::string& path);

} // namespace TOLVGraphing::testing_support
