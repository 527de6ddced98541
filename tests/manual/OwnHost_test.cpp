// The example of a host of one's own: started on a display of the test's own, worked with, and looked at on the screen.

#include <tests/desktop/PrivateDisplay.h>
#include <tests/desktop/Process.h>
#include <tests/desktop/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>

// Behind GoogleTest, because their macros have names that it uses.
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>

namespace TOLVGraphing::testing_support {

namespace {

constexpr auto kPatience = std::chrono::seconds(20);
constexpr auto kPause = std::chrono::milliseconds(20);
/// So many looks that find the same tell that nothing moves.
constexpr int kLooksAtStillPicture = 25;
/// Of the window in the beginning, in pixels.
constexpr int kWidth = 640;
constexpr unsigned kLeftButton = 1;
constexpr unsigned kWheelUp = 4;

/// A pixel's part of red, green or blue.
int component(unsigned long pixel, unsigned shift)
{
    return static_cast<int>((pixel >> shift) & 0xFFU);
}

/// Of the curve, which is blue: everything else is grey.
bool isOfCurve(unsigned long pixel)
{
    return component(pixel, 0) > component(pixel, 16) + 40;
}

/// As a marker's badge is.
bool isBlack(unsigned long pixel)
{
    return (pixel & 0xFFFFFFU) == 0;
}

using PixelTest = bool (*)(unsigned long pixel);

bool waitUntil(const std::function<bool()>& condition)
{
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(kPause);
    }
    return true;
}

/// The only window on a display, as somebody at the screen sees and works with it.
class ShownWindow {
public:
    explicit ShownWindow(const std::string& display) : m_display(XOpenDisplay(display.c_str()), &XCloseDisplay)
    {
        // Windows come and go while they are looked for; without this, one that has gone ends the process.
        XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    }

    /// False when no window comes.
    bool waitForIt()
    {
        return m_display && waitUntil([this] { return findWindow(); });
    }

    /// How many pixels of the window are such.
    [[nodiscard]] int count(PixelTest isSuch) const
    {
        const XWindowAttributes place = attributes(m_window);
        const std::unique_ptr<XImage, void (*)(XImage*)> image(
            XGetImage(m_display.get(), root(), place.x, place.y, static_cast<unsigned>(place.width), static_cast<unsigned>(place.height), AllPlanes, ZPixmap),
            [](XImage* made) { XDestroyImage(made); });
        int found = 0;
        for (int y = 0; y < place.height; ++y) {
            for (int x = 0; x < place.width; ++x)
                found += isSuch(XGetPixel(image.get(), x, y)) ? 1 : 0;
        }
        return found;
    }

    /// The number of such pixels once it meets the condition; that of the last look where it does not.
    int countWhen(PixelTest isSuch, const std::function<bool(int)>& condition) const
    {
        int found = 0;
        waitUntil([&] { return condition(found = count(isSuch)); });
        return found;
    }

    /// The number of such pixels when it has not changed for a while.
    int countWhenStill(PixelTest isSuch) const
    {
        int found = count(isSuch);
        int looks = 0;
        waitUntil([&] {
            const int now = count(isSuch);
            looks = now == found ? looks + 1 : 0;
            found = now;
            return looks == kLooksAtStillPicture;
        });
        return found;
    }

    void turnWheelUp(int x, int y) const { pressButton(kWheelUp, x, y); }
    void doubleClick(int x, int y) const
    {
        pressButton(kLeftButton, x, y);
        pressButton(kLeftButton, x, y);
    }

    void pressKey(KeySym key) const
    {
        for (const int type : {KeyPress, KeyRelease}) {
            XEvent event{};
            event.xkey = {type, 0, True, m_display.get(), m_window, root(), None, CurrentTime, 1, 1, 1, 1, 0, XKeysymToKeycode(m_display.get(), key), True};
            send(event, type == KeyPress ? KeyPressMask : KeyReleaseMask);
        }
    }

    void resize(unsigned width, unsigned height) const
    {
        XResizeWindow(m_display.get(), m_window, width, height);
        XFlush(m_display.get());
    }

private:
    [[nodiscard]] Window root() const { return DefaultRootWindow(m_display.get()); }

