#include "PageWords.h"

#include "Process.h"
#include "XmlElements.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <sstream>
#include <stdexcept>

namespace TOLVGraphing::testing_support {

namespace {

/// The boxes of pdftotext reach this part of their height below the baseline of the library's faces.
constexpr double kBelowBaseline = 0.271;
/// Ghostscript tells whole pixels: this many make a point.
constexpr int kPixelsPerPoint = 100;

/// Where a text's word should be: the first begins where the text does and the last ends where it ends.
struct ExpectedWord {
    std::string text;
    const DrawnText* drawn = nullptr;
    bool isFirst = false;
    bool isLast = false;
};

std::vector<ExpectedWord> wordsOfText(const DrawnText& text)
{
    std::vector<ExpectedWord> words;
    std::istringstream stream(text.text);
    for (std::string word; stream >> word;)
        words.push_back({word, &text, words.empty(), false});
    if (!words.empty())
        words.back().isLast = true;
    return words;
}

/// The point seen along a text's baseline: the distance from the text's start, and the distance to the side.
Point alongBaseline(const DrawnText& text, Point point)
{
    const double radians = text.angle * std::numbers::pi / 180.0;
    const double dx = point.x - text.x;
    const double dy = point.y - text.y;
    return {dx * std::cos(radians) + dy * std::sin(radians), dy * std::cos(radians) - dx * std::sin(radians)};
}

bool stands(const PageWord& word, const ExpectedWord& expected, double tolerance)
{
    const DrawnText& text = *expected.drawn;
    const bool readsFromBelow = word.fromBelow && text.angle != 0.0;
    const Point start = alongBaseline(text, readsFromBelow ? word.fromBelow->first : word.start);
    const Point end = alongBaseline(text, readsFromBelow ? word.fromBelow->second : word.end);
    const auto isNear = [&](double one, double other) { return std::abs(one - other) <= tolerance; };
    const bool isWithin = start.x >= -tolerance && end.x <= text.length + tolerance && start.x < end.x;
    return isWithin && isNear(start.y, 0.0) && isNear(end.y, 0.0) && (!expected.isFirst || isNear(start.x, 0.0)) && (!expected.isLast || isNear(end.x, text.length));
}

PageWord wordOfBox(const XmlElement& box)
{
    const double left = box.number("xMin");
    const double top = box.number("yMin");
    const double right = box.number("xMax");
    const double bottom = box.number("yMax");
    const double baseline = bottom - kBelowBaseline * (bottom - top);
    const double uprightBaseline = right - kBelowBaseline * (right - left);
    return {box.text, {left, baseline}, {right, baseline}, std::pair<Point, Point>{{uprightBaseline, bottom}, {uprightBaseline, top}}};
}

std::string requiredOutput(const std::vector<std::string>& arguments)
{
    const ProcessResult result = runProcess(arguments);
    if (result.status != 0)
        throw std::runtime_error(arguments.front() + ": " + result.text());
    return result.output;
}

/// Adds a character to the words: to the last one where it starts at that one's end.
void addCharacter(const XmlElement& character, std::vector<PageWord>& words)
{
    constexpr double kLargestKerning = 1.5;
    constexpr double kLargestBlank = 6.0;
    const std::string& letter = character.attribute("c");
    if (letter.find_first_not_of(' ') == std::string::npos)
        return;
    double box[4] = {};
    std::istringstream stream(character.attribute("bbox"));
    for (double& number : box) {
        stream >> number;
        number /= kPixelsPerPoint;
    }
    const bool isTurned = box[0] == box[2];
    const bool isOfSameRun = !words.empty() && words.back().end == Point{box[2], box[3]};
    const bool isNear = !words.empty() && std::hypot(box[0] - words.back().end.x, box[1] - words.back().end.y) < (isTurned ? kLargestBlank : kLargestKerning);
    const bool goesOn = isOfSameRun || isNear;
    if (!goesOn)
        words.push_back({"", {box[0], box[1]}, {}, std::nullopt});
    words.back().text += letter;
    words.back().end = {box[2], box[3]};
}

/// Where the words that read so were found.
std::string foundText(const std::vector<PageWord>& words, const std::string& text)
{
    std::string places;
    for (const PageWord& word : words) {
        if (word.text == text)
            places += "; '" + text + "' is at " + toString(word.start) + " to " + toString(word.end);
    }
    return places;
}

} // namespace

std::vector<PageWord> wordsOfPDF(const std::string& path)
{
    std::vector<PageWord> words;
    for (const XmlElement& element : xmlElements(requiredOutput({"pdftotext", "-bbox", path, "-"}))) {
        if (element.name == "word")
            words.push_back(wordOfBox(element));
    }
    return words;
}

std::vector<PageWord> wordsOfPostScript(const std::string& path, bool isEPS)
{
    std::vector<std::string> arguments{
        "gs", "-q", "-dNOPAUSE", "-dBATCH", "-dSAFER", "-sDEVICE=txtwrite", "-dTextFormat=0", "-r" + std::to_string(72 * kPixelsPerPoint), "-sOutputFile=-"};
    if (isEPS)
        arguments.emplace_back("-dEPSCrop");
    arguments.push_back(path);
    std::vector<PageWord> words;
    for (const XmlElement& element : xmlElements(requiredOutput(arguments))) {
        if (element.name == "char")
            addCharacter(element, words);
    }
    return words;
}

testing::AssertionResult standWhereDrawn(const std::vector<PageWord>& words, const DrawnPage& page, double tolerance)
{
    std::vector<bool> isExpected(words.size(), false);
    const auto isFound = [&](const ExpectedWord& expected) {
        bool found = false;
        for (std::size_t i = 0; i < words.size(); ++i) {
            if (words[i].text == expected.text && stands(words[i], expected, tolerance))
                found = isExpected[i] = true;
        }
        return found;
    };
    for (const DrawnText& text : page.texts) {
        const auto expectedWords = wordsOfText(text);
        std::string whole;
        for (const ExpectedWord& expected : expectedWords)
            whole += expected.text;
        if (text.angle != 0.0 && isFound({whole, &text, true, true}))
            continue;
        for (const ExpectedWord& expected : expectedWords) {
            if (!isFound(expected))
                return testing::AssertionFailure() << "no word '" << expected.text << "' for the text '" << text.text << "' at " << text.x << ", " << text.y << " of length "
                                                   << text.length << foundText(words, expected.text);
        }
    }
    const auto unexpected = std::find(isExpected.begin(), isExpected.end(), false);
    if (unexpected != isExpected.end())
        return testing::AssertionFailure() << "a word that was not drawn there" << foundText(words, words[static_cast<std::size_t>(unexpected - isExpected.begin())].text);
    return testing::AssertionSuccess();
}

} // namespace TOLVGraphing::testing_support
