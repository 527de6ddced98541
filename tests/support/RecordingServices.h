#pragma once

#include <TOLVGraphing/platform/foundation/UserDefaults.h>
#include <TOLVGraphing/platform/graphics/RecordingContext.h>
#include <TOLVGraphing/platform/ui/DocumentRenderer.h>
#include <TOLVGraphing/platform/ui/Pasteboard.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing::testing_support {

[[nodiscard]] inline std::vector<std::byte> bytesOf(const std::string& text)
{
    const auto* bytes = reinterpret_cast<const std::byte*>(text.data());
    return {bytes, bytes + text.size()};
}

[[nodiscard]] inline std::string textOf(const std::vector<std::byte>& bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// A document that a view asked for.
struct RenderedDocument {
    OutputKind kind;
    Size size;
    /// What was drawn into it, as a recording context writes it.
    std::vector<std::string> calls;
};

/// Notes the documents that it is asked for. The bytes of the first one are "document 1".
class RecordingRenderer final : public DocumentRenderer {
public:
    [[nodiscard]] std::vector<std::byte> render(OutputKind kind, const Size& size, const std::function<void(DrawingContext&)>& drawing) const override
    {
        RecordingContext context;
        drawing(context);
        m_documents.push_back({kind, size, context.calls()});
        return bytesOf("document " + std::to_string(m_documents.size()));
    }
    [[nodiscard]] const std::vector<RenderedDocument>& documents() const { return m_documents; }
    [[nodiscard]] std::vector<OutputKind> kinds() const
    {
        std::vector<OutputKind> kinds;
        for (const RenderedDocument& document : m_documents)
            kinds.push_back(document.kind);
        return kinds;
    }

private:
    mutable std::vector<RenderedDocument> m_documents;
};

/// Installs a renderer for the life of the scope; null for none.
class RendererScope {
public:
    explicit RendererScope(std::shared_ptr<const DocumentRenderer> renderer) : m_former(documentRenderer()) { setDocumentRenderer(std::move(renderer)); }
    ~RendererScope() { setDocumentRenderer(m_former); }
    RendererScope(const RendererScope&) = delete;
    RendererScope& operator=(const RendererScope&) = delete;

private:
    std::shared_ptr<const DocumentRenderer> m_former;
};

/// Makes a pasteboard the general one for the life of the scope: one in memory unless another is given.
class PasteboardScope {
public:
    explicit PasteboardScope(std::shared_ptr<MemoryPasteboard> pasteboard = std::make_shared<MemoryPasteboard>())
        : m_pasteboard(std::move(pasteboard))
        , m_former(Pasteboard::generalPasteboard())
    {
        Pasteboard::setGeneralPasteboard(m_pasteboard);
    }
    ~PasteboardScope() { Pasteboard::setGeneralPasteboard(m_former); }
    PasteboardScope(const PasteboardScope&) = delete;
    PasteboardScope& operator=(const PasteboardScope&) = delete;
    MemoryPasteboard* operator->() const { return m_pasteboard.get(); }

private:
    std::shared_ptr<MemoryPasteboard> m_pasteboard;
    std::shared_ptr<Pasteboard> m_former;
};

/// Makes a store without settings the standard one for the life of the scope.
class UserDefaultsScope {
public:
    UserDefaultsScope() : m_defaults(std::make_shared<MemoryUserDefaults>()), m_former(UserDefaults::standardUserDefaults()) { UserDefaults::setStandardUserDefaults(m_defaults); }
    ~UserDefaultsScope() { UserDefaults::setStandardUserDefaults(m_former); }
    UserDefaultsScope(const UserDefaultsScope&) = delete;
    UserDefaultsScope& operator=(const UserDefaultsScope&) = delete;
    MemoryUserDefaults* operator->() const { return m_defaults.get(); }

private:
    std::shared_ptr<MemoryUserDefaults> m_defaults;
    std::shared_ptr<UserDefaults> m_former;
};

} // namespace TOLVGraphing::testing_support
