// The hot key, changed by pressing another.
#pragma once

#include "views/settings/actions.h"
#include "views/settings/key_recorder.h"
#include "views/settings/section.h"

namespace quillmark {

class HotKeySection : public Section {
public:
    explicit HotKeySection(const SettingsActions& actions);

    void show();

private:
    void pressed(const GdkEventKey& event);
    void wish(const HotKey& hotKey);

    const SettingsActions& actions_;
    KeyRecorder recorder_;
    Gtk::Label& message_;
};

} // namespace quillmark
