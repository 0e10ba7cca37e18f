// What Quillmark needs on this desktop, and whether it is there.
#pragma once

#include "check/finding.h"
#include "views/scroller.h"
#include "views/settings/actions.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/listbox.h>

#include <memory>
#include <string>
#include <vector>

namespace quillmark {

class CheckPage : public Gtk::Box {
public:
    explicit CheckPage(const SettingsActions& actions);

    // Looks, and shows what there is as soon as it is known.
    void look();

private:
    void show(const std::vector<Finding>& findings);
    void addFinding(const Finding& finding);
    void copy();

    const SettingsActions& actions_;
    Gtk::Button again_, copy_;
    Gtk::Label& status_;
    Scroller scroller_{Scroller::Holds::list};
    Gtk::ListBox list_;
    std::string report_;
    std::shared_ptr<char> life_ = std::make_shared<char>();
};

} // namespace quillmark
