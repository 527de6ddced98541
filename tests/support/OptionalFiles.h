#pragma once

#include <TestPaths.h>

#include <filesystem>
#include <string>

namespace TOLVGraphing::testing_support {

/// A file or folder of real measurements or archives that is no part of the project and may lie beside the checkout: `../shared/KIND/NAME`, seen from the source folder. Empty where there is none; tests
/// that want it skip then, with a line.
[[nodiscard]] inline std::filesystem::path optionalFile(const std::string& kind, const std::string& name = "")
{
    std::error_code error;
    const std::filesystem::path path = std::filesystem::path(TOLV_SOURCE_DIR) / "../shared" / kind / name;
    return std::filesystem::exists(path, error) ? path : std::filesystem::path();
}

} // namespace TOLVGraphing::testing_support
