#include "Display.h"

#include <QByteArray>
#include <QtGlobal>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace TOLVGraphing::app {

namespace {

QtMessageHandler formerHandler = nullptr;

void answerFailure(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (type == QtFatalMsg) {
        sayThatDisplayIsMissing();
        std::fflush(nullptr);
        std::_Exit(1);
    }
    // What the platform says of the failed connection is in our line.
    if (type != QtInfoMsg && type != QtWarningMsg && formerHandler)
        formerHandler(type, context, text);
}

} // namespace

bool hasDisplay(const QStringList& arguments)
{
    const bool choosesPlatform = std::any_of(arguments.begin(), arguments.end(), [](const QString& argument) { return argument == QLatin1String("-platform") || argument == QLatin1String("--platform"); });
    return choosesPlatform || !qgetenv("QT_QPA_PLATFORM").isEmpty() || !qgetenv("DISPLAY").isEmpty() || !qgetenv("WAYLAND_DISPLAY").isEmpty();
}

void sayThatDisplayIsMissing()
{
    std::fputs("tolvgraph-viewer: found no display to open a window on, expected a desktop session (DISPLAY or WAYLAND_DISPLAY); tolvgraph draws files without one\n", stderr);
}

DisplayGuard::DisplayGuard()
{
    formerHandler = qInstallMessageHandler(answerFailure);
}

DisplayGuard::~DisplayGuard()
{
    qInstallMessageHandler(formerHandler);
    formerHandler = nullptr;
}

} // namespace TOLVGraphing::app
