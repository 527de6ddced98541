#pragma once

#include <desktop/input/FileIdentity.h>
#include <desktop/input/ReadSettings.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace TOLVGraphing::input {

class MappedFile;

/// The bytes of a file, a pipe or standard input, read once from front to back, with progress and cancelling.
///
/// Every operation throws MeasurementError with the system's reason where the system refuses, and where a file is found to end sooner than it did when it was opened, and ReadingCancelled where the progress
/// callback answers false.
class ByteSource {
public:
    /// Opens the path; `-` is standard input (a file of that name is "./-"). Refuses directories. Of a source of unknown length no more than `mostPipedBytes` can be read.
    explicit ByteSource(std::string path, std::function<bool(const ReadProgress&)> progress = {}, std::uint64_t mostPipedBytes = kMaximumPipedBytes);
    ~ByteSource();
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;

    /// The path as it was given.
    [[nodiscard]] const std::string& name() const { return m_name; }
    /// The bytes from the place of opening to the end; nothing where that is not known (a pipe).
    [[nodiscard]] std::optional<std::uint64_t> totalBytes() const { return m_totalBytes; }
    /// The bytes that read() has handed out.
    [[nodiscard]] std::uint64_t bytesRead() const { return m_bytesRead; }

    /// The next bytes without taking them: `count` of them (at most kLongestPeek), fewer only at the end of the file.
    [[nodiscard]] std::string_view peek(std::size_t count);
    /// Fills `target` with the next `count` bytes; fewer only at the end of the file.
    std::size_t read(char* target, std::size_t count);
    /// Bytes at an offset from the place of opening, without moving read()'s place and without progress. Only where totalBytes() is known.
    std::size_t readAt(std::uint64_t offset, char* target, std::size_t count);
    /// The whole file behind the source; null where it is none or the system does not map it.
    [[nodiscard]] std::shared_ptr<const MappedFile> mappedFile() const;
    /// Where in the file the next byte of read() lies. Only where totalBytes() is known.
    [[nodiscard]] std::uint64_t placeInFile() const { return m_startOffset + m_bytesRead; }
    /// The file as it is now; nothing where it is none.
    [[nodiscard]] std::optional<FileIdentity> identity() const;
    /// Counts bytes that were had from the mapped file as read, for progress and cancelling. read() must not be used any more.
    void pass(std::uint64_t count);
    /// Reports the end to the progress callback. Readers call it once they have what they need.
    void finish();

    static constexpr std::size_t kLongestPeek = 256;

private:
    std::size_t readSome(char* target, std::size_t count);
    void requireNothingCut() const;
    std::size_t takenFromPipe(std::size_t count);
    void report();
    [[noreturn]] void fail(int systemError, const char* doing) const;

    std::string m_name;
    std::function<bool(const ReadProgress&)> m_progress;
    int m_descriptor = -1;
    bool m_ownsDescriptor = false;
    std::uint64_t m_startOffset = 0;
    std::optional<std::uint64_t> m_totalBytes;
    std::uint64_t m_mostPipedBytes;
    std::uint64_t m_pipedBytes = 0;
    std::uint64_t m_bytesRead = 0;
    std::uint64_t m_bytesReported = 0;
    char m_peeked[kLongestPeek] = {};
    std::size_t m_peekedBegin = 0;
    std::size_t m_peekedEnd = 0;
};

} // namespace TOLVGraphing::input
