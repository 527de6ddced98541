#include "RecordedCalls.h"

#include "Comparison.h"

#include <TOLVGraphing/platform/graphics/CurrentContext.h>

#include <algorithm>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace TOLVGraphing::testing_support {

namespace {

/// Numbers apart from each other by blanks and punctuation.
std::vector<double> numbersIn(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](char c) { return std::string_view("[](),").find(c) != std::string_view::npos; }, ' ');
    std::vector<double> numbers;
    std::istringstream stream(text);
    for (std::string word; stream >> word;) {
        std::size_t used = 0;
        numbers.push_back(std::stod(word, &used));
        if (used != word.size())
            throw std::runtime_error("no number: " + word);
    }
    return numbers;
}

void requireCount(const std::vector<double>& numbers, std::size_t count, const std::string& text)
{
    if (numbers.size() != count)
        throw std::runtime_error("expected " + std::to_string(count) + " numbers in: " + text);
}

Point nextPoint(std::istringstream& stream)
{
    std::string x;
    std::string y;
    if (!(stream >> x >> y))
        throw std::runtime_error("a path ends within a point");
    return {std::stod(x), std::stod(y)};
}

} // namespace

RecordedCall::RecordedCall(const std::string& line)
    : m_operation(line.substr(0, line.find(' ')))
    , m_arguments(line.size() > m_operation.size() ? line.substr(m_operation.size() + 1) : std::string())
{
}

Path RecordedCall::path() const
{
    Path path;
    std::istringstream stream(m_arguments);
    for (std::string letter; stream >> letter;) {
        if (letter == "M") {
            path.moveToPoint(nextPoint(stream));
        } else if (letter == "L") {
            path.addLineToPoint(nextPoint(stream));
        } else if (letter == "C") {
            const Point control1 = nextPoint(stream);
            const Point control2 = nextPoint(stream);
            path.addCurveToPoint(nextPoint(stream), control1, control2);
        } else if (letter == "Z") {
            path.closeSubpath();
        } else {
            throw std::runtime_error("no path: " + m_arguments);
        }
    }
    return path;
}

double RecordedCall::number() const
{
    const auto numbers = numbersIn(m_arguments);
    requireCount(numbers, 1, m_arguments);
    return numbers[0];
}

LineDash RecordedCall::dash() const
{
    const auto numbers = numbersIn(m_arguments);
    if (numbers.empty())
        throw std::runtime_error("no dash: " + m_arguments);
    return {std::vector<double>(std::next(numbers.begin()), numbers.end()), numbers[0]};
}

AffineTransform RecordedCall::transform() const
{
    const auto n = numbersIn(m_arguments);
    requireCount(n, 6, m_arguments);
    return {n[0], n[1], n[2], n[3], n[4], n[5]};
}

Point RecordedCall::textOrigin() const
{
    const std::size_t at = m_arguments.rfind(" at (");
    if (m_operation != "text" || at == std::string::npos)
        throw std::runtime_error("no text: " + m_arguments);
    const auto numbers = numbersIn(m_arguments.substr(at + 4));
    requireCount(numbers, 2, m_arguments);
    return {numbers[0], numbers[1]};
}

std::string RecordedCall::drawnText() const
{
    const std::size_t end = m_arguments.rfind('"');
    if (m_operation != "text" || end == std::string::npos || end == 0)
        throw std::runtime_error("no text: " + m_arguments);
    return m_arguments.substr(1, end - 1);
}

RecordedCalls recorded(const std::function<void()>& drawing)
{
    RecordingContext context;
    {
        const CurrentContextScope scope(context);
        drawing();
    }
    EXPECT_EQ(context.depth(), 0) << "a saved state was not restored";
    EXPECT_FALSE(context.hasUnmatchedRestore());
    RecordedCalls calls;
    for (const std::string& line : context.calls())
        calls.emplace_back(line);
    return calls;
}

RecordedCalls callsOf(const RecordedCalls& calls, std::string_view operation)
{
    RecordedCalls selected;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(selected), [&](const RecordedCall& call) { return call.operation() == operation; });
    return selected;
}

RecordedCall onlyCallOf(const RecordedCalls& calls, std::string_view operation)
{
    const RecordedCalls selected = callsOf(calls, operation);
    if (selected.size() != 1)
        throw std::runtime_error("expected one \"" + std::string(operation) + "\", found " + std::to_string(selected.size()));
    return selected.front();
}

testing::AssertionResult samePath(const Path& got, const Path& expected)
{
    return samePath(got, expected, 0.0);
}

testing::AssertionResult samePath(const Path& got, const Path& expected, double tolerance)
{
    if (!std::equal(got.verbs().begin(), got.verbs().end(), expected.verbs().begin(), expected.verbs().end()))
        return testing::AssertionFailure() << "got " << toString(got) << ", expected " << toString(expected);
    const std::vector<Point> gotPoints(got.points().begin(), got.points().end());
    const std::vector<Point> expectedPoints(expected.points().begin(), expected.points().end());
    return within(gotPoints, expectedPoints, tolerance, tolerance);
}

} // namespace TOLVGraphing::testing_support
