#pragma once

#include <sys/types.h>

#include <string>

namespace TOLVGraphing::testing_support {

/// A display (Xvfb) of a test's own: no window manager, no clipboard manager, 1600 by 1200 pixels, no network port.
class PrivateDisplay {
public:
    /// Starts the display and waits until programs can connect.
    PrivateDisplay();
    /// Ends it.
    ~PrivateDisplay();
    PrivateDisplay(const PrivateDisplay&) = delete;
    PrivateDisplay& operator=(const PrivateDisplay&) = delete;

    /// Ends the display before that; its programs lose their connections.
    void end();

    [[nodiscard]] static bool isInstalled();
    /// For example ":99"; empty when the display refused to start.
    [[nodiscard]] const std::string& name() const { return m_name; }

private:
    pid_t m_process = -1;
    std::string m_name;
};

} // namespace TOLVGraphing::testing_support
