#pragma once

#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/platform/graphics/RecordingContext.h>
#include <TOLVGraphing/platform/text/AttributedString.h>
#include <TOLVGraphing/platform/text/TextSystem.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

/// A text system whose answers are exact in binary: characters (bytes) are half an em wide, lines one em high and ascenders three quarters of an em. It counts how often it was asked.
class EvenTextSystem final : public TextSystem {
public:
    [[nodiscard]] Size size(const AttributedString& text) const override
    {
        ++m_questions;
        const double em = text.attributes().fontOrDefault().size;
        return {0.5 * em * static_cast<double>(text.string().size()), em};
    }
    [[nodiscard]] double ascender(const Font& font) const override
    {
        ++m_questions;
        return 0.75 * font.size;
    }
    [[nodiscard]] int questions() const { return m_questions; }

private:
    mutable int m_questions = 0;
};

/// Installs one for the life of the scope.
class EvenTextScope {
public:
    EvenTextScope() : m_system(std::make_shared<EvenTextSystem>()), m_scope(m_system) {}
    EvenTextSystem* operator->() const { return m_system.get(); }

private:
    std::shared_ptr<EvenTextSystem> m_system;
    TextSystemScope m_scope;
};

/// The lines that a drawing into a fresh recording context gives. The states it saves have to be restored again, which is checked.
[[nodiscard]] inline std::vector<std::string> linesDrawn(const std::function<void()>& drawing)
{
    RecordingContext context;
    {
        const CurrentContextScope scope(context);
        drawing();
    }
    EXPECT_EQ(context.depth(), 0);
    EXPECT_FALSE(context.hasUnmatchedRestore());
    return context.calls();
}

/// The lines that begin with a word.
[[nodiscard]] inline std::vector<std::string> linesWith(const std::vector<std::string>& lines, const std::string& word)
{
    std::vector<std::string> found;
    for (const std::string& line : lines) {
        if (line.starts_with(word + " ") || line == word)
            found.push_back(line);
    }
    return found;
}

} // namespace TOLVGraphing::testing_support
