#pragma once

#include "FileSeries.h"
#include "Options.h"

#include <string>
#include <vector>

namespace TOLVGraphing {
class GraphSheet;
}

namespace TOLVGraphing::app {

/// Draws the sheet, which shows the files' series, in the size and at the scale that the options ask for, and replaces the file by the picture; the suffix says the kind. Title and program are noted in it.
/// Throws FileError when the suffix is none of .pdf .ps .eps .svg .png .tif .tiff or when the file cannot be written, OutputError for sizes that the kind cannot have, and as requireWholeFiles() does: nothing is written then.
void writePicture(GraphSheet& sheet, const std::vector<FileSeries>& files, const Options& options, const std::string& path);

/// Throws OutputError where a kind that the suffixes of the options' outputs ask for cannot have the size, or the size and scale, of the options.
void requirePossiblePictures(const Options& options);

} // namespace TOLVGraphing::app
