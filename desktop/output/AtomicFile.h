#pragma once

#include "FileError.h"
#include "TemporaryFiles.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace TOLVGraphing {

/// A file that is replaced as a whole or not at all: the bytes go to a temporary file in the same folder, which takes the file's place in `commit()`. Until
/// then, and whenever something fails, the old file stays as it is and no temporary file remains; not even after a signal in a program that has called `removeTemporaryFilesAtSignals`.
///
/// A replaced file keeps its permissions, and its owner where the process may give files away; a new one gets those of the process's mask. A symbolic link stays, the file that it names is replaced; other hard links of that keep the old
/// contents. What is not a regular file (a terminal, a pipe, a device, or an open descriptor such as /dev/stdout) cannot be replaced: the bytes are written to it as they come, also where it takes them slowly and is not to be waited
/// for (O_NONBLOCK), and stay there when something fails later. As for every program, opening a pipe waits for its reader, and the signal SIGPIPE tells that the reader has gone; where it is ignored, FileError does.
///
/// Used from one thread. Temporary files are named `.tolv-` and `.tmp` with letters between them, which differ each time.
class TOLV_EXPORT AtomicFile {
public:
    /// Prepares to write the file. Throws FileError when the path is empty, names a folder or a file without permission to write, is in a folder that is missing or takes no new files, or leads through more than 40 symbolic links.
    explicit AtomicFile(std::filesystem::path path);
    /// Without a commit, removes the temporary file: the old file is as it was.
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Appends the bytes (copied). Pieces are collected up to 64 KiB. Throws FileError when they cannot be stored, or after a commit. After an error the object is only good to be destroyed.
    void write(std::span<const std::byte> bytes);
    /// Brings everything to the disk and puts the file in place, which ends the writing. Throws FileError, and then the old file is still there. A second call throws as well and changes nothing.
    void commit();

    /// The path as the caller gave it.
    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

private:
    [[noreturn]] void fail(const std::string& attempt, int errorNumber) const;
    void openDirectly();
    void openTemporary();
    void takePermissionsOfOldFile();
    void flush();
    void store(std::span<const std::byte> bytes);
    void replaceOldFile();

    std::filesystem::path m_path;
    /// The file behind symbolic links; the one that is replaced.
    std::filesystem::path m_target;
    /// Empty when the target is written directly, and once the temporary file has been renamed.
    std::filesystem::path m_temporary;
    std::optional<output::TemporaryName> m_temporaryName;
    std::vector<std::byte> m_pending;
    int m_descriptor = -1;
};

/// Replaces the file's contents by the bytes, or makes the file, as an AtomicFile does it. Throws FileError; the old file is then as it was.
TOLV_EXPORT void writeFileAtomically(const std::filesystem::path& path, std::span<const std::byte> bytes);

} // namespace TOLVGraphing
