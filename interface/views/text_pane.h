// One of the two texts: a heading and the text with what was changed marked, by colour and by a line through
// or under it.
#pragma once

#include "views/edit_history.h"
#include "views/marked_text.h"
#include "views/scroller.h"

#include <gtkmm/box.h>
#include <gtkmm/label.h>

#include <string>

namespace quillmark {

class TextPane : public Gtk::Box {
public:
    TextPane(const std::string& heading, MarkedText::Mark kind);

    // Only what differs from the text that is shown is touched: a growing text costs what it grows by. While
    // one of the two texts grows, long paragraphs of both are broken: the toolkit draws both again and again.
    // Such a text cannot be edited.
    void setText(const std::string& text, bool growing);
    // As the person has edited it.
    const std::string& text() const { return text_; }
    // In order.
    void mark(std::vector<Span> spans);

    void setEditable(bool editable);
    void undo();
    void redo();

    // How much taller the pane would have to be to show all of its text.
    int missingHeight() const;

    Gtk::TextView& view() { return view_; }

    // The person has changed the text.
    sigc::signal<void> edited;

private:
    void followStyle();
    void breakLines(std::vector<std::size_t> breaks);
    std::size_t placeInBuffer(std::size_t place) const;
    std::size_t placeInText(const Gtk::TextIter& at) const;
    bool rememberTop();
    void copySelected();
    Gtk::TextIter iterAt(std::size_t place) const;
    void showMarks();

    Gtk::Label heading_;
    Scroller scroller_{Scroller::Holds::text};
    MarkedText view_;
    Glib::RefPtr<Gtk::TextBuffer> buffer_;
    Glib::RefPtr<Gtk::TextMark> top_; // where the view was
    EditHistory history_;
    std::string text_;
    // In characters of the text: a separator stands there that is not of the text.
    std::vector<std::size_t> breaks_;
    std::vector<Span> marks_;
    bool settingText_ = false;
};

} // namespace quillmark
