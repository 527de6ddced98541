#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace TOLVGraphing::app {

/// What tells one state of a file from another.
struct FileStamp {
    /// In bytes.
    std::uint64_t size = 0;
    /// When the contents changed last: nanoseconds since 1970-01-01 00:00 UTC.
    std::int64_t modified = 0;

    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// The state of a regular file, links being followed; nothing where there is none or nobody may ask.
[[nodiscard]] std::optional<FileStamp> stampOfFile(const std::string& path);

} // namespace TOLVGraphing::app
