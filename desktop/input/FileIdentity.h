#pragma once

#include <TOLVMath/Export.h>

#include <cstdint>
#include <optional>
#include <string>

namespace TOLVGraphing::input {

/// What tells one file, in one state, from others. A value. Equal identities promise nothing where somebody sets times back on purpose.
struct FileIdentity {
    /// The file system that the file is on, and the number that it has there.
    std::uint64_t device = 0;
    std::uint64_t node = 0;
    /// In bytes.
    std::uint64_t size = 0;
    /// When the contents changed last, and when anything about the file did: nanoseconds since 1970-01-01 00:00 UTC.
    std::int64_t modified = 0;
    std::int64_t changed = 0;

    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// The identity of an open regular file, by its descriptor, which stays the caller's; nothing for anything else, and where the system does not tell.
[[nodiscard]] TOLV_EXPORT std::optional<FileIdentity> identityOfDescriptor(int descriptor);

/// Throws MeasurementError, which names the file as `name`, where the open regular file has fewer bytes than `length` by now. Does nothing where the system does not tell its length.
TOLV_EXPORT void requireLength(int descriptor, std::uint64_t length, const std::string& name);

} // namespace TOLVGraphing::input
