#include "Pasteboard.h"

#include <utility>

namespace TOLVGraphing {

namespace {

std::shared_ptr<Pasteboard>& installedPasteboard()
{
    static std::shared_ptr<Pasteboard> pasteboard = std::make_shared<MemoryPasteboard>();
    return pasteboard;
}

} // namespace

Pasteboard::~Pasteboard() = default;

std::shared_ptr<Pasteboard> Pasteboard::generalPasteboard()
{
    return installedPasteboard();
}

void Pasteboard::setGeneralPasteboard(std::shared_ptr<Pasteboard> pasteboard)
{
    installedPasteboard() = pasteboard ? std::move(pasteboard) : std::make_shared<MemoryPasteboard>();
}

void MemoryPasteboard::declareTypes(const std::vector<std::string>& types)
{
    m_types.clear();
    m_entries.clear();
    addTypes(types);
}

void MemoryPasteboard::addTypes(const std::vector<std::string>& types)
{
    for (const std::string& type : types) {
        if (m_entries.emplace(type, Entry()).second)
            m_types.push_back(type);
    }
}

MemoryPasteboard::Entry* MemoryPasteboard::entryForType(std::string_view type)
{
    const auto found = m_entries.find(type);
    return found == m_entries.end() ? nullptr : &found->second;
}

bool MemoryPasteboard::setDataForType(Data data, std::string_view type)
{
    Entry* entry = entryForType(type);
    if (entry)
        *entry = {std::move(data), nullptr};
    return entry;
}

bool MemoryPasteboard::setProviderForType(std::function<Data()> provider, std::string_view type)
{
    Entry* entry = entryForType(type);
    if (entry)
        *entry = {std::nullopt, std::move(provider)};
    return entry;
}

std::optional<Pasteboard::Data> MemoryPasteboard::dataForType(std::string_view type)
{
    Entry* entry = entryForType(type);
    if (!entry)
        return std::nullopt;
    if (!entry->data && entry->provider)
        entry->data = std::exchange(entry->provider, nullptr)();
    return entry->data;
}

} // namespace TOLVGraphing
