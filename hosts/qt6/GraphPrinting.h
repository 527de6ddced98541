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

/// Printing of a view: the graph in the upper part of a page, two and a half times as wide as high, and the legend of its series below it.

/// A page of the view (copied; its graph is shared) with the legend of its graph.
[[nodiscard]] TOLV_EXPORT std::shared_ptr<TOLVPrintView> printViewOfGraphView(const TOLVGraphView& view, const PrintInfo& printInfo);

/// Lets the user choose a printer or a file, paper, margins and copies, and prints; `printInfo` is what the dialog starts with and receives what was chosen. A printer's queue receives the page as PDF, a file the page as PDF, or as
/// PostScript when its name ends in .ps. False when the user cancels. Throws what printPage and printPageToPDF throw; PrintError instead of the dialog where the print server hangs.
TOLV_EXPORT bool printWithDialog(const TOLVGraphView& view, PrintInfo& printInfo, QWidget* parent);

/// Shows the page as it will be printed, with the choice of paper and direction, and offers to print it or to save it as PDF. Modal or not, as the host shows it.
class TOLV_EXPORT PrintPreviewDialog final : public QDialog {
    Q_OBJECT

public:
    /// The view is shared; `printInfo` is what the dialog starts with.
    PrintPreviewDialog(std::shared_ptr<TOLVGraphView> view, const PrintInfo& printInfo, QWidget* parent = nullptr);
    ~PrintPreviewDialog() override;

    /// What the user has chosen.
    [[nodiscard]] const PrintInfo& printInfo() const { return m_printInfo; }

protected:
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
