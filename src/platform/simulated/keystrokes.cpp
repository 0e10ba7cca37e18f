// What programs do when they get a keystroke.
#include "platform/simulated/world.h"

#include <algorithm>

namespace simulated {
namespace {

constexpr platform::CGEventFlags realModifiers =
    platform::kCGEventFlagMaskShift | platform::kCGEventFlagMaskControl |
    platform::kCGEventFlagMaskAlternate | platform::kCGEventFlagMaskCommand;

std::string describe(const Keystroke& keystroke) {
    std::string text;
    if (keystroke.flags & platform::kCGEventFlagMaskShift) text += "Shift+";
    if (keystroke.flags & platform::kCGEventFlagMaskControl) text += "Control+";
    if (keystroke.flags & platform::kCGEventFlagMaskAlternate) text += "Alternate+";
    if (keystroke.flags & platform::kCGEventFlagMaskCommand) text += "Command+";
    return text + std::to_string(keystroke.keyCode);
}

char asciiOn(const KeyboardLayout& layout, platform::CGKeyCode keyCode) {
    const auto found = layout.keys.find(keyCode);
    if (found == layout.keys.end() || layout.deadKeys.contains(keyCode)) return 0;
    const std::u16string& typed = found->second;
    return typed.size() == 1 && typed.front() < 0x80 ? static_cast<char>(typed.front()) : '\0';
}

// The letter that programs see in a shortcut: what the key types on the first layout with ASCII letters, else
// what it types on a US keyboard.
char shortcutLetter(platform::CGKeyCode keyCode) {
    const auto& layouts = World::current().layouts;
    const auto found = std::ranges::find_if(layouts, &KeyboardLayout::typesASCII);
    const char letter = found != layouts.end() ? asciiOn(*found, keyCode) : '\0';
    return letter != 0 ? letter : asciiOn(KeyboardLayout::us(), keyCode);
}

void copy(World& world, const Program& program, const Field& field) {
    const std::string selected = field.selectedText();
    if (field.copies == Copies::image) {
        world.changePasteboard({{bytes("image/png", {0x89, 'P', 'N', 'G'})}}, program.name);
    } else if (field.copies == Copies::selection && !selected.empty()) {
        world.changePasteboard({{text(selected)}}, program.name);
    }
}

void act(Program& program, const Keystroke& keystroke) {
    World& world = World::current();
    if (program.ended || program.accessibility == Accessibility::hung || program.focusedField == nullptr)
        return;
    Field& field = *program.focusedField;
    const platform::CGEventFlags modifiers = keystroke.flags & realModifiers;
    const char letter = shortcutLetter(keystroke.keyCode);
    if (modifiers == 0 && letter != 0 && field.editable) return field.replaceSelection({&letter, 1});
    if (modifiers != platform::kCGEventFlagMaskCommand) return;
    if (letter == 'c') copy(world, program, field);
    if (letter == 'a') field.selectAll();
    const auto pasted = world.pasteboardText();
    if (letter == 'v' && pasted && field.editable) field.replaceSelection(*pasted);
}

} // namespace

void World::postKeystroke(Keystroke keystroke) {
    note("posted " + describe(keystroke));
    if (guardedKeystrokes == nullptr) return deliverKeystroke(keystroke);
    guardedKeystrokes->push_back(keystroke);
}

void World::deliverKeystroke(Keystroke keystroke) {
    note("keystroke " + describe(keystroke) + " to " + (frontmost ? frontmost->name : "no program"));
    if (!frontmost) return;
    frontmost->keystrokes.push_back(keystroke);
    if (frontmost->keystrokesActAfter <= Seconds::zero()) return act(*frontmost, keystroke);
    after(frontmost->keystrokesActAfter, [program = frontmost, keystroke] { act(*program, keystroke); });
}

} // namespace simulated
