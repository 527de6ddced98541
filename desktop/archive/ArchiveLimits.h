#pragma once

#include <cstddef>

namespace TOLVGraphing {

/// How much an archive may ask for before it is refused with an ArchiveError, so that no file, however it was made, exhausts memory or the stack. What is exactly at a limit is read. A value.
struct ArchiveLimits {
    /// In bytes: the size of the file, and of all texts together once each is counted wherever it is used, the names of classes with every object.
    std::size_t bytes = std::size_t{64} << 20U;
    /// The values of the file and those of the archive, each counted as often as it is written out where sharing is undone.
    std::size_t objects = 1'000'000;
    /// How many objects and lists may stand inside one another, the root counting as the first. More than 256 are never read.
    std::size_t depth = 256;
};

} // namespace TOLVGraphing
