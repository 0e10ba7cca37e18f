#include "platform/event.h"
#include "platform/simulated/world.h"

namespace platform {

using simulated::World;

namespace {

// Where keystrokes arrive, and what a change of it can be seen by.
struct Place {
    const simulated::Program* program = nullptr;
    const simulated::ProgramWindow* window = nullptr;
    const simulated::Field* field = nullptr;
    std::string value = {};
    CFRange selection = {};
    std::string subrole = {};
    CGEventFlags heldModifiers = 0;
    int keysPressed = 0;

    bool operator==(const Place&) const = default;
};

Place place(KeystrokeGuard::Against against) {
    const World& world = World::current();
    Place found{.program = world.frontmost.get()};
    if (found.program == nullptr) return found;
    found.window = found.program->focusedWindow;
    if (against == KeystrokeGuard::Against::otherWindows) return found;
    found.heldModifiers = world.heldModifiers;
    found.keysPressed = world.keysPressed;
    found.field = found.program->focusedField;
    if (found.field == nullptr) return found;
    found.value = found.field->value;
    found.selection = found.field->selection;
    found.subrole = found.field->subrole;
    return found;
}

} // namespace

struct KeystrokeGuard::Watch {
    pid_t process;
    Against against;
    Place before = place(against);
    std::vector<simulated::Keystroke> keystrokes = {};

    bool isUndisturbed() const {
        return before.program != nullptr && before.program->pid == process && place(against) == before;
    }
};

KeystrokeGuard::KeystrokeGuard(pid_t process, Against against)
    : watch_(std::make_unique<Watch>(Watch{process, against})) {
    World::current().guardedKeystrokes = &watch_->keystrokes;
}

KeystrokeGuard::~KeystrokeGuard() { World::current().guardedKeystrokes = nullptr; }

bool KeystrokeGuard::deliver() {
    World& world = World::current();
    world.guardedKeystrokes = nullptr;
    if (!watch_->isUndisturbed()) return false;
    for (const simulated::Keystroke& keystroke : watch_->keystrokes)
        world.deliverKeystroke(keystroke);
    return true;
}

} // namespace platform
