#include "platform/linux/x11/pasteboard/clipboard.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <utility>

namespace platform::selection {

namespace {

// After this long without another clearing, a pasteboard left empty is meant to be so.
constexpr auto settleTime = std::chrono::milliseconds(1500);

template <class T>
const T& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const T&>(event);
}

} // namespace

std::unique_ptr<Clipboard> Clipboard::open() {
    auto connection = Connection::open();
    if (!connection) return nullptr;
    return std::unique_ptr<Clipboard>(new Clipboard(std::move(connection)));
}

Clipboard::Clipboard(std::unique_ptr<Connection> connection)
    : connection_(std::move(connection)), owner_(*connection_), reader_(*connection_) {
    heldSince_ = connection_->time();
    holder_ = connection_->ownerOf(connection_->atom("CLIPBOARD"));
}

void Clipboard::process() {
    handleArrived();
    const auto now = Clock::now();
    owner_.expire(now);
    reader_.expire(now);
    settle(now);
    // Sending may read what arrives meanwhile, and poll() would then sleep over it.
    xcb_flush(connection_->xcb());
    handleArrived();
    xcb_flush(connection_->xcb());
}

void Clipboard::handleArrived() {
    while (const Event event = connection_->next())
        handle(*event);
}

std::optional<Clock::time_point> Clipboard::deadline() const {
    std::optional<Clock::time_point> earliest = owner_.deadline();
    const auto consider = [&](std::optional<Clock::time_point> time) {
        if (time && (!earliest || *time < *earliest)) earliest = time;
    };
    consider(reader_.deadline());
    if (emptied() && rescue_.ready()) consider(clearedAt_ + settleTime);
    return earliest;
}

void Clipboard::handle(const xcb_generic_event_t& event) {
    if (connection_->isHandover(event)) {
        const auto& notice = as<xcb_xfixes_selection_notify_event_t>(event);
        const bool died = notice.subtype != XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER;
        if (died) reader_.ownerGone(handovers_);
        return changedHands(died ? xcb_window_t{XCB_NONE} : notice.owner, notice.selection_timestamp,
                            notice.timestamp);
    }
    switch (event.response_type & 0x7F) {
    case XCB_SELECTION_REQUEST:
        return owner_.answer(as<xcb_selection_request_event_t>(event));
    case XCB_SELECTION_NOTIFY:
        return reader_.notified(as<xcb_selection_notify_event_t>(event));
    case XCB_DESTROY_NOTIFY:
        return owner_.windowGone(as<xcb_destroy_notify_event_t>(event).window);
    case XCB_PROPERTY_NOTIFY: {
        const auto& notice = as<xcb_property_notify_event_t>(event);
        if (notice.window == connection_->window()) {
            if (notice.state == XCB_PROPERTY_NEW_VALUE) reader_.propertyArrived(notice.atom);
        } else if (notice.state == XCB_PROPERTY_DELETE) {
            owner_.propertyDeleted(notice.window, notice.atom);
        }
        return;
    }
    case 0: // An error: the only ones that can happen are about windows that have gone.
        return owner_.windowGone(as<xcb_value_error_t>(event).bad_value);
    default:
        return;
    }
}

void Clipboard::changedHands(xcb_window_t owner, xcb_timestamp_t time, xcb_timestamp_t now) {
    ++handovers_;
    ++changeCount_;
    hidden_ = false;
    holder_ = owner;
    heldSince_ = now;
    owner_.changed(owner, time);
    // A copy by somebody else later than that means that the user has moved on.
    if (owner != connection_->window() && settled(Clock::now())) rescue_.drop();
}

bool Clipboard::settled(Clock::time_point now) const { return now - clearedAt_ >= settleTime; }

void Clipboard::settle(Clock::time_point now) {
    if (!settled(now)) return;
    if (std::exchange(hidden_, false)) {
        ++changeCount_;
        if (!reader_.owes(handovers_)) rescue_.drop();
    }
    // With the old time the server refuses us if anybody has copied since.
    if (emptied() && rescue_.ready()) {
        owner_.claim(rescue_.take(), owner_.ownedSince());
        connection_->synchronize();
        handleArrived();
    }
}

View Clipboard::look() {
    connection_->synchronize();
    handleArrived();
    settle(Clock::now());
    return {changeCount_, owner_.contents(), foreign() && !hidden_};
}

Reader::Question Clipboard::question(xcb_atom_t target) const {
    // The time of the handover, which no owner takes for too early and which differs from owner to owner.
    return {connection_->atom("CLIPBOARD"), target, handovers_, heldSince_};
}

void Clipboard::ask(const PasteboardType& target, std::int64_t changeCount, Patience patience, Done done) {
    if (changeCount != changeCount_ || !foreign() || hidden_ || reader_.owes(handovers_))
        return done(std::nullopt);
    reader_.ask(question(connection_->atom(target)), patience,
                [this, changeCount, done = std::move(done)](Answer answer) {
                    done(changeCount == changeCount_ ? std::move(answer) : std::nullopt);
                });
}

void Clipboard::clear() {
    look();
    clearedAt_ = Clock::now();
    // Who hangs with a copy that the host itself asked for has nothing of the user's.
    const bool copiedForUs = rescue_.isEarlierThan(handovers_);
    if (foreign() && !copiedForUs && (hidden_ || reader_.owes(handovers_))) {
        hidden_ = true;
        ++changeCount_;
        rescue_.ask(*connection_, reader_, question(XCB_NONE));
    } else {
        claim(emptyContents());
    }
}

bool Clipboard::write(const SharedContents& contents) {
    rescue_.drop();
    return claim(contents);
}

bool Clipboard::claim(const SharedContents& contents) {
    // Refused only when somebody copied in the millisecond between asking for the time and claiming.
    for (int attempt = 0; attempt < 3; ++attempt) {
        owner_.claim(contents, connection_->time());
        connection_->synchronize();
        handleArrived();
        if (!owner_.claiming()) return true;
    }
    return false;
}

void Clipboard::handOver(std::chrono::milliseconds patience, std::function<void()> done) {
    const xcb_atom_t manager = connection_->atom("CLIPBOARD_MANAGER");
    look();
    if (!owner_.contents() || emptied() || connection_->ownerOf(manager) == XCB_NONE) return done();
    const Reader::Question save{manager, connection_->atom("SAVE_TARGETS"), 0, connection_->time()};
    reader_.ask(save, {patience, patience}, [done = std::move(done)](const Answer&) { done(); });
}

std::vector<std::string> Clipboard::names(const Property& atoms) {
    if (atoms.format != 32) return {};
    const auto* values = reinterpret_cast<const xcb_atom_t*>(atoms.bytes.data());
    return connection_->names({values, atoms.bytes.size() / sizeof(xcb_atom_t)});
}

} // namespace platform::selection
