#pragma once

#include "ArchiveLimits.h"

#include <cstddef>
#include <span>

namespace TOLVGraphing::plist {

/// How deep arrays and dictionaries may be nested in a property list itself. In a keyed archive they hardly are: its objects refer to one another by number.
inline constexpr std::size_t kMaximumNesting = 64;

/// Walks a binary property list without building anything and throws ArchiveError unless a reader that builds a tree can be trusted with it: every object that is
/// reached lies inside the file and is of a known kind and size, keys are texts, texts are well-formed and without zero characters, whole numbers fit
/// into 64 bits with sign, nothing contains itself or is nested deeper than kMaximumNesting, and the tree, in which shared objects are repeated, stays within the limits.
void checkBinaryPropertyList(std::span<const std::byte> data, const ArchiveLimits& limits);

} // namespace TOLVGraphing::plist
