#pragma once

#include <TOLVGraphing/platform/geometry/Point.h>

#include <string>

namespace TOLVGraphing::app {

class GraphDocument;

/// Writes a picture of the document as its window shows it: the visible ranges, markers, looks, and the legend where the options ask for one. The suffix says the kind: .pdf .ps .eps .svg .png .tif .tiff.
/// `size` is in points, `scale` the pixels a point of PNG and TIFF. The picture is laid out for its own size on a copy of the graph, so that a window's layout is not disturbed; of a document as it is first shown, it has the very
/// bytes that the command line writes with the same options.
///
/// The file is replaced as a whole or stays as it was. Throws DocumentError for a document without data and where the file is one of its sources, FileError for other suffixes and where the file cannot be written, OutputError
/// for sizes that the kind cannot have, and MeasurementError where a source has become shorter since it was read.
void exportDocument(const GraphDocument& document, const std::string& path, const Size& size, double scale);

} // namespace TOLVGraphing::app
