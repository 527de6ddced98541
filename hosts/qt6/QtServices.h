#pragma once

#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// Installs what the library needs of the desktop for the process: fonts, the makers of documents, the application's clipboard as general pasteboard and the application's settings (QSettings, under the names of organisation and
/// application) as user defaults. Assistive programs hear of graph widgets from then on. Needs a QGuiApplication, whose
/// thread calls it. The first call counts and later ones do nothing, so a host that wants a service of its own calls this and then installs that one:
///
///     installQtServices();
///     UserDefaults::setStandardUserDefaults(mySettings);
///     Pasteboard::setGeneralPasteboard(myClipboard);
///
/// What was installed before the first call is replaced. Nothing is installed for texts in OpenGL scenes (see installDesktopStringRasterizer and installEpoxyOpenGLSystem).
TOLV_EXPORT void installQtServices();

} // namespace TOLVGraphing
