#include "TOLVMarker.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace TOLVGraphing {
namespace {

std::shared_ptr<TOLVMarker> unarchived(const std::shared_ptr<ArchiveObject>& archive)
{
    return std::dynamic_pointer_cast<TOLVMarker>(KeyedUnarchiver::unarchivedObject(archive));
}

TEST(TOLVMarker, IsAlwaysMadeWithAValue)
{
    static_assert(!std::is_default_constructible_v<TOLVMarker>);
    const auto marker = TOLVMarker::markerWithValue(2.5);
    EXPECT_EQ(marker->value(), 2.5);
    EXPECT_EQ(marker->axisIndex(), 0);
}

TEST(TOLVMarker, CopyKeepsValueAndAxis)
{
    const auto marker = TOLVMarker::markerWithValue(2.5);
    marker->setAxisIndex(1);
    const auto copy = marker->copy();
    marker->setValue(9.0);
    marker->setAxisIndex(7);
    EXPECT_EQ(copy->value(), 2.5);
    EXPECT_EQ(copy->axisIndex(), 1);
}

TEST(TOLVMarker, ArchiveRestoresValueAndAxis)
{
    for (const double value : {0.1, -0.0, 1e308, 5e-324}) {
        const auto marker = TOLVMarker::markerWithValue(value);
        marker->setAxisIndex(-3);
        const auto back = unarchived(KeyedArchiver::archivedObject(*marker));
        ASSERT_TRUE(back);
        EXPECT_EQ(back->value(), value);
        EXPECT_EQ(back->axisIndex(), -3);
    }
}

TEST(TOLVMarker, ArchiveHasItsTwoKeys)
{
    const auto archive = KeyedArchiver::archivedObject(*TOLVMarker::markerWithValue(2.0));
    EXPECT_EQ(archive->className, "TOLVMarker");
    ASSERT_EQ(archive->values.size(), 2U);
    EXPECT_EQ(archive->values[0].first, "value");
    EXPECT_EQ(std::get<double>(archive->values[0].second), 2.0);
    EXPECT_EQ(archive->values[1].first, "axisIndex");
    EXPECT_EQ(std::get<std::int64_t>(archive->values[1].second), 0);
}

TEST(TOLVMarker, ArchiveWithoutValueMakesNoMarker)
{
    const auto archive = std::make_shared<ArchiveObject>();
    archive->className = "TOLVMarker";
    archive->values = {{"axisIndex", std::int64_t{1}}};
    EXPECT_FALSE(unarchived(archive));
}

TEST(TOLVMarker, ArchiveWithoutAxisMeansTheHorizontalOne)
{
    const auto archive = std::make_shared<ArchiveObject>();
    archive->className = "TOLVMarker";
    archive->values = {{"value", 4.0}};
    ASSERT_TRUE(unarchived(archive));
    EXPECT_EQ(unarchived(archive)->axisIndex(), 0);
    EXPECT_EQ(unarchived(archive)->value(), 4.0);
}

TEST(TOLVMarker, ArchiveWithAValueOfAnotherKindIsAnError)
{
    const auto archive = std::make_shared<ArchiveObject>();
    archive->className = "TOLVMarker";
    archive->values = {{"value", std::string("four")}};
    EXPECT_THROW((void)unarchived(archive), ArchiveError);
}

} // namespace
} // namespace TOLVGraphing
