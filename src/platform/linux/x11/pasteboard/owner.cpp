#include "platform/linux/x11/pasteboard/owner.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace platform::selection {

namespace {

std::vector<Offer> offersOf(XcbConnection& connection, const Contents& contents) {
    std::vector<std::string> names;
    std::vector<Offer> offers;
    for (const Representation& one : contents.representations) {
        names.push_back(one.target);
        names.push_back(one.encoding.type);
        offers.push_back({XCB_NONE, XCB_NONE, one.encoding.format, offers.size()});
    }
    const auto atoms = connection.atoms(names);
    for (std::size_t index = 0; index < offers.size(); ++index) {
        offers[index].target = atoms[2 * index];
        offers[index].type = atoms[2 * index + 1];
    }
    return offers;
}

} // namespace

Owner::Owner(XcbConnection& connection) : connection_(connection) {}

void Owner::claim(SharedContents contents, xcb_timestamp_t time) {
    claimedOffers_ = offersOf(connection_, *contents);
    claimed_ = std::move(contents);
    xcb_set_selection_owner(connection_.xcb(), connection_.window(), connection_.atom("CLIPBOARD"), time);
}

void Owner::ownerChanged(xcb_window_t owner, xcb_timestamp_t time) {
    if (owner != connection_.window()) {
        contents_ = nullptr;
        offers_.clear();
    } else if (claimed_) {
        contents_ = std::exchange(claimed_, nullptr);
        offers_ = std::exchange(claimedOffers_, {});
        ownedSince_ = time;
    }
    if (hold_ && hold_->refuses) hold_.reset();
    for (const auto& request : std::exchange(early_, {}))
        answer(request);
}

void Owner::answer(const xcb_selection_request_event_t& request) {
    if (claiming()) return early_.push_back(request);
    const bool waits = mustWait(request);
    if (waits && hold_->refuses) return notify(request, XCB_NONE);
    const xcb_atom_t property = convert(request);
    if (!waits) return notify(request, property);
    hold_->requests.push_back({request, property});
    hold_->arrived();
}

bool Owner::mustWait(const xcb_selection_request_event_t& request) const {
    return hold_ && connection_.areOfOneProgram(request.requestor, hold_->window) &&
           (request.target == connection_.atom("MULTIPLE") ||
            std::ranges::find(offers_, request.target, &Offer::target) != offers_.end());
}

void Owner::hold(xcb_window_t window, std::function<void()> arrived, Clock::time_point end) {
    release();
    hold_ = Hold{window, std::move(arrived), end};
}

void Owner::refuseHeld(Clock::time_point end) {
    if (!hold_) return;
    answerHeld(false);
    hold_->refuses = true;
    hold_->end = end;
}

void Owner::release() {
    if (!hold_ || hold_->refuses) return;
    answerHeld(true);
    hold_.reset();
}

void Owner::answerHeld(bool deliver) {
    for (const auto& [request, property] : std::exchange(hold_->requests, {})) {
        if (!deliver && property != XCB_NONE) withdraw(request.requestor, property);
        notify(request, deliver ? property : xcb_atom_t{XCB_NONE});
    }
}

// None when there is nothing of that kind.
xcb_atom_t Owner::convert(const xcb_selection_request_event_t& request) {
    // Programs written before the ICCCM (1988) name no property and mean the target's own name.
    const xcb_atom_t property = request.property == XCB_NONE ? request.target : request.property;
    const bool offered = contents_ && request.selection == connection_.atom("CLIPBOARD");
    const bool done =
        offered && (request.target == connection_.atom("MULTIPLE")
                        ? request.property != XCB_NONE && convertMultiple(request.requestor, property)
                        : convert(request.requestor, request.target, property));
    return done ? property : xcb_atom_t{XCB_NONE};
}

// Before the program was told of it.
void Owner::withdraw(xcb_window_t requestor, xcb_atom_t property) {
    drop([&](const Transfer& transfer) { return transfer.concerns(requestor, property); });
    xcb_delete_property(connection_.xcb(), requestor, property);
}

