// Rewrites captured text with the host's language model: one at a time, a new one ends the one before.
// Belongs to the messenger's thread.
#pragma once

#include "client/model.h"

#include <functional>
#include <optional>
#include <string>

namespace quillmark {

class Rewriter {
public:
    struct Handlers {
        std::function<void(const std::string& soFar)> growing;
        // The whole rewritten text.
        std::function<void(const std::string& text)> done;
        // A sentence: there is nothing that may be used.
        std::function<void(const std::string& why)> failed;
    };

    Rewriter(flutter::BinaryMessenger& messenger, Handlers handlers);

    void rewrite(const std::string& text);

private:
    void handle(const ModelEvent& event);
    void finish(const std::string& reason);

    Handlers handlers_;
    Model model_;
    int requests_ = 0;
    std::string current_; // empty: none runs
    std::string original_;
    std::string latest_;
};

} // namespace quillmark
