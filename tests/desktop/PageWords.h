#pragma once

#include "DrawnPage.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing::testing_support {

/// A word that another program found on a page: where its baseline starts and ends, in points from the upper left corner, y growing downwards.
struct PageWord {
    std::string text;
    Point start;
    Point end;
    /// A program that tells boxes leaves open whether a word reads from the left or from below: start and end of its baseline in the second case.
    std::optional<std::pair<Point, Point>> fromBelow;
};

/// The words of a PDF's first page by pdftotext, which has to be installed. It tells boxes that are one em high, of which the baseline is reckoned. Throws std::runtime_error where it fails.
[[nodiscard]] std::vector<PageWord> wordsOfPDF(const std::string& path);
/// The words of a PostScript or EPS page by ghostscript (gs), which has to be installed. It does not tell the letters of turned texts apart, so that such a text comes as one word without its
/// blanks. Throws std::runtime_error where it fails.
[[nodiscard]] std::vector<PageWord> wordsOfPostScript(const std::string& path, bool isEPS);

/// Every word of the page's texts was found at its place within the tolerance in points, and no other words were found. Words that lie on one another count once. Turned texts may have been
/// found as one word.
[[nodiscard]] testing::AssertionResult standWhereDrawn(const std::vector<PageWord>& words, const DrawnPage& page, double tolerance);

} // namespace TOLVGraphing::testing_support
