#include "PropertyListArchive.h"

#include "desktop/output/FileError.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/OptionalFiles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <limits>
#include <memory>
#include <plist/plist.h>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace TOLVGraphing {
namespace {

using Object = std::shared_ptr<ArchiveObject>;
using Values = std::vector<std::pair<std::string, ArchiveValue>>;

Object makeObject(std::string className, Values values, std::vector<std::string> baseClassNames = {})
{
    auto object = std::make_shared<ArchiveObject>();
    object->className = std::move(className);
    object->baseClassNames = std::move(baseClassNames);
    object->values = std::move(values);
    return object;
}

std::shared_ptr<ArchiveArray> makeList(std::vector<ArchiveValue> elements)
{
    auto list = std::make_shared<ArchiveArray>();
    list->elements = std::move(elements);
    return list;
}

Object roundTrip(const Object& object)
{
    return archiveObjectFromPropertyList(propertyListData(object));
}

std::span<const std::byte> bytesOf(std::string_view text)
{
    return std::as_bytes(std::span(text.data(), text.size()));
}

Object fromText(std::string_view text)
{
    return archiveObjectFromPropertyList(bytesOf(text));
}

template <typename Action>
std::string errorOf(Action action)
{
    try {
        action();
        return "no error";
    } catch (const ArchiveError& error) {
        return error.what();
    }
}

struct NodeDeleter {
    void operator()(void* node) const { plist_free(node); }
};

std::vector<std::pair<std::string, plist_t>> dictionaryEntries(plist_t dictionary)
{
    std::vector<std::pair<std::string, plist_t>> entries;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(dictionary, &iterator);
    for (std::uint32_t i = 0; i < plist_dict_get_size(dictionary); ++i) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(dictionary, iterator, &key, &value);
        entries.emplace_back(key, value);
        std::free(key);
    }
    std::free(iterator);
    return entries;
}

/// A node in a short form: "text", 5, 1.5, true, #3 for a reference, [..], {key=..}.
std::string nodeText(plist_t node)
{
    std::string text;
    std::uint64_t whole = 0;
    double number = 0.0;
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: return plist_bool_val_is_true(node) == 1 ? "true" : "false";
    case PLIST_UINT: plist_get_uint_val(node, &whole); return std::to_string(static_cast<std::int64_t>(whole));
    case PLIST_REAL: plist_get_real_val(node, &number); return std::to_string(number);
    case PLIST_STRING: return "\"" + std::string(plist_get_string_ptr(node, nullptr)) + "\"";
    case PLIST_UID: plist_get_uid_val(node, &whole); return "#" + std::to_string(whole);
    case PLIST_ARRAY:
        for (std::uint32_t i = 0; i < plist_array_get_size(node); ++i)
            text += (i == 0 ? "" : " ") + nodeText(plist_array_get_item(node, i));
        return "[" + text + "]";
    case PLIST_DICT:
        for (const auto& [key, value] : dictionaryEntries(node))
            text += (text.empty() ? "" : " ") + key + "=" + nodeText(value);
        return "{" + text + "}";
    default: return "?";
    }
}

/// The written bytes as the property list library itself reads them: the outline, then the objects by number.
std::vector<std::string> layoutOf(const std::vector<std::byte>& data)
{
    plist_t tree = nullptr;
    plist_from_bin(reinterpret_cast<const char*>(data.data()), static_cast<std::uint32_t>(data.size()), &tree);
    const std::unique_ptr<void, NodeDeleter> owner(tree);
    std::vector<std::string> lines;
    if (!tree)
        return lines;
    std::string outline;
    for (const auto& [key, value] : dictionaryEntries(tree))
        outline += key == "$objects" ? "" : key + "=" + nodeText(value) + " ";
    lines.push_back(outline);
    plist_t objects = plist_dict_get_item(tree, "$objects");
    for (std::uint32_t i = 0; i < plist_array_get_size(objects); ++i)
        lines.push_back(std::to_string(i) + " " + nodeText(plist_array_get_item(objects, i)));
    return lines;
}