void Owner::notify(const xcb_selection_request_event_t& request, xcb_atom_t property) {
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    notice.property = property;
    // xcb_send_event() reads 32 bytes, whatever the size of the event.
    char event[32] = {};
    static_assert(sizeof notice <= sizeof event);
    std::memcpy(event, &notice, sizeof notice);
    xcb_send_event(connection_.xcb(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, event);
}

bool Owner::convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property) {
    if (target == connection_.atom("TARGETS")) {
        sendTargets(requestor, property);
        return true;
    }
    if (target == connection_.atom("TIMESTAMP")) {
        xcb_change_property(connection_.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, XCB_ATOM_INTEGER,
                            32, 1, &ownedSince_);
        return true;
    }
    const auto offer = std::ranges::find(offers_, target, &Offer::target);
    if (offer == offers_.end()) return false;
    deliver(requestor, property, *offer);
    return true;
}

void Owner::sendTargets(xcb_window_t requestor, xcb_atom_t property) {
    std::vector<xcb_atom_t> targets{connection_.atom("TARGETS"), connection_.atom("MULTIPLE"),
                                    connection_.atom("TIMESTAMP")};
    for (const Offer& offer : offers_)
        targets.push_back(offer.target);
    xcb_change_property(connection_.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(targets.size()), targets.data());
}

bool Owner::convertMultiple(xcb_window_t requestor, xcb_atom_t property) {
    const auto cookie =
        xcb_get_property(connection_.xcb(), 0, requestor, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 4096);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_.xcb(), cookie, nullptr));
    if (!reply || reply->format != 32) return false;
    const auto* values = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
    std::vector<xcb_atom_t> pairs(values, values + xcb_get_property_value_length(reply.get()) / 4);
    // Pairs of target and property; None in place of the property marks a target that has no data.
    for (std::size_t index = 0; index + 1 < pairs.size(); index += 2)
        if (pairs[index + 1] != XCB_NONE && !convert(requestor, pairs[index], pairs[index + 1]))
            pairs[index + 1] = XCB_NONE;
    xcb_change_property(connection_.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, reply->type, 32,
                        static_cast<std::uint32_t>(pairs.size()), pairs.data());
    return true;
}

void Owner::deliver(xcb_window_t requestor, xcb_atom_t property, const Offer& offer) {
    std::erase_if(transfers_,
                  [&](const Transfer& transfer) { return transfer.concerns(requestor, property); });
    SharedBytes bytes = contents_->representations[offer.representation].delivered();
    if (bytes->size() > Transfer::pieceSize)
        transfers_.emplace_back(connection_, requestor, property, offer, std::move(bytes));
    else
        xcb_change_property(connection_.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, offer.type,
                            offer.format, static_cast<std::uint32_t>(bytes->size() / (offer.format / 8U)),
                            bytes->data());
}

void Owner::propertyDeleted(xcb_window_t requestor, xcb_atom_t property) {
    for (Transfer& transfer : transfers_)
        if (transfer.concerns(requestor, property)) transfer.sendNext();
    drop([](const Transfer& transfer) { return transfer.finished(); });
}

void Owner::windowGone(xcb_window_t requestor) {
    drop([&](const Transfer& transfer) { return transfer.requestor() == requestor; });
}

void Owner::expire(Clock::time_point now) {
    drop([&](const Transfer& transfer) { return transfer.deadline() <= now; });
    if (!hold_ || now < hold_->end) return;
    answerHeld(true);
    hold_.reset();
}

std::optional<Clock::time_point> Owner::deadline() const {
    std::optional<Clock::time_point> first;
    if (hold_) first = hold_->end;
    for (const Transfer& transfer : transfers_)
        first = std::min(first.value_or(transfer.deadline()), transfer.deadline());
    return first;
}

template <class Predicate>
void Owner::drop(Predicate&& predicate) {
    std::vector<xcb_window_t> left;
    std::erase_if(transfers_, [&](const Transfer& transfer) {
        if (predicate(transfer)) left.push_back(transfer.requestor());
        return predicate(transfer);
    });
    // Stop watching windows without a transfer.
    const std::uint32_t events = XCB_EVENT_MASK_NO_EVENT;
    for (const xcb_window_t window : left)
        if (std::ranges::find(transfers_, window, &Transfer::requestor) == transfers_.end())
            xcb_change_window_attributes(connection_.xcb(), window, XCB_CW_EVENT_MASK, &events);
}

} // namespace platform::selection
