#include "BinaryPropertyListReader.h"
#include "PropertyListArchive.h"
#include "tests/support/BinaryPropertyListBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::BinaryPropertyListBuilder;
using Bytes = BinaryPropertyListBuilder::Bytes;
using Index = BinaryPropertyListBuilder::Index;

std::string errorOf(const Bytes& data, const ArchiveLimits& limits = {})
{
    try {
        [[maybe_unused]] const auto object = archiveObjectFromPropertyList(data, limits);
        return "no error";
    } catch (const ArchiveError& error) {
        return error.what();
    }
}

/// A single value, 0, as a whole property list.
Bytes single(const std::vector<unsigned>& bytes)
{
    BinaryPropertyListBuilder builder;
    builder.addRaw(bytes);
    return builder.finish(0);
}

constexpr const char* kNotAnArchive = "keyed archive: found";

TEST(HostileArchive, TrailersAreChecked)
{
    const Bytes sound = single({0x09});
    ASSERT_EQ(errorOf(sound).find(kNotAnArchive), 0U) << errorOf(sound);
    const std::size_t trailer = sound.size() - 32;
    const struct {
        std::size_t offset;
        unsigned value;
        const char* expected;
    } cases[] = {
        {6, 0, "binary property list: found offsets of 0 and references of 4 bytes in the trailer, expected 1 to 8"},
        {6, 9, "binary property list: found offsets of 9 and references of 4 bytes in the trailer, expected 1 to 8"},
        {7, 0, "binary property list: found offsets of 8 and references of 0 bytes in the trailer, expected 1 to 8"},
        {7, 255, "binary property list: found offsets of 8 and references of 255 bytes in the trailer, expected 1 to 8"},
        {15, 0, "binary property list: found no values, expected at least one"},
        {15, 2, "binary property list: found the table of 2 offsets at 9, expected it inside the 49 bytes of the file"},
        {8, 255, "binary property list: found 18374686479671623681 values, expected at most 1000000"},
        {23, 1, "binary property list: found value 1 as the outermost one, expected one of 1"},
        {31, 7, "binary property list: found the table of 1 offsets at 7, expected it inside the 49 bytes of the file"},
        {31, 18, "binary property list: found the table of 1 offsets at 18, expected it inside the 49 bytes of the file"},
        {24, 255, "binary property list: found the table of 1 offsets at 18374686479671623689, expected it inside the 49 bytes of the file"},
    };
    for (const auto& one : cases) {
        Bytes data = sound;
        data[trailer + one.offset] = static_cast<std::byte>(one.value);
        EXPECT_EQ(errorOf(data), one.expected);
    }
    for (std::size_t length = 0; length < sound.size(); ++length)
        EXPECT_NE(errorOf(Bytes(sound.begin(), sound.begin() + static_cast<std::ptrdiff_t>(length))), "no error") << length;
}

