#include "platform/linux/x11/pasteboard/clipboard.h"

#include "platform/linux/x11/pasteboard/text.h"

#include <xcb/xfixes.h>

#include <cstring>
#include <utility>

namespace platform::selection {

namespace {

// A pasteboard that is still empty this long after the last clear() is meant to be so.
constexpr auto longCleared = std::chrono::milliseconds(1500);

constexpr int mostClaims = 3;

template <class T>
const T& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const T&>(event);
}

std::vector<std::string> names(XcbConnection& connection, const Property& atoms) {
    if (atoms.format != 32) return {};
    const auto* values = reinterpret_cast<const xcb_atom_t*>(atoms.bytes.data());
    return connection.names({values, atoms.bytes.size() / sizeof(xcb_atom_t)});
}

} // namespace

std::unique_ptr<Clipboard> Clipboard::open() {
    auto connection = XcbConnection::open();
    if (!connection) return nullptr;
    return std::unique_ptr<Clipboard>(new Clipboard(std::move(connection)));
}

Clipboard::Clipboard(std::unique_ptr<XcbConnection> connection)
    : connection_(std::move(connection)), owner_(*connection_), reader_(*connection_) {
    ownedSince_ = connection_->time();
    ownerWindow_ = connection_->ownerOf(connection_->atom("CLIPBOARD"));
}

Clipboard::State Clipboard::state() const {
    if (const SharedContents& own = owner_.contents()) return own->empty ? State::cleared : State::ours;
    if (ownerWindow_ == XCB_NONE) return State::nobody;
    return hidden_ ? State::hidden : State::theirs;
}

void Clipboard::process() {
    handleArrived();
    const auto now = Clock::now();
    owner_.expire(now);
    reader_.expire(now);
    endClearing(now);
    // Flushing reads what has arrived into memory, and poll() would not wake for that.
    xcb_flush(connection_->xcb());
    handleArrived();
    xcb_flush(connection_->xcb());
}

void Clipboard::handleArrived() {
    while (const Event event = connection_->next()) {
        handle(*event);
        reader_.expire(Clock::now()); // An owner may deliver as fast as it is read, and without end.
    }
}

std::optional<Clock::time_point> Clipboard::deadline() const {
    std::optional<Clock::time_point> earliest = owner_.deadline();
    const auto consider = [&](std::optional<Clock::time_point> time) {
        if (time && (!earliest || *time < *earliest)) earliest = time;
    };
    consider(reader_.deadline());
    if (state() == State::cleared && late_.complete()) consider(clearedAt_ + longCleared);
    return earliest;
}

void Clipboard::handle(const xcb_generic_event_t& event) {
    if (connection_->isOwnerChange(event)) return ownerChanged(event);
    switch (event.response_type & 0x7F) {
    case XCB_SELECTION_REQUEST:
        return owner_.answer(as<xcb_selection_request_event_t>(event));
    case XCB_SELECTION_NOTIFY:
        return reader_.notified(as<xcb_selection_notify_event_t>(event));
    case XCB_PROPERTY_NOTIFY:
        return propertyChanged(event);
    case XCB_DESTROY_NOTIFY:
        return owner_.windowGone(as<xcb_destroy_notify_event_t>(event).window);
    case 0: // An error. All that can happen are about the windows of requestors that have ended.
        return owner_.windowGone(as<xcb_value_error_t>(event).bad_value);
    default:
        return;
    }
}

void Clipboard::propertyChanged(const xcb_generic_event_t& event) {
    const auto& notice = as<xcb_property_notify_event_t>(event);
    if (notice.state == XCB_PROPERTY_NEW_VALUE)
        reader_.propertyArrived(notice.window, notice.atom);
    else
        owner_.propertyDeleted(notice.window, notice.atom);
}

void Clipboard::ownerChanged(const xcb_generic_event_t& event) {
    const auto& notice = as<xcb_xfixes_selection_notify_event_t>(event);
    const bool ended = notice.subtype != XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER;
    const OwnerNumber former = ownerNumber_++;
    ++changeCount_;
    hidden_ = false;
    ownerWindow_ = ended ? xcb_window_t{XCB_NONE} : notice.owner;
    ownedSince_ = notice.timestamp;
    owner_.ownerChanged(ownerWindow_, notice.selection_timestamp);
    if (ended) reader_.ownerGone(former);
    if (ownerWindow_ != connection_->window() && isLongCleared(Clock::now())) late_.drop();
}

bool Clipboard::isLongCleared(Clock::time_point now) const { return now - clearedAt_ >= longCleared; }

void Clipboard::endClearing(Clock::time_point now) {
    if (!isLongCleared(now)) return;
    if (state() == State::hidden) {
        hidden_ = false;
        ++changeCount_;
        // An owner that answers again can be read as any other.
        if (!reader_.isSilent(ownerNumber_)) late_.drop();
    }
    if (state() == State::cleared && late_.complete()) {
        // With the time of the clearing the server refuses the host if another program has copied since.
        owner_.claim(late_.take(), owner_.ownedSince());
        connection_->synchronize();
        handleArrived();
    }
}

