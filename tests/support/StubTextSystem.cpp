#include "StubTextSystem.h"

namespace TOLVGraphing::testing_support {

Size StubTextSystem::size(const AttributedString& text) const
{
    const auto found = m_sizes.find(text.string());
    return found == m_sizes.end() ? m_defaultSize : found->second;
}

double StubTextSystem::ascender(const Font&) const
{
    return m_ascender;
}

StubTextScope::StubTextScope(Size defaultSize) : m_stub(std::make_shared<StubTextSystem>()), m_scope(m_stub)
{
    m_stub->setDefaultSize(defaultSize);
}

} // namespace TOLVGraphing::testing_support
