#include "TOLVAxisExtents.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace TOLVGraphing {
namespace {

std::shared_ptr<TOLVAxisExtents> unarchived(const std::shared_ptr<ArchiveObject>& archive)
{
    return std::dynamic_pointer_cast<TOLVAxisExtents>(KeyedUnarchiver::unarchivedObject(archive));
}

TEST(TOLVAxisExtents, StartsAtZero)
{
    EXPECT_EQ(toString(TOLVAxisExtents()), "[0, 0]");
}

TEST(TOLVAxisExtents, EnforcesNothing)
{
    const auto reversed = TOLVAxisExtents::extentsWithMin(5.0, -5.0);
    EXPECT_EQ(toString(*reversed), "[5, -5]");
    reversed->setMin(std::numeric_limits<double>::infinity());
    reversed->setMax(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(std::isinf(reversed->min()));
    EXPECT_TRUE(std::isnan(reversed->max()));
}

TEST(TOLVAxisExtents, CopyIsIndependent)
{
    const auto extents = TOLVAxisExtents::extentsWithMin(1.0, 2.0);
    const auto copy = extents->copy();
    extents->setMin(9.0);
    EXPECT_EQ(toString(*copy), "[1, 2]");
}

TEST(TOLVAxisExtents, AnnouncesItsEndsAlsoWhenTheyStayEqual)
{
    TOLVAxisExtents extents;
    std::vector<std::string> keys;
    for (const char* key : {"min", "max"})
        extents.addObserver(key, [&](const PropertyChange& change) { keys.push_back(change.key); });
    extents.setMin(1.0);
    extents.setMax(2.0);
    extents.setMax(2.0);
    EXPECT_EQ(keys, (std::vector<std::string>{"min", "max", "max"}));
}

TEST(TOLVAxisExtents, ObserversAreNotCopied)
{
    const auto extents = TOLVAxisExtents::extentsWithMin(1.0, 2.0);
    int told = 0;
    extents->addObserver("min", [&](const PropertyChange&) { ++told; });
    extents->copy()->setMin(3.0);
    EXPECT_EQ(told, 0);
}

TEST(TOLVAxisExtents, ArchiveRestoresBothEndsExactly)
{
    const double ends[][2] = {{0.1, 0.3}, {-0.0, 5e-324}, {-1.7976931348623157e308, 1.7976931348623157e308}};
    for (const auto& [min, max] : ends) {
        const auto back = unarchived(KeyedArchiver::archivedObject(*TOLVAxisExtents::extentsWithMin(min, max)));
        ASSERT_TRUE(back);
        EXPECT_EQ(back->min(), min);
        EXPECT_EQ(std::signbit(back->min()), std::signbit(min));
        EXPECT_EQ(back->max(), max);
    }
}

TEST(TOLVAxisExtents, ArchiveHasTheKeysMinAndMaxInThisOrder)
{
    const auto archive = KeyedArchiver::archivedObject(*TOLVAxisExtents::extentsWithMin(1.0, 2.0));
    EXPECT_EQ(archive->className, "TOLVAxisExtents");
    ASSERT_EQ(archive->values.size(), 2U);
    EXPECT_EQ(archive->values[0].first, "min");
    EXPECT_EQ(archive->values[1].first, "max");
}

TEST(TOLVAxisExtents, AMissingEndReadsAsZero)
{
    const auto archive = std::make_shared<ArchiveObject>();
    archive->className = "TOLVAxisExtents";
    archive->values = {{"min", 4.0}};
    EXPECT_EQ(toString(*unarchived(archive)), "[4, 0]");
    archive->values = {{"max", std::int64_t{6}}};
    EXPECT_EQ(toString(*unarchived(archive)), "[0, 6]");
}

} // namespace
} // namespace TOLVGraphing
