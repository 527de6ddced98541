#pragma once

#include "../output/FileError.h"
#include "../output/OutputError.h"
#include "TOLVGraphing/views/TOLVPrintView.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <string>
#include <vector>

namespace TOLVGraphing {

/// The bytes of a page. A sheet has the paper size of the view's PrintInfo, landscape where that is wider than high, and the view stands on it with its lower-left corner at the left and the bottom margin. Nothing is scaled: a point of the
/// view is a point of paper. What reaches over the sheet is cut; the sheet is clear where nothing is drawn. The job's title is the document's. Also OutputKind::PNG and the other kinds work: a sheet as an image has two pixels a
/// point and is white.
///
///     const auto page = TOLVPrintView::initWithPrintInfo(PrintInfo(), *view, legendEntriesOfGraph(*view->graph()));
///     printPageToPDF(*page, "page.pdf");
///
/// Lays the page out and draws it once, in the thread that the view is used from. A view or a sheet without area, because the margins are as large as the paper, and one beyond the limits of OutputSettings throw OutputError.
[[nodiscard]] TOLV_EXPORT std::vector<std::byte> dataOfPage(TOLVPrintView& view, OutputKind kind);
/// Prints into a PDF file: `dataOfPage`, with its errors, as the contents of the file, which is replaced as a whole. A file that cannot be written throws FileError and stays as it was.
TOLV_EXPORT void printPageToPDF(TOLVPrintView& view, const std::string& path);
/// The same as PostScript. The paper's size is in the file for printers to choose the tray by.
TOLV_EXPORT void printPageToPostScript(TOLVPrintView& view, const std::string& path);

} // namespace TOLVGraphing
