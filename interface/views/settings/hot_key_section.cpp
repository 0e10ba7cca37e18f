#include "views/settings/hot_key_section.h"

#include "language/settings_phrases.h"
#include "settings/hot_key.h"
#include "settings/key_position.h"
#include "views/hot_key_name.h"

namespace quillmark {

HotKeySection::HotKeySection(const SettingsActions& actions)
    : Section(say(phrases::hotKey)), actions_(actions),
      recorder_([this](const GdkEventKey& event) { pressed(event); }), message_(addNote()) {
    recorder_.set_halign(Gtk::ALIGN_START);
    pack_start(recorder_, Gtk::PACK_SHRINK);
    reorder_child(recorder_, 1);
    show();
}

void HotKeySection::show() {
    const auto& hotKey = actions_.settings().hotKey;
    const auto name = hotKeyName(hotKey);
    recorder_.show(name, say(phrases::changeHotKey, {name}));
    sayIn(message_, warningOf(hotKey).value_or(""));
}

void HotKeySection::pressed(const GdkEventKey& event) {
    const auto code = keyCodeAt(event.hardware_keycode - firstXKeyCode);
    const auto held = [&](unsigned mask) { return (event.state & mask) != 0; };
    if (!code) return sayIn(message_, say(phrases::hotKeyUnknown));
    wish({.keyCode = *code,
          .command = held(GDK_SUPER_MASK | GDK_MOD4_MASK),
          .option = held(GDK_MOD1_MASK),
          .control = held(GDK_CONTROL_MASK),
          .shift = held(GDK_SHIFT_MASK)});
}

void HotKeySection::wish(const HotKey& hotKey) {
    if (const auto refusal = refusalOf(hotKey)) return sayIn(message_, *refusal);
    actions_.tryHotKey(hotKey, [this, hotKey, life = life()](bool registered) {
        if (life.expired()) return;
        show();
        if (!registered)
            sayIn(message_,
                  say(phrases::hotKeyHeld, {hotKeyName(hotKey), hotKeyName(actions_.settings().hotKey)}));
    });
}

} // namespace quillmark
