#pragma once

#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// Installs what the library needs of the desktop for the process: fonts, the makers of documents, the application's clipboard as general pasteboard and the application's settings (QSettings, under the names of organisation and
/// application) as user defaults. Needs a QGuiApplication. The first call counts and later ones do nothing, so a host that wants a service of its own calls this and then installs that one.
TOLV_EXPORT void installQtServices();

} // namespace TOLVGraphing
