#include "platform/linux/x11/pasteboard/rescue.h"

#include <algorithm>
#include <array>
#include <utility>

namespace platform::selection {

namespace {

// What it really offers is unknown, so it is asked for what cannot be made again from anything else.
const std::array<std::string, 11> worthSaving = {"UTF8_STRING",
                                                 "text/plain;charset=utf-8",
                                                 "text/plain",
                                                 "STRING",
                                                 "TEXT",
                                                 "text/html",
                                                 "text/rtf",
                                                 "text/uri-list",
                                                 "x-special/gnome-copied-files",
                                                 "application/x-kde-cutselection",
                                                 "image/png"};

} // namespace

void Rescue::ask(Connection& connection, Reader& reader, const Reader::Question& question) {
    if (found_ && found_->owner == question.owner) return;
    found_ = std::make_shared<Found>(
        Found{question.owner, worthSaving.size(), std::vector<std::optional<Data>>(worthSaving.size())});
    const auto targets = connection.atoms(worthSaving);
    for (std::size_t index = 0; index < targets.size(); ++index) {
        Reader::Question next = question;
        next.target = targets[index];
        reader.leave(next, [found = found_, index, &connection](Answer answer) {
            --found->open;
            if (!answer) return;
            const std::string type = connection.names({&answer->type, 1}).front();
            found->answers[index] = Data{std::move(answer->bytes), encodingNote({type, answer->format})};
        });
    }
}

bool Rescue::ready() const {
    return found_ && found_->open == 0 &&
           std::ranges::any_of(found_->answers, [](const auto& answer) { return answer.has_value(); });
}

SharedContents Rescue::take() {
    Contents contents;
    const auto found = std::exchange(found_, nullptr);
    for (std::size_t index = 0; found && index < worthSaving.size(); ++index)
        if (found->answers[index])
            contents.representations.push_back({worthSaving[index], std::move(*found->answers[index])});
    return std::make_shared<const Contents>(std::move(contents));
}

} // namespace platform::selection
