#pragma once

#include "../desktop/DrawnPage.h"
#include "../desktop/Process.h"
#include "../desktop/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

/// Runs the command line with these arguments.
[[nodiscard]] ProcessResult tolvgraph(std::vector<std::string> arguments, const ProcessSurroundings& surroundings = {});

/// A test with a folder of its own for measurements and pictures.
class CommandLineTest : public testing::Test {
protected:
    /// The command line started in the folder, so that files are given by their bare names.
    [[nodiscard]] ProcessResult run(const std::vector<std::string>& arguments, ProcessSurroundings surroundings = {}) const;
    /// What --list-columns prints about a file; anything but success fails the test.
    [[nodiscard]] std::string listing(const std::string& file) const;
    /// Draws with these arguments to "picture.svg" and answers what it shows; anything but success fails the test and answers an empty page. Messages are allowed and kept in `messages`.
    [[nodiscard]] DrawnPage drawn(std::vector<std::string> arguments, std::string* messages = nullptr) const;

    const TemporaryFolder& folder() const { return m_folder; }

private:
    TemporaryFolder m_folder;
};

/// Ended with status 0 and said nothing on either output.
[[nodiscard]] testing::AssertionResult succeededSilently(const ProcessResult& result);
/// Ended with this status and exactly this on standard error, and nothing on standard output.
[[nodiscard]] testing::AssertionResult endedWith(const ProcessResult& result, int status, const std::string& error);

/// The points of the curve: of the only path stroked in the colour, the first of the cycle unless another is given.
[[nodiscard]] std::vector<Point> curvePoints(const DrawnPage& page, const std::string& color = "#0072b2");

/// The frame around the data area: the closed path in the colour of the major grid. Coordinates are those of the page.
[[nodiscard]] Rect frameOfDataArea(const DrawnPage& page);

} // namespace TOLVGraphing::testing_support
