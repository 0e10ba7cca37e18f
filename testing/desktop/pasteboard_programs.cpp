#include "testing/desktop/pasteboard_programs.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace pasteboard_test {

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

template <class T>
using Reply = std::unique_ptr<T, Free>;

std::string described(const std::vector<Representation>& contents) {
    std::ostringstream text;
    for (const auto& [target, type, format, bytes] : contents)
        text << target << ' ' << type << ' ' << format << ' ' << bytes.size() << '\n' << bytes;
    return text.str();
}

} // namespace

Owner::Owner(const std::vector<Representation>& contents) : program({GTK_PASTEBOARD, "own"}) {
    program.write(described(contents));
    program.closeInput();
    if (!testbed::waitUntil([this] { return program.output() == "ready\n"; }))
        throw std::runtime_error("the program does not own the clipboard");
}

Reader::Reader(const std::string& target) : program({GTK_PASTEBOARD, "read", target}) {}

std::optional<std::string> Reader::finish() {
    if (program.exitStatus() != 0) return std::nullopt;
    return program.output();
}

std::optional<Representation> given(const std::string& target) {
    const auto output = Reader(target).finish();
    if (!output) return std::nullopt;
    const auto line = output->find('\n');
    const auto space = output->rfind(' ', line);
    return Representation{target, output->substr(0, space), std::stoi(output->substr(space, line - space)),
                          output->substr(line + 1)};
}

RawClient::RawClient() : connection_(xcb_connect(nullptr, nullptr)), window_(xcb_generate_id(connection_)) {
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_flush(connection_);
}

RawClient::~RawClient() { xcb_disconnect(connection_); }

xcb_atom_t RawClient::atom(const std::string& name) {
    const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    return Reply<xcb_intern_atom_reply_t>(xcb_intern_atom_reply(connection_, cookie, nullptr))->atom;
}

xcb_window_t RawClient::owner() {
    const auto cookie = xcb_get_selection_owner(connection_, atom("CLIPBOARD"));
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection_, cookie, nullptr));
    return reply->owner;
}

void RawClient::own(const std::string& selection) {
    xcb_set_selection_owner(connection_, window_, atom(selection), XCB_CURRENT_TIME);
    owner();
}

template <class Event, class Matches>
Event RawClient::next(std::uint8_t type, Matches matches) {
    xcb_flush(connection_);
    while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(connection_)}) {
        if ((event->response_type & 0x7F) != type) continue;
        const auto& wanted = reinterpret_cast<const Event&>(*event);
        if (matches(wanted)) return wanted;
    }
    return {};
}

xcb_atom_t RawClient::convert(const std::string& selection, const std::string& target) {
    xcb_convert_selection(connection_, window_, atom(selection), atom(target), atom("ANSWER"),
                          XCB_CURRENT_TIME);
    return next<xcb_selection_notify_event_t>(XCB_SELECTION_NOTIFY, [](const auto&) { return true; })
        .property;
}

void RawClient::set(xcb_window_t window, xcb_atom_t property, const std::string& type, std::uint8_t format,
                    const std::string& bytes) {
    // A program that serves in pieces watches the window for the deletions.
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &events);
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property, atom(type), format,
                        static_cast<std::uint32_t>(bytes.size() / (format / 8U)), bytes.data());
    xcb_flush(connection_);
}

std::string RawClient::bytes(xcb_atom_t property) {
    const auto cookie =
        xcb_get_property(connection_, 0, window_, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 1 << 20);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_, cookie, nullptr));
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

xcb_selection_request_event_t RawClient::nextRequest() {
    return next<xcb_selection_request_event_t>(XCB_SELECTION_REQUEST, [](const auto&) { return true; });
}

void RawClient::notify(const xcb_selection_request_event_t& request, bool done) {
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    if (done) notice.property = request.property;
    std::array<char, 32> event{};
    std::memcpy(event.data(), &notice, sizeof notice);
    xcb_send_event(connection_, 0, request.requestor, 0, event.data());
    xcb_flush(connection_);
}

void RawClient::waitDeleted(xcb_atom_t property) {
    next<xcb_property_notify_event_t>(XCB_PROPERTY_NOTIFY, [&](const auto& notice) {
        return notice.state == XCB_PROPERTY_DELETE && notice.atom == property;
    });
}

} // namespace pasteboard_test
