#include "../support/Comparison.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/mapping/TOLVLinearMapping.h>
#include <TOLVGraphing/mapping/TOLVLogarithmicMapping.h>
#include <TOLVGraphing/platform/foundation/Exception.h>

#include <memory>
#include <string>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

std::shared_ptr<TOLVMapping> mappingOfKind(const std::string& kind)
{
    if (kind == "linear")
        return std::make_shared<TOLVLinearMapping>();
    if (kind == "logarithmic")
        return std::make_shared<TOLVLogarithmicMapping>();
    throw JsonError("there is no mapping kind \"" + kind + "\"");
}

/// The results of a logarithmic mapping come with an absolute tolerance and with the same one in units of the last place: either will do. Others are exact.
void expectResult(float got, const Json& expected, const Json* absolute, const Json* ulps, std::size_t index)
{
    const float value = expected.singleNumber();
    if (!absolute) {
        EXPECT_TRUE(same(got, value)) << "result " << index;
        return;
    }
    const bool withinSteps = ulps && !(*ulps)[index].isNull() && withinUlps(got, value, (*ulps)[index].integer());
    if (!withinSteps) {
        EXPECT_TRUE(within(got, value, (*absolute)[index].number())) << "result " << index;
    }
}

} // namespace

EXPECTED_VALUES_TEST(mappings, map)
{
    const Json& input = testCase.input;
    const Json& expected = testCase.expected;
    const auto mapping = mappingOfKind(input["kind"].text());
    mapping->setMinValue(input["minValue"].singleNumber());
    mapping->setMaxValue(input["maxValue"].singleNumber());
    mapping->setMinPoint(input["minPoint"].singleNumber());
    mapping->setMaxPoint(input["maxPoint"].singleNumber());
    ASSERT_EQ(expected["pointForValue"].size(), input["values"].size());
    for (std::size_t i = 0; i < input["values"].size(); ++i) {
        const float point = mapping->pointForValue(input["values"][i].singleNumber());
        expectResult(point, expected["pointForValue"][i], expected.find("pointTolAbs"), expected.find("pointTolUlps"), i);
    }
    ASSERT_EQ(expected["valueForPoint"].size(), input["points"].size());
    for (std::size_t i = 0; i < input["points"].size(); ++i) {
        const float value = mapping->valueForPoint(input["points"][i].singleNumber());
        expectResult(value, expected["valueForPoint"][i], expected.find("valueTolAbs"), expected.find("valueTolUlps"), i);
    }
}

EXPECTED_VALUES_TEST(mappings, script)
{
    auto mapping = mappingOfKind(testCase.input["kind"].text());
    const Json& results = testCase.expected["results"];
    ASSERT_EQ(results.size(), testCase.input["steps"].size());
    for (std::size_t i = 0; i < results.size(); ++i) {
        const Json& step = testCase.input["steps"][i];
        const std::string& operation = step[0].text();
        const float argument = step.size() > 1 ? step[1].singleNumber() : 0.0F;
        const bool asks = operation == "pointForValue" || operation == "valueForPoint";
        ASSERT_NE(results[i].isNull(), asks) << "step " << i;
        if (operation == "minValue")
            mapping->setMinValue(argument);
        else if (operation == "maxValue")
            mapping->setMaxValue(argument);
        else if (operation == "minPoint")
            mapping->setMinPoint(argument);
        else if (operation == "maxPoint")
            mapping->setMaxPoint(argument);
        else if (operation == "copy")
            mapping = mapping->copy();
        else
            ASSERT_TRUE(asks) << operation;
        if (asks) {
            const float got = operation == "pointForValue" ? mapping->pointForValue(argument) : mapping->valueForPoint(argument);
            expectResult(got, results[i], testCase.expected.find("tolAbs"), testCase.expected.find("tolUlps"), i);
        }
    }
}

EXPECTED_VALUES_TEST(mappings, abstract)
{
    const TOLVMapping mapping;
    const auto expectRefusal = [&](const auto& conversion) {
        try {
            static_cast<void>(conversion());
            ADD_FAILURE() << "no exception";
        } catch (const Exception& exception) {
            EXPECT_EQ(exception.name(), testCase.expected["exception"].text());
            EXPECT_EQ(exception.reason(), testCase.expected["reason"].text());
        }
    };
    expectRefusal([&] { return mapping.pointForValue(1.0F); });
    expectRefusal([&] { return mapping.valueForPoint(1.0F); });
}
