#include <desktop/input/MappedFile.h>

#include <desktop/input/MappingGuard.h>
#include <desktop/input/MeasurementError.h>

#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <limits>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace TOLVGraphing::input {

namespace {

/// Closed at the end of the scope.
class OpenFile {
public:
    /// A pipe must not make anyone wait.
    explicit OpenFile(const std::string& path)
    {
        do {
            m_descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
        } while (m_descriptor < 0 && errno == EINTR);
    }
    ~OpenFile()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    [[nodiscard]] int descriptor() const { return m_descriptor; }

private:
    int m_descriptor = -1;
};

/// A descriptor of the same open file; -1 where the process has too many.
int duplicate(int descriptor)
{
    return ::fcntl(descriptor, F_DUPFD_CLOEXEC, 3);
}

std::string reasonOf(int systemError)
{
    return " (" + std::generic_category().message(systemError) + ")";
}

} // namespace

std::shared_ptr<const MappedFile> MappedFile::fileAtPath(const std::string& path)
{
    const OpenFile file(path);
    if (file.descriptor() < 0)
        throw MeasurementError(path, 0, "cannot be opened" + reasonOf(errno), "expected a readable file");
    struct stat status = {};
    if (::fstat(file.descriptor(), &status) != 0)
        throw MeasurementError(path, 0, "cannot be read" + reasonOf(errno), "expected a readable file");
    if (!S_ISREG(status.st_mode))
        throw MeasurementError(path, 0, S_ISDIR(status.st_mode) ? "a folder" : "a pipe or device", "expected a regular file");
    auto mapped = fileOfDescriptor(file.descriptor());
    if (!mapped)
        throw MeasurementError(path, 0, "cannot be mapped" + reasonOf(errno), "expected a file that fits the address space");
    return mapped;
}

std::shared_ptr<const MappedFile> MappedFile::fileOfDescriptor(int descriptor)
{
    const auto identity = identityOfDescriptor(descriptor);
    if (!identity)
        return nullptr;
    if (identity->size == 0)
        return std::shared_ptr<const MappedFile>(new MappedFile(-1, *identity, {}, nullptr, 0, nullptr));
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    if (identity->size > std::numeric_limits<std::size_t>::max() / 2) {
        errno = ENOMEM;
        return nullptr;
    }
    const auto length = static_cast<std::size_t>(identity->size);
    const std::size_t fileLength = (length + page - 1) & ~(page - 1);
    // Room for all of it and a page more, over which the file is laid.
    void* pages = ::mmap(nullptr, fileLength + page, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (pages == MAP_FAILED)
        return nullptr;
    auto guard = std::make_unique<MappingGuard>(pages, fileLength);
    const int own = guard->isGuarding() ? duplicate(descriptor) : -1;
    if (own < 0 || ::mmap(pages, length, PROT_READ, MAP_PRIVATE | MAP_FIXED, descriptor, 0) == MAP_FAILED) {
        const int error = guard->isGuarding() ? errno : EMFILE;
        guard.reset();
        if (own >= 0)
            ::close(own);
        ::munmap(pages, fileLength + page);
        errno = error;
        return nullptr;
    }
    return std::shared_ptr<const MappedFile>(new MappedFile(own, *identity, {static_cast<const std::byte*>(pages), length}, pages, fileLength + page, std::move(guard)));
}

MappedFile::MappedFile(int descriptor, const FileIdentity& identity, std::span<const std::byte> bytes, void* pages, std::size_t pagesLength, std::unique_ptr<MappingGuard> guard)
    : m_descriptor(descriptor)
    , m_identity(identity)
    , m_bytes(bytes)
    , m_pages(pages)
    , m_pagesLength(pagesLength)
    , m_guard(std::move(guard))
{
}

MappedFile::~MappedFile()
{
    m_guard.reset();
    if (m_pages)
        ::munmap(m_pages, m_pagesLength);
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool MappedFile::hasLostPages() const
{
    return m_guard && m_guard->hasLostPages();
}

void MappedFile::requireAllBytes(const std::string& name) const
{
    if (m_descriptor < 0)
        return;
    requireLength(m_descriptor, m_identity.size, name);
    if (hasLostPages())
        throw MeasurementError(name, 0, "bytes that were lost while the file was read", "expected all " + std::to_string(m_identity.size) + " to be readable");
}

void MappedFile::expectAccess(Access access) const
{
    if (!m_pages)
        return;
    // The system may ignore it, and so do we.
    static_cast<void>(::madvise(m_pages, m_bytes.size(), access == Access::Sequential ? MADV_SEQUENTIAL : access == Access::Scattered ? MADV_RANDOM : MADV_NORMAL));
}

} // namespace TOLVGraphing::input
