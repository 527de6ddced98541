#pragma once

#include "FileStamp.h"

#include <apps/plotting/Options.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace TOLVGraphing {
class TOLVGraph;
}

namespace TOLVGraphing::app {

/// Where a document finds a measurement file.
struct SourceReference {
    /// Absolute.
    std::string path;
    /// The way from the document's folder, of a file in that folder or below it.
    std::optional<std::string> relativePath;
    /// The file's state when it was read last.
    std::optional<FileStamp> stamp;

    friend bool operator==(const SourceReference&, const SourceReference&) = default;
};

/// What a document file holds. The measurements themselves stay in their own files.
struct DocumentContents {
    /// At most 256.
    std::vector<SourceReference> sources;
    /// Without files, outputs, markers, layout file and column listing, which are not a document's.
    Options options;
    /// Never null after reading. Its axes, visible ranges and markers are stored; a range from 0 to 0 is one that has to be fitted to the data.
    std::shared_ptr<TOLVGraph> graph;
};

/// A keyed archive with a root of class "TOLVGraphDocument". Ranges that no axis could show are stored as 0 to 0, and markers without a finite value are left out, so that what is stored can be read again.
/// Throws ArchiveError where that is not so: for more sources, longer texts or other numbers than a document can have.
[[nodiscard]] std::vector<std::byte> documentData(const DocumentContents& contents);

/// The contents of such an archive. Throws ArchiveError, which says where something else was found and what was expected: for bytes that are no archive, other roots and versions, missing values and those of other types,
/// numbers out of bounds, texts of more than 64 KiB, lists that are too long, unknown words, drawings that do not go with their axis, ranges that are not finite or run backwards.
[[nodiscard]] DocumentContents documentContents(std::span<const std::byte> data);

} // namespace TOLVGraphing::app
