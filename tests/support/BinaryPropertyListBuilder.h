#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing::testing_support {

/// Puts binary property lists together value by value, wrong ones too: offsets have 8 bytes, references 4.
class BinaryPropertyListBuilder {
public:
    using Bytes = std::vector<std::byte>;
    /// The number of a value.
    using Index = std::uint64_t;

    BinaryPropertyListBuilder() { appendText("bplist00"); }

    /// Values may be referred to before they are added: they are numbered in order.
    Index addRaw(const std::vector<unsigned>& bytes)
    {
        m_offsets.push_back(m_bytes.size());
        for (const unsigned byte : bytes)
            m_bytes.push_back(static_cast<std::byte>(byte));
        return m_offsets.size() - 1;
    }
    /// A value that lies where another one does.
    Index addAlias(Index other)
    {
        m_offsets.push_back(m_offsets[other]);
        return m_offsets.size() - 1;
    }
    Index addText(const std::string& text)
    {
        addHeader(0x50, text.size());
        appendText(text);
        return m_offsets.size() - 1;
    }
    Index addNumber(std::uint64_t number)
    {
        addRaw({0x13});
        appendNumber(number, 8);
        return m_offsets.size() - 1;
    }
    Index addReference(std::uint64_t number)
    {
        addRaw({0x83});
        appendNumber(number, 4);
        return m_offsets.size() - 1;
    }
    Index addArray(const std::vector<Index>& elements)
    {
        addHeader(0xA0, elements.size());
        for (const Index element : elements)
            appendNumber(element, 4);
        return m_offsets.size() - 1;
    }
    Index addDictionary(const std::vector<std::pair<Index, Index>>& entries)
    {
        addHeader(0xD0, entries.size());
        for (const auto& entry : entries)
            appendNumber(entry.first, 4);
        for (const auto& entry : entries)
            appendNumber(entry.second, 4);
        return m_offsets.size() - 1;
    }
    [[nodiscard]] Index next() const { return m_offsets.size(); }

    [[nodiscard]] Bytes finish(Index top)
    {
        const std::uint64_t table = m_bytes.size();
        for (const std::uint64_t offset : m_offsets)
            appendNumber(offset, 8);
        appendNumber(0, 6);
        appendNumber(8, 1);
        appendNumber(4, 1);
        appendNumber(m_offsets.size(), 8);
        appendNumber(top, 8);
        appendNumber(table, 8);
        return m_bytes;
    }

    /// A whole keyed archive around the list of objects.
    [[nodiscard]] Bytes finishArchive(const std::vector<Index>& objects, Index root)
    {
        const Index top = addDictionary({{addText("root"), root}});
        const Index all = addArray(objects);
        const Index keys[] = {addText("$archiver"), addText("$version"), addText("$top"), addText("$objects")};
        const Index name = addText("NSKeyedArchiver");
        const Index version = addNumber(100000);
        return finish(addDictionary({{keys[0], name}, {keys[1], version}, {keys[2], top}, {keys[3], all}}));
    }

private:
    void addHeader(unsigned kind, std::uint64_t count)
    {
        addRaw({kind | 0xFU, 0x13});
        appendNumber(count, 8);
    }
    void appendText(const std::string& text)
    {
        for (const char character : text)
            m_bytes.push_back(static_cast<std::byte>(character));
    }
    void appendNumber(std::uint64_t number, unsigned size)
    {
        for (unsigned i = size; i > 0; --i)
            m_bytes.push_back(static_cast<std::byte>(number >> (8U * (i - 1)) & 0xFFU));
    }

    Bytes m_bytes;
    std::vector<std::uint64_t> m_offsets;
};

} // namespace TOLVGraphing::testing_support
