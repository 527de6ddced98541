#pragma once

#include <hosts/qt6/GraphWidget.h>

namespace TOLVGraphing::app {

// Dark or light, for all windows of the program.

/// What the user has chosen; follows the desktop where nothing was.
[[nodiscard]] GraphAppearance chosenAppearance();
/// Keeps a choice in the settings.
void storeAppearance(GraphAppearance appearance);
/// Gives the program's windows the colours for it; graphs follow their palette.
void applyAppearance(GraphAppearance appearance);

} // namespace TOLVGraphing::app
