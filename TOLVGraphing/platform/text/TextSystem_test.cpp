#include "TextSystem.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace TOLVGraphing {
namespace {

/// Answers the same for every text.
class ConstantTextSystem final : public TextSystem {
public:
    explicit ConstantTextSystem(double answer) : m_answer(answer) {}
    [[nodiscard]] Size size(const AttributedString&) const override { return {m_answer, m_answer}; }
    [[nodiscard]] double ascender(const Font&) const override { return m_answer; }

private:
    double m_answer;
};

TEST(FixedTextSystem, CharactersAreEquallyWide)
{
    struct Case {
        const char* text;
        double size;
        int characters;
        int lines;
    };
    const Case cases[] = {
        {"", 10.0, 0, 1},
        {"a", 10.0, 1, 1},
        {"20,000", 12.0, 6, 1},
        {"é∞😀", 12.0, 3, 1},
        {"ab\nabcd\na", 9.0, 4, 3},
        {"abcd\n", 9.0, 4, 2},
        {"\n", 9.0, 0, 2},
        {"a", 0.0, 1, 1},
    };
    for (const Case& one : cases) {
        const AttributedString text(one.text, {Font{"Helvetica", one.size}, std::nullopt});
        EXPECT_EQ(FixedTextSystem().size(text), (Size{0.6 * one.size * one.characters, 1.2 * one.size * one.lines})) << one.text;
    }
    EXPECT_EQ(FixedTextSystem().ascender(Font{"Helvetica", 10.0}), 8.0);
}

TEST(TextSystem, LinesAreAsHighAsATextOfOneLine)
{
    EXPECT_EQ(FixedTextSystem().lineHeight(Font{"Helvetica", 10.0}), 12.0);
    EXPECT_EQ(ConstantTextSystem(3.0).lineHeight(Font()), 3.0);
}

TEST(TextSystem, ScopesInstallAndRestore)
{
    const auto before = textSystem();
    ASSERT_TRUE(before);
    {
        const TextSystemScope outer(std::make_shared<ConstantTextSystem>(1.0));
        EXPECT_EQ(AttributedString("abc").size(), (Size{1.0, 1.0}));
        EXPECT_EQ(Font().ascender(), 1.0);
        {
            const TextSystemScope inner(std::make_shared<ConstantTextSystem>(2.0));
            EXPECT_EQ(AttributedString("abc").size(), (Size{2.0, 2.0}));
        }
        EXPECT_EQ(Font().ascender(), 1.0);
    }
    EXPECT_EQ(textSystem(), before);
}

TEST(TextSystem, IsRestoredWhenSomethingThrows)
{
    const auto before = textSystem();
    try {
        const TextSystemScope scope(std::make_shared<ConstantTextSystem>(1.0));
        throw std::runtime_error("no");
    } catch (const std::runtime_error&) {
        EXPECT_EQ(textSystem(), before);
    }
}

TEST(TextSystem, NullBringsTheFixedOneBack)
{
    const TextSystemScope outer(std::make_shared<ConstantTextSystem>(1.0));
    setTextSystem(nullptr);
    ASSERT_TRUE(textSystem());
    EXPECT_EQ((Font{"Helvetica", 10.0}).ascender(), 8.0);
}

} // namespace
} // namespace TOLVGraphing
