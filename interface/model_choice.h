// Which language model would answer, as the host's command line says it, and the choice of another.
#pragma once

#include "model/status.h"
#include "views/settings/actions.h"

#include <functional>
#include <string>
#include <vector>

namespace quillmark {

// Main thread only; answers come from the main loop.
class ModelChoice {
public:
    explicit ModelChoice(std::function<void()> changed) : changed_(std::move(changed)) {}

    // As it was at the last look; before the first one has ended, nothing is known.
    const ModelStatus& status() const { return status_; }
    bool isKnown() const { return known_; }

    // Looks, which takes some hundredths of a second and two seconds at most. Several at once are one.
    void look(std::function<void()> then = {});

    // The sentence says what is wrong with the choice; empty: it counts now.
    void choose(const SettingsActions::ServerChoice& choice, std::function<void(std::string problem)> done);

private:
    void take(ModelStatus status);

    std::function<void()> changed_;
    ModelStatus status_;
    std::vector<std::function<void()>> waiting_;
    bool looking_ = false;
    bool known_ = false;
};

} // namespace quillmark
