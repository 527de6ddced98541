#include "DisplayGuard.h"

#include <QByteArray>

#include <cstdio>
#include <cstdlib>

namespace TOLVGraphing {

namespace {

/// Qt's handlers are plain functions.
DisplayGuard* currentGuard = nullptr;

} // namespace

DisplayGuard::DisplayGuard(const QString& program, const QString& withoutDisplay) : m_program(program), m_withoutDisplay(withoutDisplay)
{
    currentGuard = this;
    m_formerHandler = qInstallMessageHandler(answerMessage);
}

DisplayGuard::~DisplayGuard()
{
    qInstallMessageHandler(m_formerHandler);
    currentGuard = nullptr;
}

bool DisplayGuard::isDisplayNamed()
{
    return !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

void DisplayGuard::sayThatDisplayIsMissing() const
{
    QString line = m_program + ": found no display to open a window on";
    const QString platform = qEnvironmentVariable("QT_QPA_PLATFORM");
    if (!platform.isEmpty())
        line += " with QT_QPA_PLATFORM=" + platform;
    line += ", expected a desktop session (DISPLAY or WAYLAND_DISPLAY)";
    if (!m_withoutDisplay.isEmpty())
        line += "; " + m_withoutDisplay;
    std::fputs((line + "\n").toLocal8Bit().constData(), stderr);
}

void DisplayGuard::answerMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const DisplayGuard& guard = *currentGuard;
    if (type == QtFatalMsg) {
        guard.sayThatDisplayIsMissing();
        std::fflush(nullptr);
        std::_Exit(1);
    }
    // What the platform says of the failed connection is in our line.
    if (type != QtInfoMsg && type != QtWarningMsg && guard.m_formerHandler)
        guard.m_formerHandler(type, context, text);
}

} // namespace TOLVGraphing
