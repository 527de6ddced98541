#pragma once

#include <desktop/input/FileIdentity.h>

#include <TOLVMath/Export.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace TOLVGraphing::input {

class MappingGuard;

/// A whole regular file, mapped for reading and kept open, so that it can be asked for its length. What maps it is shared and lasts as long as anyone has it.
///
/// No lock is held and nothing is copied, so the bytes are those of the file now: where somebody writes into the file they change, at any time and in parts. A file that is replaced by another one of its name (as careful
/// programs save) stays as it was. A file that is cut leaves zeros behind its new end instead of ending the process, and hasLostPages() tells so once they were touched; pages that a disk or a network
/// fails to give are zeros likewise. For that the first mapping installs a handler of the signal SIGBUS, which passes on what it does not know to the handler that was there before; a program that installs one of its own later has to pass on
/// likewise. At most 256 files are mapped at a time. Bytes up to a page behind the end may be read: a search that finds no longer what had been there ends in zeros.
class TOLV_EXPORT MappedFile {
public:
    /// Throws MeasurementError where the path is missing, unreadable, a folder, a pipe or a device, or where the system refuses or too many files are mapped. An empty file has no bytes.
    [[nodiscard]] static std::shared_ptr<const MappedFile> fileAtPath(const std::string& path);
    /// The file of an open descriptor, which stays the caller's; null where it is not a regular file, the system refuses or too many files are mapped.
    [[nodiscard]] static std::shared_ptr<const MappedFile> fileOfDescriptor(int descriptor);

    ~MappedFile();
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    /// The file's bytes, as long as this object lives. Any thread may read them.
    [[nodiscard]] std::span<const std::byte> bytes() const { return m_bytes; }
    /// When it was mapped.
    [[nodiscard]] const FileIdentity& identity() const { return m_identity; }
    /// Bytes that were touched were not in the file any more, or could not be read, and are zeros.
    [[nodiscard]] bool hasLostPages() const;
    /// Throws MeasurementError, which names the file as `name`, where not every byte can be the file's any more: it is shorter now than when it was mapped, or hasLostPages(). What was made of the bytes before may be made of zeros then.
    void requireAllBytes(const std::string& name) const;

    /// How the bytes will be used next. Changes only what the system reads ahead.
    enum class Access { Usual, Sequential, Scattered };
    /// Says so to the system, for all bytes.
    void expectAccess(Access access) const;

private:
    MappedFile(int descriptor, const FileIdentity& identity, std::span<const std::byte> bytes, void* pages, std::size_t pagesLength, std::unique_ptr<MappingGuard> guard);

    /// Its own.
    int m_descriptor;
    FileIdentity m_identity;
    std::span<const std::byte> m_bytes;
    /// With the page behind the end.
    void* m_pages;
    std::size_t m_pagesLength;
    std::unique_ptr<MappingGuard> m_guard;
};

} // namespace TOLVGraphing::input
