// The host's language model as an interface uses it. docs/model.md says what each call does. Belongs to the
// messenger's thread; handlers run inside Connection::run().
#pragma once

#include "flutter/method_channel.h"

#include <functional>
#include <optional>
#include <string>

namespace quillmark {

// What a generation tells: `text` with the whole answer so far, then exactly one of the others.
struct ModelEvent {
    enum class Kind { text, done, error, refused };

    std::string request;
    Kind kind = Kind::error;
    std::string words; // the text, the finish reason, or the sentence for the person
};

class Model {
public:
    // Listens from now on.
    Model(flutter::BinaryMessenger& messenger, std::function<void(const ModelEvent&)> onEvent);

    // Starts a generation; its events carry `request`. A greedy one gives the same answer every time.
    void respond(const std::string& request, const std::string& instructions, const std::string& prompt,
                 int maxTokens, bool greedy = true);
    void cancel(const std::string& request);

    // Whether the model can be used at this moment: tells why not, as a sentence for the person, or nothing.
    void availability(std::function<void(std::optional<std::string> whyNot)> answered);

private:
    flutter::MethodChannel calls_;
    flutter::MethodChannel events_;
};

} // namespace quillmark
