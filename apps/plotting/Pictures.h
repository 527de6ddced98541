#pragma once

#include "Options.h"

#include <string>

namespace TOLVGraphing {
class GraphSheet;
}

namespace TOLVGraphing::app {

/// Draws the sheet in the size and at the scale that the options ask for, and replaces the file by the picture; the suffix says the kind. Title and program are noted in it.
/// Throws FileError when the suffix is none of .pdf .ps .eps .svg .png .tif .tiff or when the file cannot be written, and OutputError for sizes that the kind cannot have.
void writePicture(GraphSheet& sheet, const Options& options, const std::string& path);

} // namespace TOLVGraphing::app
