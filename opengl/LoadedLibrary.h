#pragma once

namespace TOLVGraphing::opengl {

/// True when the program has loaded this library. It is not loaded for the question.
[[nodiscard]] bool isLoaded(const char* library);

} // namespace TOLVGraphing::opengl
