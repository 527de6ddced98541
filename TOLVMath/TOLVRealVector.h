#pragma once

#include "TOLVAxisData.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace TOLVGraphing {

/// An immutable vector of single-precision numbers. Slices and copies share the storage, which lives as long as any of them. The extremes are looked for once, when they are first asked for; copies share what was found. Safe to read from
/// several threads.
class TOLVRealVector final : public TOLVAxisData {
public:
    /// Takes the numbers over without copying them.
    [[nodiscard]] static std::shared_ptr<const TOLVRealVector> vectorWithComponents(std::vector<float> components);
    /// A vector of no numbers.
    [[nodiscard]] static std::shared_ptr<const TOLVRealVector> vector();

    [[nodiscard]] std::size_t length() const override { return m_length; }
    [[nodiscard]] const float* components() const override { return m_components; }
    bool getMinimum(float* minimum, std::size_t* location) const override;
    bool getMaximum(float* maximum, std::size_t* location) const override;

    /// The slice of `length` numbers from `location` on; what lies past the end is cut off.
    [[nodiscard]] std::shared_ptr<const TOLVRealVector> realVectorInRange(std::uint64_t location, std::uint64_t length) const;
    /// An equal vector.
    [[nodiscard]] std::shared_ptr<const TOLVRealVector> copy() const;

private:
    using Storage = std::shared_ptr<const std::vector<float>>;
    struct Extremes;

    TOLVRealVector(Storage storage, const float* components, std::size_t length);
    bool report(const std::optional<std::size_t>& found, float* extreme, std::size_t* location) const;

    Storage m_storage;
    const float* m_components;
    std::size_t m_length;
    std::shared_ptr<Extremes> m_extremes;
};

} // namespace TOLVGraphing
