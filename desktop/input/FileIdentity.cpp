#include <desktop/input/FileIdentity.h>

#include <desktop/input/MeasurementError.h>

#include <sys/stat.h>

namespace TOLVGraphing::input {

namespace {

std::int64_t nanoseconds(const struct timespec& time)
{
    return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + static_cast<std::int64_t>(time.tv_nsec);
}

} // namespace

std::optional<FileIdentity> identityOfDescriptor(int descriptor)
{
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return FileIdentity{static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino), static_cast<std::uint64_t>(status.st_size),
        nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
}

void requireLength(int descriptor, std::uint64_t length, const std::string& name)
{
    const auto now = identityOfDescriptor(descriptor);
    if (now && now->size < length)
        throw MeasurementError(name, 0, "became shorter while it was read, " + std::to_string(now->size) + " bytes are left", "expected " + std::to_string(length));
}

} // namespace TOLVGraphing::input
