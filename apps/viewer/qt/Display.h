#pragma once

#include <QStringList>

namespace TOLVGraphing::app {

/// A display may be there: the environment names one, or a platform of its own choice for windows. Whether it answers, only connecting can tell.
[[nodiscard]] bool hasDisplay(const QStringList& arguments);
/// One line for standard error.
void sayThatDisplayIsMissing();
/// From now until the end of the guard, a display that does not answer ends the program with that line and the status 1, where it would abort otherwise.
class DisplayGuard {
public:
    DisplayGuard();
    ~DisplayGuard();
    DisplayGuard(const DisplayGuard&) = delete;
    DisplayGuard& operator=(const DisplayGuard&) = delete;
};

} // namespace TOLVGraphing::app
