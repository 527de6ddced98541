#pragma once

#include "TOLVAxisData.h"
#include "Export.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace TOLVGraphing {

class ExtremePyramid;
class SortedSamples;

/// An immutable vector of single-precision numbers, which may be anything, NaN and infinities included. Slices and copies share the storage, which lives as long as any of them.
///
/// What is learned of the numbers is kept with the storage and shared as well: whether they ascend, and the extremes of their blocks, together less than 4 % of the storage's memory. Each is found when it is first needed, in one
/// pass. Everything may be called from several threads.
class TOLV_EXPORT TOLVRealVector final : public TOLVAxisData {
public:
    /// Takes the numbers over: those of an rvalue are not copied.
    [[nodiscard]] static std::shared_ptr<const TOLVRealVector> vectorWithComponents(std::vector<float> components);
    /// A vector of numbers that stay somewhere else, such as in a mapped file: they are not copied, `owner` (shared; null for numbers that outlive all vectors of them) keeps them in place and nobody may change them. `components` has
    /// `length` floats and is null only for none. `pyramid`, if any, was made of exactly these numbers and saves looking for their extremes.
    [[nodiscard]] static std::shared_ptr<const TOLVRealVector> vectorWithStorage(
        std::shared_ptr<const void> owner, const float* components, std::size_t length, std::shared_ptr<const ExtremePyramid> pyramid = nullptr);
    /// A vector of no numbers.
    [[nodiscard]] static std::shared_ptr<const TOLVRealVector> vector();

    // Samples.

    [[nodiscard]] std::size_t length() const override { return m_length; }
    [[nodiscard]] const float* components() const override { return m_components; }
    bool getMinimum(float* minimum, std::size_t* location) const override;
    bool getMaximum(float* maximum, std::size_t* location) const override;

    /// True when no number is NaN or below the one before it, as of no numbers.
    [[nodiscard]] bool isAscending() const;
    /// True when a number is NaN.
    [[nodiscard]] bool hasNaN() const;

    /// The slice of `length` numbers from the index `location` on; what lies past the end is cut off, and a location past the end gives no numbers. Never null, throws nothing for any numbers.
    [[nodiscard]] std::shared_ptr<const TOLVRealVector> realVectorInRange(std::uint64_t location, std::uint64_t length) const;
    /// An equal vector that shares the storage.
    [[nodiscard]] std::shared_ptr<const TOLVRealVector> copy() const;

    // What is kept with the storage, for those who look through many numbers.

    /// Vectors with storages shorter than this have neither table nor pyramid: looking through them is as quick.
    static constexpr std::size_t kLongStorage = 65'536;

    /// The index that this vector's first number has in the storage: 0 unless it is a slice.
    [[nodiscard]] std::size_t locationInStorage() const;
    /// The storage's numbers with a table to search them; null when the storage is short or does not ascend. Lives as long as this vector.
    [[nodiscard]] const SortedSamples* sortedStorage() const;
    /// The extremes of the storage's blocks; null when the storage is short, or when nobody has asked for them yet and fewer than a sixteenth of its numbers, `count`, are wanted now. Lives as long as this vector.
    [[nodiscard]] const ExtremePyramid* pyramidOfStorage(std::size_t count) const;
    /// The same with minima of only those numbers that are not below minus the smallest normal float: they have a position on a logarithmic axis. Of use where the storage has other ones.
    [[nodiscard]] const ExtremePyramid* pyramidOfLogarithms(std::size_t count) const;

private:
    class Storage;
    struct Knowledge;

    TOLVRealVector(std::shared_ptr<const Storage> storage, const float* components, std::size_t length);
    /// Writes the number at the first place of the extreme that `find` looks for once.
    bool report(const std::optional<std::size_t>& found, float* extreme, std::size_t* location) const;
    std::optional<std::size_t> findExtreme(bool isMaximum) const;

    std::shared_ptr<const Storage> m_storage;
    const float* m_components;
    std::size_t m_length;
    std::shared_ptr<Knowledge> m_knowledge;
};

} // namespace TOLVGraphing
