// A group of settings under a heading.
#pragma once

#include <gtkmm/box.h>
#include <gtkmm/label.h>

#include <memory>
#include <string>

namespace quillmark {

class Section : public Gtk::Box {
public:
    explicit Section(const std::string& heading);

protected:
    // A line or more below the last, which the section then owns.
    template <class Widget>
    Widget& addRow(Widget* row) {
        pack_start(*row, Gtk::PACK_SHRINK);
        return *row;
    }
    Gtk::Label& addNote(const std::string& text = {});

    // Expires with the section: answers may come later.
    std::weak_ptr<char> life() const { return life_; }

private:
    std::shared_ptr<char> life_ = std::make_shared<char>();
};

// Says it, or takes up no room.
void sayIn(Gtk::Label& label, const std::string& text);

// Left-aligned and wrapped.
Gtk::Label* wrappedLabel(const std::string& text = {});

} // namespace quillmark
