#pragma once

#include "FuzzTarget.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <string>

namespace TOLVGraphing::fuzzing {

/// A folder of this process alone, in memory where the system has such a place; it goes with all that is in it when the object does.
class PrivateFolder {
public:
    PrivateFolder()
    {
        const std::filesystem::path memory = "/dev/shm";
        std::error_code error;
        const bool hasMemory = std::filesystem::is_directory(memory, error) && ::access(memory.c_str(), W_OK) == 0;
        m_path = ((hasMemory ? memory : std::filesystem::temp_directory_path()) / "tolvgraphing-XXXXXX").string();
        require(::mkdtemp(m_path.data()) != nullptr, "a private folder can be made");
    }
    ~PrivateFolder()
    {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
    }
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;

    [[nodiscard]] const std::string& path() const { return m_path; }
    [[nodiscard]] std::string path(const std::string& name) const { return m_path + "/" + name; }

    /// Answers the path.
    std::string write(const std::string& name, std::span<const std::byte> content) const
    {
        std::string file = path(name);
        const int descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        require(descriptor >= 0 && ::write(descriptor, content.data(), content.size()) == static_cast<ssize_t>(content.size()), "a file can be written");
        ::close(descriptor);
        return file;
    }

    [[nodiscard]] std::string read(const std::string& name) const
    {
        std::ifstream stream(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    /// Removes what is in it.
    void clear() const
    {
        for (const auto& entry : std::filesystem::directory_iterator(m_path))
            std::filesystem::remove_all(entry.path());
    }

private:
    std::string m_path;
};

/// Bytes that come out of a pipe, whose length nobody knows beforehand. Fits some 60,000 bytes.
class Pipe {
public:
    static constexpr std::size_t kMostBytes = 60'000;

    explicit Pipe(std::span<const std::byte> content)
    {
        int ends[2];
        require(::pipe2(ends, O_CLOEXEC) == 0 && ::write(ends[1], content.data(), content.size()) == static_cast<ssize_t>(content.size()), "a pipe can be filled");
        ::close(ends[1]);
        m_descriptor = ends[0];
    }
    ~Pipe() { ::close(m_descriptor); }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    [[nodiscard]] std::string path() const { return "/proc/self/fd/" + std::to_string(m_descriptor); }

private:
    int m_descriptor;
};

} // namespace TOLVGraphing::fuzzing
