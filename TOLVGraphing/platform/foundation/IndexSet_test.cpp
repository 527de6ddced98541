#include "IndexSet.h"

#include <gtest/gtest.h>

namespace TOLVGraphing {
namespace {

std::vector<std::size_t> elements(const IndexSet& set)
{
    return {set.begin(), set.end()};
}

TEST(IndexSet, IsSortedAndHoldsEachIndexOnce)
{
    using Indexes = std::vector<std::size_t>;
    EXPECT_EQ(elements(IndexSet{7, 2, 9, 2, 7}), (Indexes{2, 7, 9}));
    EXPECT_EQ(elements(IndexSet(Indexes{3, 1, 2})), (Indexes{1, 2, 3}));
    EXPECT_EQ(elements(IndexSet{}), Indexes{});
    EXPECT_EQ((IndexSet{1, 2}), (IndexSet{2, 1, 1}));
    EXPECT_NE((IndexSet{1, 2}), (IndexSet{1, 3}));
}

TEST(IndexSet, CountsItsIndexes)
{
    EXPECT_TRUE(IndexSet().isEmpty());
    EXPECT_EQ(IndexSet().count(), 0U);
    EXPECT_FALSE((IndexSet{0}.isEmpty()));
    EXPECT_EQ((IndexSet{5, 5, 6}.count()), 2U);
}

TEST(IndexSet, RangesAreConsecutive)
{
    EXPECT_EQ(IndexSet::indexSetWithRange(3, 4), (IndexSet{3, 4, 5, 6}));
    EXPECT_EQ(IndexSet::indexSetWithRange(3, 0), IndexSet());
    EXPECT_EQ(kNotFoundIndex, 9223372036854775807);
}

} // namespace
} // namespace TOLVGraphing
