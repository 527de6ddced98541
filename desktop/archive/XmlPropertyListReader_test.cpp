#include "XmlPropertyListReader.h"

#include "PropertyListScalars.h"
#include "TOLVGraphing/platform/foundation/KeyedArchive.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace TOLVGraphing::plist {
namespace {

Value read(const std::string& text, const ArchiveLimits& limits = {})
{
    return readXmlPropertyList(std::as_bytes(std::span(text.data(), text.size())), limits);
}

std::string errorOf(const std::string& text, const ArchiveLimits& limits = {})
{
    try {
        static_cast<void>(read(text, limits));
        return "no error";
    } catch (const ArchiveError& error) {
        return error.what();
    }
}

std::string repeated(const std::string& text, int count)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

TEST(XmlPropertyListReader, ReadsEveryKindOfValue)
{
    const Value tree = read("<?xml version='1.0'?><!-- a <note> --><!DOCTYPE plist><plist version=\"1.0\">\n<array>\n<string>t</string><integer>-1</integer><real>0.5</real>"
                            "<true/><false/><data>AQI=</data><date>2001-01-02T00:00:00Z</date><array/><dict/></array></plist><!-- end -->\n");
    const auto* elements = tree.as<Array>();
    ASSERT_TRUE(elements);
    ASSERT_EQ(elements->size(), 9U);
    EXPECT_EQ(std::get<std::string>((*elements)[0].content), "t");
    EXPECT_EQ(std::get<std::int64_t>((*elements)[1].content), -1);
    EXPECT_EQ(std::get<double>((*elements)[2].content), 0.5);
    EXPECT_TRUE(std::get<bool>((*elements)[3].content));
    EXPECT_FALSE(std::get<bool>((*elements)[4].content));
    EXPECT_EQ(std::get<Data>((*elements)[5].content).bytes, "\x01\x02");
    EXPECT_EQ(std::get<Date>((*elements)[6].content).seconds, 86400.0);
    EXPECT_TRUE(std::get<Array>((*elements)[7].content).empty());
    EXPECT_TRUE(std::get<Dictionary>((*elements)[8].content).empty());
}

TEST(XmlPropertyListReader, SaysWhereAndWhatIsWrong)
{
    const struct {
        const char* text;
        const char* expected;
    } cases[] = {
        {"<plist>", "line 1: found the end of the file, expected an element"},
        {"<html/>", "line 1: found <html>, expected <plist>"},
        {"<plist/>", "line 1: found <plist>, expected <plist>"},
        {"<plist></plist>", "line 1: found no value in <plist>, expected one"},
        {"<plist>\n<array>\ntext</array></plist>", "line 3: found text between elements, expected an element"},
        {"<plist>\n\n<foo/></plist>", "line 3: found <foo>, expected dict, array, key, string, integer, real, true, false, data or date"},
        {"<plist><array></dict></plist>", "line 1: found </dict>, expected </array>"},
        {"<plist><true/><true/></plist>", "line 1: found a second value, expected </plist>"},
        {"<plist><true/></plist><plist/>", "line 1: found something after </plist>, expected the end of the file"},
        {"<plist><key>a</key></plist>", "line 1: found a key, expected a value"},
        {"<plist><dict><true/></dict></plist>", "line 1: found a value, expected a key"},
        {"<plist><dict><key>a</key></dict></plist>", "line 1: found no value after the key \"a\", expected one"},
        {"<plist><dict><key>a</key><key>b</key></dict></plist>", "line 1: found a key, expected a value"},
        {"<plist><dict><key>a</key><true/><key>a</key><true/></dict></plist>", "line 1: found the key \"a\" twice in one dictionary, expected it once"},
        {"<plist><integer>1.5</integer></plist>", "line 1: found \"1.5\" in <integer>, expected a whole number of 64 bits with sign"},
        {"<plist><integer>9223372036854775808</integer></plist>", "line 1: found \"9223372036854775808\" in <integer>, expected a whole number of 64 bits with sign"},
        {"<plist><integer/></plist>", "line 1: found \"\" in <integer>, expected a whole number of 64 bits with sign"},
        {"<plist><real>1,5</real></plist>", "line 1: found \"1,5\" in <real>, expected a number"},
        {"<plist><real>1e999</real></plist>", "line 1: found \"1e999\" in <real>, expected a number"},
        {"<plist><data>A</data></plist>", "line 1: found \"A\" in <data>, expected base64"},
        {"<plist><date>yesterday</date></plist>", "line 1: found \"yesterday\" in <date>, expected a date such as 2013-03-18T09:30:00Z between 1933 and 2068"},
        {"<plist><true>no</true></plist>", "line 1: found \"no\" in <true>, expected nothing"},
        {"<plist><string>a<b/></string></plist>", "line 1: found <b> in a string, expected </string>"},
        {"<plist><string>a", "line 1: found the end of the file, expected </string>"},
        {"<plist><string>&bad;</string></plist>", "line 1: found &bad, expected &lt; &gt; &amp; &quot; &apos; or a numbered character such as &#233;"},
        {"<plist><string>&#0;</string></plist>", "line 1: found &#0, expected &lt; &gt; &amp; &quot; &apos; or a numbered character such as &#233;"},
        {"<plist><string>&#xD800;</string></plist>", "line 1: found &#xD800, expected &lt; &gt; &amp; &quot; &apos; or a numbered character such as &#233;"},
        {"<plist><string>& </string></plist>", "line 1: found &, expected &lt; &gt; &amp; &quot; &apos; or a numbered character such as &#233;"},
        {"<!DOCTYPE plist [<!ENTITY a \"b\">]><plist><true/></plist>", "line 1: found a document type with declarations of its own, expected none"},
        {"<plist><!-- <true/></plist>", "line 1: found no end of a comment, expected -->"},
        {"<plist version=\"1.0><true/></plist>", "line 1: found no end of the tag plist, expected >"},
        {"<plist", "line 1: found no end of the tag plist, expected >"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(errorOf(one.text), "XML property list, " + std::string(one.expected)) << one.text;
    EXPECT_EQ(errorOf("<plist><string>\xFF</string></plist>"), "XML property list: found bytes that are not UTF-8 text, expected UTF-8");
    EXPECT_EQ(errorOf(std::string("<plist>\0<true/></plist>", 22)), "XML property list: found bytes that are not UTF-8 text, expected UTF-8");
}

TEST(XmlPropertyListReader, TakesOnlyWhatSaysItIsUtf8)
{
    const auto declared = [](const std::string& declaration) { return errorOf(declaration + "<plist><string>\xC3\xA9</string></plist>"); };
    for (const char* sound : {"", "<?xml version=\"1.0\"?>", "<?xml version='1.0' encoding='utf-8' standalone='yes'?>", "\n <?xml version=\"1.0\" encoding = \"UTF-8\"?>",
             "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF8\"?>", "<?xml version=\"1.0\" encoding=\"us-ascii\"?>", "<?xml-style encoding=\"latin\"?>"})
        EXPECT_EQ(declared(sound), "no error") << sound;
    for (const char* encoding : {"ISO-8859-1", "UTF-16", "", "UTF-8 "})
        EXPECT_EQ(declared("<?xml version=\"1.0\" encoding=\"" + std::string(encoding) + "\"?>"),
            "XML property list, line 1: found the encoding \"" + std::string(encoding) + "\", expected UTF-8");
    EXPECT_EQ(declared("<?xml version=\"1.0\""), "XML property list, line 1: found no end of the XML declaration, expected ?>");
    EXPECT_EQ(declared("<?xml encoding=\"UTF-8?>"), "XML property list, line 1: found the encoding \"UTF-8?>\", expected UTF-8");
}

TEST(XmlPropertyListReader, QuotesWholeCharacters)
{
    // The 40th byte is the first of the last character's two.
    EXPECT_EQ(errorOf("<plist><real>" + std::string(39, 'a') + "\xC3\xA9\xC3\xA9</real></plist>"),
        "XML property list, line 1: found \"" + std::string(39, 'a') + "\" in <real>, expected a number");
    EXPECT_EQ(errorOf("<plist><real>" + std::string(38, 'a') + "\xC3\xA9\xC3\xA9</real></plist>"),
        "XML property list, line 1: found \"" + std::string(38, 'a') + "\xC3\xA9\" in <real>, expected a number");
    EXPECT_EQ(errorOf("<plist><string>&\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9x\xC3\xA9;</string></plist>"),
        "XML property list, line 1: found &\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9x\xC3\xA9, expected &lt; &gt; &amp; &quot; &apos; or a numbered "
        "character such as &#233;");
}

TEST(XmlPropertyListReader, ReadsDictionariesOfManyKeys)
{
    constexpr int kCount = 200'000;
    std::string entries;
    for (int i = 0; i < kCount; ++i)
        entries += "<key>" + std::to_string(i) + "</key><true/>";
    const Value tree = read("<plist><dict>" + entries + "</dict></plist>");
    ASSERT_TRUE(tree.as<Dictionary>());
    EXPECT_EQ(tree.as<Dictionary>()->size(), 200'000U);
    EXPECT_EQ(
        errorOf("<plist><dict>" + entries + "<key>77</key><true/></dict></plist>"), "XML property list, line 1: found the key \"77\" twice in one dictionary, expected it once");
}

TEST(XmlPropertyListReader, BoundsNestingElementsAndBytes)
{
    const int deepest = static_cast<int>(kMaximumNesting);
    EXPECT_EQ(errorOf("<plist>" + repeated("<array>", deepest) + repeated("</array>", deepest) + "</plist>"), "no error");
    for (const int depth : {deepest + 1, 100000}) {
        EXPECT_EQ(errorOf("<plist>" + repeated("<array>", depth) + repeated("</array>", depth) + "</plist>"),
            "XML property list, line 1: found more than 64 arrays and dictionaries inside one another, expected fewer");
        EXPECT_EQ(errorOf("<plist>" + repeated("<dict><key>a</key>", depth) + "<true/>" + repeated("</dict>", depth) + "</plist>"),
            "XML property list, line 1: found more than 64 arrays and dictionaries inside one another, expected fewer");
    }
    const std::string wide = "<plist><array>" + repeated("<true/>", 100) + "</array></plist>";
    EXPECT_EQ(errorOf(wide, {wide.size(), 101, 10}), "no error");
    EXPECT_EQ(errorOf(wide, {wide.size(), 100, 10}), "XML property list, line 1: found more than 100 elements, expected fewer");
    EXPECT_EQ(errorOf(wide, {wide.size() - 1, 101, 10}), "XML property list: found " + std::to_string(wide.size()) + " bytes, expected at most " + std::to_string(wide.size() - 1));
}

TEST(PropertyListScalars, ReadsNumbers)
{
    EXPECT_EQ(wholeNumberFromText(" +12\n"), 12);
    EXPECT_EQ(wholeNumberFromText("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    for (const char* text : {"", "+", "+-1", "--1", "1 2", "0x10", "1e3", "9223372036854775808"})
        EXPECT_EQ(wholeNumberFromText(text), std::nullopt) << text;
    EXPECT_EQ(numberFromText("0.1"), 0.1);
    EXPECT_EQ(numberFromText("+.5e1 "), 5.0);
    EXPECT_EQ(numberFromText("5e-324"), 5e-324);
    EXPECT_EQ(numberFromText("+infinity"), std::numeric_limits<double>::infinity());
    EXPECT_TRUE(numberFromText("nan").has_value());
    for (const char* text : {"", "+-1", "0,5", "1.5x", "0x1p3"})
        EXPECT_EQ(numberFromText(text), std::nullopt) << text;
}

TEST(PropertyListScalars, ReadsAndWritesBase64)
{
    for (const std::string bytes : {"", "a", "ab", "abc", "abcd", "\xFF\xFE\xFD\x01\x02"}) {
        EXPECT_EQ(bytesFromBase64(base64FromBytes(bytes)), bytes);
    }
    EXPECT_EQ(base64FromBytes("light work."), "bGlnaHQgd29yay4=");
    EXPECT_EQ(base64FromBytes(std::string("\0\0", 2)), "AAA=");
    EXPECT_EQ(bytesFromBase64(" b G\nl\tn aHQgd29yay4\r = "), "light work.");
    for (const char* text : {"A", "A=", "AA", "AAA", "AA=", "AAA==", "AAAA=", "A=AA", "AA==AA==", "A*A=", "===="})
        EXPECT_EQ(bytesFromBase64(text), std::nullopt) << text;
}

TEST(PropertyListScalars, ReadsDates)
{
    EXPECT_EQ(secondsFromDate("2001-01-01T00:00:00Z"), 0);
    EXPECT_EQ(secondsFromDate(" 2013-03-18T09:30:05Z "), 385291805);
    EXPECT_EQ(secondsFromDate("1970-01-01T00:00:00Z"), -978307200);
    EXPECT_EQ(secondsFromDate("2024-02-29T23:59:59Z"), 730943999);
    for (const char* text : {"", "2013-03-18", "2013-03-18T09:30:05", "2013-02-29T00:00:00Z", "2013-13-01T00:00:00Z", "2013-03-18T24:00:00Z", "2013-03-18T09:60:00Z",
             "9999-01-01T00:00:00Z", "1601-01-01T00:00:00Z", "2013-03-18T09:30:05Zx", "20a3-03-18T09:30:05Z"})
        EXPECT_EQ(secondsFromDate(text), std::nullopt) << text;
}

} // namespace
} // namespace TOLVGraphing::plist
