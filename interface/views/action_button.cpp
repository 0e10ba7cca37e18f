#include "views/action_button.h"

#include "views/look.h"
#include "views/shortcuts.h"

namespace quillmark {

template <class Button>
WithKey<Button>::WithKey(const std::string& name, const std::string& key) {
    addClass(*this, look::compact);
    addClass(key_, look::key);
    column_.add(name_);
    column_.add(key_);
    column_.set_valign(Gtk::ALIGN_CENTER);
    column_.show_all();
    key_.set_no_show_all();
    this->add(column_);
    label(name, key);
}

template <class Button>
void WithKey<Button>::label(const std::string& name, const std::string& key) {
    name_.set_text(name);
    key_.set_text(keyName(key));
    key_.set_visible(!key.empty());
    nameFor(*this, name, keyName(key));
}

template class WithKey<Gtk::Button>;
template class WithKey<Gtk::ToggleButton>;

} // namespace quillmark
