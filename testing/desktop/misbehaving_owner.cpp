#include "testing/desktop/misbehaving_owner.h"

#include <poll.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <utility>

namespace pasteboard_test {

namespace {

constexpr std::size_t pieceSize = std::size_t{256} * 1024;

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

} // namespace

MisbehavingOwner::MisbehavingOwner(std::vector<Representation> contents, Faults faults,
                                   const std::string& selection)
    : contents_(std::move(contents)), faults_(std::move(faults)) {
    client_.own(selection);
    thread_ = std::jthread([this](const std::stop_token& stop) { run(stop); });
}

MisbehavingOwner::~MisbehavingOwner() = default;

void MisbehavingOwner::run(const std::stop_token& stop) {
    while (!stop.stop_requested()) {
        pollfd arrived{xcb_get_file_descriptor(client_.xcb()), POLLIN, 0};
        poll(&arrived, 1, 10);
        while (const std::unique_ptr<xcb_generic_event_t, Free> event{xcb_poll_for_event(client_.xcb())})
            handle(*event);
    }
}

void MisbehavingOwner::handle(const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7F;
    if (type == XCB_SELECTION_REQUEST)
        return answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
    if (type != XCB_PROPERTY_NOTIFY) return;
    const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (notice.state != XCB_PROPERTY_DELETE || !endlessProperties_.contains(notice.atom)) return;
    client_.set(notice.window, notice.atom, "UTF8_STRING", 8, std::string(pieceSize, 'e'));
    taken_ += pieceSize;
}

void MisbehavingOwner::answer(const xcb_selection_request_event_t& request) {
    const std::string target = name(request.target);
    if (faults_.ignored.contains(target)) return;
    std::this_thread::sleep_for(faults_.delay);
    const auto found = std::ranges::find(contents_, target, &Representation::target);
    if (faults_.refused.contains(target) || (target != "TARGETS" && found == contents_.end()))
        return client_.notify(request, false);
    if (target == "TARGETS") {
        std::string atoms;
        for (const Representation& one : contents_) {
            const xcb_atom_t atom = client_.atom(one.target);
            atoms.append(reinterpret_cast<const char*>(&atom), sizeof atom);
        }
        client_.set(request.requestor, request.property, "ATOM", 32, atoms);
    } else if (faults_.endless.contains(target)) {
        endlessProperties_.insert(request.property);
        client_.set(request.requestor, request.property, "INCR", 32, std::string(4, '\0'));
    } else {
        const auto format = static_cast<std::uint8_t>(found->format);
        client_.set(request.requestor, request.property, found->type, format, found->bytes);
    }
    client_.notify(request, true);
}

std::string MisbehavingOwner::name(xcb_atom_t atom) {
    const auto cookie = xcb_get_atom_name(client_.xcb(), atom);
    const std::unique_ptr<xcb_get_atom_name_reply_t, Free> reply(
        xcb_get_atom_name_reply(client_.xcb(), cookie, nullptr));
    if (!reply) return "";
    return {xcb_get_atom_name_name(reply.get()),
            static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

} // namespace pasteboard_test
