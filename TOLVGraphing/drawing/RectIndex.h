#pragma once

#include "../platform/geometry/Rect.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace TOLVGraphing {

/// Rectangles of a picture that can be asked for one that overlaps another without looking at all of them: they are listed by the cells of a grid that they reach into.
class RectIndex {
public:
    /// Adds a rectangle, which gets the next number, from 0. Empty ones and ones that are not finite overlap nothing.
    void add(const Rect& rect);
    /// The number of a rectangle that overlaps this one with positive area, or nothing when none does.
    [[nodiscard]] std::optional<std::size_t> anyOverlapping(const Rect& rect) const;

private:
    struct Cells {
        std::int32_t left = 0;
        std::int32_t right = 0;
        std::int32_t bottom = 0;
        std::int32_t top = 0;

        [[nodiscard]] bool areMany() const;
    };

    static Cells cellsOf(const Rect& rect);
    [[nodiscard]] std::optional<std::size_t> overlappingAmong(const std::vector<std::size_t>& numbers, const Rect& rect) const;

    std::vector<Rect> m_rects;
    std::unordered_map<std::uint64_t, std::vector<std::size_t>> m_cells;
    /// Rectangles that reach into too many cells to be listed there.
    std::vector<std::size_t> m_large;
};

} // namespace TOLVGraphing
