// One of the two texts: a heading and the text with what was changed marked, by colour and by a line through
// or under it.
#pragma once

#include "rewriting/differences.h"
#include "views/edit_history.h"
#include "views/scroller.h"
#include "views/text_area.h"

#include <gtkmm/box.h>
#include <gtkmm/label.h>

#include <string>

namespace quillmark {

class TextPane : public Gtk::Box {
public:
    enum class Marks { removed, added };

    TextPane(const std::string& heading, Marks marks);

    // Only what differs from the text that is shown is touched: a growing text costs what it grows by. While
    // one of the two texts grows, the marks of both change all the time, and long paragraphs of both are
    // broken.
    void setText(const std::string& text, bool growing);
    // No paragraph is broken.
    bool isWhole() const { return breaks_.empty(); }
    // As the person has edited it; only a whole one may be edited.
    const std::string& text() const { return text_; }
    // In order. Only what differs from the marks that are shown is touched.
    void mark(const std::vector<Span>& spans);

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
    Gtk::TextIter iterAt(std::size_t place) const;
    std::vector<Span> marksInBuffer() const;
    void markSpan(const Span& span);
    void unmarkSpan(const Span& span);

    Gtk::Label heading_;
    Scroller scroller_{Scroller::Holds::text};
    TextArea view_;
    Glib::RefPtr<Gtk::TextBuffer> buffer_;
    Glib::RefPtr<Gtk::TextTag> changed_, changedEmoji_;
    Glib::RefPtr<Gtk::TextMark> end_;
    EditHistory history_;
    Marks kind_;
    std::string text_;
    // In characters of the text: a separator stands there that is not of the text.
    std::vector<std::size_t> breaks_;
    std::vector<Span> marks_;
    bool settingText_ = false;
};

} // namespace quillmark
