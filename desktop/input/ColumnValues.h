#pragma once

#include <TOLVMath/TOLVRealVector.h>
#include <TOLVMath/Export.h>

#include <cstddef>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace TOLVGraphing {
class ExtremePyramid;
}

namespace TOLVGraphing::input {

class MappedFile;

/// The numbers of a column, single precision: its own, or numbers that stay where they are, in a mapped file. It reads as a container of constant floats.
///
/// A copy copies numbers of its own, and shares those in a file, which stays mapped as long as anybody has them: it is not to be written to meanwhile, because the numbers would change; where it is cut, zeros stand behind the new end.
/// Reading may be done from several threads.
class TOLV_EXPORT ColumnValues {
public:
    /// What containers name so.
    using value_type = float;
    using iterator = const float*;
    using const_iterator = const float*;

    /// No numbers.
    ColumnValues() = default;
    /// Takes them over, without a copy where they are moved in.
    ColumnValues(std::vector<float> values) : m_own(std::move(values)) {}
    /// Numbers that `owner` (shared, not null) has in place. `pyramid` (shared), if any, was made of exactly these. For the library's own readers.
    ColumnValues(std::shared_ptr<const MappedFile> owner, std::span<const float> values, std::shared_ptr<const ExtremePyramid> pyramid)
        : m_owner(std::move(owner))
        , m_elsewhere(values)
        , m_pyramid(std::move(pyramid))
    {
    }

    /// The first number; valid until the numbers are changed, moved out or taken, and as long as this object.
    [[nodiscard]] const float* data() const { return m_owner ? m_elsewhere.data() : m_own.data(); }
    /// How many numbers there are.
    [[nodiscard]] std::size_t size() const { return m_owner ? m_elsewhere.size() : m_own.size(); }
    /// There is no number.
    [[nodiscard]] bool empty() const { return size() == 0; }
    /// The range of the numbers.
    [[nodiscard]] const float* begin() const { return data(); }
    [[nodiscard]] const float* end() const { return data() + size(); }
    /// The number at an index below size(), which is not looked at.
    [[nodiscard]] float operator[](std::size_t index) const { return data()[index]; }
    /// The first and the last number; there has to be one.
    [[nodiscard]] float front() const { return data()[0]; }
    [[nodiscard]] float back() const { return data()[size() - 1]; }

    /// The numbers are in a file and not in memory of their own.
    [[nodiscard]] bool areElsewhere() const { return m_owner != nullptr; }
    /// The file that they are in (shared), to be kept or compared; null where they are in memory of their own.
    [[nodiscard]] const std::shared_ptr<const MappedFile>& file() const { return m_owner; }
    /// What is known of the extremes, for the library's own use; null where they were not looked for.
    [[nodiscard]] const ExtremePyramid* pyramid() const { return m_pyramid.get(); }

    /// The numbers to be changed, of this object; copied first where they are in a file. What was known of the extremes is forgotten.
    [[nodiscard]] std::vector<float>& own();
    /// The numbers as a vector: moved out, or copied where they are in a file. Nothing remains.
    operator std::vector<float>() &&;
    /// Moved out as a vector for a series, without a copy, with what is known of them. Nothing remains.
    [[nodiscard]] std::shared_ptr<const TOLVRealVector> takeVector();

    /// By numbers, wherever they are: NaN differs from NaN.
    friend bool operator==(const ColumnValues& left, const ColumnValues& right);

private:
    std::vector<float> m_own;
    std::shared_ptr<const MappedFile> m_owner;
    std::span<const float> m_elsewhere;
    std::shared_ptr<const ExtremePyramid> m_pyramid;
};

} // namespace TOLVGraphing::input
