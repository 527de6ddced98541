#pragma once

#include <QIcon>

namespace TOLVGraphing::app {

/// The program's sign: the desktop's where it is installed, else the same one drawn here.
[[nodiscard]] QIcon programIcon();

} // namespace TOLVGraphing::app
