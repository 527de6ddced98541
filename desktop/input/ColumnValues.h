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

/// The numbers of a column: its own, or numbers that stay where they are, in a mapped file.
class TOLV_EXPORT ColumnValues {
public:
    using value_type = float;
    using iterator = const float*;
    using const_iterator = const float*;

    ColumnValues() = default;
    /// Takes them over.
    ColumnValues(std::vector<float> values) : m_own(std::move(values)) {}
    /// Numbers that `owner` has in place. `pyramid`, if any, was made of exactly these.
    ColumnValues(std::shared_ptr<const MappedFile> owner, std::span<const float> values, std::shared_ptr<const ExtremePyramid> pyramid)
        : m_owner(std::move(owner))
        , m_elsewhere(values)
        , m_pyramid(std::move(pyramid))
    {
    }

    [[nodiscard]] const float* data() const { return m_owner ? m_elsewhere.data() : m_own.data(); }
    [[nodiscard]] std::size_t size() const { return m_owner ? m_elsewhere.size() : m_own.size(); }
    [[nodiscard]] bool empty() const { return size() == 0; }
    [[nodiscard]] const float* begin() const { return data(); }
    [[nodiscard]] const float* end() const { return data() + size(); }
    [[nodiscard]] float operator[](std::size_t index) const { return data()[index]; }
    [[nodiscard]] float front() const { return data()[0]; }
    [[nodiscard]] float back() const { return data()[size() - 1]; }

    /// The numbers are in a file and not in memory of their own.
    [[nodiscard]] bool areElsewhere() const { return m_owner != nullptr; }
    /// The file that they are in; null where they are in memory of their own.
    [[nodiscard]] const std::shared_ptr<const MappedFile>& file() const { return m_owner; }
    /// What is known of the extremes; null where they were not looked for.
    [[nodiscard]] const ExtremePyramid* pyramid() const { return m_pyramid.get(); }

    /// To be changed; copied first where they are elsewhere.
    [[nodiscard]] std::vector<float>& own();
    /// Moved out, or copied where they are elsewhere.
    operator std::vector<float>() &&;
    /// Moved out without a copy, with what is known of them. Nothing remains.
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
