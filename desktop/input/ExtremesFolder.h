#pragma once

#include <desktop/input/FileIdentity.h>
#include <TOLVMath/Export.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>

namespace TOLVGraphing {
class ExtremePyramid;
}

namespace TOLVGraphing::input {

/// A column of floats that is used where it lies in a file. A value; nothing is owned.
struct FileColumn {
    /// The file and its state.
    FileIdentity file;
    /// Of the first number, and from one number to the next, in bytes.
    std::uint64_t offset = 0;
    std::uint64_t stride = sizeof(float);
    /// The numbers themselves, which have to be there as long as this value is used.
    std::span<const float> samples;
};

/// What is kept of a column.
struct ColumnExtremes {
    /// The extremes of the column's blocks (shared), for the library's own use.
    std::shared_ptr<const ExtremePyramid> pyramid;
    /// How many samples are NaN.
    std::size_t gapCount = 0;
};

/// A folder in which the extremes of long columns are kept, so that a file that is opened once more need not be read through again.
///
/// Each column has a file of its own there, about 3.4 % as long as the column, which takes its place as a whole or not at all; several threads and programs may use the folder. What is kept is only used when it is of
/// the same file in the same state, whole and undamaged by its checksums, and when blocks of samples all over the column still have the extremes that are kept of them; otherwise it counts for nothing. Nothing here
/// throws but for want of memory: a folder that cannot be used is an empty one. A value that holds no more than the path and two limits.
///
/// For a program it is enough to give the folder to the reader: `settings.extremesFolder = ExtremesFolder::usualFolder()` (see ReadSettings).
class TOLV_EXPORT ExtremesFolder {
public:
    /// Numbers in a column.
    static constexpr std::size_t kUsualShortestColumn = 4'000'000;
    /// Bytes in all: 256 MiB.
    static constexpr std::uint64_t kUsualLargestSize = std::uint64_t{256} << 20;
    /// Blocks whose samples are looked at, the first and the last among them.
    static constexpr std::size_t kProbeCount = 64;

    /// The folder is made, for the user only, when something is first kept. Columns of fewer numbers than `shortestColumn` are not worth to be kept (see takes()); what was written first goes first where there would be more than `largestSize`
    /// bytes in all.
    explicit ExtremesFolder(std::filesystem::path path, std::size_t shortestColumn = kUsualShortestColumn, std::uint64_t largestSize = kUsualLargestSize);
    /// tolvgraphing/extremes in the folder that XDG_CACHE_HOME names, or else in .cache of the folder that HOME names; relative ones do not count. Nothing where HOME does not name one either, and where
    /// TOLVGRAPHING_NO_CACHE has any text.
    [[nodiscard]] static std::optional<ExtremesFolder> usualFolder();

    /// The folder, as it was given; it need not exist.
    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }
    /// The column is long enough to be kept: for the caller to ask before it looks for extremes, as the reader does.
    [[nodiscard]] bool takes(const FileColumn& column) const { return column.samples.size() >= m_shortestColumn; }
    /// The file that the column has in the folder.
    [[nodiscard]] std::filesystem::path pathFor(const FileColumn& column) const;

    /// What is kept of the column, mapped from its file; nothing where there is none to be trusted.
    [[nodiscard]] std::optional<ColumnExtremes> extremesOf(const FileColumn& column) const;
    /// Keeps them, which have to be of this column (not empty) with blocks of the usual size and a pyramid, in place of former ones, however short the column is. Does nothing with others, and with more than fits the folder.
    void keep(const FileColumn& column, const ColumnExtremes& extremes) const;

private:
    void dropOldest(const std::filesystem::path& newest) const;

    std::filesystem::path m_path;
    std::size_t m_shortestColumn;
    std::uint64_t m_largestSize;
};

} // namespace TOLVGraphing::input
