#pragma once

#include <TOLVMath/TOLVAxisData.h>
#include <TOLVMath/TOLVRealVector.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace TOLVGraphing::testing_support {

/// Samples of a host's own class, which it may change in place. Their number stays as it is, so that they stay where they are.
class ChangingSamples final : public TOLVAxisData {
public:
    explicit ChangingSamples(std::vector<float> samples) : m_samples(std::move(samples)) {}

    void setSample(std::size_t index, float sample) { m_samples.at(index) = sample; }

    [[nodiscard]] std::size_t length() const override { return m_samples.size(); }
    [[nodiscard]] const float* components() const override { return m_samples.empty() ? nullptr : m_samples.data(); }
    bool getMinimum(float* minimum, std::size_t* location) const override { return TOLVRealVector::vectorWithComponents(m_samples)->getMinimum(minimum, location); }
    bool getMaximum(float* maximum, std::size_t* location) const override { return TOLVRealVector::vectorWithComponents(m_samples)->getMaximum(maximum, location); }

private:
    std::vector<float> m_samples;
};

} // namespace TOLVGraphing::testing_support
