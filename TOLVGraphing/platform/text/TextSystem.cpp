#include "TextSystem.h"

#include <algorithm>
#include <mutex>
#include <optional>
#include <utility>

namespace TOLVGraphing {

namespace {

struct Installed {
    std::mutex mutex;
    std::shared_ptr<const TextSystem> system = std::make_shared<FixedTextSystem>();
};

Installed& installed()
{
    static Installed instance;
    return instance;
}

} // namespace

TextSystem::~TextSystem() = default;

double TextSystem::lineHeight(const Font& font) const
{
    return size(AttributedString("Tj", TextAttributes{font, std::nullopt})).height;
}

Size FixedTextSystem::size(const AttributedString& text) const
{
    int longest = 0;
    int current = 0;
    int lines = 1;
    for (const char byte : text.string()) {
        if (byte == '\n') {
            ++lines;
            current = 0;
        } else if ((static_cast<unsigned char>(byte) & 0xC0U) != 0x80U) {
            longest = std::max(longest, ++current);
        }
    }
    const double size = text.attributes().fontOrDefault().size;
    return {0.6 * size * longest, 1.2 * size * lines};
}

double FixedTextSystem::ascender(const Font& font) const
{
    return 0.8 * font.size;
}

std::shared_ptr<const TextSystem> textSystem()
{
    const std::scoped_lock lock(installed().mutex);
    return installed().system;
}

void setTextSystem(std::shared_ptr<const TextSystem> system)
{
    if (!system)
        system = std::make_shared<FixedTextSystem>();
    const std::scoped_lock lock(installed().mutex);
    installed().system = std::move(system);
}

TextSystemScope::TextSystemScope(std::shared_ptr<const TextSystem> system) : m_former(textSystem())
{
    setTextSystem(std::move(system));
}

TextSystemScope::~TextSystemScope()
{
    setTextSystem(std::move(m_former));
}

} // namespace TOLVGraphing
