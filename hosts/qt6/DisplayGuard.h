#pragma once

#include <TOLVMath/Export.h>

#include <QString>
#include <QtGlobal>

namespace TOLVGraphing {

/// For a program to hold while it makes its QApplication. A display that is not there or does not answer, and a platform that Qt does not know, then end the program with the status 1 and one line on standard error, which names DISPLAY,
/// WAYLAND_DISPLAY and a QT_QPA_PLATFORM that is set; Qt by itself says several lines and aborts. What Qt says meanwhile as a warning or for information is left out; other messages go to the handler that was there before. Any other fatal message of Qt ends the program likewise. One guard at a time, in the thread of the
/// application:
///
///     std::optional<DisplayGuard> guard(std::in_place, "program");
///     QApplication application(argumentCount, arguments);
///     guard.reset();
class TOLV_EXPORT DisplayGuard {
public:
    /// Takes Qt's messages from now on. The program's name stands at the front of the line. What it can do without a display may stand at the end: "expected ...; " and this text.
    explicit DisplayGuard(const QString& program, const QString& withoutDisplay = QString());
    /// Gives Qt's messages back to the handler that had them before.
    ~DisplayGuard();
    DisplayGuard(const DisplayGuard&) = delete;
    DisplayGuard& operator=(const DisplayGuard&) = delete;

    /// The environment names a display (DISPLAY, WAYLAND_DISPLAY), or a platform for windows (QT_QPA_PLATFORM). Whether it answers, only connecting can tell.
    [[nodiscard]] static bool isDisplayNamed();
    /// Says the line on standard error, for a program that has found out by itself.
    void sayThatDisplayIsMissing() const;

private:
    static void answerMessage(QtMsgType type, const QMessageLogContext& context, const QString& text);

    QString m_program;
    QString m_withoutDisplay;
    QtMessageHandler m_formerHandler = nullptr;
};

} // namespace TOLVGraphing
