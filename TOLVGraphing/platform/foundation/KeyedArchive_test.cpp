#include "KeyedArchive.h"

#include <gtest/gtest.h>

namespace TOLVGraphing {
namespace {

TEST(KeyedArchive, FindsValuesByKey)
{
    ArchiveObject object;
    object.values = {{"min", 1.5}, {"name", std::string("x")}, {"none", std::monostate()}};
    ASSERT_NE(object.find("min"), nullptr);
    EXPECT_EQ(*object.find("min"), ArchiveValue(1.5));
    ASSERT_NE(object.find("none"), nullptr);
    EXPECT_EQ(object.find("max"), nullptr);
    EXPECT_EQ(object.find("mi"), nullptr);
}

TEST(KeyedArchive, DescribesEveryKindOfValue)
{
    auto object = std::make_shared<ArchiveObject>();
    object->className = "TOLVMarker";
    const struct {
        ArchiveValue value;
        const char* expected;
    } cases[] = {
        {std::monostate(), "nothing"},
        {true, "a boolean"},
        {std::int64_t{1}, "a whole number"},
        {1.0, "a number"},
        {std::string("1"), "a text"},
        {object, "an object of class TOLVMarker"},
        {std::make_shared<ArchiveArray>(), "a list"},
        {std::shared_ptr<ArchiveObject>(), "nothing"},
        {std::shared_ptr<ArchiveArray>(), "nothing"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(describeArchiveValue(one.value), one.expected);
}

} // namespace
} // namespace TOLVGraphing
