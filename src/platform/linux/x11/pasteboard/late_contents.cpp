#include "platform/linux/x11/pasteboard/late_contents.h"

#include <algorithm>
#include <utility>

namespace platform::selection {

const std::array<PasteboardType, 11> commonTargets = {"UTF8_STRING",
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

void LateContents::ask(XcbConnection& connection, Reader& reader, const Request& request) {
    if (found_ && found_->owner == request.owner) return;
    found_ = std::make_shared<Found>(Found{request.owner, commonTargets.size(), {}});
    found_->answers.resize(commonTargets.size());
    const auto targets = connection.atoms(commonTargets);
    for (std::size_t index = 0; index < targets.size(); ++index) {
        Request next = request;
        next.target = targets[index];
        reader.askWithoutLimit(next, [found = found_, index, &connection](std::optional<Property> value) {
            --found->unanswered;
            if (value)
                found->answers[index] = representation(connection, commonTargets[index], std::move(*value));
        });
    }
}

bool LateContents::complete() const {
    return found_ && found_->unanswered == 0 &&
           std::ranges::any_of(found_->answers, [](const auto& answer) { return answer.has_value(); });
}

SharedContents LateContents::take() {
    Contents contents;
    if (const auto found = std::exchange(found_, nullptr))
        for (auto& answer : found->answers)
            if (answer) contents.representations.push_back(std::move(*answer));
    return std::make_shared<const Contents>(std::move(contents));
}

} // namespace platform::selection
