// A clipboard manager for tests, as the ClipboardManager protocol of freedesktop.org has it: a program that ends asks it for SAVE_TARGETS; it fetches everything that the clipboard holds, takes the clipboard over and
// answers for it. It writes "ready" when it can be asked, and a line for each clipboard saved: targets, bytes and targets that came in pieces. It ends when it is told to or when the display does.
// With --at-once it asks for all targets in one request (MULTIPLE), as some managers do, and otherwise for one after the other.

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename Reply>
using Owned = std::unique_ptr<Reply, Free>;
using Event = Owned<xcb_generic_event_t>;

/// Longer contents are given to others in pieces of this size.
constexpr std::size_t kPiece = 65536;
/// The most that one answer may hold, in units of four bytes.
constexpr std::uint32_t kLongestProperty = 0x10000000;

std::uint8_t kindOf(const xcb_generic_event_t& event)
{
    return event.response_type & 0x7F;
}

/// What the clipboard holds under one target.
struct Contents {
    xcb_atom_t type = XCB_ATOM_NONE;
    std::uint8_t format = 8;
    std::string bytes;
};

/// Contents on their way to another program, which deletes each piece when it has read it.
struct Delivery {
    xcb_window_t window = XCB_WINDOW_NONE;
    xcb_atom_t property = XCB_ATOM_NONE;
    Contents contents;
    std::size_t sent = 0;
};

class ClipboardManager {
public:
    ClipboardManager(xcb_connection_t* connection, bool asksAtOnce) : m_connection(connection), m_asksAtOnce(asksAtOnce), m_window(xcb_generate_id(connection))
    {
        const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(
            connection, XCB_COPY_FROM_PARENT, m_window, screen->root, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, XCB_CW_EVENT_MASK, &events);
        xcb_set_selection_owner(connection, m_window, atom("CLIPBOARD_MANAGER"), XCB_CURRENT_TIME);
    }

    [[nodiscard]] bool isManager() { return ownerOf("CLIPBOARD_MANAGER") == m_window; }

