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
    explicit ProgramChooser(std::function<void(const Program&)> chosen);

    void show(std::vector<Program> late, const std::vector<Program>& installed);

private:
    void addProgram(const Program& program, const std::string& remark);
    bool matches(Gtk::ListBoxRow* row) const;

    std::function<void(const Program&)> chosen_;
    Gtk::SearchEntry search_;
    Scroller scroller_{Scroller::Holds::list};
    Gtk::ListBox list_;
    std::vector<Program> programs_;
};

} // namespace quillmark
