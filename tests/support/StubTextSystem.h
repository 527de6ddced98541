#pragma once

#include <TOLVGraphing/platform/text/TextSystem.h>

#include <map>
#include <memory>
#include <string>

namespace TOLVGraphing::testing_support {

/// A text system that answers what a test has set, whatever the font.
class StubTextSystem final : public TextSystem {
public:
    /// The size of every text that has none of its own.
    void setDefaultSize(Size size) { m_defaultSize = size; }
    /// The size of one text.
    void setSize(const std::string& text, Size size) { m_sizes[text] = size; }
    void setAscender(double ascender) { m_ascender = ascender; }

    [[nodiscard]] Size size(const AttributedString& text) const override;
    [[nodiscard]] double ascender(const Font& font) const override;

private:
    Size m_defaultSize;
    std::map<std::string, Size> m_sizes;
    double m_ascender = 0.0;
};

/// Installs a stub for the life of the scope.
class StubTextScope {
public:
    StubTextScope() : StubTextScope(Size()) {}
    explicit StubTextScope(Size defaultSize);
    StubTextSystem* operator->() const { return m_stub.get(); }

private:
    std::shared_ptr<StubTextSystem> m_stub;
    TextSystemScope m_scope;
};

} // namespace TOLVGraphing::testing_support
