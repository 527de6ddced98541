#include "QtServices.h"

#include "GraphAccessible.h"
#include "QtPasteboard.h"
#include "QtUserDefaults.h"

#include <desktop/output/DesktopDocumentRenderer.h>
#include <desktop/text/PangoTextSystem.h>

#include <memory>

namespace TOLVGraphing {

void installQtServices()
{
    static const bool isInstalled = [] {
        installDesktopTextSystem();
        installDesktopDocumentRenderer();
        Pasteboard::setGeneralPasteboard(std::make_shared<QtPasteboard>());
        UserDefaults::setStandardUserDefaults(std::make_shared<QtUserDefaults>());
        installGraphAccessibility();
        return true;
    }();
    static_cast<void>(isInstalled);
}

} // namespace TOLVGraphing
