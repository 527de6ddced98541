#include "DisplayGuard.h"

#include <QByteArray>

#include <atomic>
#include <cstdio>
#include <cstdlib>

namespace TOLVGraphing {

namespace {

/// The guard that answers: Qt's handlers are plain functions, and any thread may have something to say.
std::atomic<const DisplayGuard*>& currentGuard()
{
    static std::atomic<const DisplayGuard*> guard = nullptr;
    return guard;
}

} // namespace

// Copies of Qt's texts share their letters, and its interfaces take references.
DisplayGuard::DisplayGuard(const QString& program, const QString& withoutDisplay) : m_program(program), m_withoutDisplay(withoutDisplay) // NOLINT(modernize-pass-by-value)
{
    currentGuard() = this;
    m_formerHandler = qInstallMessageHandler(answerMessage);
}

DisplayGuard::~DisplayGuard()
{
    qInstallMessageHandler(m_formerHandler);
    currentGuard() = nullptr;
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
    static_cast<void>(std::fputs((line + "\n").toLocal8Bit().constData(), stderr));
}

void DisplayGuard::answerMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const DisplayGuard& guard = *currentGuard().load();
    if (type == QtFatalMsg) {
        guard.sayThatDisplayIsMissing();
        static_cast<void>(std::fflush(nullptr));
        std::_Exit(1);
    }
    // What the platform says of the failed connection is in our line.
    if (type != QtInfoMsg && type != QtWarningMsg && guard.m_formerHandler)
        guard.m_formerHandler(type, context, text);
}

} // namespace TOLVGraphing