    /// Answers until the display is gone.
    void run()
    {
        while (Event event = nextEvent())
            answer(*event);
    }

private:
    xcb_atom_t atom(const std::string& name)
    {
        const auto known = m_atoms.find(name);
        if (known != m_atoms.end())
            return known->second;
        const auto cookie = xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
        const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookie, nullptr));
        return m_atoms[name] = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }

    xcb_window_t ownerOf(const std::string& selection)
    {
        const Owned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(m_connection, xcb_get_selection_owner(m_connection, atom(selection)), nullptr));
        return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    }

    Event nextEvent()
    {
        xcb_flush(m_connection);
        if (m_postponed.empty())
            return Event(xcb_wait_for_event(m_connection));
        Event event = std::move(m_postponed.front());
        m_postponed.pop_front();
        return event;
    }

    /// The next event that the condition is true of; those before it wait for their turn. Null when the display is gone.
    template <typename Condition>
    Event waitFor(const Condition& isWanted)
    {
        xcb_flush(m_connection);
        while (Event event{xcb_wait_for_event(m_connection)}) {
            if (isWanted(*event))
                return event;
            m_postponed.push_back(std::move(event));
        }
        return nullptr;
    }

    void answer(const xcb_generic_event_t& event)
    {
        if (kindOf(event) == XCB_SELECTION_REQUEST)
            answerRequest(reinterpret_cast<const xcb_selection_request_event_t&>(event));
        else if (kindOf(event) == XCB_SELECTION_CLEAR && reinterpret_cast<const xcb_selection_clear_event_t&>(event).selection == atom("CLIPBOARD"))
            m_saved.clear();
        else if (kindOf(event) == XCB_PROPERTY_NOTIFY)
            deliverMore(reinterpret_cast<const xcb_property_notify_event_t&>(event));
    }

    void answerRequest(const xcb_selection_request_event_t& request)
    {
        // Old programs name no property.
        const xcb_atom_t property = request.property != XCB_ATOM_NONE ? request.property : request.target;
        bool isAnswered = true;
        if (request.target == atom("TARGETS"))
            writeTargets(request, property);
        else if (request.selection == atom("CLIPBOARD_MANAGER"))
            isAnswered = request.target == atom("SAVE_TARGETS") && save(request, property);
        else
            isAnswered = request.selection == atom("CLIPBOARD") && deliver(request, property);
        xcb_selection_notify_event_t notice = {};
        notice.response_type = XCB_SELECTION_NOTIFY;
        notice.time = request.time;
        notice.requestor = request.requestor;
        notice.selection = request.selection;
        notice.target = request.target;
        notice.property = isAnswered ? property : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
        xcb_send_event(m_connection, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&notice));
    }

    void writeTargets(const xcb_selection_request_event_t& request, xcb_atom_t property)
    {
        std::vector<xcb_atom_t> targets = {atom("TARGETS")};
        if (request.selection == atom("CLIPBOARD_MANAGER"))
            targets.push_back(atom("SAVE_TARGETS"));
        for (const auto& each : m_saved) {
            if (request.selection == atom("CLIPBOARD"))
                targets.push_back(each.first);
        }
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, request.requestor, property, XCB_ATOM_ATOM, 32, static_cast<std::uint32_t>(targets.size()), targets.data());
    }

    /// Fetches what the clipboard holds (or the targets that the property lists) and takes the clipboard over. False when there is nothing.
    bool save(const xcb_selection_request_event_t& request, xcb_atom_t property)
    {
        std::vector<xcb_atom_t> targets = atomsIn(read(request.requestor, property, false));
        if (targets.empty())
            targets = atomsIn(fetch(atom("TARGETS")));
        std::erase_if(targets, [this](xcb_atom_t target) { return saysHowOnly(target); });
        m_fetchedInPieces = 0;
        m_saved = m_asksAtOnce ? fetchAtOnce(targets) : fetchEach(targets);
        std::size_t size = 0;
        for (const auto& each : m_saved)
            size += each.second.bytes.size();
        std::printf("saved %zu targets, %zu bytes, %zu in pieces\n", m_saved.size(), size, m_fetchedInPieces);
        std::fflush(stdout);
        if (m_saved.empty())
            return false;
        xcb_set_selection_owner(m_connection, m_window, atom("CLIPBOARD"), XCB_CURRENT_TIME);
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, request.requestor, property, atom("NULL"), 32, 0, nullptr);
        return true;
    }

    /// Targets that are no contents.
    bool saysHowOnly(xcb_atom_t target)
    {
        static constexpr const char* kNames[] = {"TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS", "DELETE", "INSERT_PROPERTY", "INSERT_SELECTION"};
        return std::any_of(std::begin(kNames), std::end(kNames), [&](const char* name) { return target == atom(name); });
    }

    static std::vector<xcb_atom_t> atomsIn(const std::optional<Contents>& contents)
    {
        if (!contents || contents->format != 32)
            return {};
        const auto* first = reinterpret_cast<const xcb_atom_t*>(contents->bytes.data());
        return {first, first + contents->bytes.size() / sizeof(xcb_atom_t)};
    }

    /// A property of a window; nothing when it is not there.
    std::optional<Contents> read(xcb_window_t window, xcb_atom_t property, bool deletes)
    {
        const auto cookie = xcb_get_property(m_connection, deletes ? 1 : 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, kLongestProperty);
        const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection, cookie, nullptr));
        if (!reply || reply->type == XCB_ATOM_NONE)
            return std::nullopt;
        return Contents{reply->type, reply->format,
            std::string(static_cast<const char*>(xcb_get_property_value(reply.get())), static_cast<std::size_t>(xcb_get_property_value_length(reply.get())))};
    }

    /// Asks the clipboard's owner for a target, which it puts into a property of this manager's window. False when it has none.
    bool ask(xcb_atom_t target, xcb_atom_t property)
    {
        xcb_convert_selection(m_connection, m_window, atom("CLIPBOARD"), target, property, XCB_CURRENT_TIME);
        const Event event = waitFor([&](const xcb_generic_event_t& arrived) {
            const auto& notice = reinterpret_cast<const xcb_selection_notify_event_t&>(arrived);
            return kindOf(arrived) == XCB_SELECTION_NOTIFY && notice.selection == atom("CLIPBOARD") && notice.target == target;
        });
        return event && reinterpret_cast<const xcb_selection_notify_event_t&>(*event).property != XCB_ATOM_NONE;
    }

    std::optional<Contents> fetch(xcb_atom_t target)
    {
        const xcb_atom_t property = atom("SAVED");
        return ask(target, property) ? take(property) : std::nullopt;
    }

    std::map<xcb_atom_t, Contents> fetchEach(const std::vector<xcb_atom_t>& targets)
    {
        std::map<xcb_atom_t, Contents> fetched;
        for (const xcb_atom_t target : targets) {
            if (auto contents = fetch(target))
                fetched[target] = std::move(*contents);
        }
        return fetched;
    }

    std::map<xcb_atom_t, Contents> fetchAtOnce(const std::vector<xcb_atom_t>& targets)
    {
        // Pairs of a target and the property for it; the owner replaces the property by none where it has nothing.
        std::vector<xcb_atom_t> pairs;
        for (const xcb_atom_t target : targets)
            pairs.insert(pairs.end(), {target, atom("SAVED_" + std::to_string(pairs.size() / 2))});
        const xcb_atom_t list = atom("SAVED_LIST");
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_window, list, atom("ATOM_PAIR"), 32, static_cast<std::uint32_t>(pairs.size()), pairs.data());
        if (!ask(atom("MULTIPLE"), list))
            return {};
        std::map<xcb_atom_t, Contents> fetched;
        pairs = atomsIn(read(m_window, list, true));
        for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
            if (auto contents = pairs[i + 1] != XCB_ATOM_NONE ? take(pairs[i + 1]) : std::nullopt)
                fetched[pairs[i]] = std::move(*contents);
        }
        return fetched;
    }

    /// What the clipboard's owner has put into a property, in one piece or, from when the property is deleted, in many.
    std::optional<Contents> take(xcb_atom_t property)
    {
        const auto contents = read(m_window, property, false);
        forgetPieces(property);
        xcb_delete_property(m_connection, m_window, property);
        return contents && contents->type == atom("INCR") ? takePieces(property) : contents;
    }

    std::optional<Contents> takePieces(xcb_atom_t property)
    {
        ++m_fetchedInPieces;
        Contents all;
        while (waitFor([&](const xcb_generic_event_t& arrived) { return isNewPiece(arrived, property); })) {
            const auto piece = read(m_window, property, true);
            if (!piece)
                return std::nullopt;
            all.type = piece->type;
            all.format = piece->format;
            if (piece->bytes.empty())
                return all;
            all.bytes += piece->bytes;
        }
        return std::nullopt;
    }

    bool isNewPiece(const xcb_generic_event_t& event, xcb_atom_t property) const
    {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        return kindOf(event) == XCB_PROPERTY_NOTIFY && change.window == m_window && change.atom == property && change.state == XCB_PROPERTY_NEW_VALUE;
    }

    /// The first answer has been announced like the pieces behind it.
    void forgetPieces(xcb_atom_t property)
    {
        std::erase_if(m_postponed, [&](const Event& event) { return isNewPiece(*event, property); });
    }

    bool deliver(const xcb_selection_request_event_t& request, xcb_atom_t property)
    {
        const auto saved = m_saved.find(request.target);
        if (saved == m_saved.end())
            return false;
        const Contents& contents = saved->second;
        if (contents.bytes.size() <= kPiece) {
            write(request.requestor, property, contents, contents.bytes);
            return true;
        }
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(m_connection, request.requestor, XCB_CW_EVENT_MASK, &events);
        const auto size = static_cast<std::uint32_t>(contents.bytes.size());
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, request.requestor, property, atom("INCR"), 32, 1, &size);
        m_deliveries.push_back({request.requestor, property, contents, 0});
        return true;
    }

    void deliverMore(const xcb_property_notify_event_t& change)
    {
        const auto delivery
            = std::find_if(m_deliveries.begin(), m_deliveries.end(), [&](const Delivery& each) { return each.window == change.window && each.property == change.atom; });
        if (change.state != XCB_PROPERTY_DELETE || delivery == m_deliveries.end())
            return;
        // The piece behind the last one is empty.
        const std::string_view piece = std::string_view(delivery->contents.bytes).substr(delivery->sent, kPiece);
        write(change.window, change.atom, delivery->contents, piece);
        delivery->sent += piece.size();
        if (piece.empty())
            m_deliveries.erase(delivery);
    }

    void write(xcb_window_t window, xcb_atom_t property, const Contents& contents, std::string_view bytes)
    {
        const auto length = static_cast<std::uint32_t>(bytes.size() / (contents.format / 8U));
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, property, contents.type, contents.format, length, bytes.data());
    }

    xcb_connection_t* m_connection;
    bool m_asksAtOnce;
    xcb_window_t m_window;
    std::map<std::string, xcb_atom_t> m_atoms;
    std::deque<Event> m_postponed;
    std::map<xcb_atom_t, Contents> m_saved;
    std::vector<Delivery> m_deliveries;
    std::size_t m_fetchedInPieces = 0;
};

} // namespace

int main(int argumentCount, char** arguments)
{
    const bool asksAtOnce = argumentCount == 2 && std::string_view(arguments[1]) == "--at-once";
    if (argumentCount > 1 && !asksAtOnce) {
        std::fputs("usage: clipboard_manager [--at-once]\n", stderr);
        return 2;
    }
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        std::fputs("clipboard_manager: there is no display; DISPLAY has to name one\n", stderr);
        return 1;
    }
    ClipboardManager manager(connection, asksAtOnce);
    if (!manager.isManager()) {
        std::fputs("clipboard_manager: another clipboard manager runs on this display\n", stderr);
        return 1;
    }
    std::puts("ready");
    std::fflush(stdout);
    manager.run();
    xcb_disconnect(connection);
    return 0;
}