TEST(PropertyListArchive, LaysObjectsOutBeforeTheirPartsAndClassesAfterThem)
{
    const Object x = makeObject("TOLVAxisExtents", {{"min", 0.5}, {"max", 2.0}});
    const Object y = makeObject("TOLVAxisExtents", {{"min", -1.0}, {"max", 8.0}});
    const Object marker = makeObject("TOLVMarker", {{"value", 0.25}, {"axisIndex", std::int64_t{7}}});
    const Object graph = makeObject("TOLVSpecialGraph",
        {{"extents", makeObject("TOLVGraphExtents", {{"x", x}, {"y", y}, {"z", x}})}, {"markers", makeList({marker, marker})}, {"none", std::monostate()}, {"shown", true},
            {"title", std::string("x")}, {"other", std::string("x")}},
        {"TOLVGraph"});
    const std::vector<std::string> expected{
        "$version=100000 $archiver=\"NSKeyedArchiver\" $top={root=#1} ",
        "0 \"$null\"",
        "1 {extents=#2 markers=#11 none=#0 shown=#17 title=#18 other=#18 $class=#19}",
        "2 {x=#3 y=#7 z=#3 $class=#10}",
        "3 {min=#4 max=#5 $class=#6}",
        "4 0.500000",
        "5 2.000000",
        "6 {$classname=\"TOLVAxisExtents\" $classes=[\"TOLVAxisExtents\" \"NSObject\"]}",
        "7 {min=#8 max=#9 $class=#6}",
        "8 -1.000000",
        "9 8.000000",
        "10 {$classname=\"TOLVGraphExtents\" $classes=[\"TOLVGraphExtents\" \"NSObject\"]}",
        "11 {NS.objects=[#12 #12] $class=#16}",
        "12 {value=#13 axisIndex=#14 $class=#15}",
        "13 0.250000",
        "14 7",
        "15 {$classname=\"TOLVMarker\" $classes=[\"TOLVMarker\" \"NSObject\"]}",
        "16 {$classname=\"NSArray\" $classes=[\"NSArray\" \"NSObject\"]}",
        "17 true",
        "18 \"x\"",
        "19 {$classname=\"TOLVSpecialGraph\" $classes=[\"TOLVSpecialGraph\" \"TOLVGraph\" \"NSObject\"]}",
    };
    const auto data = propertyListData(graph);
    EXPECT_EQ(std::memcmp(data.data(), "bplist00", 8), 0);
    EXPECT_EQ(layoutOf(data), expected);
}

TEST(PropertyListArchive, AnArchiveOfNothingReadsAsNull)
{
    const auto data = propertyListData(nullptr);
    EXPECT_EQ(layoutOf(data), (std::vector<std::string>{"$version=100000 $archiver=\"NSKeyedArchiver\" $top={root=#0} ", "0 \"$null\""}));
    EXPECT_EQ(archiveObjectFromPropertyList(data), nullptr);
}

TEST(PropertyListArchive, KeepsDoublesToTheLastBit)
{
    using Limits = std::numeric_limits<double>;
    const double numbers[]
        = {0.0, -0.0, 1.0, -1.5, 0.1, 1.0 / 3.0, static_cast<double>(0.1F), Limits::denorm_min(), -Limits::denorm_min(), Limits::min(), Limits::max(), Limits::lowest(),
            Limits::epsilon(), 1e-300, 16777217.0, 9007199254740993.0, Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(), -Limits::quiet_NaN(), 2.2250738585072011e-308};
    for (const double number : numbers) {
        const Object read = roundTrip(makeObject("A", {{"number", number}}));
        ASSERT_TRUE(read && read->find("number") && std::holds_alternative<double>(*read->find("number"))) << number;
        const double back = std::get<double>(*read->find("number"));
        EXPECT_EQ(std::memcmp(&back, &number, sizeof number), 0) << number << " came back as " << back;
    }
}

TEST(PropertyListArchive, KeepsWholeNumbersAndBooleans)
{
    using Limits = std::numeric_limits<std::int64_t>;
    const std::int64_t edges[]
        = {0, 1, -1, 127, 128, 255, 256, 32767, 65535, 65536, 2147483647, 2147483648, 4294967295, 4294967296, Limits::max(), Limits::min(), Limits::min() + 1};
    for (const std::int64_t number : edges) {
        for (const std::int64_t one : {number, ~number}) {
            const Object read = roundTrip(makeObject("A", {{"number", one}}));
            EXPECT_EQ(*read->find("number"), ArchiveValue(one));
        }
    }
    for (const bool flag : {false, true})
        EXPECT_EQ(*roundTrip(makeObject("A", {{"flag", flag}}))->find("flag"), ArchiveValue(flag));
}

