// Where the marks of a text stand in its view: rectangles, one for each line that a mark is in. A paragraph
// is looked at again only when it, its marks or what is seen of it have changed: to lay it out takes longest.
#pragma once

#include "rewriting/differences.h"

#include <gdkmm/rectangle.h>
#include <gtkmm/textview.h>

#include <map>
#include <vector>

namespace quillmark {

class MarkPlaces {
public:
    struct Rows { // in pixels of the buffer, both included
        int top = 0, bottom = 0;

        bool operator==(const Rows&) const = default;
    };
    using Rectangles = std::vector<Gdk::Rectangle>;

    explicit MarkPlaces(Gtk::TextView& view);
    MarkPlaces(const MarkPlaces&) = delete;
    MarkPlaces& operator=(const MarkPlaces&) = delete;

    // Of `marks`, in characters of the buffer and in order. In pixels of the buffer.
    Rectangles in(const Rows& rows, const std::vector<Span>& marks);
    // Lines are laid out anew for a reason other than a change of the buffer.
    void forget() { known_.clear(); }
    // An input method holds letters, which stand at the caret but not in the buffer. GTK 3 does not say where
    // what stands behind them in their paragraph is then: its marks have no place.
    void setComposing(bool composing);

private:
    struct Paragraph {
        std::vector<Span> marks;
        Rows rows; // what is seen of it; like the places counted from the paragraph's top
        Rectangles places;
    };

    void forgetFrom(const Gtk::TextIter& edit);
    Span markedPart(const Gtk::TextIter& start, const Gtk::TextIter& end) const;
    Rectangles placesIn(const Rows& rows, const std::vector<Span>& marks) const;
    void add(const Span& span, const Rows& rows, Rectangles& into) const;
    Gtk::TextIter iterAt(std::size_t place) const;
    Gdk::Rectangle rectangleOf(const Gtk::TextIter& letter) const;

    Gtk::TextView& view_;
    std::map<std::size_t, Paragraph> known_; // by their first character
    bool composing_ = false;
};

} // namespace quillmark
