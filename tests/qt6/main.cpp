// Runs the tests of what Qt shows on a display of their own, or without one ("offscreen") where no display server is installed, with settings in a folder of their own.

#include <tests/desktop/PrivateDisplay.h>
#include <tests/desktop/TemporaryFolder.h>

#include <QApplication>
#include <QSettings>

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

using namespace TOLVGraphing::testing_support;

int main(int argumentCount, char** arguments)
{
    testing::InitGoogleTest(&argumentCount, arguments);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    const TemporaryFolder folder;
    std::optional<PrivateDisplay> display;
    if (PrivateDisplay::isInstalled())
        display.emplace();
    const bool hasDisplay = display && !display->name().empty();
    if (hasDisplay)
        ::setenv("DISPLAY", display->name().c_str(), 1);
    ::setenv("QT_QPA_PLATFORM", hasDisplay ? "xcb" : "offscreen", 1);
    ::setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
    ::setenv("HOME", folder.path().c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", folder.path("config").c_str(), 1);
    QApplication application(argumentCount, arguments);
    QApplication::setStyle("Fusion");
    QApplication::setOrganizationName("TOLVGraphing");
    QApplication::setApplicationName("tests");
    return RUN_ALL_TESTS();
}