TEST(PropertyListArchive, KeepsTexts)
{
    const std::string texts[] = {"", " ", "plain", "two\nlines\r\n\ttab", "é ∞ 한국어 😀 \xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x94\xAC", "\x7F\x01", "$null", "&lt;<>\"'",
        std::string(100000, 'x'), "\xEE\x80\x80\xEF\xBF\xBF", "e\xCC\x81", std::string(15, 'a'), std::string(255, 'b'), std::string(256, 'c')};
    for (const std::string& text : texts)
        EXPECT_EQ(*roundTrip(makeObject("A", {{"text", text}}))->find("text"), ArchiveValue(text)) << text.substr(0, 40);
}

TEST(PropertyListArchive, KeepsKeysClassesAndNothing)
{
    const Object written = makeObject(
        "Klasse Ü", {{"", 1.0}, {"é", 2.0}, {"$class", 3.0}, {"$$", 4.0}, {"NS.objects", 5.0}, {"CF$UID", std::int64_t{6}}, {"none", std::monostate()}}, {"Base", "Root"});
    const Object read = roundTrip(written);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->className, written->className);
    EXPECT_EQ(read->baseClassNames, written->baseClassNames);
    EXPECT_EQ(read->values, written->values);
}

TEST(PropertyListArchive, KeepsListsOfEverything)
{
    const auto inner = makeList({});
    const Object read = roundTrip(makeObject("A", {{"list", makeList({1.5, std::int64_t{2}, true, std::string("t"), std::monostate(), makeObject("B", {}), inner, inner})}}));
    const auto& elements = std::get<std::shared_ptr<ArchiveArray>>(*read->find("list"))->elements;
    ASSERT_EQ(elements.size(), 8U);
    EXPECT_EQ(elements[0], ArchiveValue(1.5));
    EXPECT_EQ(elements[1], ArchiveValue(std::int64_t{2}));
    EXPECT_EQ(elements[2], ArchiveValue(true));
    EXPECT_EQ(elements[3], ArchiveValue(std::string("t")));
    EXPECT_EQ(elements[4], ArchiveValue());
    EXPECT_EQ(std::get<Object>(elements[5])->className, "B");
    EXPECT_TRUE(std::get<std::shared_ptr<ArchiveArray>>(elements[6])->elements.empty());
    EXPECT_EQ(elements[6], elements[7]);
}

TEST(PropertyListArchive, KeepsWhatIsShared)
{
    const Object shared = makeObject("B", {{"n", 1.0}});
    const Object twin = makeObject("B", {{"n", 1.0}});
    const Object read = roundTrip(makeObject("A", {{"a", shared}, {"b", shared}, {"c", twin}, {"list", makeList({shared, twin})}}));
    EXPECT_EQ(*read->find("a"), *read->find("b"));
    EXPECT_NE(*read->find("a"), *read->find("c"));
    const auto& elements = std::get<std::shared_ptr<ArchiveArray>>(*read->find("list"))->elements;
    EXPECT_EQ(elements[0], *read->find("a"));
    EXPECT_EQ(elements[1], *read->find("c"));
}

TEST(PropertyListArchive, WritesTheSameBytesForTheSameObjects)
{
    const auto make = [] { return makeObject("A", {{"a", 1.0}, {"b", makeList({std::string("x"), makeObject("B", {{"c", true}})})}}); };
    EXPECT_EQ(propertyListData(make()), propertyListData(make()));
    EXPECT_EQ(propertyListData(roundTrip(make())), propertyListData(make()));
}

