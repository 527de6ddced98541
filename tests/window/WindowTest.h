#pragma once

#include "../desktop/TemporaryFolder.h"

#include <apps/viewer/qt/DocumentController.h>
#include <apps/viewer/qt/FileCommands.h>
#include <apps/viewer/qt/MainWindow.h>

#include <gmock/gmock.h>

#include <QMessageBox>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>
#include <string>

namespace TOLVGraphing::app {

/// Answers the next message box with a button and keeps what it said.
class DialogAnswer {
public:
    explicit DialogAnswer(QMessageBox::StandardButton button);

    [[nodiscard]] bool isGiven() const { return m_isGiven; }
    [[nodiscard]] std::string text() const { return m_text.toStdString(); }
    [[nodiscard]] std::string reason() const { return m_reason.toStdString(); }
    /// Nothing in its texts was taken for markup.
    [[nodiscard]] bool wasLetterByLetter() const { return m_wasLetterByLetter; }

private:
    QTimer m_timer;
    bool m_isGiven = false;
    QString m_text;
    QString m_reason;
    bool m_wasLetterByLetter = false;
};

/// A test of a window, with a folder for its files and empty settings.
class WindowTest : public ::testing::Test {
protected:
    WindowTest();

    /// Runs the event loop until the condition holds, at most ten seconds; true when it does.
    static bool waitUntil(const std::function<bool()>& condition);
    /// Runs the event loop for this time at least.
    static void runEvents(int milliseconds);
    /// Opens the files and waits for their series.
    void open(const QStringList& paths);
    /// Writes a file and answers its path.
    QString write(const std::string& name, const std::string& content) const;
    /// "t,a,b" with four rows: t 1 2 3 4, a 10 20 30 40, b 4 3 2 1.
    QString writeExample() const;

    [[nodiscard]] const GraphDocument& document() const { return window.controller()->document(); }
    [[nodiscard]] const TOLVGraph& graph() const { return *document().graph(); }

    testing_support::TemporaryFolder folder;
    std::unique_ptr<MainWindow> heldWindow;
    MainWindow& window;
};

} // namespace TOLVGraphing::app