View Clipboard::view() {
    connection_->synchronize();
    handleArrived();
    endClearing(Clock::now());
    return {changeCount_, owner_.contents(), state() == State::theirs};
}

Request Clipboard::request(xcb_atom_t target) const {
    // The time of the event about the owner: never before the time from which it owns, as owners check.
    return {connection_->atom("CLIPBOARD"), target, ownerNumber_, ownedSince_};
}

void Clipboard::ask(const PasteboardType& target, std::int64_t changeCount, AnswerLimits limits, Done done) {
    if (changeCount != changeCount_ || state() != State::theirs || reader_.isSilent(ownerNumber_))
        return done(std::nullopt);
    reader_.ask(request(connection_->atom(target)), limits,
                [this, changeCount, done = std::move(done)](std::optional<Property> value) {
                    done(changeCount == changeCount_ ? std::move(value) : std::nullopt);
                });
}

void Clipboard::askTargets(std::int64_t changeCount, AnswerLimits limits, std::function<void(Targets)> done) {
    ask("TARGETS", changeCount, limits,
        [this, changeCount, done = std::move(done)](const std::optional<Property>& value) {
            if (changeCount != changeCount_ || reader_.isSilent(ownerNumber_)) return done(std::nullopt);
            auto offered = value ? names(*connection_, *value) : std::vector<std::string>{};
            if (offered.empty()) offered.assign(commonTargets.begin(), commonTargets.end());
            done(std::move(offered));
        });
}

bool Clipboard::holdsOnlyCopy() const { return late_.areFromBefore(ownerNumber_); }

void Clipboard::clear() {
    view();
    clearedAt_ = Clock::now();
    const bool silent = state() == State::theirs && reader_.isSilent(ownerNumber_) && !holdsOnlyCopy();
    if (!silent && state() != State::hidden) {
        claim(emptyContents());
        return;
    }
    hidden_ = true;
    ++changeCount_;
    late_.ask(*connection_, reader_, request(XCB_NONE));
}

bool Clipboard::write(const SharedContents& contents) {
    late_.drop();
    return claim(contents);
}

bool Clipboard::claim(const SharedContents& contents) {
    // The server refuses when another program copied between the two requests, which takes it 0.1 ms.
    for (int attempt = 0; attempt < mostClaims; ++attempt) {
        owner_.claim(contents, connection_->time());
        connection_->synchronize();
        handleArrived();
        if (!owner_.claiming()) return true;
    }
    return false;
}

void Clipboard::copyPrimary(xcb_window_t window, AnswerLimits limits, std::function<void()> done) {
    const xcb_atom_t primary = connection_->atom("PRIMARY");
    if (!connection_->areOfOneProgram(connection_->ownerOf(primary), window)) return done();
    reader_.ask({primary, connection_->atom("UTF8_STRING"), 0, connection_->time()}, limits,
                [this, done = std::move(done)](const std::optional<Property>& value) {
                    if (value && !value->bytes.empty()) claim(textContents(text(value->bytes)));
                    done();
                });
}

void Clipboard::readPrimary(xcb_window_t window, AnswerLimits limits,
                            std::function<void(std::optional<PrimarySelection>)> done) {
    const xcb_atom_t primary = connection_->atom("PRIMARY");
    if (!connection_->areOfOneProgram(connection_->ownerOf(primary), window)) return done(std::nullopt);
    const xcb_timestamp_t now = connection_->time();
    const Request since{primary, connection_->atom("TIMESTAMP"), 0, now};
    const Request words{primary, connection_->atom("UTF8_STRING"), 0, now};
    reader_.ask(since, limits, [=, this, done = std::move(done)](const std::optional<Property>& time) {
        xcb_timestamp_t taken = 0;
        if (!time || time->format != 32 || time->bytes.size() != sizeof taken) return done(std::nullopt);
        std::memcpy(&taken, time->bytes.data(), sizeof taken);
        reader_.ask(words, limits, [=](const std::optional<Property>& value) {
            if (!value) return done(std::nullopt);
            done(PrimarySelection{std::string(text(value->bytes)), taken,
                                  std::chrono::milliseconds(now - taken)});
        });
    });
}

void Clipboard::saveToManager(std::chrono::milliseconds limit, std::function<void()> done) {
    const xcb_atom_t manager = connection_->atom("CLIPBOARD_MANAGER");
    view();
    if (state() != State::ours || connection_->ownerOf(manager) == XCB_NONE) return done();
    const Request save{manager, connection_->atom("SAVE_TARGETS"), 0, connection_->time()};
    reader_.ask(save, {limit, limit}, [done = std::move(done)](const std::optional<Property>&) { done(); });
}

} // namespace platform::selection
