// A program to be picked: those used lately first, then all that are installed.
#pragma once

#include "settings/programs.h"
#include "views/scroller.h"

#include <gtkmm/box.h>
#include <gtkmm/listbox.h>
#include <gtkmm/searchentry.h>

#include <functional>
#include <vector>

namespace quillmark {

class ProgramChooser : public Gtk::Box {
public:
    ProgramChooser(std::function<void(const ProgramName&)> chosen, const std::function<void()>& back);

    void show(std::vector<ProgramName> recent, const std::vector<ProgramName>& installed);

private:
    void addProgram(const ProgramName& program, const std::string& remark);
    bool matches(Gtk::ListBoxRow* row) const;

    std::function<void(const ProgramName&)> chosen_;
    Gtk::SearchEntry search_;
    Scroller scroller_{Scroller::Holds::list};
    Gtk::ListBox list_;
    std::vector<ProgramName> programs_;
};

} // namespace quillmark
