#pragma once

#include <QIcon>

namespace TOLVGraphing::app {

/// What desktops know the program by: the name of its desktop file, its icon and its metadata.
inline constexpr const char* kProgramIdentifier = "io.github.tolvgraphing.Viewer";

/// The program's sign: the desktop's where it is installed, else the same one, which the program has in itself.
[[nodiscard]] QIcon programIcon();

} // namespace TOLVGraphing::app
