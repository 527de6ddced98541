#include <desktop/input/ColumnValues.h>

#include <algorithm>

namespace TOLVGraphing::input {

std::vector<float>& ColumnValues::own()
{
    if (m_owner) {
        m_own.assign(m_elsewhere.begin(), m_elsewhere.end());
        m_elsewhere = {};
        m_owner = nullptr;
    }
    m_pyramid = nullptr;
    return m_own;
}

ColumnValues::operator std::vector<float>() &&
{
    return std::move(own());
}

std::shared_ptr<const TOLVRealVector> ColumnValues::takeVector()
{
    if (!m_owner)
        return TOLVRealVector::vectorWithComponents(std::exchange(m_own, {}));
    auto vector = TOLVRealVector::vectorWithStorage(std::move(m_owner), m_elsewhere.data(), m_elsewhere.size(), std::move(m_pyramid));
    m_elsewhere = {};
    m_owner = nullptr;
    m_pyramid = nullptr;
    return vector;
}

bool operator==(const ColumnValues& left, const ColumnValues& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end());
}

} // namespace TOLVGraphing::input
