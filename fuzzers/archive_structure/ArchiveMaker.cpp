#include "ArchiveMaker.h"

#include <algorithm>
#include <array>
#include <bit>

namespace TOLVGraphing::fuzzing {
namespace {

constexpr std::array kAxes = {"TOLVLinearAxis", "TOLVLogarithmicAxis", "TOLVBarAxis", "TOLVLineAxis", "TOLVAxis"};
constexpr std::array kClasses
    = {"TOLVGraph", "TOLVLinearAxis", "TOLVAxis", "TOLVGraphExtents", "TOLVAxisExtents", "TOLVMarker", "NSArray", "NSDictionary", "NSString", "NSData", "Unheard", ""};
constexpr std::array kKeys = {"horizontalAxis", "verticalAxis", "extents", "markers", "drawingStrategy", "x", "y", "z", "min", "max", "value", "axisIndex", "drawsMajorLines",
    "NS.objects", "NS.keys", "NS.string", "$class", "$$class", ""};
/// More than objects may stand inside one another.
constexpr std::size_t kDeepest = 300;
/// More than lists may be written in one another.
constexpr std::size_t kDeepestWritten = 70;
constexpr std::uint64_t kNothing = 0;

} // namespace

ArchiveMaker::Number ArchiveMaker::reserve()
{
    // Filled in later; until then, and where it is never filled in, the object is the first one, "$null".
    m_objects.push_back(m_objects.empty() ? m_builder.addText("$null") : m_objects.front());
    return m_objects.size() - 1;
}

ArchiveMaker::Number ArchiveMaker::addObject(Index value)
{
    const Number number = reserve();
    m_objects[number] = value;
    return number;
}

ArchiveMaker::Index ArchiveMaker::key(const std::string& text)
{
    const auto [known, isNew] = m_keys.try_emplace(text, 0);
    if (isNew)
        known->second = m_builder.addText(text);
    return known->second;
}

ArchiveMaker::Number ArchiveMaker::classNumber(const std::string& name, const std::vector<std::string>& chain)
{
    std::string whole = name;
    for (const std::string& one : chain)
        whole += "/" + one;
    if (const auto known = m_classes.find(whole); known != m_classes.end())
        return known->second;
    std::vector<Index> names;
    for (const std::string& one : chain)
        names.push_back(key(one));
    const Index all = m_builder.addArray(names);
    const Number number = addObject(m_builder.addDictionary({{key("$classname"), key(name)}, {key("$classes"), all}}));
    m_classes.emplace(whole, number);
    return number;
}

/// A class of a newer program, for which a class that is known stands in.
std::string ArchiveMaker::disguised(const std::string& className, std::vector<std::string>& chain)
{
    chain = {className, "NSObject"};
    if (m_input.below(8) != 7)
        return className;
    chain.insert(chain.begin(), "TOLVNewer");
    return "TOLVNewer";
}

ArchiveMaker::Number ArchiveMaker::finishObject(Number number, Entries entries, const std::string& className)
{
    std::vector<std::string> chain;
    const std::string name = disguised(className, chain);
    switch (m_input.below(32)) {
    case 31:
        m_isSound = false;
        entries.emplace_back(key("$class"), anyReference());
        break;
    case 30:
        m_isSound = false;
        entries.emplace_back(key("$class"), m_builder.addReference(classNumber(m_input.oneOf(kClasses), {m_input.oneOf(kClasses), m_input.oneOf(kClasses)})));
        break;
    case 29:
        m_isSound = false;
        entries.emplace_back(key(m_input.oneOf(kKeys)), anyValue());
        [[fallthrough]];
    default: entries.emplace_back(key("$class"), m_builder.addReference(classNumber(name, chain)));
    }
    m_objects[number] = m_builder.addDictionary(entries);
    return number;
}

void ArchiveMaker::put(Entries& entries, const std::string& keyText, const std::function<Index()>& proper)
{
    switch (m_input.below(32)) {
    case 31: m_isSound = false; return;
    case 30:
        m_isSound = false;
        entries.emplace_back(key(keyText), anyReference());
        return;
    case 29:
        m_isSound = false;
        entries.emplace_back(key(keyText), anyValue());
        return;
    default: entries.emplace_back(key(keyText), proper());
    }
}

ArchiveMaker::Index ArchiveMaker::anyReference()
{
    return m_builder.addReference(m_input.below(m_objects.size() + 2));
}

ArchiveMaker::Index ArchiveMaker::inlineOrObject(Index value)
{
    return m_input.yes() ? value : m_builder.addReference(addObject(value));
}

ArchiveMaker::Index ArchiveMaker::real(double value)
{
    std::vector<unsigned> bytes{0x23};
    const auto bits = std::bit_cast<std::uint64_t>(value);
    for (unsigned shift = 64; shift > 0; shift -= 8)
        bytes.push_back(static_cast<unsigned>(bits >> (shift - 8U) & 0xFFU));
    return m_builder.addRaw(bytes);
}

/// A number in one of the forms in which an archive can have one.
ArchiveMaker::Index ArchiveMaker::chosenNumber(double& value)
{
    if (m_input.below(4) != 3) {
        value = m_input.interestingDouble();
        return inlineOrObject(real(value));
    }
    const auto whole = m_input.number<std::int64_t>();
    value = static_cast<double>(whole);
    return inlineOrObject(m_builder.addNumber(static_cast<std::uint64_t>(whole)));
}

/// Lists inside lists: each an object of its own that is named twice, or each written out in the other one. Of the latter only some come twice, because each is written out again where it does.
ArchiveMaker::Index ArchiveMaker::deepLists()
{
    const std::size_t depth = m_input.below(kDeepest);
    const bool isWritten = m_input.yes();
    Index inner = m_builder.addReference(kNothing);
    if (isWritten) {
        for (std::size_t i = 0; i < std::min(depth, kDeepestWritten); ++i)
            inner = m_builder.addArray(i % 8 == 7 ? std::vector<Index>{inner, inner} : std::vector<Index>{inner});
        return inner;
    }
    for (std::size_t i = 0; i < depth; ++i) {
        const Index list = m_builder.addArray({inner, inner});
        const Index listClass = m_builder.addReference(classNumber("NSArray", {"NSArray"}));
        inner = m_builder.addReference(addObject(m_builder.addDictionary({{key("NS.objects"), list}, {key("$class"), listClass}})));
    }
    return inner;
}

ArchiveMaker::Index ArchiveMaker::anyValue()
{
    switch (m_input.below(14)) {
    case 0: return real(m_input.interestingDouble());
    case 1: return m_builder.addNumber(m_input.number<std::uint64_t>());
    case 2: return m_builder.addRaw({m_input.yes() ? 0x09U : 0x08U});
    case 3: return m_builder.addText(m_input.oneOf(kClasses));
    case 4: return deepLists();
    case 5: return m_builder.addDictionary({});
    case 6: return m_builder.addRaw({0x42, 0x00, 0xFF});
    case 7: return m_builder.addRaw({0x33, m_input.number<std::uint8_t>(), m_input.number<std::uint8_t>(), 0, 0, 0, 0, 0, 0});
    case 8: return m_builder.addReference(m_input.number<std::uint32_t>());
    case 9: return m_builder.addReference(makeMarker());
    case 10: return m_builder.addReference(finishObject(reserve(), {{key("NS.string"), m_input.yes() ? anyReference() : m_builder.addText("text")}}, "NSString"));
    case 11: {
        const Index keys = m_builder.addArray(std::vector<Index>(m_input.below(4), m_builder.addText("key")));
        const Index values = m_builder.addArray(std::vector<Index>(m_input.below(4), anyReference()));
        return m_builder.addReference(finishObject(reserve(), {{key("NS.keys"), keys}, {key("NS.objects"), values}}, "NSDictionary"));
    }
    case 12: {
        MadeRange range;
        return m_builder.addReference(makeRange(range));
    }
    default: return m_builder.addReference(makeExtents());
    }
}

ArchiveMaker::Number ArchiveMaker::makeRange(MadeRange& range)
{
    if (!m_ranges.empty() && m_input.below(4) == 3) {
        const auto& shared = m_ranges[m_input.below(m_ranges.size())];
        range = shared.second;
        return shared.first;
    }
    const Number number = reserve();
    Entries entries;
    put(entries, "min", [&] { return chosenNumber(range.min); });
    put(entries, "max", [&] { return chosenNumber(range.max); });
    finishObject(number, std::move(entries), "TOLVAxisExtents");
    m_ranges.emplace_back(number, range);
    return number;
}

ArchiveMaker::Number ArchiveMaker::makeExtents()
{
    const Number number = reserve();
    Entries entries;
    MadeRange depth;
    m_graph.x.emplace();
    m_graph.y.emplace();
    put(entries, "x", [&] { return m_builder.addReference(makeRange(*m_graph.x)); });
    put(entries, "y", [&] { return m_builder.addReference(makeRange(*m_graph.y)); });
    if (m_input.yes())
        put(entries, "z", [&] { return m_builder.addReference(makeRange(depth)); });
    return finishObject(number, std::move(entries), "TOLVGraphExtents");
}

ArchiveMaker::Number ArchiveMaker::makeAxis(std::string& className)
{
    className = m_input.oneOf(kAxes);
    const Number number = reserve();
    Entries entries;
    for (const char* flag : {"drawsMajorLines", "drawsMinorLines"})
        put(entries, flag, [&] { return inlineOrObject(m_builder.addRaw({m_input.yes() ? 0x09U : 0x08U})); });
    return finishObject(number, std::move(entries), className);
}

ArchiveMaker::Number ArchiveMaker::makeMarker()
{
    const Number number = reserve();
    Entries entries;
    std::optional<MadeMarker> marker;
    // One without a value is left out when it is read.
    if (m_input.below(8) != 7) {
        marker.emplace();
        put(entries, "value", [&] { return chosenNumber(marker->value); });
        marker->axisIndex = m_input.yes() ? m_input.number<std::int64_t>() : static_cast<std::int64_t>(m_input.below(3));
        put(entries, "axisIndex", [&] { return inlineOrObject(m_builder.addNumber(static_cast<std::uint64_t>(marker->axisIndex))); });
    }
    finishObject(number, std::move(entries), "TOLVMarker");
    m_markers.emplace_back(number, marker);
    return number;
}

ArchiveMaker::Index ArchiveMaker::makeMarkers()
{
    const std::size_t count = m_input.below(m_input.below(16) == 15 ? 300 : 6);
    std::vector<Index> elements;
    for (std::size_t i = 0; i < count; ++i) {
        const bool isShared = !m_markers.empty() && (m_input.isEmpty() || m_input.below(4) == 3);
        const std::size_t place = isShared ? m_input.below(m_markers.size()) : m_markers.size();
        if (!isShared)
            makeMarker();
        elements.push_back(m_builder.addReference(m_markers[place].first));
        if (m_markers[place].second)
            m_graph.markers.push_back(*m_markers[place].second);
    }
    const Index list = m_builder.addArray(elements);
    if (m_input.yes())
        return list;
    const Number number = reserve();
    return m_builder.addReference(finishObject(number, {{key("NS.objects"), list}}, "NSArray"));
}

ArchiveMaker::Number ArchiveMaker::makeGraph()
{
    const Number number = reserve();
    Entries entries;
    put(entries, "horizontalAxis", [this] { return m_builder.addReference(makeAxis(m_graph.horizontalAxis)); });
    put(entries, "verticalAxis", [this] { return m_builder.addReference(makeAxis(m_graph.verticalAxis)); });
    put(entries, "extents", [this] { return m_builder.addReference(makeExtents()); });
    put(entries, "markers", [this] { return makeMarkers(); });
    return finishObject(number, std::move(entries), "TOLVGraph");
}

std::vector<std::byte> ArchiveMaker::make()
{
    static_cast<void>(reserve());
    Number root = makeGraph();
    if (m_input.below(16) == 15) {
        m_isSound = false;
        root = m_input.below(m_objects.size() + 1);
    }
    return m_builder.finishArchive(m_objects, m_builder.addReference(root));
}

} // namespace TOLVGraphing::fuzzing
