#include "AtomicFile.h"

#include <cerrno>
#include <charconv>
#include <cstdint>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <random>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace TOLVGraphing {

namespace {

constexpr std::size_t kPendingLimit = 1U << 16U;
constexpr int kMaximumLinks = 40;
constexpr int kMaximumNameAttempts = 100;

std::filesystem::path folderOf(const std::filesystem::path& path)
{
    return path.has_parent_path() ? path.parent_path() : std::filesystem::path(".");
}

/// The number of this process's own open file that the path stands for (/proc/self/fd/1, /dev/fd/1), if it does.
std::optional<int> openDescriptorNamed(const std::filesystem::path& path)
{
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::canonical(folderOf(path), error);
    if (error || folder != "/proc/" + std::to_string(::getpid()) + "/fd")
        return std::nullopt;
    const std::string name = path.filename().string();
    int descriptor = -1;
    const auto read = std::from_chars(name.data(), name.data() + name.size(), descriptor);
    if (read.ec != std::errc() || read.ptr != name.data() + name.size())
        return std::nullopt;
    return descriptor;
}

/// What the call answers once no signal has interrupted it.
template <typename Call>
auto uninterrupted(const Call& call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

/// Until the descriptor takes bytes again, or cannot take any more.
void waitForRoom(int descriptor)
{
    pollfd waiting{descriptor, POLLOUT, 0};
    uninterrupted([&] { return ::poll(&waiting, 1, -1); });
}

std::string randomName()
{
    static constexpr char digits[] = "0123456789abcdefghijklmnopqrstuv";
    std::random_device random;
    std::string name = ".tolv-";
    for (int i = 0; i < 12; ++i)
        name += digits[random() % 32U];
    return name + ".tmp";
}

} // namespace

AtomicFile::AtomicFile(std::filesystem::path path) : m_path(std::move(path)), m_target(m_path)
{
    for (int links = 0;; ++links) {
        if (const auto descriptor = openDescriptorNamed(m_target)) {
            m_descriptor = ::fcntl(*descriptor, F_DUPFD_CLOEXEC, 3);
            if (m_descriptor < 0)
                fail("cannot be written", errno);
            return;
        }
        std::error_code error;
        const std::filesystem::path next = std::filesystem::read_symlink(m_target, error);
        if (error)
            break;
        if (links == kMaximumLinks)
            fail("cannot be written", ELOOP);
        m_target = next.is_absolute() ? next : folderOf(m_target) / next;
    }
    struct stat status {};
    if (::stat(m_target.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
        openDirectly();
    else
        openTemporary();
}

AtomicFile::~AtomicFile()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    if (!m_temporary.empty())
        ::unlink(m_temporary.c_str());
    m_temporaryName.reset();
}

void AtomicFile::fail(const std::string& attempt, int errorNumber) const
{
    throw FileError(m_path.string(), attempt, errorNumber);
}

void AtomicFile::openDirectly()
{
    m_descriptor = uninterrupted([&] { return ::open(m_target.c_str(), O_WRONLY | O_CLOEXEC); });
    if (m_descriptor < 0)
        fail("cannot be written", errno);
}

void AtomicFile::openTemporary()
{
    if (m_target.filename().empty())
        fail("cannot be written", m_target.empty() ? ENOENT : EISDIR);
    // A file that may not be written is not to be replaced either, although its folder would allow it.
    if (::faccessat(AT_FDCWD, m_target.c_str(), W_OK, AT_EACCESS) != 0 && errno != ENOENT)
        fail("cannot be written", errno);
    const std::filesystem::path folder = folderOf(m_target);
    for (int attempt = 0; m_descriptor < 0; ++attempt) {
        const std::filesystem::path name = folder / randomName();
        m_temporaryName.emplace(name);
        m_descriptor = uninterrupted([&] { return ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666); });
        if (m_descriptor >= 0)
            m_temporary = name;
        else if (errno != EEXIST || attempt == kMaximumNameAttempts)
            fail("cannot be written, no file can be made in the folder " + folder.string(), errno);
    }
    takePermissionsOfOldFile();
}

void AtomicFile::takePermissionsOfOldFile()
{
    struct stat status {};
    if (::stat(m_target.c_str(), &status) != 0)
        return;
    // Only a privileged process can give a file away; for the others the new file is their own.
    if (::fchown(m_descriptor, status.st_uid, status.st_gid) != 0)
        errno = 0;
    ::fchmod(m_descriptor, status.st_mode & 0777U);
}

void AtomicFile::write(std::span<const std::byte> bytes)
{
    if (m_descriptor < 0)
        throw FileError(m_path.string(), "cannot be written, it has been finished");
    if (m_pending.size() + bytes.size() <= kPendingLimit) {
        m_pending.insert(m_pending.end(), bytes.begin(), bytes.end());
        return;
    }
    flush();
    if (bytes.size() >= kPendingLimit)
        store(bytes);
    else
        m_pending.assign(bytes.begin(), bytes.end());
}

void AtomicFile::flush()
{
    store(m_pending);
    m_pending.clear();
}

void AtomicFile::store(std::span<const std::byte> bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = uninterrupted([&] { return ::write(m_descriptor, bytes.data(), bytes.size()); });
        if (written > 0)
            bytes = bytes.subspan(static_cast<std::size_t>(written));
        else if (written < 0 && errno == EAGAIN)
            waitForRoom(m_descriptor);
        else
            fail("cannot be written", written == 0 ? EIO : errno);
    }
}

void AtomicFile::commit()
{
    if (m_descriptor < 0)
        throw FileError(m_path.string(), "cannot be written, it has been finished");
    flush();
    // Some file systems report a full disk only here; pipes and terminals cannot be synchronised and say so.
    if (!m_temporary.empty() && uninterrupted([&] { return ::fsync(m_descriptor); }) != 0 && errno != EINVAL)
        fail("cannot be written", errno);
    if (::close(std::exchange(m_descriptor, -1)) != 0 && errno != EINTR)
        fail("cannot be written", errno);
    if (!m_temporary.empty())
        replaceOldFile();
}

void AtomicFile::replaceOldFile()
{
    if (::rename(m_temporary.c_str(), m_target.c_str()) != 0)
        fail("cannot be replaced", errno);
    m_temporary.clear();
    m_temporaryName.reset();
    // The new name survives a power failure once the folder is on the disk too; where that cannot be asked for, the file is in place all the same.
    const int folder = ::open(folderOf(m_target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        ::fsync(folder);
        ::close(folder);
    }
}

void writeFileAtomically(const std::filesystem::path& path, std::span<const std::byte> bytes)
{
    AtomicFile file(path);
    file.write(bytes);
    file.commit();
}

} // namespace TOLVGraphing
