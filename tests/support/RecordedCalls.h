#pragma once

#include <TOLVGraphing/platform/geometry/AffineTransform.h>
#include <TOLVGraphing/platform/graphics/Path.h>
#include <TOLVGraphing/platform/graphics/RecordingContext.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing::testing_support {

/// One line of a recording context, taken apart. The readers throw std::runtime_error when the line does not hold what they read.
class RecordedCall {
public:
    explicit RecordedCall(const std::string& line);

    /// "stroke", "clip", "lineWidth", ...
    [[nodiscard]] const std::string& operation() const { return m_operation; }
    /// What follows the operation.
    [[nodiscard]] const std::string& arguments() const { return m_arguments; }

    /// Of a fill, stroke or clip.
    [[nodiscard]] Path path() const;
    /// Of a line width or miter limit.
    [[nodiscard]] double number() const;
    /// Of a dash.
    [[nodiscard]] LineDash dash() const;
    [[nodiscard]] AffineTransform transform() const;
    /// Where a text was drawn.
    [[nodiscard]] Point textOrigin() const;
    /// The text that was drawn.
    [[nodiscard]] std::string drawnText() const;

private:
    std::string m_operation;
    std::string m_arguments;
};

using RecordedCalls = std::vector<RecordedCall>;

/// What a drawing into a fresh recording context does. The states saved have to be restored again, which is checked.
[[nodiscard]] RecordedCalls recorded(const std::function<void()>& drawing);
/// The calls of one operation, in order.
[[nodiscard]] RecordedCalls callsOf(const RecordedCalls& calls, std::string_view operation);
/// The only call of an operation; throws std::runtime_error unless there is exactly one.
[[nodiscard]] RecordedCall onlyCallOf(const RecordedCalls& calls, std::string_view operation);

/// The elements and their points are equal, 0 and -0 being the same; widths and dashes are not looked at.
[[nodiscard]] testing::AssertionResult samePath(const Path& got, const Path& expected);
/// The elements are of the same kinds, and the coordinates of their points differ by at most the tolerance.
[[nodiscard]] testing::AssertionResult samePath(const Path& got, const Path& expected, double tolerance);

} // namespace TOLVGraphing::testing_support
