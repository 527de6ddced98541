#pragma once

#include <TOLVGraphing/platform/ui/PrintInfo.h>
#include <TOLVMath/Export.h>

#include <QDialog>

#include <memory>

class QComboBox;
class QLabel;
class QWidget;

namespace TOLVGraphing {

class TOLVGraphView;
class TOLVPrintView;

/// A page of the view (copied; its graph is shared): the graph in the upper part of the page, two and a half times as wide as high, and the legend of its series below it. Never null; a view without a graph makes a page without
/// a legend. Its area is what the margins leave of the paper.
[[nodiscard]] TOLV_EXPORT std::shared_ptr<TOLVPrintView> printViewOfGraphView(const TOLVGraphView& view, const PrintInfo& printInfo);

/// Lets the user choose a printer or a file, paper, margins and copies, and prints such a page; the dialog is modal to `parent`, which may be null. `printInfo` is what the dialog starts with and receives what was chosen. A printer's queue receives the page as PDF, a file the page as PDF, or as
/// PostScript when its name ends in .ps. False when the user cancels, and `printInfo` is as it was. Throws what printPage and printPageToPDF throw; PrintError instead of the dialog where the print server has not answered within three seconds.
TOLV_EXPORT bool printWithDialog(const TOLVGraphView& view, PrintInfo& printInfo, QWidget* parent);

/// Shows the page as it will be printed, with the choice of paper and direction, and offers to print it or to save it as PDF or PostScript; printing closes the dialog as accepted. Errors are shown, those of the page in its place. Modal or not, as the host shows
/// it. The page is laid out and drawn when the dialog opens, when a choice is made and when the dialog changes its size.
class TOLV_EXPORT PrintPreviewDialog final : public QDialog {
    Q_OBJECT

public:
    /// The view is shared and not null; `printInfo` (copied) is what the dialog starts with; its paper is one of those to choose from.
    PrintPreviewDialog(std::shared_ptr<TOLVGraphView> view, const PrintInfo& printInfo, QWidget* parent = nullptr);
    ~PrintPreviewDialog() override;

    /// What the user has chosen, for the host to keep once the dialog is closed.
    [[nodiscard]] const PrintInfo& printInfo() const { return m_printInfo; }

protected:
    /// Fits the picture of the page.
    void resizeEvent(QResizeEvent* event) override;

private:
    void choosePaper();
    void showPage();
    void print();
    void savePDF();

    std::shared_ptr<TOLVGraphView> m_view;
    PrintInfo m_printInfo;
    QComboBox* m_paper = nullptr;
    QComboBox* m_direction = nullptr;
    QLabel* m_page = nullptr;
    QImage m_image;
};

} // namespace TOLVGraphing
