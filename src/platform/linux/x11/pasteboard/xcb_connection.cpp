#include "platform/linux/x11/pasteboard/xcb_connection.h"

#include <xcb/xfixes.h>

#include <cstring>
#include <utility>

namespace platform::selection {

namespace {

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screens.rem > 1 && number > 0; --number)
        xcb_screen_next(&screens);
    return screens.rem > 0 ? screens.data : nullptr;
}

} // namespace

std::unique_ptr<XcbConnection> XcbConnection::open() {
    int screen = 0;
    std::unique_ptr<XcbConnection> connection(new XcbConnection(xcb_connect(nullptr, &screen)));
    if (connection->lost() || !connection->prepare(screen)) return nullptr;
    return connection;
}

XcbConnection::~XcbConnection() { xcb_disconnect(connection_); }

bool XcbConnection::prepare(int number) {
    const xcb_screen_t* screen = screenOf(connection_, number);
    const xcb_query_extension_reply_t* xfixes = xcb_get_extension_data(connection_, &xcb_xfixes_id);
    if (!screen || !xfixes || !xfixes->present) return false;
    ownerChangeType_ = static_cast<std::uint8_t>(xfixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    // The server refuses the extension's requests until the client has said which version it uses.
    const auto version = xcb_xfixes_query_version(connection_, 1, 0);
    if (!Reply<xcb_xfixes_query_version_reply_t>(
            xcb_xfixes_query_version_reply(connection_, version, nullptr)))
        return false;

    root_ = screen->root;
    window_ = newWindow();
    xcb_xfixes_select_selection_input(connection_, window_, atom("CLIPBOARD"),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    return true;
}

xcb_window_t XcbConnection::newWindow() {
    const xcb_window_t window = xcb_generate_id(connection_);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, root_, -10, -10, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    return window;
}

std::vector<xcb_atom_t> XcbConnection::atoms(std::span<const std::string> names) {
    std::vector<std::pair<const std::string*, xcb_intern_atom_cookie_t>> asked;
    for (const std::string& name : names)
        if (!atoms_.contains(name))
            asked.emplace_back(
                &name, xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()));
    for (const auto& [name, cookie] : asked) {
        const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
        if (reply) atoms_[*name] = reply->atom;
    }
    std::vector<xcb_atom_t> numbers;
    for (const std::string& name : names) {
        const auto known = atoms_.find(name);
        numbers.push_back(known == atoms_.end() ? xcb_atom_t{XCB_NONE} : known->second);
    }
    return numbers;
}

std::vector<std::string> XcbConnection::names(std::span<const xcb_atom_t> atoms) {
    std::vector<std::pair<xcb_atom_t, xcb_get_atom_name_cookie_t>> asked;
    for (const xcb_atom_t atom : atoms)
        if (!names_.contains(atom)) asked.emplace_back(atom, xcb_get_atom_name(connection_, atom));
    for (const auto& [atom, cookie] : asked) {
        const Reply<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(connection_, cookie, nullptr));
        if (!reply) continue;
        const auto length = static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()));
        names_[atom] = std::string(xcb_get_atom_name_name(reply.get()), length);
    }
    std::vector<std::string> names;
    for (const xcb_atom_t atom : atoms) {
        const auto known = names_.find(atom);
        names.push_back(known == names_.end() ? std::string() : known->second);
    }
    return names;
}

Event XcbConnection::next() {
    if (waiting_.empty()) return Event(xcb_poll_for_event(connection_));
    Event event = std::move(waiting_.front());
    waiting_.pop_front();
    return event;
}

void XcbConnection::synchronize() {
    Reply<xcb_get_input_focus_reply_t>(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

xcb_timestamp_t XcbConnection::time() {
    // Every change of a property causes an event with the server's time in it, even one that appends nothing.
    const xcb_atom_t clock = atom("QUILLMARK_CLOCK");
    xcb_change_property(connection_, XCB_PROP_MODE_APPEND, window_, clock, XCB_ATOM_INTEGER, 32, 0, nullptr);
    synchronize();
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    while (Event event{xcb_poll_for_event(connection_)}) {
        const auto* notice = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
        if ((event->response_type & 0x7F) == XCB_PROPERTY_NOTIFY && notice->atom == clock)
            time = notice->time;
        else
            waiting_.push_back(std::move(event));
    }
    return time;
}

xcb_window_t XcbConnection::ownerOf(xcb_atom_t selection) {
    const auto cookie = xcb_get_selection_owner(connection_, selection);
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection_, cookie, nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_NONE};
}

bool XcbConnection::areOfOneProgram(xcb_window_t one, xcb_window_t other) const {
    const std::uint32_t inRange = xcb_get_setup(connection_)->resource_id_mask;
    return (one & ~inRange) == (other & ~inRange);
}

std::optional<Property> XcbConnection::take(xcb_window_t window, xcb_atom_t property) {
    const auto cookie =
        xcb_get_property(connection_, 1, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, mostBytes / 4);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_, cookie, nullptr));
    if (!reply || reply->type == XCB_NONE) return std::nullopt;
    auto* value = static_cast<std::uint8_t*>(xcb_get_property_value(reply.get()));
    const std::span bytes(value, static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    Property result{reply->type, reply->format, {bytes.begin(), bytes.end()}};
    if (!bytes.empty()) explicit_bzero(bytes.data(), bytes.size());
    if (reply->bytes_after == 0) return result;
    xcb_delete_property(connection_, window, property);
    return std::nullopt;
}

bool XcbConnection::isOwnerChange(const xcb_generic_event_t& event) const {
    return (event.response_type & 0x7F) == ownerChangeType_;
}

} // namespace platform::selection