TEST(HostileArchive, ValuesAreChecked)
{
    const struct {
        std::vector<unsigned> bytes;
        const char* expected;
    } cases[] = {
        {{0x00}, "found marker 0, expected a boolean, number, date, text, list, dictionary, reference or bytes"},
        {{0x0F}, "found marker 15, expected a boolean, number, date, text, list, dictionary, reference or bytes"},
        {{0x15}, "found marker 21, expected a boolean, number, date, text, list, dictionary, reference or bytes"},
        {{0x21, 0, 0}, "found marker 33, expected a boolean, number, date, text, list, dictionary, reference or bytes"},
        {{0x32, 0, 0, 0, 0}, "found marker 50, expected a boolean, number, date, text, list, dictionary, reference or bytes"},
        {{0x71, 'a'}, "found marker 113, expected a boolean, number, date, text, list, dictionary, reference or bytes"},
        {{0x88}, "found marker 136, expected a boolean, number, date, text, list, dictionary, reference or bytes"},
        {{0xC0}, "found marker 192, expected a boolean, number, date, text, list, dictionary, reference or bytes"},
        {{0x13, 0}, "found 1 elements of 8 bytes at 9, expected them to end before 10"},
        {{0x23}, "found 1 elements of 8 bytes at 9, expected them to end before 9"},
        {{0x33, 0}, "found 1 elements of 8 bytes at 9, expected them to end before 10"},
        {{0x87, 0}, "found 1 elements of 8 bytes at 9, expected them to end before 10"},
        {{0x42, 0}, "found 2 elements of 1 bytes at 9, expected them to end before 10"},
        {{0x52, 'a'}, "found 2 elements of 1 bytes at 9, expected them to end before 10"},
        {{0x61, 0}, "found 1 elements of 2 bytes at 9, expected them to end before 10"},
        {{0xA1, 0}, "found 1 elements of 4 bytes at 9, expected them to end before 10"},
        {{0xD1, 0, 0, 0, 0}, "found 1 elements of 8 bytes at 9, expected them to end before 13"},
        {{0x5F}, "found 1 elements of 1 bytes at 9, expected them to end before 9"},
        {{0x5F, 0x23}, "found marker 35 for the count, expected a whole number of 1 to 8 bytes"},
        {{0x5F, 0x14}, "found marker 20 for the count, expected a whole number of 1 to 8 bytes"},
        {{0x5F, 0x13, 0}, "found 1 elements of 8 bytes at 10, expected them to end before 11"},
        {{0x6F, 0x13, 0x80, 0, 0, 0, 0, 0, 0, 0}, "found 9223372036854775808 elements of 2 bytes at 18, expected them to end before 18"},
        {{0xAF, 0x13, 0x40, 0, 0, 0, 0, 0, 0, 0}, "found 4611686018427387904 elements of 4 bytes at 18, expected them to end before 18"},
        {{0xDF, 0x13, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}, "found 18446744073709551615 elements of 8 bytes at 18, expected them to end before 18"},
        {{0x51, 0xE9}, "found a text with a zero character or one that is not ASCII in a text of that kind"},
        {{0x51, 0x00}, "found a text with a zero character or one that is not ASCII in a text of that kind"},
        {{0x61, 0x00, 0x00}, "found a zero character in a text, expected none"},
        {{0x61, 0xD8, 0x00}, "found half of a surrogate pair in a text, expected both"},
        {{0x62, 0xD8, 0x00, 0x00, 0x41}, "found half of a surrogate pair in a text, expected both"},
        {{0x62, 0xDC, 0x00, 0xD8, 0x00}, "found half of a surrogate pair in a text, expected both"},
        {{0x14, 0, 0, 0, 0, 0, 0, 0, 0, 0x80, 0, 0, 0, 0, 0, 0, 0}, "found a whole number beyond 64 bits with sign, expected a smaller one"},
        {{0x14, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0}, "found a whole number beyond 64 bits with sign, expected a smaller one"},
        {{0x84, 1, 0, 0, 0, 0}, "found a reference to object 4294967296, expected a number of 32 bits"},
        {{0xA1, 0, 0, 0, 0}, "found value 0 inside itself, expected no circle"},
        {{0xA1, 0, 0, 0, 9}, "found a reference to value 9, expected one of 1"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(errorOf(single(one.bytes)), "binary property list: value 0: " + std::string(one.expected));
}

TEST(HostileArchive, OffsetsAreChecked)
{
    for (const std::uint64_t offset : {std::uint64_t{0}, std::uint64_t{7}, std::uint64_t{9}, ~std::uint64_t{0}}) {
        Bytes data = single({0x09});
        for (unsigned i = 0; i < 8; ++i)
            data[9 + i] = static_cast<std::byte>(offset >> (8U * (7U - i)) & 0xFFU);
        EXPECT_EQ(errorOf(data), "binary property list: value 0: found it at offset " + std::to_string(offset) + ", expected one between 8 and 9");
    }
}

TEST(HostileArchive, KeysHaveToBeTexts)
{
    for (const std::vector<unsigned>& key : {std::vector<unsigned>{0x10, 0x41}, {0xA0}, {0xD0}, {0x09}, {0x80, 0x00}, {0x41, 0x41}}) {
        BinaryPropertyListBuilder builder;
        builder.addRaw(key);
        EXPECT_EQ(errorOf(builder.finish(builder.addDictionary({{0, 0}}))), "binary property list: value 1: found a key that is not a text, expected a text");
    }
}

TEST(HostileArchive, SmallNumbersAndSinglePrecisionAreRead)
{
    BinaryPropertyListBuilder builder;
    const Index null = builder.addText("$null");
    const Index className = builder.addText("A");
    const Index classDictionary = builder.addDictionary({{builder.addText("$classname"), className}, {builder.addText("$classes"), builder.addArray({className})}});
    const Index classKey = builder.addText("$class");
    const Index half = builder.addRaw({0x22, 0x3F, 0x00, 0x00, 0x00});
    const Index byte = builder.addRaw({0x10, 0xFF});
    const Index minusTwo = builder.addRaw({0x14, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE});
    const Index wide = builder.addRaw({0x62, 0xD8, 0x3D, 0xDE, 0x00});
    const Index date = builder.addRaw({0x33, 0x40, 0x59, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00});
    const Index farDate = builder.addRaw({0x33, 0x7E, 0x37, 0xE4, 0x3C, 0x88, 0x00, 0x75, 0x9C});
    const Index object = builder.addDictionary({{builder.addText("half"), half}, {builder.addText("byte"), byte}, {builder.addText("minusTwo"), minusTwo},
        {builder.addText("wide"), wide}, {builder.addText("date"), date}, {builder.addText("farDate"), farDate}, {classKey, builder.addReference(2)}});
    const auto read = archiveObjectFromPropertyList(builder.finishArchive({null, object, classDictionary}, builder.addReference(1)));
    ASSERT_TRUE(read);
    EXPECT_EQ(*read->find("half"), ArchiveValue(0.5));
    EXPECT_EQ(*read->find("byte"), ArchiveValue(std::int64_t{255}));
    EXPECT_EQ(*read->find("minusTwo"), ArchiveValue(std::int64_t{-2}));
    EXPECT_EQ(*read->find("wide"), ArchiveValue(std::string("😀")));
    EXPECT_EQ(*std::get<std::shared_ptr<ArchiveObject>>(*read->find("date"))->find("NS.time"), ArchiveValue(100.0));
    EXPECT_EQ(*std::get<std::shared_ptr<ArchiveObject>>(*read->find("farDate"))->find("NS.time"), ArchiveValue(1e300));
}

TEST(HostileArchive, NestingIsBounded)
{
    for (const int depth : {63, 64, 1000, 100000}) {
        BinaryPropertyListBuilder builder;
        for (int i = 0; i < depth; ++i)
            builder.addArray({static_cast<Index>(i) + 1});
        builder.addRaw({0x09});
        const std::string error = errorOf(builder.finish(0));
        if (depth < 64)
            EXPECT_EQ(error.find(kNotAnArchive), 0U) << error;
        else
            EXPECT_EQ(error, "binary property list: value 64: found more than 64 lists and dictionaries inside one another, expected fewer");
    }
}

TEST(HostileArchive, NestingIsBoundedFromTheInsideToo)
{
    // The outermost array names its parts from the innermost on, so that none looks deep when it is visited.
    BinaryPropertyListBuilder builder;
    std::vector<Index> all{builder.addRaw({0x09})};
    for (int i = 0; i < 1000; ++i)
        all.push_back(builder.addArray({all.back()}));
    EXPECT_NE(errorOf(builder.finish(builder.addArray(all))).find("found more than 64 lists and dictionaries inside one another"), std::string::npos);
}

TEST(HostileArchive, SharingIsNotUndoneWithoutEnd)
{
    for (const int levels : {20, 60}) {
        BinaryPropertyListBuilder builder;
        Index inner = builder.addRaw({0x09});
        for (int i = 0; i < levels; ++i)
            inner = builder.addArray(std::vector<Index>(10, inner));
        EXPECT_NE(errorOf(builder.finish(inner)).find("found more than 1000000 values in it, shared ones repeated, expected fewer"), std::string::npos);
    }
    // However large the limits are, the count does not wrap around.
    BinaryPropertyListBuilder builder;
    Index inner = builder.addRaw({0x09});
    for (int i = 0; i < 63; ++i)
        inner = builder.addArray(std::vector<Index>(10, inner));
    const Bytes data = builder.finish(inner);
    try {
        static_cast<void>(plist::readBinaryPropertyList(data, {~std::size_t{0}, ~std::size_t{0}, ~std::size_t{0}}));
        ADD_FAILURE();
    } catch (const ArchiveError& error) {
        EXPECT_NE(std::string(error.what()).find("shared ones repeated"), std::string::npos);
    }
}

TEST(HostileArchive, SharedTextsCountWhereverTheyAreUsed)
{
    BinaryPropertyListBuilder builder;
    const Index text = builder.addText(std::string(1'000'000, 'x'));
    EXPECT_NE(errorOf(builder.finish(builder.addArray(std::vector<Index>(100, text)))).find("found more than 67108864 bytes in it, shared values repeated, expected fewer"),
        std::string::npos);
}

TEST(HostileArchive, ValuesThatLieOverOneAnotherCountEach)
{
    BinaryPropertyListBuilder builder;
    const Index leaf = builder.addRaw({0x09});
    const Index wide = builder.addArray(std::vector<Index>(10000, leaf));
    std::vector<Index> aliases{wide};
    for (int i = 0; i < 20000; ++i)
        aliases.push_back(builder.addAlias(wide));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_NE(errorOf(builder.finish(builder.addArray(aliases))).find("found more than 1000000 values"), std::string::npos);

    BinaryPropertyListBuilder texts;
    const Index text = texts.addText(std::string(1'000'000, 'x'));
    std::vector<Index> copies{text};
    for (int i = 0; i < 20000; ++i)
        copies.push_back(texts.addAlias(text));
    EXPECT_NE(errorOf(texts.finish(texts.addArray(copies))).find("found values of more than 67108864 bytes"), std::string::npos);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST(HostileArchive, LimitsAreTheCallers)
{
    BinaryPropertyListBuilder builder;
    std::vector<Index> elements;
    for (int i = 0; i < 50; ++i)
        elements.push_back(builder.addRaw({0x09}));
    const Bytes data = builder.finish(builder.addArray(elements));
    EXPECT_EQ(errorOf(data, {data.size(), 51, 10}).find(kNotAnArchive), 0U);
    EXPECT_EQ(errorOf(data, {data.size(), 50, 10}), "binary property list: found 51 values, expected at most 50");
    EXPECT_EQ(
        errorOf(data, {data.size() - 1, 51, 10}), "binary property list: found " + std::to_string(data.size()) + " bytes, expected at most " + std::to_string(data.size() - 1));
}

/// Keyed archives of lists: object n of the list names the objects given for it.
Bytes archiveOfLists(const std::vector<std::vector<std::uint64_t>>& lists, std::uint64_t root)
{
    BinaryPropertyListBuilder builder;
    const Index listName = builder.addText("NSArray");
    const Index listClass = builder.addDictionary({{builder.addText("$classname"), listName}, {builder.addText("$classes"), builder.addArray({listName})}});
    const Index elementsKey = builder.addText("NS.objects");
    const Index classKey = builder.addText("$class");
    const Index classReference = builder.addReference(lists.size() + 1);
    std::vector<Index> objects{builder.addText("$null")};
    for (const auto& list : lists) {
        std::vector<Index> references;
        for (const std::uint64_t number : list)
            references.push_back(builder.addReference(number));
        const Index elements = builder.addArray(references);
        objects.push_back(builder.addDictionary({{elementsKey, elements}, {classKey, classReference}}));
    }
    objects.push_back(listClass);
    return builder.finishArchive(objects, builder.addReference(root));
}

TEST(HostileArchive, ChainsOfReferencesAreBounded)
{
    for (const std::uint64_t count : {255, 256, 257, 20000}) {
        std::vector<std::vector<std::uint64_t>> lists;
        for (std::uint64_t i = 1; i < count; ++i)
            lists.push_back({i + 1});
        lists.push_back({});
        const std::string expected = count <= 256 ? "no error" : "keyed archive, object 257: found more than 256 objects and lists inside one another, expected fewer";
        EXPECT_EQ(errorOf(archiveOfLists(lists, 1)), expected) << count;
    }
}

TEST(HostileArchive, ChainsAreBoundedFromTheInsideToo)
{
    std::vector<std::vector<std::uint64_t>> lists{{}};
    std::vector<std::uint64_t> all{1};
    for (std::uint64_t i = 2; i <= 20000; ++i) {
        lists.push_back({i - 1});
        all.push_back(i);
    }
    lists.push_back(all);
    EXPECT_NE(errorOf(archiveOfLists(lists, lists.size())).find("found more than 256 objects and lists inside one another, expected fewer"), std::string::npos);
}

TEST(HostileArchive, NoLimitGoesBeyondTheGreatestDepth)
{
    std::vector<std::vector<std::uint64_t>> lists;
    for (std::uint64_t i = 1; i < 20000; ++i)
        lists.push_back({i + 1});
    lists.push_back({});
    const ArchiveLimits generous{std::size_t{1} << 30U, 1'000'000, 1'000'000};
    EXPECT_EQ(errorOf(archiveOfLists(lists, 1), generous), "keyed archive, object 257: found more than 256 objects and lists inside one another, expected fewer");
    const ArchiveLimits strict{std::size_t{1} << 30U, 1'000'000, 5};
    EXPECT_EQ(errorOf(archiveOfLists(lists, 1), strict), "keyed archive, object 6: found more than 5 objects and lists inside one another, expected fewer");
    EXPECT_EQ(errorOf(archiveOfLists({{2}, {3}, {4}, {5}, {}}, 1), strict), "no error");
}

TEST(HostileArchive, SharedListsStayShared)
{
    // 200 levels of ten references each to the next: 10^200 lists if sharing were undone.
    std::vector<std::vector<std::uint64_t>> lists;
    for (std::uint64_t i = 1; i < 200; ++i)
        lists.push_back(std::vector<std::uint64_t>(10, i + 1));
    lists.push_back({});
    const auto read = archiveObjectFromPropertyList(archiveOfLists(lists, 1));
    ASSERT_TRUE(read);
    auto list = std::get<std::shared_ptr<ArchiveArray>>(*read->find("NS.objects"));
    for (int level = 1; level < 200; ++level) {
        ASSERT_EQ(list->elements.size(), 10U);
        for (const ArchiveValue& element : list->elements)
            ASSERT_EQ(element, list->elements.front());
        auto inner = std::get<std::shared_ptr<ArchiveArray>>(list->elements.front());
        list = inner;
    }
    EXPECT_TRUE(list->elements.empty());
}

TEST(HostileArchive, CirclesOfReferencesAreErrors)
{
    EXPECT_EQ(errorOf(archiveOfLists({{1}}, 1)), "keyed archive, object 1: found object 1 inside itself, expected no circle");
    EXPECT_EQ(errorOf(archiveOfLists({{2}, {3}, {2}}, 1)), "keyed archive, object 3: found object 2 inside itself, expected no circle");
}

TEST(HostileArchive, SharedTextsBehindReferencesCountWhereverTheyAreUsed)
{
    BinaryPropertyListBuilder builder;
    const Index listName = builder.addText("NSArray");
    const Index listClass = builder.addDictionary({{builder.addText("$classname"), listName}, {builder.addText("$classes"), builder.addArray({listName})}});
    const Index text = builder.addText(std::string(1'000'000, 'x'));
    const Index elements = builder.addArray(std::vector<Index>(100, builder.addReference(2)));
    const Index list = builder.addDictionary({{builder.addText("NS.objects"), elements}, {builder.addText("$class"), builder.addReference(3)}});
    const Bytes data = builder.finishArchive({builder.addText("$null"), list, text, listClass}, builder.addReference(1));
    EXPECT_EQ(errorOf(data), "keyed archive, object 1: found more than 67108864 bytes of text, expected fewer");
}

TEST(HostileArchive, LongChainsOfBaseClassesCountForEveryObject)
{
    BinaryPropertyListBuilder builder;
    const Index name = builder.addText("A");
    const Index classDictionary = builder.addDictionary({{builder.addText("$classname"), name}, {builder.addText("$classes"), builder.addArray(std::vector<Index>(20000, name))}});
    const Index classKey = builder.addText("$class");
    const Index partKey = builder.addText("p");
    const Index classReference = builder.addReference(1);
    std::vector<Index> objects{builder.addText("$null"), classDictionary};
    // Two chains of a hundred objects under one root keep within the depth; each object repeats the twenty thousand names.
    for (std::uint64_t i = 2; i < 202; ++i)
        objects.push_back(builder.addDictionary({{partKey, builder.addReference(i == 201 ? 0 : i + 1)}, {classKey, classReference}}));
    EXPECT_NE(errorOf(builder.finishArchive(objects, builder.addReference(2))).find("found more than 1000000 values, expected fewer"), std::string::npos);
}

/// An archive of a list of so many objects of the class, each with true under the keys.
Bytes archiveOfObjects(const std::string& className, std::size_t count, const std::vector<std::string>& keys)
{
    BinaryPropertyListBuilder builder;
    const Index name = builder.addText(className);
    const Index classDictionary = builder.addDictionary({{builder.addText("$classname"), name}, {builder.addText("$classes"), builder.addArray({name})}});
    const Index listName = builder.addText("NSArray");
    const Index listClass = builder.addDictionary({{builder.addText("$classname"), listName}, {builder.addText("$classes"), builder.addArray({listName})}});
    const Index classKey = builder.addText("$class");
    std::vector<std::pair<Index, Index>> entries{{classKey, builder.addReference(1)}};
    for (const std::string& key : keys)
        entries.emplace_back(builder.addText(key), builder.addRaw({0x09}));
    const Index object = builder.addDictionary(entries);
    std::vector<Index> objects{builder.addText("$null"), classDictionary, listClass};
    std::vector<Index> elements;
    for (std::size_t i = 0; i < count; ++i) {
        elements.push_back(builder.addReference(objects.size()));
        objects.push_back(object);
    }
    const Index list = builder.addArray(elements);
    objects.push_back(builder.addDictionary({{builder.addText("NS.objects"), list}, {classKey, builder.addReference(2)}}));
    return builder.finishArchive(objects, builder.addReference(objects.size() - 1));
}

TEST(HostileArchive, NamesOfClassesCountForEveryObject)
{
    const ArchiveLimits limits{100'000, 1'000'000, 256};
    EXPECT_EQ(errorOf(archiveOfObjects(std::string(1000, 'A'), 90, {}), limits), "no error");
    EXPECT_EQ(errorOf(archiveOfObjects(std::string(1000, 'A'), 101, {}), limits), "keyed archive, object 103: found more than 100000 bytes of text, expected fewer");
}

TEST(HostileArchive, NamesOfClassesAreNotLong)
{
    EXPECT_EQ(errorOf(archiveOfObjects(std::string(1024, 'A'), 1, {})), "no error");
    EXPECT_EQ(errorOf(archiveOfObjects(std::string(1025, 'A'), 1, {})), "keyed archive, object 3: found the name of a class with 1025 bytes, expected at most 1024");
}

TEST(HostileArchive, KeysComeOnce)
{
    EXPECT_EQ(errorOf(archiveOfObjects("A", 1, {"a", "b"})), "no error");
    EXPECT_EQ(errorOf(archiveOfObjects("A", 1, {"a", "b", "a"})), "keyed archive, object 3: found the key \"a\" twice in one dictionary, expected it once");
    // The second is stored with another "$" before it.
    EXPECT_EQ(errorOf(archiveOfObjects("A", 1, {"$a", "$$a"})), "keyed archive, object 3: found the key \"$a\" twice in one dictionary, expected it once");
    EXPECT_EQ(errorOf(archiveOfObjects("A", 1, {"$class"})), "keyed archive, object 3: found the key \"$class\" twice in one dictionary, expected it once");
}

/// An archive with every kind of value, as a graph's document has them.
Bytes richArchive()
{
    const auto object = [](std::string className, std::vector<std::pair<std::string, ArchiveValue>> values) {
        auto made = std::make_shared<ArchiveObject>();
        made->className = std::move(className);
        made->baseClassNames = {"Base"};
        made->values = std::move(values);
        return made;
    };
    const auto shared = object("Extents", {{"min", -1.25}, {"max", 1e300}});
    auto list = std::make_shared<ArchiveArray>();
    list->elements = {shared, object("Marker", {{"value", 0.1}, {"axisIndex", std::int64_t{-7}}}), std::string("é😀"), std::string("plain text"), true, std::monostate()};
    return propertyListData(object("Graph", {{"x", shared}, {"y", shared}, {"list", list}, {"again", list}, {"number", std::int64_t{1} << 40U}}));
}

Bytes xmlArchive()
{
    const std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist "
                             "version=\"1.0\"><dict><key>$version</key><integer>100000</integer><key>$archiver</key><string>NSKeyedArchiver</string>"
                             "<key>$top</key><dict><key>root</key><dict><key>CF$UID</key><integer>1</integer></dict></dict><key>$objects</key><array><string>$null</string>"
                             "<dict><key>a</key><real>-0.5</real><key>b</key><string>&lt;&#233;<![CDATA[x]]></string><key>c</key><dict><key>CF$UID</key><integer>3</integer></dict>"
                             "<key>d</key><data>AQID</data><key>e</key><date>2013-03-18T09:30:05Z</date><key>f</key><array><true/><false/></array>"
                             "<key>$class</key><dict><key>CF$UID</key><integer>2</integer></dict></dict>"
                             "<dict><key>$classname</key><string>A</string><key>$classes</key><array><string>A</string></array></dict><integer>5</integer></array></dict></plist>";
    const auto bytes = std::as_bytes(std::span(text.data(), text.size()));
    return {bytes.begin(), bytes.end()};
}

/// One to four changes, most of them of single bytes in place, since a cut or an insertion rarely gets past the first checks.
Bytes mutated(Bytes data, std::mt19937_64& random)
{
    const auto below = [&](std::size_t count) { return static_cast<std::size_t>(random() % count); };
    for (std::size_t changes = 1 + below(4); changes > 0 && !data.empty(); --changes) {
        const std::size_t at = below(data.size());
        const auto place = data.begin() + static_cast<std::ptrdiff_t>(at);
        const std::size_t kind = below(16);
        if (kind < 5) {
            data[at] ^= static_cast<std::byte>(1U << below(8));
        } else if (kind < 9) {
            data[at] = static_cast<std::byte>(random() & 0xFFU);
        } else if (kind < 12) {
            data[at] = data[below(data.size())];
        } else if (kind == 12) {
            data.insert(place, static_cast<std::byte>(random() & 0xFFU));
        } else if (kind == 13) {
            data.erase(place);
        } else if (kind == 14) {
            const Bytes piece(place, place + static_cast<std::ptrdiff_t>(std::min<std::size_t>(1 + below(40), data.size() - at)));
            data.insert(data.begin() + static_cast<std::ptrdiff_t>(below(data.size())), piece.begin(), piece.end());
        } else {
            data[data.size() - 1 - below(std::min<std::size_t>(data.size(), 32))] = static_cast<std::byte>(below(4) == 0 ? 0xFFU : below(64));
        }
    }
    return data;
}

TEST(HostileArchive, MutatedArchivesAreReadOrRefused)
{
    const Bytes seeds[] = {richArchive(), xmlArchive()};
    ASSERT_EQ(errorOf(seeds[0]), "no error");
    ASSERT_EQ(errorOf(seeds[1]), "no error");
    std::mt19937_64 random(20240229);
    int read = 0;
    int refused = 0;
    std::set<std::string> reasons;
    for (int i = 0; i < 20000; ++i) {
        const Bytes data = mutated(seeds[i % 2], random);
        // Anything but a result or an ArchiveError ends the test.
        const std::string error = errorOf(data);
        EXPECT_FALSE(error.empty());
        ++(error == "no error" ? read : refused);
        reasons.insert(error.substr(0, 60));
    }
    // The mutations reach beyond the first checks: some are harmless, and the refusals have many reasons.
    EXPECT_GT(read, 500);
    EXPECT_GT(refused, 5000);
    EXPECT_GT(reasons.size(), 100U);
}

} // namespace
} // namespace TOLVGraphing
