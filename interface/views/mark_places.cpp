#include "views/mark_places.h"

#include <glibmm/unicode.h>

#include <algorithm>
#include <utility>

namespace quillmark {

namespace {

// The blocks that the Unicode Standard keeps for scripts written from right to left.
bool runsToTheLeft(gunichar c) {
    return (c >= 0x590 && c <= 0x8FF) || (c >= 0xFB1D && c <= 0xFDFF) || (c >= 0xFE70 && c <= 0xFEFF) ||
           (c >= 0x10800 && c <= 0x10FFF) || (c >= 0x1E800 && c <= 0x1EFFF);
}

int bottomOf(const Gdk::Rectangle& block) { return block.get_y() + block.get_height(); }
int rightOf(const Gdk::Rectangle& block) { return block.get_x() + block.get_width(); }

bool touch(const Gdk::Rectangle& a, const Gdk::Rectangle& b) {
    return a.get_y() == b.get_y() && a.get_height() == b.get_height() && a.get_x() <= rightOf(b) &&
           b.get_x() <= rightOf(a);
}

// In one line, letters and blanks only, all of one direction: nothing else stands between the two. Where
// digits and signs stand depends on what is around them.
bool areInLine(const Gtk::TextIter& first, const Gdk::Rectangle& firstBlock, const Gtk::TextIter& last,
               const Gdk::Rectangle& lastBlock) {
    using Glib::Unicode::isalpha, Glib::Unicode::isspace;
    if (firstBlock.get_y() != lastBlock.get_y() || !isalpha(*first) || !isalpha(*last)) return false;
    const bool left = runsToTheLeft(*first);
    for (auto at = first; at <= last; ++at)
        if (*at == '\t' || (!isspace(*at) && (!isalpha(*at) || runsToTheLeft(*at) != left))) return false;
    return true;
}

std::vector<Span> marksWithin(const Span& paragraph, const std::vector<Span>& marks) {
    const auto isBefore = [](const Span& mark, std::size_t place) { return mark.end <= place; };
    std::vector<Span> within;
    for (auto mark = std::lower_bound(marks.begin(), marks.end(), paragraph.start, isBefore);
         mark != marks.end() && mark->start < paragraph.end; ++mark)
        within.push_back({std::max(mark->start, paragraph.start), std::min(mark->end, paragraph.end)});
    return within;
}

MarkPlaces::Rows moved(const MarkPlaces::Rows& rows, int by) { return {rows.top + by, rows.bottom + by}; }

} // namespace

MarkPlaces::MarkPlaces(Gtk::TextView& view) : view_(view) {
    // Before it is done: the places are those of the text as it was.
    view_.get_buffer()->signal_insert().connect(
        [this](const Gtk::TextIter& at, const Glib::ustring&, int) { forgetFrom(at); }, false);
    view_.get_buffer()->signal_erase().connect(
        [this](const Gtk::TextIter& start, const Gtk::TextIter&) { forgetFrom(start); }, false);
}

void MarkPlaces::forgetFrom(const Gtk::TextIter& edit) {
    const auto paragraph = static_cast<std::size_t>(edit.get_offset() - edit.get_line_offset());
    known_.erase(known_.lower_bound(paragraph), known_.end());
}

void MarkPlaces::setComposing(bool composing) {
    composing_ = composing;
    forget();
}

// Of a paragraph.
Span MarkPlaces::markedPart(const Gtk::TextIter& start, const Gtk::TextIter& end) const {
    const auto caret = view_.get_buffer()->get_iter_at_mark(view_.get_buffer()->get_insert());
    const bool cut = composing_ && start.get_line() == caret.get_line();
    return {static_cast<std::size_t>(start.get_offset()),
            static_cast<std::size_t>((cut ? caret : end).get_offset())};
}

MarkPlaces::Rectangles MarkPlaces::in(const Rows& rows, const std::vector<Span>& marks) {
    Rectangles all;
    Gtk::TextIter next;
    int top = 0, height = 0;
    view_.get_line_at_y(next, rows.top, top);
    for (bool more = true; more;) {
        const auto at = next;
        view_.get_line_yrange(at, top, height);
        if (top > rows.bottom) break;
        more = next.forward_line();
        if (height == 0) continue; // not laid out yet: it is drawn again once it is
        const auto paragraph = markedPart(at, next);
        Paragraph now{marksWithin(paragraph, marks),
                      moved({std::max(rows.top, top), std::min(rows.bottom, top + height)}, -top),
                      {}};
        auto& known = known_[paragraph.start];
        // Without letters its direction is that of its neighbours, or of the keyboard.
        const bool hasLetter = std::any_of(at, next, Glib::Unicode::isalpha);
        if (!hasLetter || known.marks != now.marks || known.rows != now.rows) {
            now.places = placesIn(moved(now.rows, top), now.marks);
            for (auto& place : now.places)
                place.set_y(place.get_y() - top);
            known = std::move(now);
        }
        for (auto place : known.places) {
            place.set_y(place.get_y() + top);
            all.push_back(place);
        }
    }
    return all;
}

MarkPlaces::Rectangles MarkPlaces::placesIn(const Rows& rows, const std::vector<Span>& marks) const {
    Rectangles found;
    const auto isAbove = [&](const Span& mark) {
        return bottomOf(rectangleOf(iterAt(mark.end - 1))) < rows.top;
    };
    for (auto mark = std::partition_point(marks.begin(), marks.end(), isAbove);
         mark != marks.end() && rectangleOf(iterAt(mark->start)).get_y() <= rows.bottom; ++mark)
        add(*mark, rows, found);
    return found;
}

// Halves a span until each part is in one line and of one direction, or a single letter: to ask for the place
// of every letter would take longer than to draw them.
void MarkPlaces::add(const Span& span, const Rows& rows, Rectangles& into) const {
    const auto first = iterAt(span.start), last = iterAt(span.end - 1);
    auto block = rectangleOf(first);
    const auto lastBlock = rectangleOf(last);
    if (bottomOf(lastBlock) < rows.top || block.get_y() > rows.bottom) return;
    if (span.end - span.start > 1 && !areInLine(first, block, last, lastBlock)) {
        const auto middle = span.start + (span.end - span.start) / 2;
        add({span.start, middle}, rows, into);
        add({middle, span.end}, rows, into);
        return;
    }
    block.join(lastBlock);
    if (!into.empty() && touch(into.back(), block))
        into.back().join(block);
    else
        into.push_back(block);
}

Gtk::TextIter MarkPlaces::iterAt(std::size_t place) const {
    return view_.get_buffer()->get_iter_at_offset(static_cast<int>(place));
}

Gdk::Rectangle MarkPlaces::rectangleOf(const Gtk::TextIter& letter) const {
    Gdk::Rectangle place;
    view_.get_iter_location(letter, place);
    if (place.get_width() < 0) { // from right to left
        place.set_x(rightOf(place));
        place.set_width(-place.get_width());
    }
    return place;
}

} // namespace quillmark
