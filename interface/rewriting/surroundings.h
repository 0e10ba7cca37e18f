// What the assistant needs of the program around it. The program owns it and it outlives the assistant.
#pragma once

#include "model/consent.h"
#include "rewriting/notice.h"

#include <chrono>
#include <functional>

namespace quillmark {

class Surroundings {
public:
    virtual ~Surroundings() = default;

    // The rewrite has changed and should be shown as it is now.
    virtual void changed() = 0;
    virtual void tell(const Notice& notice) = 0;

    // The window has been asked for.
    virtual void show() = 0;
    virtual void hide() = 0;
    // Has the host capture once more; a capture follows, or nothing.
    virtual void captureAgain() = 0;

    // Whether the model that would answer now may have the person's texts, found out anew each time. Answers
    // at once or later.
    virtual void askForConsent(std::function<void(ModelConsent)> answer) = 0;

    // From here on the person is watched: whether a key or a button was pressed, or another window came to
    // the front.
    virtual void watchPerson() = 0;
    virtual bool personWentOn() = 0;
    // Shift, Control, Alt or Super is down on a keyboard.
    virtual bool personHoldsModifiers() = 0;

    virtual void after(std::chrono::milliseconds delay, std::function<void()> work) = 0;
};

} // namespace quillmark
