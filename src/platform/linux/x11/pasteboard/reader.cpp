#include "platform/linux/x11/pasteboard/reader.h"

#include "platform/linux/base/trace.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>
#include <utility>

namespace platform::selection {

namespace {

// Beyond this the oldest request, of an owner that has stopped long ago, is forgotten.
constexpr std::size_t mostRequests = 64;

// All answers that are being delivered in pieces together; an owner may send pieces without end.
constexpr std::size_t mostBytesUnderWay = 2 * mostBytes;

// How long an answer that came late is kept. The host asks again every 20 ms while it waits for a copy.
constexpr auto keepLimit = std::chrono::seconds(2);

// What an owner says before the first piece: a lower bound in bytes (ICCCM 2.7.2), or nothing.
std::size_t announcedSize(const Property& announcement) {
    std::uint32_t size = 0;
    if (announcement.bytes.size() == sizeof size) std::memcpy(&size, announcement.bytes.data(), sizeof size);
    return size;
}

} // namespace

Representation representation(XcbConnection& connection, const PasteboardType& target, Property value) {
    const std::string type = connection.names({&value.type, 1}).front();
    return {target,
            {type, value.format},
            std::make_shared<const std::vector<std::uint8_t>>(std::move(value.bytes))};
}

Reader::Reader(XcbConnection& connection)
    : connection_(connection), property_(connection.atom("QUILLMARK_PASTEBOARD")) {}

void Reader::ask(const Request& request, AnswerLimits limits, Done done) {
    if (const auto earlier = find(request); earlier != conversions_.end()) {
        if (earlier->state != State::kept) return done(std::nullopt);
        auto value = std::move(earlier->value);
        conversions_.erase(earlier);
        return done(std::move(value));
    }
    Conversion& conversion = start(request, std::move(done));
    const auto now = Clock::now();
    conversion.state = State::awaited;
    conversion.silence = limits.silence;
    conversion.silentUntil = now + limits.silence;
    conversion.end = now + limits.total;
}

void Reader::askWithoutLimit(const Request& request, Done done) { start(request, std::move(done)); }

Reader::Conversion& Reader::start(const Request& request, Done done) {
    Conversion& conversion = conversions_.emplace_back(Conversion{request, freeWindow(), std::move(done)});
    xcb_delete_property(connection_.xcb(), conversion.window, property_);
    xcb_convert_selection(connection_.xcb(), conversion.window, request.selection, request.target, property_,
                          request.time);
    return conversion;
}

Reader::Conversions::iterator Reader::find(const Request& request) {
    return std::ranges::find_if(conversions_, [&](const Conversion& conversion) {
        return request.owner != 0 && conversion.request.owner == request.owner &&
               conversion.request.target == request.target;
    });
}

xcb_window_t Reader::freeWindow() {
    if (conversions_.size() >= mostRequests) finish(conversions_.begin(), std::nullopt);
    for (const xcb_window_t window : windows_)
        if (std::ranges::find(conversions_, window, &Conversion::window) == conversions_.end()) return window;
    return windows_.emplace_back(connection_.newWindow());
}

bool Reader::isSilent(OwnerNumber owner) const {
    return std::ranges::any_of(conversions_, [&](const Conversion& conversion) {
        return conversion.request.owner == owner && conversion.state == State::late &&
               !conversion.answeredOthers;
    });
}

void Reader::ownerGone(OwnerNumber owner) {
    const auto isIts = [&](const Conversion& conversion) { return conversion.request.owner == owner; };
    // `done` may ask for something else, so begin again after each.
    for (auto next = conversions_.begin();
         (next = std::ranges::find_if(conversions_, isIts)) != conversions_.end();)
        finish(next, std::nullopt);
}

void Reader::notified(const xcb_selection_notify_event_t& notice) {
    const auto open = std::ranges::find(conversions_, notice.requestor, &Conversion::window);
    if (open == conversions_.end() || open->inPieces || open->state == State::kept ||
        open->request.target != notice.target)
        return;
    answered(open->request.owner);
    if (notice.property == XCB_NONE) return finish(open, std::nullopt);
    std::optional<Property> value = connection_.take(open->window, property_);
    // Reading the announcement of pieces (INCR) deletes it, which tells the owner to send the first one.
    if (!value || value->type != connection_.atom("INCR")) return finish(open, std::move(value));
    open->inPieces = true;
    open->announced = announcedSize(*value);
    if (!open->done) giveUp(*open, State::abandoned);
}

void Reader::propertyArrived(xcb_window_t window, xcb_atom_t property) {
    const auto open = std::ranges::find(conversions_, window, &Conversion::window);
    if (open == conversions_.end() || property != property_ || !open->inPieces ||
        open->state == State::abandoned)
        return;
    std::optional<Property> piece = connection_.take(window, property);
    if (!piece) return;
    answered(open->request.owner);
    const bool last = piece->bytes.empty();
    open->add(*piece);
    if (last) return finish(open, std::exchange(open->value, std::nullopt));
    // An owner whose piece is not taken sends no more.
    if (open->size() > mostBytes || bytesUnderWay() > mostBytesUnderWay) giveUp(*open, State::abandoned);
}

// The owner lives: all that it still has to answer gets its time anew.
void Reader::answered(OwnerNumber owner) {
    const auto now = Clock::now();
    for (Conversion& conversion : conversions_) {
        if (conversion.request.owner != owner) continue;
        conversion.answeredOthers = true;
        conversion.silentUntil = now + conversion.silence;
    }
}

void Reader::finish(Conversions::iterator conversion, std::optional<Property> value) {
    traceOutcome(*conversion, value ? std::to_string(value->bytes.size()) + " bytes" : "refused");
    if (const Done done = std::exchange(conversion->done, nullptr)) {
        conversions_.erase(conversion);
        return done(std::move(value));
    }
    if (!value || conversion->request.owner == 0) {
        conversions_.erase(conversion);
        return;
    }
    conversion->state = State::kept;
    conversion->end = Clock::now() + keepLimit;
    conversion->value = std::move(value);
}

void Reader::giveUp(Conversion& conversion, State state) {
    traceOutcome(conversion, state == State::late ? "late" : "too large or too slow");
    conversion.state = state;
    conversion.value.reset();
    if (const Done done = std::exchange(conversion.done, nullptr)) done(std::nullopt);
}

void Reader::traceOutcome(const Conversion& conversion, const std::string& outcome) {
    if (!trace::isOn()) return;
    const std::array atoms{conversion.request.selection, conversion.request.target};
    const auto names = connection_.names(atoms);
    trace::write("host → owner of " + names[0] + ' ' + names[1] + " took " + trace::since(conversion.asked) +
                 ": " + outcome);
}

void Reader::expire(Clock::time_point now) {
    const auto isDue = [&](const Conversion& conversion) { return conversion.limit() <= now; };
    for (auto next = conversions_.begin();
         (next = std::ranges::find_if(conversions_, isDue)) != conversions_.end();) {
        if (next->state == State::kept)
            conversions_.erase(next);
        else
            giveUp(*next, next->inPieces ? State::abandoned : State::late);
    }
}

std::optional<Clock::time_point> Reader::deadline() const {
    if (conversions_.empty()) return std::nullopt;
    const auto earliest = std::ranges::min_element(conversions_, {}, &Conversion::limit)->limit();
    return earliest == Clock::time_point::max() ? std::nullopt : std::optional(earliest);
}

std::size_t Reader::bytesUnderWay() const {
    return std::accumulate(
        conversions_.begin(), conversions_.end(), std::size_t{0},
        [](std::size_t sum, const Conversion& conversion) { return sum + conversion.size(); });
}

Clock::time_point Reader::Conversion::limit() const {
    if (state == State::awaited) return std::min(silentUntil, end);
    return state == State::kept ? end : Clock::time_point::max();
}

std::size_t Reader::Conversion::size() const { return value ? value->bytes.size() : 0; }

// Into one block, which goes back to the system when it is freed. Owners send pieces of 256 KiB and the like:
// of a long answer, the heap would keep them all as long as anything behind them is in use.
void Reader::Conversion::add(const Property& piece) {
    if (!value) {
        value = Property{piece.type, piece.format, {}};
        value->bytes.reserve(std::min(announced, mostBytes));
    }
    value->bytes.insert(value->bytes.end(), piece.bytes.begin(), piece.bytes.end());
}

} // namespace platform::selection
