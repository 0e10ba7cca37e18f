#include "views/settings/hot_key_action_section.h"

#include "language/settings_phrases.h"
#include "views/look.h"

#include <gtkmm/radiobutton.h>

namespace quillmark {

HotKeyActionSection::HotKeyActionSection(const SettingsActions& actions)
    : Section(say(phrases::hotKeyAction)) {
    Gtk::RadioButtonGroup group;
    for (const auto& [way, words] : {std::pair{WayOfWorking::review, phrases::review},
                                     std::pair{WayOfWorking::atOnce, phrases::atOnce}}) {
        auto* button = Gtk::make_managed<Gtk::RadioButton>(group);
        button->add(*wrappedLabel(say(words)));
        button->set_active(actions.settings().way == way);
        button->signal_toggled().connect([&actions, button, way = way] {
            if (button->get_active()) actions.change([way](Settings& settings) { settings.way = way; });
        });
        addRow(button);
    }
    addClass(addNote(say(phrases::atOnceExplained)), look::underCheck);
}

} // namespace quillmark
