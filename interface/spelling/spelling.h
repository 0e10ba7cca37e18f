// Corrects the spelling of texts in English and in the user's other languages, for an interface whose host
// has no language model. It reads no instructions and changes only what is wrong beyond doubt.
//
// One text at a time, on a thread of its own. An object belongs to the thread that made it.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace quillmark {

class Spelling {
public:
    // Whether the dictionary and the word lists of English are on this computer (Debian's packages
    // hunspell-en-us and scowl). Any thread.
    static bool isInstalled();

    struct Handlers {
        // The whole corrected text so far, at most 60 times a second, and only once the owner's thread has
        // taken the one before, which it replaces.
        std::function<void(const std::string& soFar)> growing = {};
        // The whole corrected text. The last call.
        std::function<void(const std::string& text)> done;
    };

    // `async` is called on the other thread and has its argument run on this object's own, in order: the main
    // loop's way to take work from elsewhere. Handlers are called there.
    explicit Spelling(std::function<void(std::function<void()>)> async);
    // No handler is called any more. Waits for the word that is being looked up.
    ~Spelling();
    Spelling(const Spelling&) = delete;
    Spelling& operator=(const Spelling&) = delete;

    // A text that is still being corrected is given up, and its handlers are not called any more.
    void correct(std::string text, Handlers handlers);
    void cancel();

private:
    class Worker;
    struct Job;

    std::unique_ptr<Worker> worker_;
    std::shared_ptr<Job> current_;
};

} // namespace quillmark
