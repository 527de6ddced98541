#include "../support/Comparison.h"
#include "../support/JsonValues.h"
#include "../support/RecordingOpenGL.h"
#include "../support/StubTextSystem.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/opengl/StringTexture.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

/// The textures of a file have texts without words: only their sizes are known.
class SizedTexts {
public:
    AttributedString textOfSize(const Size& size)
    {
        const std::string text = toString(size);
        m_stub->setSize(text, size);
        return AttributedString(text);
    }

private:
    StubTextScope m_stub;
};

using Query = std::function<void(const StringTexture&, const Json& expected)>;

const std::map<std::string, Query>& queries()
{
    static const std::map<std::string, Query> all{
        {"frameSize", [](const StringTexture& texture, const Json& expected) { EXPECT_TRUE(same(texture.frameSize(), sizeOf(expected))); }},
        {"marginSize", [](const StringTexture& texture, const Json& expected) { EXPECT_TRUE(same(texture.marginSize(), sizeOf(expected))); }},
        {"staticFrame", [](const StringTexture& texture, const Json& expected) { EXPECT_EQ(texture.staticFrame(), expected.boolean()); }},
    };
    return all;
}

void change(StringTexture& texture, SizedTexts& texts, const Json& step)
{
    const std::string& name = step[0].text();
    if (name == "setString")
        texture.setString(texts.textOfSize(sizeOf(step[1])));
    else if (name == "setMargins")
        texture.setMargins(sizeOf(step[1]));
    else if (name == "useStaticFrame")
        texture.useStaticFrame(sizeOf(step[1]));
    else if (name == "useDynamicFrame")
        texture.useDynamicFrame();
    else
        ADD_FAILURE() << "the step " << name << " is not known";
}

std::string numbersText(const char* call, double one, double other)
{
    return call + (" " + shortestText(static_cast<float>(one))) + " " + shortestText(static_cast<float>(other));
}

} // namespace

EXPECTED_VALUES_TEST(views, texture)
{
    SizedTexts texts;
    StringTexture texture(texts.textOfSize(sizeOf(testCase.input["stringSize"])));
    const Json& steps = testCase.input["steps"];
    const Json& results = testCase.expected["results"];
    ASSERT_EQ(steps.size(), results.size());
    for (std::size_t i = 0; i < steps.size(); ++i) {
        SCOPED_TRACE("step " + std::to_string(i) + " " + steps[i][0].text());
        const auto query = queries().find(steps[i][0].text());
        if (query != queries().end()) {
            query->second(texture, results[i]);
            continue;
        }
        EXPECT_TRUE(results[i].isNull());
        change(texture, texts, steps[i]);
    }
}

EXPECTED_VALUES_TEST(views, quad)
{
    const auto rasterizer = std::make_shared<StubRasterizer>();
    rasterizer->reportedSize = sizeOf(testCase.input["texSize"]);
    const RasterizerScope rasterizerScope(rasterizer);
    const auto context = std::make_shared<RecordingOpenGLContext>("A");
    const OpenGLScope openGL(context);
    StringTexture texture{AttributedString("text")};
    texture.genTexture();
    EXPECT_TRUE(same(texture.texSize(), sizeOf(testCase.input["texSize"])));
    (void)context->takenLines();

    texture.drawWithBounds(rectOf(testCase.input["bounds"]));

    std::vector<std::string> expected{"perform A", "bindTexture 34037 1", "begin 7"};
    for (const Json& corner : testCase.expected["corners"].elements()) {
        expected.push_back(numbersText("texCoord2f", corner[0].number(), corner[1].number()));
        expected.push_back(numbersText("vertex2f", corner[2].number(), corner[3].number()));
    }
    expected.insert(expected.end(), {"end", "done"});
    EXPECT_EQ(context->lines(), expected);
}
