#pragma once

#include "FuzzTarget.h"

#include <TOLVGraphing/data/TOLVGraphData.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/foundation/Exception.h>
#include <TOLVGraphing/platform/foundation/KeyedArchive.h>
#include <TOLVGraphing/platform/foundation/KeyedArchiver.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/platform/graphics/NullContext.h>

#include <TOLVMath/TOLVRealVector.h>

#include <desktop/archive/PropertyListArchive.h>

#include <algorithm>
#include <bit>
#include <initializer_list>
#include <map>
#include <memory>
#include <set>
#include <string_view>
#include <vector>

/// What has to hold for every archive that was read.
namespace TOLVGraphing::fuzzing {

/// Compares two archives value by value: what is shared in one has to be shared in the other, numbers are equal in all their bits.
class ArchiveComparison {
public:
    [[nodiscard]] bool areEqual(const ArchiveValue& a, const ArchiveValue& b)
    {
        if (a.index() != b.index())
            return false;
        if (const auto* number = std::get_if<double>(&a))
            return std::bit_cast<std::uint64_t>(*number) == std::bit_cast<std::uint64_t>(std::get<double>(b));
        if (const auto* object = std::get_if<std::shared_ptr<ArchiveObject>>(&a))
            return areEqual(**object, *std::get<std::shared_ptr<ArchiveObject>>(b));
        if (const auto* list = std::get_if<std::shared_ptr<ArchiveArray>>(&a))
            return areEqual(**list, *std::get<std::shared_ptr<ArchiveArray>>(b));
        return a == b;
    }

    [[nodiscard]] bool areEqual(const ArchiveObject& a, const ArchiveObject& b)
    {
        if (const auto [known, isNew] = m_partners.try_emplace(&a, &b); !isNew)
            return known->second == &b;
        return a.className == b.className && a.baseClassNames == b.baseClassNames
            && std::equal(a.values.begin(), a.values.end(), b.values.begin(), b.values.end(),
                [this](const auto& one, const auto& other) { return one.first == other.first && areEqual(one.second, other.second); });
    }

    [[nodiscard]] bool areEqual(const ArchiveArray& a, const ArchiveArray& b)
    {
        if (const auto [known, isNew] = m_partners.try_emplace(&a, &b); !isNew)
            return known->second == &b;
        return std::equal(a.elements.begin(), a.elements.end(), b.elements.begin(), b.elements.end(), [this](const auto& one, const auto& other) { return areEqual(one, other); });
    }

private:
    std::map<const void*, const void*> m_partners;
};

/// Whether a class among the objects is one that the reader makes something else of, so that such an object cannot be written as an object.
class SpecialClasses {
public:
    [[nodiscard]] bool areIn(const ArchiveValue& value)
    {
        if (const auto* object = std::get_if<std::shared_ptr<ArchiveObject>>(&value))
            return areIn(**object);
        const auto* list = std::get_if<std::shared_ptr<ArchiveArray>>(&value);
        return list && m_seen.insert(list->get()).second && std::any_of((*list)->elements.begin(), (*list)->elements.end(), [this](const auto& element) { return areIn(element); });
    }

    [[nodiscard]] bool areIn(const ArchiveObject& object)
    {
        if (!m_seen.insert(&object).second)
            return false;
        return object.className == "NSDictionary" || object.className == "NSArray"
            || std::any_of(object.values.begin(), object.values.end(), [this](const auto& entry) { return areIn(entry.second); });
    }

private:
    std::set<const void*> m_seen;
};

/// What was read can be written, and gives the same objects when it is read again.
inline void requireRoundTrip(const std::shared_ptr<ArchiveObject>& object)
{
    if (object && SpecialClasses().areIn(*object))
        return;
    const std::vector<std::byte> data = propertyListData(object);
    const std::shared_ptr<ArchiveObject> again = archiveObjectFromPropertyList(data);
    require((object == nullptr) == (again == nullptr), "nothing is read again as nothing");
    require(!object || ArchiveComparison().areEqual(*object, *again), "what was read is written and read again as the same objects");
    require(propertyListData(again) == data, "the same objects are written as the same bytes");
}

/// Whether an axis of the class can be drawn at that place: the others refuse it with an error of their own.
[[nodiscard]] inline bool isDrawable(const std::shared_ptr<TOLVAxis>& axis, std::initializer_list<std::string_view> classes)
{
    return !axis || std::find(classes.begin(), classes.end(), axis->archiveClassName()) != classes.end();
}

/// Draws a graph as an application would, with a series, into areas of several sizes.
inline void drawOnNothing(TOLVGraph& graph)
{
    const bool canBeDrawn = isDrawable(graph.horizontalAxis(), {"TOLVLinearAxis", "TOLVLogarithmicAxis", "TOLVDateAxis", "TOLVBarAxis", "TOLVLineAxis"})
        && isDrawable(graph.verticalAxis(), {"TOLVLinearAxis", "TOLVLogarithmicAxis", "TOLVDateAxis"});
    NullContext context;
    const CurrentContextScope scope(context);
    const auto x = TOLVRealVector::vectorWithComponents({-1.0F, 0.0F, 1.0F, 2.5F, 1000.0F});
    const auto y = TOLVRealVector::vectorWithComponents({0.5F, -3.0F, 1e-9F, 7.0F, 1e20F});
    const auto draw = [&](const Rect& rect) {
        try {
            graph.drawInRect(rect);
        } catch (const UnrecognizedOperation&) {
            require(!canBeDrawn, "only axes without a scale refuse to be drawn");
        }
    };
    draw(Rect(0.0, 0.0, 20.0, 10.0));
    graph.addGraphData(TOLVGraphData::graphDataWithX(x, y, Color::blackColor()));
    draw(Rect(0.0, 0.0, 400.0, 300.0));
    draw(Rect(5.0, 5.0, 0.0, 0.0));
}

/// Makes the archived object as an application does. Null when it is refused with a text, or when its values make none.
/// What is made is archived, made and archived once more, which has to give the same bytes, and a graph is drawn.
inline std::shared_ptr<Codable> madeAndMadeAgain(const std::shared_ptr<ArchiveObject>& object)
{
    std::shared_ptr<Codable> made;
    try {
        made = KeyedUnarchiver::unarchivedObject(object);
    } catch (const ArchiveError& error) {
        require(!std::string_view(error.what()).empty(), "a refusal says why");
        require(std::string_view(error.what()).size() < 10'000, "a refusal is short enough to be shown");
        return nullptr;
    }
    if (!made)
        return nullptr;
    const std::vector<std::byte> data = propertyListData(KeyedArchiver::archivedObject(*made));
    const std::shared_ptr<Codable> again = KeyedUnarchiver::unarchivedObject(archiveObjectFromPropertyList(data));
    require(again != nullptr && again->archiveClassName() == made->archiveClassName(), "what was made is made again from its archive");
    require(propertyListData(KeyedArchiver::archivedObject(*again)) == data, "what is made again is archived as the same bytes");
    if (const auto graph = std::dynamic_pointer_cast<TOLVGraph>(made))
        drawOnNothing(*graph);
    return made;
}

} // namespace TOLVGraphing::fuzzing
