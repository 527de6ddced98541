#include "IndexSet.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace TOLVGraphing {

IndexSet::IndexSet(std::initializer_list<std::size_t> indexes) : IndexSet(std::vector<std::size_t>(indexes)) {}

IndexSet::IndexSet(std::vector<std::size_t> indexes) : m_indexes(std::move(indexes))
{
    std::sort(m_indexes.begin(), m_indexes.end());
    m_indexes.erase(std::unique(m_indexes.begin(), m_indexes.end()), m_indexes.end());
}

IndexSet IndexSet::indexSetWithRange(std::size_t location, std::size_t length)
{
    std::vector<std::size_t> indexes(length);
    std::iota(indexes.begin(), indexes.end(), location);
    return IndexSet(std::move(indexes));
}

} // namespace TOLVGraphing
