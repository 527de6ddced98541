#include "WindowTest.h"

#include <TOLVGraphing/graph/TOLVGraph.h>

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLabel>
#include <QSettings>

#include <algorithm>

namespace TOLVGraphing::app {

namespace {

constexpr int kLongestWait = 10'000;
constexpr int kLookInterval = 10;

std::unique_ptr<MainWindow> newWindow()
{
    QSettings().clear();
    auto window = std::make_unique<MainWindow>();
    window->show();
    return window;
}

} // namespace

DialogAnswer::DialogAnswer(QMessageBox::StandardButton button)
{
    QObject::connect(&m_timer, &QTimer::timeout, [this, button] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        m_timer.stop();
        m_isGiven = true;
        m_text = box->text();
        m_reason = box->informativeText();
        const auto labels = box->findChildren<QLabel*>();
        m_wasLetterByLetter = std::all_of(labels.begin(), labels.end(), [](const QLabel* label) { return label->text().isEmpty() || label->textFormat() == Qt::PlainText; });
        box->button(button)->click();
    });
    m_timer.start(kLookInterval);
}

WindowTest::WindowTest() : heldWindow(newWindow()), window(*heldWindow) {}

bool WindowTest::waitUntil(const std::function<bool()>& condition)
{
    QElapsedTimer time;
    time.start();
    while (!condition() && time.elapsed() < kLongestWait)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, kLookInterval);
    return condition();
}

void WindowTest::runEvents(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

void WindowTest::open(const QStringList& paths)
{
    bool isOpen = false;
    const auto connection = QObject::connect(window.controller(), &DocumentController::opened, [&] { isOpen = true; });
    window.openFiles(paths);
    ASSERT_TRUE(waitUntil([&] { return isOpen; }));
    QObject::disconnect(connection);
}

QString WindowTest::write(const std::string& name, const std::string& content) const
{
    return QString::fromStdString(folder.write(name, content));
}

QString WindowTest::writeExample() const
{
    return write("example.csv", "t,a,b\n1,10,4\n2,20,3\n3,30,2\n4,40,1\n");
}

} // namespace TOLVGraphing::app