    [[nodiscard]] XWindowAttributes attributes(Window window) const
    {
        XWindowAttributes result{};
        XGetWindowAttributes(m_display.get(), window, &result);
        return result;
    }

    bool findWindow()
    {
        Window parent = None;
        Window* children = nullptr;
        unsigned childCount = 0;
        Window ignoredRoot = None;
        XQueryTree(m_display.get(), root(), &ignoredRoot, &parent, &children, &childCount);
        for (unsigned i = 0; i < childCount; ++i) {
            const XWindowAttributes place = attributes(children[i]);
            if (place.map_state == IsViewable && place.width == kWidth)
                m_window = children[i];
        }
        if (children)
            XFree(children);
        return m_window != None;
    }

    void pressButton(unsigned button, int x, int y) const
    {
        XWarpPointer(m_display.get(), None, m_window, 0, 0, 0, 0, x, y);
        for (const int type : {ButtonPress, ButtonRelease}) {
            XEvent event{};
            event.xbutton = {type, 0, True, m_display.get(), m_window, root(), None, CurrentTime, x, y, x, y, 0, button, True};
            send(event, type == ButtonPress ? ButtonPressMask : ButtonReleaseMask);
        }
    }

    void send(XEvent& event, long mask) const
    {
        XSendEvent(m_display.get(), m_window, True, mask, &event);
        XFlush(m_display.get());
    }

    std::unique_ptr<Display, int (*)(Display*)> m_display;
    Window m_window = None;
};

/// Runs the example, has it worked with, and ends it by its Escape key.
ProcessResult runHost(const PrivateDisplay& display, const std::function<void(ShownWindow&)>& work)
{
    const TemporaryFolder home;
    ProcessSurroundings surroundings;
    surroundings.whileRunning = [&](pid_t) {
        ShownWindow window(display.name());
        if (!window.waitForIt()) {
            ADD_FAILURE() << "no window came";
            return;
        }
        work(window);
        window.pressKey(XK_Escape);
    };
    return runProcess({"env", "DISPLAY=" + display.name(), "SDL_VIDEODRIVER=x11", "HOME=" + home.path(), TOLV_OWN_HOST}, surroundings);
}

TEST(OwnHost, ShowsItsGraphAndAnswersWheelDoubleClickUndoAndResizing)
{
    if (!PrivateDisplay::isInstalled())
        GTEST_SKIP() << "no display server is installed";
    const PrivateDisplay display;
    const ProcessResult result = runHost(display, [](ShownWindow& window) {
        const int all = window.countWhen(isOfCurve, [](int found) { return found > 1000; });
        EXPECT_GT(all, 1000);
        // Of thirty-two waves about five are left.
        for (int step = 0; step < 12; ++step)
            window.turnWheelUp(320, 180);
        window.countWhen(isOfCurve, [&](int found) { return found < all / 2; });
        EXPECT_LT(window.countWhenStill(isOfCurve), all / 2);

        const int withoutMarker = window.countWhenStill(isBlack);
        window.doubleClick(320, 180);
        EXPECT_GT(window.countWhen(isBlack, [&](int found) { return found > withoutMarker; }), withoutMarker);
        window.pressKey(XK_u);
        EXPECT_EQ(window.countWhen(isBlack, [&](int found) { return found == withoutMarker; }), withoutMarker);

        const int before = window.countWhenStill(isOfCurve);
        window.resize(900, 600);
        EXPECT_GT(window.countWhen(isOfCurve, [&](int found) { return found > before; }), before);
    });
    EXPECT_EQ(result.status, 0) << result.text();
}

TEST(OwnHost, WithoutADisplaySaysWhatIsMissing)
{
    const ProcessResult result = runProcess({"env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER=x11", TOLV_OWN_HOST});
    EXPECT_EQ(result.status, 1) << result.text();
    EXPECT_TRUE(result.error.starts_with("own-host: ")) << result.error;
}

} // namespace

} // namespace TOLVGraphing::testing_support
