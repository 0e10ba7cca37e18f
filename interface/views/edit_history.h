// Undo and redo for a text buffer. What the program puts in begins anew; what the person does is remembered.
#pragma once

#include <gtkmm/textbuffer.h>

#include <string>
#include <vector>

namespace quillmark {

class EditHistory {
public:
    explicit EditHistory(Glib::RefPtr<Gtk::TextBuffer> buffer);

    // Forgets everything; from here on changes are the person's (or are not).
    void begin(bool remember);

    void undo();
    void redo();

private:
    // One insertion, or one removal.
    struct Edit {
        bool inserted;
        int position; // in characters
        Glib::ustring text;
        bool typed = false; // letter by letter
    };

    void note(Edit edit);
    void apply(const Edit& edit, bool forwards);

    Glib::RefPtr<Gtk::TextBuffer> buffer_;
    bool remember_ = false;
    std::vector<Edit> done_, undone_;
};

} // namespace quillmark
