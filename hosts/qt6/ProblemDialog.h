#pragma once

#include <TOLVMath/Export.h>

#include <QString>

#include <functional>

class QMessageBox;
class QWidget;

namespace TOLVGraphing {

/// Carries something out and shows a dialog when it throws a std::exception: what failed (a sentence), and below it the reason in the exception's words, or that memory is short. True when nothing was thrown; other exceptions pass. In the thread of the application;
/// `parent` may be null.
TOLV_EXPORT bool attempt(QWidget* parent, const QString& failure, const std::function<void()>& work);

/// The dialog alone: what failed and the reason, both as they will be read, in plain text. `parent` may be null. Returns when the user has closed it; the event loop runs meanwhile.
TOLV_EXPORT void showProblem(QWidget* parent, const QString& failure, const QString& reason);

/// Has a message box show its texts letter by letter: words of files may look like markup, and none is meant for the dialog. After its texts are set, from the thread of the windows.
TOLV_EXPORT void showLetterByLetter(QMessageBox& box);

} // namespace TOLVGraphing