TEST(PropertyListArchive, RefusesToWriteWhatCannotBeKept)
{
    const Object circle = makeObject("Circle", {});
    circle->values = {{"self", circle}};
    EXPECT_EQ(errorOf([&] { (void)propertyListData(circle); }), "Circle \"self\": an object of class Circle contains itself");
    circle->values.clear();
    const auto list = makeList({});
    list->elements = {list};
    EXPECT_EQ(errorOf([&] { (void)propertyListData(makeObject("A", {{"list", list}})); }), "A \"list\": a list contains itself");
    list->elements.clear();
    EXPECT_EQ(errorOf([] {
        (void)propertyListData(makeObject("A", {{"text", std::string("a\0b", 3)}}));
    }),
        "A \"text\": found a text with a zero character or one that is not UTF-8, expected UTF-8");
    const char* const malformed[] = {"\xFF", "\xC0\x80", "\xC3", "\xED\xA0\x80", "\xE0\x80\x80", "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "a\x80"};
    for (const char* text : malformed) {
        EXPECT_NE(errorOf([&] { (void)propertyListData(makeObject("A", {{"text", std::string(text)}})); }), "no error");
        EXPECT_NE(errorOf([&] { (void)propertyListData(makeObject("A", {{text, 1.0}})); }), "no error");
        EXPECT_NE(errorOf([&] { (void)propertyListData(makeObject(text, {})); }), "no error");
    }
}

TEST(PropertyListArchive, RefusesToWriteWhatWouldNotBeReadAgain)
{
    Object deep = makeObject("A", {});
    for (int i = 0; i < 255; ++i)
        deep = makeObject("A", {{"inner", deep}});
    EXPECT_TRUE(roundTrip(deep));
    EXPECT_EQ(errorOf([&] { (void)propertyListData(makeObject("A", {{"inner", deep}})); }), "A \"inner\": an object of class A is nested deeper than 256 objects and lists");
    // Reached from its deepest part on, the chain never looks deep while it is written.
    const auto list = makeList({});
    Object chain = makeObject("A", {});
    for (int i = 0; i < 400; ++i) {
        list->elements.emplace_back(chain);
        chain = makeObject("A", {{"inner", chain}});
    }
    EXPECT_NE(errorOf([&] { (void)propertyListData(makeObject("A", {{"list", list}})); }).find("found more than 256 objects and lists inside one another"), std::string::npos);
}

// Reading what others have written.

std::string xmlArchive(const std::string& objects, const std::string& root = "<key>root</key><dict><key>CF$UID</key><integer>1</integer></dict>")
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist SYSTEM \"plist.dtd\">\n<plist version=\"1.0\"><dict><key>$archiver</key><string>NSKeyedArchiver</string>"
           "<key>$objects</key><array><string>$null</string>"
        + objects + "</array><key>$top</key><dict>" + root + "</dict><key>$version</key><integer>100000</integer></dict></plist>\n";
}

/// {CF$UID: n}
std::string uid(int number)
{
    return "<dict><key>CF$UID</key><integer>" + std::to_string(number) + "</integer></dict>";
}

std::string classDictionary(const std::string& name, const std::string& bases = "")
{
    return "<dict><key>$classes</key><array><string>" + name + "</string>" + bases + "<string>NSObject</string></array><key>$classname</key><string>" + name + "</string></dict>";
}

/// An object of class 2, "A", with these entries.
std::string objectOfA(const std::string& entries, const std::string& others = "")
{
    return xmlArchive("<dict>" + entries + "<key>$class</key>" + uid(2) + "</dict>" + classDictionary("A", "<string>Base</string>") + others);
}

TEST(PropertyListArchive, ReadsXml)
{
    const Object read
        = fromText(objectOfA("<key>real</key><real>-0.1</real><key>whole</key><integer>-9223372036854775808</integer><key>yes</key><true/><key>no</key><false></false>"
                             "<key>text</key><string>a &lt;&#233;&#x1F600;&amp;<![CDATA[<raw>&]]> b</string><key>empty</key><string/><!-- passed over -->"
                             "<key>reference</key>"
                + uid(3) + "<key>zero</key><real>-0</real><key>list</key><array><integer> 5 </integer><real>+1e3</real></array><key>none</key>" + uid(0)
                + "<key>infinite</key><real>-infinity</real>",
            "<real>2.5</real>"));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->className, "A");
    EXPECT_EQ(read->baseClassNames, std::vector<std::string>{"Base"});
    EXPECT_EQ(*read->find("real"), ArchiveValue(-0.1));
    EXPECT_EQ(*read->find("whole"), ArchiveValue(std::numeric_limits<std::int64_t>::min()));
    EXPECT_EQ(*read->find("yes"), ArchiveValue(true));
    EXPECT_EQ(*read->find("no"), ArchiveValue(false));
    EXPECT_EQ(*read->find("text"), ArchiveValue(std::string("a <é😀&<raw>& b")));
    EXPECT_EQ(*read->find("empty"), ArchiveValue(std::string()));
    EXPECT_EQ(*read->find("reference"), ArchiveValue(2.5));
    EXPECT_TRUE(std::signbit(std::get<double>(*read->find("zero"))));
    EXPECT_EQ(std::get<std::shared_ptr<ArchiveArray>>(*read->find("list"))->elements, (std::vector<ArchiveValue>{std::int64_t{5}, 1000.0}));
    EXPECT_EQ(*read->find("none"), ArchiveValue());
    EXPECT_EQ(*read->find("infinite"), ArchiveValue(-std::numeric_limits<double>::infinity()));
    EXPECT_EQ(read->find("$class"), nullptr);
}

