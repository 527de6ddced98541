#include "TOLVRealVector+Interpolation.h"

#include "../platform/foundation/Exception.h"

#include <TOLVMath/TOLVRealVector.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace TOLVGraphing {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

std::shared_ptr<const TOLVRealVector> tens()
{
    return TOLVRealVector::vectorWithComponents({0.0F, 10.0F, 20.0F, 30.0F});
}

TEST(TOLVRealVectorInterpolation, InterpolatesBetweenNeighbours)
{
    EXPECT_EQ(valueAtFractionalIndex(*tens(), 2.5F), 25.0F);
    EXPECT_EQ(valueAtFractionalIndex(*tens(), 0.0F), 0.0F);
    EXPECT_EQ(valueAtFractionalIndex(*tens(), -0.0F), 0.0F);
    EXPECT_EQ(valueAtFractionalIndex(*tens(), 0.1F), 1.0F);
}

TEST(TOLVRealVectorInterpolation, FromTheLastElementOnNothingIsExtrapolated)
{
    EXPECT_EQ(valueAtFractionalIndex(*tens(), 3.0F), 30.0F);
    EXPECT_EQ(valueAtFractionalIndex(*tens(), 3.5F), 30.0F);
    EXPECT_EQ(valueAtFractionalIndex(*tens(), std::nextafter(4.0F, 0.0F)), 30.0F);
}

TEST(TOLVRealVectorInterpolation, IndexOutsideIsAnAssertionFailure)
{
    for (const float index : {4.0F, 1e30F, 9.3e18F, kInfinity, -kInfinity, -0.25F, -1.0F, kNaN}) {
        SCOPED_TRACE(index);
        try {
            (void)valueAtFractionalIndex(*tens(), index);
            ADD_FAILURE() << "no failure";
        } catch (const AssertionFailure& failure) {
            EXPECT_STREQ(failure.what(), "Invalid parameter not satisfying: (NSInteger)inIndex < self.length");
            EXPECT_EQ(failure.format(), "Invalid parameter not satisfying: %@");
            EXPECT_EQ(failure.argument(), "(NSInteger)inIndex < self.length");
            EXPECT_EQ(failure.file(), "TOLVGraphing/TOLVRealVector+Interpolation");
            EXPECT_EQ(failure.line(), 55);
        }
    }
    EXPECT_THROW((void)valueAtFractionalIndex(*TOLVRealVector::vector(), 0.0F), AssertionFailure);
}

TEST(TOLVRealVectorInterpolation, FindsTheFractionalIndexOfAValue)
{
    struct Case {
        float value;
        float expected;
    };
    for (const Case& one : {Case{25.0F, 2.5F}, Case{0.0F, 0.0F}, Case{5.0F, 0.5F}, Case{10.0F, 1.0F}, Case{12.5F, 1.25F}, Case{30.0F, 3.0F}})
        EXPECT_EQ(fractionalIndexOfValue(*tens(), one.value), one.expected) << one.value;
}

// The middle index is 0 or the low end of the search for some lengths only, so every small length is tried.
TEST(TOLVRealVectorInterpolation, ValuesBeyondTheEndsGiveTheEndsForEveryLength)
{
    for (std::size_t length = 1; length <= 70; ++length) {
        SCOPED_TRACE(length);
        std::vector<float> numbers;
        for (std::size_t i = 0; i < length; ++i)
            numbers.push_back(static_cast<float>(i));
        const auto vector = TOLVRealVector::vectorWithComponents(numbers);
        const auto last = static_cast<float>(length - 1);
        EXPECT_EQ(fractionalIndexOfValue(*vector, -1.0F), 0.0F);
        EXPECT_EQ(fractionalIndexOfValue(*vector, -kInfinity), 0.0F);
        EXPECT_EQ(fractionalIndexOfValue(*vector, last + 1.0F), last);
        EXPECT_EQ(fractionalIndexOfValue(*vector, kInfinity), last);
    }
}

TEST(TOLVRealVectorInterpolation, EveryValueInsideIsFoundForEveryLength)
{
    for (std::size_t length = 1; length <= 33; ++length) {
        std::vector<float> numbers;
        for (std::size_t i = 0; i < length; ++i)
            numbers.push_back(static_cast<float>(i));
        const auto vector = TOLVRealVector::vectorWithComponents(numbers);
        for (std::size_t quarter = 0; quarter + 4 <= 4 * length; ++quarter) {
            const float value = static_cast<float>(quarter) * 0.25F;
            EXPECT_EQ(fractionalIndexOfValue(*vector, value), value) << "length " << length;
        }
    }
}

TEST(TOLVRealVectorInterpolation, EmptyVectorHasNoIndex)
{
    EXPECT_EQ(fractionalIndexOfValue(*TOLVRealVector::vector(), 1.0F), -1.0F);
}

TEST(TOLVRealVectorInterpolation, EqualNeighboursDivideByNothing)
{
    const auto vector = TOLVRealVector::vectorWithComponents({1.0F, 2.0F, 2.0F, 2.0F, 3.0F});
    const float index = fractionalIndexOfValue(*vector, 2.0F);
    EXPECT_GE(index, 1.0F);
    EXPECT_LE(index, 3.0F);
    EXPECT_EQ(valueAtFractionalIndex(*vector, index), 2.0F);
}

// Neither is sorted, so any answer is good as long as nothing outside the vector is read.
TEST(TOLVRealVectorInterpolation, UnsortedAndNaNVectorsAreReadInsideOnly)
{
    const std::vector<std::vector<float>> vectors = {{kNaN}, {kNaN, kNaN}, {1.0F, kNaN, 3.0F}, {3.0F, 2.0F, 1.0F}, {5.0F, 1.0F, 5.0F, 1.0F, 5.0F, 1.0F}, {kInfinity, -kInfinity}};
    for (const auto& numbers : vectors) {
        const auto vector = TOLVRealVector::vectorWithComponents(numbers);
        for (const float value : {-10.0F, 0.0F, 2.0F, 4.0F, 10.0F, kNaN, kInfinity, -kInfinity}) {
            const float index = fractionalIndexOfValue(*vector, value);
            EXPECT_TRUE(std::isnan(index) || index >= -1.0F || std::isinf(index)) << index;
        }
    }
}

} // namespace
} // namespace TOLVGraphing
