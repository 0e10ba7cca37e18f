#include "model_choice.h"

#include "model/chosen_server.h"
#include "system/host_command.h"

#include <utility>

namespace quillmark {

namespace {

constexpr auto option = "--language-model", asJson = "--json", foundByItself = "automatic";

} // namespace

void ModelChoice::look(std::function<void()> then) {
    if (then) waiting_.push_back(std::move(then));
    if (std::exchange(looking_, true)) return;
    runHost({option, asJson}, [this](const HostAnswer& answer) {
        looking_ = false;
        take(readModelStatus(answer.output).value_or(ModelStatus{.whyNot = problemOf(answer)}));
        for (const auto& waiting : std::exchange(waiting_, {}))
            waiting();
    });
}

void ModelChoice::take(ModelStatus status) {
    if (std::exchange(known_, true) && status == status_) return;
    status_ = std::move(status);
    changed_();
}

void ModelChoice::choose(const SettingsActions::ServerChoice& choice,
                         std::function<void(std::string problem)> done) {
    std::vector<std::string> command{option, asJson, choice.address.empty() ? foundByItself : choice.address};
    if (!choice.model.empty()) command.push_back(choice.model);
    runHost(command, [this, choice, done = std::move(done)](const HostAnswer& answer) {
        if (!readModelStatus(answer.output)) return done(problemOf(answer));
        if (const auto problem = choice.key ? setServerKey(chosenServerFile(), *choice.key) : std::nullopt)
            return done(*problem);
        // The key may change the answer.
        look([this, done] { done(status_.available ? "" : status_.whyNot); });
    });
}

} // namespace quillmark
