#include "platform/linux/x11/pasteboard/reader.h"

#include <algorithm>
#include <utility>

namespace platform::selection {

namespace {

// Atoms are never freed by the server, so the fresh property of a question is the one longest unused of a
// few.
constexpr std::size_t propertyCount = 64;

// More than any desktop copies; a broken owner must not fill the memory.
constexpr std::size_t mostBytes = 512UL * 1024 * 1024;

} // namespace

Reader::Reader(Connection& connection) : connection_(connection) {
    std::vector<std::string> names;
    for (std::size_t index = 0; index < propertyCount; ++index)
        names.push_back("QUILLMARK_PASTEBOARD_" + std::to_string(index));
    properties_ = connection.atoms(names);
}

void Reader::ask(const Question& question, Patience patience, Done done) {
    Conversion& conversion = start(question, std::move(done));
    const auto now = Clock::now();
    conversion.silence = patience.silence;
    conversion.silentUntil = now + patience.silence;
    conversion.end = now + patience.total;
}

void Reader::leave(const Question& question, Done done) { start(question, std::move(done)).late = true; }

Reader::Conversion& Reader::start(const Question& question, Done done) {
    const xcb_atom_t property = freshProperty();
    conversions_.push_back({question, property, {}, {}, {}, std::move(done), false, false, {}});
    xcb_delete_property(connection_.xcb(), connection_.window(), property);
    xcb_convert_selection(connection_.xcb(), connection_.window(), question.selection, question.target,
                          property, question.time);
    return conversions_.back();
}

xcb_atom_t Reader::freshProperty() {
    if (conversions_.size() >= propertyCount) finish(conversions_.begin(), std::nullopt);
    for (;;) {
        const xcb_atom_t property = properties_[nextProperty_++ % propertyCount];
        if (std::ranges::find(conversions_, property, &Conversion::property) == conversions_.end())
            return property;
    }
}

bool Reader::owes(std::uint64_t owner) const {
    return std::ranges::any_of(conversions_, [&](const Conversion& conversion) {
        return conversion.late && conversion.question.owner == owner;
    });
}

void Reader::ownerGone(std::uint64_t owner) {
    for (auto next = conversions_.begin(); next != conversions_.end();) {
        const auto conversion = next++;
        if (conversion->question.owner == owner) finish(conversion, std::nullopt);
    }
}

void Reader::notified(const xcb_selection_notify_event_t& notice) {
    const auto open = std::ranges::find_if(conversions_, [&](const Conversion& conversion) {
        const Question& question = conversion.question;
        if (question.selection != notice.selection || conversion.pieces) return false;
        if (notice.property != XCB_NONE) return conversion.property == notice.property;
        // A refusal names no property; the time tells the questions to two owners apart.
        return question.target == notice.target &&
               (notice.time == XCB_CURRENT_TIME || question.time == notice.time);
    });
    if (open == conversions_.end()) return;
    if (notice.property == XCB_NONE) return finish(open, std::nullopt);
    Answer answer = connection_.take(notice.property);
    if (!answer || answer->type != connection_.atom("INCR")) return finish(open, std::move(answer));
    // Taking the announcement has told the owner to send the first piece.
    open->pieces = true;
    open->silentUntil = Clock::now() + open->silence;
}

void Reader::propertyArrived(xcb_atom_t property) {
    const auto open = std::ranges::find(conversions_, property, &Conversion::property);
    if (open == conversions_.end() || !open->pieces) return;
    Answer piece = connection_.take(property);
    if (!piece) return;
    if (piece->bytes.empty()) {
        if (open->value.type == XCB_NONE) open->value = std::move(*piece);
        return finish(open, std::move(open->value));
    }
    open->silentUntil = Clock::now() + open->silence;
    if (!open->done) return; // Nobody waits any more: let the owner come to its end.
    if (open->value.type == XCB_NONE) {
        open->value = std::move(*piece);
    } else {
        open->value.bytes.insert(open->value.bytes.end(), piece->bytes.begin(), piece->bytes.end());
    }
    if (open->value.bytes.size() > mostBytes) miss(*open);
}

void Reader::finish(Conversions::iterator conversion, Answer answer) {
    const Done done = std::move(conversion->done);
    conversions_.erase(conversion);
    if (done) done(std::move(answer));
}

void Reader::miss(Conversion& conversion) {
    conversion.late = true;
    conversion.value = {};
    if (const Done done = std::exchange(conversion.done, nullptr)) done(std::nullopt);
}

void Reader::expire(Clock::time_point now) {
    for (Conversion& conversion : conversions_)
        if (!conversion.late && std::min(conversion.silentUntil, conversion.end) <= now) miss(conversion);
}

std::optional<Clock::time_point> Reader::deadline() const {
    std::optional<Clock::time_point> earliest;
    for (const Conversion& conversion : conversions_) {
        const auto limit = std::min(conversion.silentUntil, conversion.end);
        if (!conversion.late && (!earliest || limit < *earliest)) earliest = limit;
    }
    return earliest;
}

} // namespace platform::selection
