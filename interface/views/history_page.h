// The latest rewrites, to work on again.
#pragma once

#include "rewriting/history.h"
#include "views/scroller.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/listbox.h>

#include <functional>

namespace quillmark {

class HistoryPage : public Gtk::Box {
public:
    struct Actions {
        std::function<void(std::size_t entry)> open;
        std::function<void()> clear;
        std::function<void()> back;
    };

    explicit HistoryPage(Actions actions);

    void show(const History& history);

private:
    Actions actions_;
    Gtk::Label empty_;
    Scroller scroller_{Scroller::Holds::list};
    Gtk::ListBox list_;
    Gtk::Button clear_;
};

} // namespace quillmark