TEST(PropertyListArchive, ReadsXmlWithByteOrderMarkAndAnyLineEnds)
{
    const Object read = fromText("\xEF\xBB\xBF\r\n" + objectOfA("\r\n<key>text</key>\r\n<string>a\r\nb\rc</string>\r\n"));
    EXPECT_EQ(*read->find("text"), ArchiveValue(std::string("a\nb\nc")));
}

TEST(PropertyListArchive, TakesTheOnlyRootWhateverItsName)
{
    const std::string objects = "<dict><key>$class</key>" + uid(2) + "</dict>" + classDictionary("A") + classDictionary("B") + "<dict><key>$class</key>" + uid(3) + "</dict>";
    EXPECT_EQ(fromText(xmlArchive(objects, "<key>graph</key>" + uid(4)))->className, "B");
    EXPECT_EQ(fromText(xmlArchive(objects, "<key>graph</key>" + uid(4) + "<key>root</key>" + uid(1)))->className, "A");
    EXPECT_EQ(errorOf([&] { fromText(xmlArchive(objects, "<key>graph</key>" + uid(4) + "<key>other</key>" + uid(1))); }),
        "keyed archive: found 2 entries under \"$top\" and none of them \"root\", expected \"root\" or a single entry");
}

TEST(PropertyListArchive, ReadsContainersTextsBytesAndDates)
{
    const Object read = fromText(xmlArchive("<dict><key>list</key>" + uid(3) + "<key>dictionary</key>" + uid(5) + "<key>text</key>" + uid(8) + "<key>data</key>" + uid(11)
        + "<key>date</key>" + uid(13) + "<key>moment</key><date>2001-01-01T00:01:00Z</date><key>before</key><date>2000-12-31T23:59:59Z</date><key>$class</key>" + uid(2) + "</dict>"
        + classDictionary("A")                                                                                                        // 1, 2
        + "<dict><key>NS.objects</key><array>" + uid(4) + uid(4) + "</array><key>$class</key>" + uid(7) + "</dict><string>x</string>" // 3, 4
        + "<dict><key>NS.objects</key><array>" + uid(3) + "<integer>9</integer></array><key>NS.keys</key><array>" + uid(4) + "<string>y</string></array><key>$class</key>" + uid(6)
        + "</dict>"                                                                                                                                                    // 5
        + classDictionary("NSMutableDictionary", "<string>NSDictionary</string>") + classDictionary("NSMutableArray", "<string>NSArray</string>")                      // 6, 7
        + "<dict><key>NS.string</key><string>mutable</string><key>$class</key>" + uid(9) + "</dict>" + classDictionary("NSMutableString", "<string>NSString</string>") // 8, 9
        + classDictionary("NSMutableData", "<string>NSData</string>") + "<dict><key>NS.data</key><data>AQID\n/w==</data><key>$class</key>" + uid(10) + "</dict>"       // 10, 11
        + classDictionary("NSDate") + "<dict><key>NS.time</key><real>-12.5</real><key>$class</key>" + uid(12) + "</dict>"));                                           // 12, 13
    ASSERT_TRUE(read);
    const auto list = std::get<std::shared_ptr<ArchiveArray>>(*read->find("list"));
    EXPECT_EQ(list->elements, (std::vector<ArchiveValue>{std::string("x"), std::string("x")}));
    const auto dictionary = std::get<Object>(*read->find("dictionary"));
    EXPECT_EQ(dictionary->className, "NSDictionary");
    EXPECT_EQ(dictionary->values, (Values{{"x", list}, {"y", std::int64_t{9}}}));
    EXPECT_EQ(*read->find("text"), ArchiveValue(std::string("mutable")));
    const auto data = std::get<Object>(*read->find("data"));
    EXPECT_EQ(data->className, "NSMutableData");
    EXPECT_EQ(data->baseClassNames, std::vector<std::string>{"NSData"});
    const auto bytes = std::get<Object>(*data->find("NS.data"));
    EXPECT_EQ(bytes->className, "NSData");
    EXPECT_EQ(*bytes->find("NS.bytes"), ArchiveValue(std::string("AQID/w==")));
    EXPECT_EQ(*std::get<Object>(*read->find("date"))->find("NS.time"), ArchiveValue(-12.5));
    EXPECT_EQ(*std::get<Object>(*read->find("moment"))->find("NS.time"), ArchiveValue(60.0));
    EXPECT_EQ(*std::get<Object>(*read->find("before"))->find("NS.time"), ArchiveValue(-1.0));
}

