#pragma once

#include "ArchiveLimits.h"
#include "PropertyListValue.h"

#include <cstddef>
#include <span>

namespace TOLVGraphing::plist {

/// Reads an XML property list in UTF-8. Numbers do not depend on the process's locale and are read to the last bit; whole numbers have 64 bits with sign. A document
/// type is passed over, one with declarations of its own is refused: the only entities are XML's five and numbered characters. A declared encoding has to be UTF-8 or ASCII.
/// Throws ArchiveError with the line on anything that is not well-formed, on unknown elements and on what exceeds the limits.
[[nodiscard]] Value readXmlPropertyList(std::span<const std::byte> data, const ArchiveLimits& limits);

} // namespace TOLVGraphing::plist
