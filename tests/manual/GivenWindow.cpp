#include "GivenWindow.h"

#include <QPixmap>
#include <QTimer>

namespace TOLVGraphing::testing_support::given {

namespace {

/// Paints are over by then.
constexpr int kPatience = 300;

/// The application is that of a program on a page.
bool keepsPicture = true;

void keepPictureAndQuit()
{
    if (!keepsPicture) {
        QCoreApplication::quit();
        return;
    }
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->isWindow())
            window->grab().save("window.png");
    }
    QCoreApplication::quit();
}

void quitSoon()
{
    QTimer::singleShot(kPatience, qApp, &keepPictureAndQuit);
}

} // namespace

Application::Application() : m_application(m_argumentCount, m_arguments)
{
    keepsPicture = false;
}

void show(QWidget& window)
{
    window.show();
    QApplication::exec();
}

} // namespace TOLVGraphing::testing_support::given

namespace {

void quitManualBlockSoon()
{
    TOLVGraphing::testing_support::given::quitSoon();
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(quitManualBlockSoon)