TEST(PropertyListArchive, ARootThatIsAListIsPutIntoAnObject)
{
    const Object read
        = fromText(xmlArchive("<dict><key>NS.objects</key><array>" + uid(2) + "</array><key>$class</key>" + uid(3) + "</dict><string>x</string>" + classDictionary("NSArray")));
    EXPECT_EQ(read->className, "NSArray");
    EXPECT_EQ(std::get<std::shared_ptr<ArchiveArray>>(*read->find("NS.objects"))->elements, std::vector<ArchiveValue>{std::string("x")});
}

TEST(PropertyListArchive, SaysWhatIsWrongWithAnArchive)
{
    const std::string a = classDictionary("A");
    const struct {
        std::string text;
        const char* expected;
    } cases[] = {
        {"", "found no bytes, expected a binary or XML property list"},
        {"hello", "found something else than a property list, expected one that begins with \"bplist00\" or \"<\""},
        {"<plist><array/></plist>", "keyed archive: found a list, expected a dictionary with $archiver, $version, $top and $objects"},
        {"<plist><dict/></plist>", "keyed archive: found nothing under \"$archiver\", expected the text \"NSKeyedArchiver\""},
        {"<plist><dict><key>$archiver</key><string>other</string></dict></plist>",
            "keyed archive: found the text \"other\" under \"$archiver\", expected the text \"NSKeyedArchiver\""},
        {"<plist><dict><key>$archiver</key><string>NSKeyedArchiver</string><key>$version</key><integer>-5</integer></dict></plist>",
            "keyed archive: found version -5, expected 100000"},
        {xmlArchive("", "<key>root</key>" + uid(1)), "keyed archive: found a reference to object 1, expected one of 1"},
        {xmlArchive("", "<key>root</key>" + uid(-1)), "keyed archive: found a reference to object 18446744073709551615, expected one of 1"},
        {xmlArchive("", "<key>root</key><string>x</string>"), "keyed archive: found a text as the root, expected a reference to an object"},
        {xmlArchive("<string>x</string>"), "keyed archive: found a text as the root, expected an object"},
        {xmlArchive(uid(1)), "keyed archive, object 1: found a reference in the list of objects, expected an object"},
        {xmlArchive("<dict><key>a</key><true/></dict>"), "keyed archive, object 1: found a dictionary without \"$class\", expected an object"},
        {xmlArchive("<dict><key>$class</key>" + uid(9) + "</dict>"),
            "keyed archive, object 1: found a reference to object 9 under \"$class\", expected a reference to one of 2 objects"},
        {xmlArchive("<dict><key>$class</key><string>A</string></dict>"),
            "keyed archive, object 1: found the text \"A\" under \"$class\", expected a reference to one of 2 objects"},
        {xmlArchive("<dict><key>$class</key>" + uid(0) + "</dict>"),
            "keyed archive, object 1: found the text \"$null\" as the class, expected a dictionary with $classname and $classes"},
        {xmlArchive("<dict><key>$class</key>" + uid(1) + "</dict>"), "keyed archive, object 1: found nothing under \"$classname\", expected the name of a class"},
        {objectOfA("<key>self</key>" + uid(1)), "keyed archive, object 1: found object 1 inside itself, expected no circle"},
        {objectOfA("<key>far</key>" + uid(77)), "keyed archive, object 1: found a reference to object 77, expected one of 3"},
        {objectOfA("<key>inner</key><dict/>"), "keyed archive, object 1: found a dictionary without \"$class\", expected an object"},
        {xmlArchive("<dict><key>$class</key>" + uid(2) + "</dict>" + classDictionary("NSArray")),
            "keyed archive, object 1: found nothing under \"NS.objects\", expected the list of elements"},
        {xmlArchive("<dict><key>$class</key>" + uid(2) + "</dict>" + classDictionary("NSString")), "keyed archive, object 1: found nothing under \"NS.string\", expected a text"},
        {xmlArchive(
             "<dict><key>NS.keys</key><array><string>a</string></array><key>NS.objects</key><array/><key>$class</key>" + uid(2) + "</dict>" + classDictionary("NSDictionary")),
            "keyed archive, object 1: found 1 keys and 0 objects in a dictionary, expected as many of both"},
        {xmlArchive(
             "<dict><key>NS.keys</key><array><true/></array><key>NS.objects</key><array><true/></array><key>$class</key>" + uid(2) + "</dict>" + classDictionary("NSDictionary")),
            "keyed archive, object 1: found a boolean as the key of a dictionary, expected a text"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(errorOf([&] { fromText(one.text); }), one.expected) << one.text;
}

TEST(PropertyListArchive, CirclesAcrossSeveralObjectsAreErrors)
{
    const std::string list = "<dict><key>NS.objects</key><array>" + uid(3) + "</array><key>$class</key>" + uid(4) + "</dict>";
    const std::string back = "<dict><key>back</key>" + uid(1) + "<key>$class</key>" + uid(2) + "</dict>";
    const std::string archive = xmlArchive(list + classDictionary("A") + back + classDictionary("NSArray"));
    EXPECT_EQ(errorOf([&] { fromText(archive); }), "keyed archive, object 3: found object 1 inside itself, expected no circle");
}

TEST(PropertyListArchive, ReadsSampleArchivesOfOtherWriters)
{
    const std::filesystem::path folder = testing_support::optionalFile("archives");
    if (folder.empty())
        GTEST_SKIP() << "no sample archives lie beside the checkout";
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".archive" && entry.path().extension() != ".plist")
            continue;
        std::ifstream stream(entry.path(), std::ios::binary);
        const std::string contents((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
        Object read;
        EXPECT_EQ(errorOf([&] { read = fromText(contents); }), "no error") << entry.path();
        ASSERT_TRUE(read) << entry.path();
        const std::string name = entry.path().stem().string();
        if (name == "NSMeasurement-Frequency") {
            EXPECT_EQ(read->className, "NSMeasurement");
            EXPECT_EQ(*read->find("NS.value"), ArchiveValue(1400.0));
            const auto unit = std::get<Object>(*read->find("NS.unit"));
            EXPECT_EQ(unit->className, "NSUnitFrequency");
            EXPECT_EQ(unit->baseClassNames, (std::vector<std::string>{"NSDimension", "NSUnit"}));
            EXPECT_EQ(*unit->find("NS.symbol"), ArchiveValue(std::string("MHz")));
            EXPECT_EQ(*unit->find("NS.specifier"), ArchiveValue(std::int64_t{4098}));
            EXPECT_EQ(*std::get<Object>(*unit->find("NS.converter"))->find("NS.coefficient"), ArchiveValue(1000000.0));
        } else if (name == "NSAttributedString") {
            EXPECT_EQ(*read->find("NSString"), ArchiveValue(std::string("0123456789")));
            const auto& runs = std::get<std::shared_ptr<ArchiveArray>>(*read->find("NSAttributes"))->elements;
            ASSERT_EQ(runs.size(), 4U);
            EXPECT_EQ(std::get<Object>(runs[1])->values, (Values{{"Font", std::string("Helvetica")}, {"Size", std::int64_t{123}}}));
        } else if (name == "NSIndexSet-ManyRanges") {
            EXPECT_EQ(*read->find("NSRangeCount"), ArchiveValue(std::int64_t{4}));
            const auto data = std::get<Object>(*read->find("NSRangeData"));
            EXPECT_EQ(*std::get<Object>(*data->find("NS.data"))->find("NS.bytes"), ArchiveValue(std::string("ADJkMugHMs3/////////fzI=")));
        } else if (name == "NSKeyedUnarchiver-ArrayTest") {
            EXPECT_EQ(std::get<std::shared_ptr<ArchiveArray>>(*read->find("NS.objects"))->elements,
                (std::vector<ArchiveValue>{std::string("baa"), std::string("baa"), std::string("black"), std::string("sheep")}));
        } else if (name == "NSKeyedUnarchiver-RectTest") {
            EXPECT_EQ(read->values, (Values{{"NS.rectval", std::string("{{400, 300}, {200, 300}}")}, {"NS.special", std::int64_t{3}}}));
        }
        ++count;
    }
    EXPECT_GT(count, 0);
}

// Files.

/// An archivable object with one number.
class Gauge final : public Codable {
public:
    double reading = 0.0;

    [[nodiscard]] std::string archiveClassName() const override { return "TestGauge"; }
    void encodeWithCoder(KeyedArchiver& coder) const override { coder.encodeDouble(reading, "reading"); }
    static std::shared_ptr<Gauge> initWithCoder(KeyedUnarchiver& coder)
    {
        auto gauge = std::make_shared<Gauge>();
        gauge->reading = coder.decodeDouble("reading").value_or(-1.0);
        return gauge;
    }
};

const ArchiveClassRegistration registerGauge("TestGauge", Gauge::initWithCoder);

/// A text that no archive can keep.
class Broken final : public Codable {
public:
    [[nodiscard]] std::string archiveClassName() const override { return "TestBroken"; }
    void encodeWithCoder(KeyedArchiver& coder) const override { coder.encodeString("\xFF", "text"); }
};

class ArchiveFileTest : public testing::Test {
protected:
    void SetUp() override
    {
        std::string name = (std::filesystem::temp_directory_path() / "archive-test-XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder = name;
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    void writeText(const std::filesystem::path& path, std::string_view text) const { std::ofstream(path, std::ios::binary) << text; }

    std::filesystem::path folder;
};

TEST_F(ArchiveFileTest, ReadsBackWhatItWrites)
{
    Gauge gauge;
    gauge.reading = 0.1;
    const auto path = folder / "gauge.archive";
    writeText(path, "former contents");
    writeArchive(path, gauge);
    const auto read = std::dynamic_pointer_cast<Gauge>(readArchive(path));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->reading, 0.1);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

TEST_F(ArchiveFileTest, AFailureLeavesTheOldFile)
{
    const auto path = folder / "gauge.archive";
    writeArchive(path, Gauge());
    const auto size = std::filesystem::file_size(path);
    EXPECT_EQ(errorOf([&] { writeArchive(path, Broken()); }), path.string() + ": TestBroken \"text\": found a text with a zero character or one that is not UTF-8, expected UTF-8");
    EXPECT_EQ(std::filesystem::file_size(path), size);
    EXPECT_TRUE(readArchive(path));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

TEST_F(ArchiveFileTest, AFullDiskLeavesTheOldFile)
{
    const auto path = folder / "gauge.archive";
    Gauge gauge;
    gauge.reading = 0.5;
    writeArchive(path, gauge);
    gauge.reading = 0.75;
    {
        const testing_support::FileSizeLimit limit(50);
        try {
            writeArchive(path, gauge);
            ADD_FAILURE();
        } catch (const FileError& error) {
            EXPECT_EQ(error.what(), path.string() + ": cannot be written: File too large");
        }
    }
    const auto read = std::dynamic_pointer_cast<Gauge>(readArchive(path));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->reading, 0.5);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

TEST_F(ArchiveFileTest, ErrorsNameThePath)
{
    const auto missing = folder / "missing.archive";
    EXPECT_EQ(errorOf([&] { (void)readArchive(missing); }), missing.string() + ": cannot be read: No such file or directory");
    EXPECT_EQ(errorOf([&] { (void)readArchive(folder); }), folder.string() + ": cannot be read: Is a directory");
    const auto text = folder / "text";
    writeText(text, "hello");
    EXPECT_EQ(errorOf([&] { (void)readArchive(text); }), text.string() + ": found something else than a property list, expected one that begins with \"bplist00\" or \"<\"");
    const auto unknown = folder / "unknown";
    writeText(unknown, objectOfA(""));
    EXPECT_EQ(errorOf([&] { (void)readArchive(unknown); }), unknown.string() + ": found an object of the unknown class A, expected a class that can be read");
    try {
        writeArchive(folder / "no" / "such" / "folder", Gauge());
        ADD_FAILURE();
    } catch (const FileError& error) {
        EXPECT_EQ(error.path(), (folder / "no" / "such" / "folder").string());
        EXPECT_NE(error.reason().find("No such file or directory"), std::string::npos);
    }
}

TEST_F(ArchiveFileTest, ReadsXmlFiles)
{
    const auto path = folder / "gauge.plist";
    writeText(path, xmlArchive("<dict><key>reading</key>" + uid(3) + "<key>$class</key>" + uid(2) + "</dict>" + classDictionary("TestGauge") + "<real>12.75</real>"));
    const auto read = std::dynamic_pointer_cast<Gauge>(readArchive(path));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->reading, 12.75);
}

TEST_F(ArchiveFileTest, AnArchiveOfNothingGivesNull)
{
    const auto path = folder / "nothing";
    const auto data = propertyListData(nullptr);
    writeText(path, {reinterpret_cast<const char*>(data.data()), data.size()});
    EXPECT_EQ(readArchive(path), nullptr);
}

} // namespace
} // namespace TOLVGraphing
