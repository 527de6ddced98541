#pragma once

#include <TOLVMath/Export.h>

#include <QString>

#include <functional>

class QWidget;

namespace TOLVGraphing {

/// Carries something out and shows a dialog when it throws: what failed, and below it the reason in the exception's words. True when nothing was thrown.
TOLV_EXPORT bool attempt(QWidget* parent, const QString& failure, const std::function<void()>& work);

/// The dialog alone. Returns when the user has closed it.
TOLV_EXPORT void showProblem(QWidget* parent, const QString& failure, const QString& reason);

} // namespace TOLVGraphing
