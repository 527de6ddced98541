#pragma once

#include "ArchiveLimits.h"
#include "PropertyListValue.h"

#include <cstddef>
#include <span>

namespace TOLVGraphing::plist {

/// Reads a binary property list. Nothing is built before all of it has been walked once: every value that is reached lies inside the file and is of a known kind and
/// size, keys are texts, texts are well-formed and without zero characters, whole numbers fit into 64 bits with sign, nothing contains itself or is nested deeper than
/// kMaximumNesting, and the tree, in which shared values are repeated, stays within the limits. Throws ArchiveError on anything else.
[[nodiscard]] Value readBinaryPropertyList(std::span<const std::byte> data, const ArchiveLimits& limits);

} // namespace TOLVGraphing::plist
