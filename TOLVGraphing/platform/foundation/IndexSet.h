#pragma once

#include <TOLVMath/Export.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <vector>

namespace TOLVGraphing {

/// The index that stands for "not found": the largest signed 64-bit value.
inline constexpr std::int64_t kNotFoundIndex = std::numeric_limits<std::int64_t>::max();

/// A run of indices, from `location` to before `location + length`.
struct IndexRange {
    /// The first index.
    std::uint64_t location = 0;
    /// How many there are.
    std::uint64_t length = 0;

    friend bool operator==(const IndexRange&, const IndexRange&) = default;
};

/// A set of list positions in ascending order. A value.
class TOLV_EXPORT IndexSet {
public:
    /// No positions.
    IndexSet() = default;
    /// In any order; several of one position count once.
    IndexSet(std::initializer_list<std::size_t> indexes);
    explicit IndexSet(std::vector<std::size_t> indexes);
    /// The consecutive indices from `location` on. Each takes memory: throws what std::vector does for more than there is room for.
    [[nodiscard]] static IndexSet indexSetWithRange(std::size_t location, std::size_t length);

    /// True when there are no positions.
    [[nodiscard]] bool isEmpty() const { return m_indexes.empty(); }
    /// The number of positions.
    [[nodiscard]] std::size_t count() const { return m_indexes.size(); }
    /// From the smallest position to the largest, valid until the set is assigned another one.
    [[nodiscard]] auto begin() const { return m_indexes.begin(); }
    [[nodiscard]] auto end() const { return m_indexes.end(); }

    friend bool operator==(const IndexSet&, const IndexSet&) = default;

private:
    std::vector<std::size_t> m_indexes;
};

} // namespace TOLVGraphing
