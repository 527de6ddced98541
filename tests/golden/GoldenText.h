#pragma once

#include <TOLVGraphing/platform/geometry/Rect.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace TOLVGraphing::testing_support {

/// The calls of a drawing into (0, 0, size) as lines. The text system is the fixed one, so that they depend on no font. The states that the drawing saves have to be restored again, which is checked.
[[nodiscard]] std::string recordedText(const Size& size, const std::function<void(const Rect& rect)>& drawing);

/// Compares a text with the file that holds what it should be, line by line. With TOLV_REGENERATE_GOLDEN=1 the file is written instead; the differences are then read before they are kept.
[[nodiscard]] testing::AssertionResult isTextOfFile(const std::string& text, const std::string& path);

} // namespace TOLVGraphing::testing_support
