#include "ClipboardHandover.h"

#include <TOLVGraphing/platform/foundation/Log.h>

#include <QAbstractNativeEventFilter>
#include <QClipboard>
#include <QEventLoop>
#include <QGuiApplication>
#include <QMimeData>
#include <QTimer>

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

namespace TOLVGraphing {

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

xcb_atom_t atomNamed(xcb_connection_t* connection, std::string_view name)
{
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

bool isOwned(xcb_connection_t* connection, xcb_atom_t selection)
{
    const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> reply(xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, selection), nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

/// A window that nobody sees, to which the manager answers.
class HiddenWindow {
public:
    explicit HiddenWindow(xcb_connection_t* connection) : m_connection(connection), m_name(xcb_generate_id(connection))
    {
        const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, m_name, screen->root, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
    }
    ~HiddenWindow()
    {
        xcb_destroy_window(m_connection, m_name);
        xcb_flush(m_connection);
    }
    HiddenWindow(const HiddenWindow&) = delete;
    HiddenWindow& operator=(const HiddenWindow&) = delete;

    [[nodiscard]] xcb_window_t name() const { return m_name; }

private:
    xcb_connection_t* m_connection;
    xcb_window_t m_name;
};

/// The types to save where some are longer than one message to the display, and none where all can be. Managers may ask for everything at once, and Qt sends one long type at a time to a window: the others would never arrive. So the
/// first long one goes, which is the only one when long series make the text long, under one of its names.
std::vector<xcb_atom_t> targetsToSave(xcb_connection_t* connection, const QMimeData& contents)
{
    const auto longest = static_cast<qsizetype>(xcb_get_maximum_request_length(connection)) * 4 - static_cast<qsizetype>(sizeof(xcb_change_property_request_t)) - 64;
    std::vector<xcb_atom_t> targets;
    int longOnes = 0;
    for (const QString& format : contents.formats()) {
        if (contents.data(format).size() <= longest || ++longOnes == 1)
            targets.push_back(atomNamed(connection, format.toStdString()));
    }
    return longOnes > 0 ? targets : std::vector<xcb_atom_t>();
}

/// Ends a loop when a window gets the answer to a request.
class AnswerFilter final : public QAbstractNativeEventFilter {
public:
    AnswerFilter(xcb_window_t window, QEventLoop& loop) : m_window(window), m_loop(loop) { QGuiApplication::instance()->installNativeEventFilter(this); }

    [[nodiscard]] bool isAnswered() const { return m_isAnswered; }
    [[nodiscard]] bool isGranted() const { return m_isGranted; }

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) override
    {
        if (eventType != "xcb_generic_event_t")
            return false;
        const auto* event = static_cast<const xcb_selection_notify_event_t*>(message);
        if ((event->response_type & 0x7F) != XCB_SELECTION_NOTIFY || event->requestor != m_window)
            return false;
        m_isAnswered = true;
        m_isGranted = event->property != XCB_ATOM_NONE;
        m_loop.quit();
        return true;
    }

private:
    xcb_window_t m_window;
    QEventLoop& m_loop;
    bool m_isAnswered = false;
    bool m_isGranted = false;
};

} // namespace

bool handClipboardOver(std::chrono::milliseconds patience)
{
    const auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (!application || !clipboard->ownsClipboard())
        return false;
    xcb_connection_t* connection = application->connection();
    const xcb_atom_t manager = atomNamed(connection, "CLIPBOARD_MANAGER");
    if (!isOwned(connection, manager))
        return false;

    const HiddenWindow window(connection);
    QEventLoop loop;
    const AnswerFilter answer(window.name(), loop);
    // Without a list in the property the manager saves all targets. The current time will do: what is given is what the clipboard holds when the manager asks.
    const xcb_atom_t property = atomNamed(connection, "TOLV_SAVED");
    if (const auto targets = targetsToSave(connection, *clipboard->mimeData()); !targets.empty())
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window.name(), property, XCB_ATOM_ATOM, 32, static_cast<std::uint32_t>(targets.size()), targets.data());
    xcb_convert_selection(connection, window.name(), manager, atomNamed(connection, "SAVE_TARGETS"), property, XCB_CURRENT_TIME);
    xcb_flush(connection);
    QTimer::singleShot(patience, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (!answer.isAnswered()) {
        writeLog("the clipboard manager did not answer: what was copied may end with the program");
        // A manager may have taken the clipboard over and be waiting for the rest.
        if (clipboard->ownsClipboard())
            clipboard->clear();
    }
    return answer.isGranted();
}

} // namespace TOLVGraphing
