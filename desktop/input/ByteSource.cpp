#include <desktop/input/ByteSource.h>

#include <desktop/input/MappedFile.h>
#include <desktop/input/MeasurementError.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace TOLVGraphing::input {

namespace {

constexpr std::uint64_t kReportInterval = std::uint64_t{4} << 20;
/// One call of the system moves at most this much, so that progress is reported in time.
constexpr std::size_t kLongestRead = std::size_t{1} << 20;

} // namespace

ByteSource::ByteSource(std::string path, std::function<bool(const ReadProgress&)> progress, std::uint64_t mostPipedBytes)
    : m_name(std::move(path))
    , m_progress(std::move(progress))
    , m_mostPipedBytes(mostPipedBytes)
{
    if (m_name == "-") {
        m_descriptor = STDIN_FILENO;
    } else {
        do {
            m_descriptor = ::open(m_name.c_str(), O_RDONLY | O_CLOEXEC);
        } while (m_descriptor < 0 && errno == EINTR);
        if (m_descriptor < 0)
            fail(errno, "cannot be opened");
        m_ownsDescriptor = true;
    }
    struct stat status = {};
    int statResult = ::fstat(m_descriptor, &status);
    int statError = errno;
    if (statResult == 0 && !S_ISDIR(status.st_mode)) {
        // Files of the kernel's own file systems claim to be regular and empty, yet have content: their length counts as unknown.
        if (S_ISREG(status.st_mode) && status.st_size > 0) {
            off_t place = ::lseek(m_descriptor, 0, SEEK_CUR);
            m_startOffset = place > 0 ? static_cast<std::uint64_t>(place) : 0;
            auto size = static_cast<std::uint64_t>(status.st_size);
            m_totalBytes = size > m_startOffset ? size - m_startOffset : 0;
        }
        return;
    }
    if (m_ownsDescriptor)
        ::close(m_descriptor);
    fail(statResult == 0 ? EISDIR : statError, "cannot be read");
}

ByteSource::~ByteSource()
{
    if (m_ownsDescriptor)
        ::close(m_descriptor);
}

std::string_view ByteSource::peek(std::size_t count)
{
    count = std::min(count, kLongestPeek);
    if (m_peekedBegin > 0) {
        std::memmove(m_peeked, m_peeked + m_peekedBegin, m_peekedEnd - m_peekedBegin);
        m_peekedEnd -= m_peekedBegin;
        m_peekedBegin = 0;
    }
    while (m_peekedEnd < count) {
        std::size_t length = readSome(m_peeked + m_peekedEnd, count - m_peekedEnd);
        if (length == 0)
            break;
        m_peekedEnd += length;
    }
    return std::string_view(m_peeked, std::min(count, m_peekedEnd));
}

std::size_t ByteSource::read(char* target, std::size_t count)
{
    std::size_t filled = std::min(count, m_peekedEnd - m_peekedBegin);
    std::memcpy(target, m_peeked + m_peekedBegin, filled);
    m_peekedBegin += filled;
    m_bytesRead += filled;
    while (filled < count) {
        std::size_t length = readSome(target + filled, count - filled);
        if (length == 0)
            break;
        filled += length;
        m_bytesRead += length;
        if (m_bytesRead - m_bytesReported >= kReportInterval)
            report();
    }
    return filled;
}

std::size_t ByteSource::readAt(std::uint64_t offset, char* target, std::size_t count)
{
    std::size_t filled = 0;
    while (filled < count) {
        auto place = static_cast<off_t>(m_startOffset + offset + filled);
        ssize_t length = ::pread(m_descriptor, target + filled, std::min(count - filled, kLongestRead), place);
        if (length < 0 && errno == EINTR)
            continue;
        if (length < 0)
            fail(errno, "cannot be read");
        if (length == 0) {
            requireNothingCut();
            break;
        }
        filled += static_cast<std::size_t>(length);
    }
    return filled;
}

std::shared_ptr<const MappedFile> ByteSource::mappedFile() const
{
    return MappedFile::fileOfDescriptor(m_descriptor);
}

std::optional<FileIdentity> ByteSource::identity() const
{
    return identityOfDescriptor(m_descriptor);
}

void ByteSource::pass(std::uint64_t count)
{
    m_bytesRead += count;
    if (m_bytesRead - m_bytesReported >= kReportInterval)
        report();
}

void ByteSource::finish()
{
    report();
}

std::size_t ByteSource::readSome(char* target, std::size_t count)
{
    for (;;) {
        ssize_t length = ::read(m_descriptor, target, std::min(count, kLongestRead));
        if (length == 0)
            requireNothingCut();
        if (length >= 0)
            return takenFromPipe(static_cast<std::size_t>(length));
        if (errno != EINTR)
            fail(errno, "cannot be read");
    }
}

/// At the end of a file, which may come sooner than its length promised: the system's own files promise more than they have, but others were cut.
void ByteSource::requireNothingCut() const
{
    if (m_totalBytes)
        requireLength(m_descriptor, m_startOffset + *m_totalBytes, m_name);
}

/// What has no known length may have no end.
std::size_t ByteSource::takenFromPipe(std::size_t count)
{
    if (m_totalBytes)
        return count;
    m_pipedBytes += count;
    if (m_pipedBytes > m_mostPipedBytes)
        throw MeasurementError(m_name, 0, "more than " + std::to_string(m_mostPipedBytes) + " bytes from a pipe or device", "expected fewer, or a file");
    return count;
}

void ByteSource::report()
{
    m_bytesReported = m_bytesRead;
    if (m_progress && !m_progress(ReadProgress{m_bytesRead, m_totalBytes}))
        throw ReadingCancelled(m_name);
}

void ByteSource::fail(int systemError, const char* doing) const
{
    throw MeasurementError(m_name, 0, std::string(doing) + " (" + std::generic_category().message(systemError) + ")", "expected a readable file");
}

} // namespace TOLVGraphing::input
