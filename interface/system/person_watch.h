// Whether the person goes on working elsewhere: sees that keys and buttons are pressed, not which ones. On an
// X connection of its own. Main thread only.
#pragma once

#include <memory>

namespace quillmark {

class PersonWatch {
public:
    // Without an X server that speaks XInput 2 the person is never seen to do anything.
    PersonWatch();
    ~PersonWatch();
    PersonWatch(const PersonWatch&) = delete;
    PersonWatch& operator=(const PersonWatch&) = delete;

    // From now on.
    void begin();
    // Since then a key other than a modifier or a button was pressed, or another window came to the front.
    bool wentOn();

    // Shift, Control, Alt or Super is down on a keyboard that a person types on.
    bool holdsModifiers();

private:
    class Server;
    std::unique_ptr<Server> server_;
};

} // namespace quillmark
