#pragma once

#include <functional>
#include <string>

/// Draws a scene without a window or a display, by EGL without a surface, with four samples a pixel, and writes it as a PNG file with its resolution. The drawing is run with the context current and gets the size in
/// pixels. Throws std::runtime_error where EGL or the driver cannot, or the file cannot be written.
void writeScene(const std::string& path, int width, int height, double pixelsPerPoint, const std::function<void(int width, int height)>& drawing);
