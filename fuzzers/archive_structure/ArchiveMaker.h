#pragma once

#include "../support/InputReader.h"

#include <tests/support/BinaryPropertyListBuilder.h>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing::fuzzing {

struct MadeRange {
    double min = 0.0;
    double max = 0.0;
};

struct MadeMarker {
    double value = 0.0;
    std::int64_t axisIndex = 0;
};

/// What a graph that is read from the archive has to hold.
struct MadeGraph {
    std::vector<MadeMarker> markers;
    std::optional<MadeRange> x;
    std::optional<MadeRange> y;
    std::string horizontalAxis;
    std::string verticalAxis;
};

/// Makes the archive of a graph as the bytes of an input say: mostly as it should be, with numbers inline or as objects and parts that are shared, and now and then with missing or
/// odd values, references to anything, circles, deep lists and classes that are not known. Without bytes it is as it should be.
class ArchiveMaker {
public:
    explicit ArchiveMaker(InputReader input) : m_input(input) {}

    /// Once.
    [[nodiscard]] std::vector<std::byte> make();

    /// Nothing was chosen for which an archive may be refused or read as something else.
    [[nodiscard]] bool isSound() const { return m_isSound; }
    [[nodiscard]] const MadeGraph& graph() const { return m_graph; }

private:
    using Index = testing_support::BinaryPropertyListBuilder::Index;
    using Entries = std::vector<std::pair<Index, Index>>;
    /// Of an object in the archive's list.
    using Number = std::uint64_t;

    Number reserve();
    Number addObject(Index value);
    Number finishObject(Number number, Entries entries, const std::string& className);
    Number classNumber(const std::string& name, const std::vector<std::string>& chain);
    std::string disguised(const std::string& className, std::vector<std::string>& chain);
    Index key(const std::string& text);
    /// Puts what belongs there, or something else, under the key.
    void put(Entries& entries, const std::string& keyText, const std::function<Index()>& proper);
    Index inlineOrObject(Index value);
    Index real(double value);
    Index chosenNumber(double& value);
    Index anyValue();
    Index deepLists();
    Index anyReference();

    Number makeGraph();
    Number makeAxis(std::string& className);
    Number makeExtents();
    Number makeRange(MadeRange& range);
    Number makeMarker();
    Index makeMarkers();

    InputReader m_input;
    testing_support::BinaryPropertyListBuilder m_builder;
    std::vector<Index> m_objects;
    std::map<std::string, Index> m_keys;
    std::map<std::string, Number> m_classes;
    std::vector<std::pair<Number, MadeRange>> m_ranges;
    std::vector<std::pair<Number, std::optional<MadeMarker>>> m_markers;
    MadeGraph m_graph;
    bool m_isSound = true;
};

} // namespace TOLVGraphing::fuzzing
