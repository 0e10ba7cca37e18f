// Rewrites captured text with the host's language model, or corrects its spelling where there is none: one at
// a time, a new one ends the one before. Belongs to the messenger's thread.
#pragma once

#include "client/model.h"
#include "spelling/spelling.h"

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
        // Only the spelling is corrected, because of what the sentence says.
        std::function<void(const std::string& why)> spellingOnly;
    };

    // `async` has its argument run on the messenger's thread; it is called on others.
    Rewriter(flutter::BinaryMessenger& messenger, std::function<void(std::function<void()>)> async,
             Handlers handlers);

    void rewrite(const std::string& text);

private:
    void start(const std::optional<std::string>& whyNoModel);
    void handle(const ModelEvent& event);
    void finish(const std::string& reason);

    Handlers handlers_;
    Model model_;
    Spelling spelling_;
    int requests_ = 0;
    std::string current_; // empty: none runs
    std::string original_;
    std::string latest_;
};

} // namespace quillmark
