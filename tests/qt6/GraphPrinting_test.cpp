#include "WidgetSetup.h"

#include <TOLVGraphing/views/TOLVGraphView.h>
#include <desktop/printing/PrintQueue.h>
#include <hosts/qt6/GraphPrinting.h>
#include <hosts/qt6/QtServices.h>
#include <tests/desktop/ExampleView.h>
#include <tests/desktop/FaultyPrintServer.h>
#include <tests/desktop/PrivatePrintServer.h>
#include <tests/desktop/Process.h>
#include <tests/desktop/TemporaryFolder.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QTimer>

#include <cups/cups.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;
using testing::HasSubstr;

namespace {

/// Does something with the dialog that comes up next, for as long as there is none waits, and then accepts or rejects it.
void whenPrintDialogOpens(const std::function<void(QPrintDialog&)>& act, QDialog::DialogCode code)
{
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [=] {
        auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        timer->deleteLater();
        act(*dialog);
        dialog->done(code);
    });
    timer->start(20);
}

class Printing : public testing::Test {
protected:
    Printing()
    {
        installQtServices();
        m_view = exampleView({0.0, 0.0, 400.0, 300.0});
        m_info.jobTitle = "Two waves";
    }

    TemporaryFolder m_folder;
    std::shared_ptr<TOLVGraphView> m_view;
    PrintInfo m_info;
};

TEST_F(Printing, CancelledDialogPrintsNothingAndChangesNothing)
{
    const PrintInfo before = m_info;
    whenPrintDialogOpens([](QPrintDialog&) {}, QDialog::Rejected);
    EXPECT_FALSE(printWithDialog(*m_view, m_info, nullptr));
    EXPECT_EQ(m_info, before);
}

TEST_F(Printing, FileOfTheDialogIsAPDFPageOfThePaper)
{
    TOLV_REQUIRE_PROGRAM("pdftotext");
    const std::string path = m_folder.path("page.pdf");
    whenPrintDialogOpens([&](QPrintDialog& dialog) { dialog.printer()->setOutputFileName(QString::fromStdString(path)); }, QDialog::Accepted);
    // The dialog's own fields are not looked at when it is closed by a program: the printer that it was given decides.
    ASSERT_TRUE(printWithDialog(*m_view, m_info, nullptr));
    EXPECT_THAT(runProcess({"pdfinfo", path}).output, HasSubstr("595 x 842 pts (A4)"));
    const std::string text = runProcess({"pdftotext", "-raw", path, "-"}).output;
    EXPECT_THAT(text, HasSubstr("Time (s)"));
    EXPECT_THAT(text, HasSubstr("one"));
    EXPECT_THAT(text, HasSubstr("two"));
}

TEST_F(Printing, QueueReceivesThePageWithTitleAndCopies)
{
    if (!PrivatePrintServer::isInstalled())
        GTEST_SKIP() << "no print server is installed";
    const PrivatePrintServer server;
    ASSERT_TRUE(server.isRunning()) << server.log();
    ::setenv("CUPS_SERVER", server.socket().c_str(), 1);
    cupsSetServer(nullptr);
    m_info.copies = 2;
    whenPrintDialogOpens([](QPrintDialog& dialog) { dialog.printer()->setPrinterName("plain"); }, QDialog::Accepted);
    EXPECT_TRUE(printWithDialog(*m_view, m_info, nullptr));
    const auto printed = server.waitForPrinted();
    ::unsetenv("CUPS_SERVER");
    cupsSetServer(nullptr);
    EXPECT_THAT(printed.arguments, HasSubstr("plain\n"));
    EXPECT_THAT(printed.arguments, HasSubstr("Two waves\n2\n"));
    ASSERT_EQ(printed.document.substr(0, 5), "%PDF-");
    TOLV_REQUIRE_PROGRAM("pdftotext");
    EXPECT_THAT(runProcess({"pdftotext", "-raw", m_folder.write("printed.pdf", printed.document), "-"}).output, HasSubstr("Time (s)"));
}

TEST_F(Printing, ServerThatHangsIsAnErrorAndNoDialogWaitsForIt)
{
    const FaultyPrintServer server(FaultyPrintServer::Fault::Hangs, 0);
    ::setenv("CUPS_SERVER", server.socket().c_str(), 1);
    cupsSetServer(nullptr);
    std::string error = "no error";
    try {
        printWithDialog(*m_view, m_info, nullptr);
    } catch (const PrintError& problem) {
        error = problem.what();
    }
    ::unsetenv("CUPS_SERVER");
    cupsSetServer(nullptr);
    EXPECT_EQ(error, "the print server " + server.socket() + " does not answer");
}

TEST_F(Printing, PreviewShowsThePageOnThePaperThatIsChosen)
{
    PrintPreviewDialog dialog(m_view, m_info);
    dialog.show();
    auto* page = dialog.findChild<QLabel*>();
    ASSERT_NE(page, nullptr);
    ASSERT_TRUE(waitUntil([&] { return !page->pixmap(Qt::ReturnByValue).isNull(); }));
    EXPECT_GT(page->pixmap(Qt::ReturnByValue).height(), page->pixmap(Qt::ReturnByValue).width());
    const auto boxes = dialog.findChildren<QComboBox*>();
    ASSERT_EQ(boxes.size(), 2);
    boxes[1]->setCurrentIndex(1);
    EXPECT_GT(page->pixmap(Qt::ReturnByValue).width(), page->pixmap(Qt::ReturnByValue).height());
    EXPECT_TRUE(dialog.printInfo().isLandscape());
    boxes[0]->setCurrentText("A3");
    EXPECT_NEAR(dialog.printInfo().paperSize.width, 1191.0, 1.0);
    EXPECT_NEAR(dialog.printInfo().paperSize.height, 842.0, 1.0);
    // What the margins were before they still are.
    EXPECT_DOUBLE_EQ(dialog.printInfo().leftMargin, m_info.leftMargin);
}

TEST_F(Printing, PreviewKeepsPaperOfASizeOfItsOwn)
{
    m_info.paperSize = {500.0, 300.0};
    PrintPreviewDialog dialog(m_view, m_info);
    EXPECT_EQ(dialog.printInfo(), m_info);
    const auto boxes = dialog.findChildren<QComboBox*>();
    ASSERT_EQ(boxes.size(), 2);
    EXPECT_EQ(boxes[0]->currentIndex(), boxes[0]->count() - 1);
    EXPECT_THAT(boxes[0]->currentText().toStdString(), HasSubstr("300"));
    boxes[1]->setCurrentIndex(0);
    EXPECT_EQ(dialog.printInfo().paperSize, (Size{300.0, 500.0}));
    boxes[0]->setCurrentText("A5");
    boxes[0]->setCurrentIndex(boxes[0]->count() - 1);
    EXPECT_EQ(dialog.printInfo().paperSize, (Size{300.0, 500.0}));
}

} // namespace
