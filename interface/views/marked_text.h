// A text in which places are marked: tinted, and with a line through or under them. The view draws the marks
// itself. As tags of the buffer they would let the toolkit lay a paragraph out anew whenever one changes, in
// a time that grows with the square of their number.
#pragma once

#include "views/mark_places.h"
#include "views/text_area.h"

#include <gdkmm/general.h>

#include <vector>

namespace quillmark {

class MarkedText : public TextArea {
public:
    enum class Mark { removed, added };

    explicit MarkedText(Mark kind);

    // In characters of the buffer, in order. They stay where they are when the buffer changes.
    void setMarks(std::vector<Span> marks);
    const std::vector<Span>& marks() const { return marks_; }
    Mark kind() const { return kind_; }

    // What the toolkit asks for in the middle of drawing, in coordinates of the buffer.
    void drawBelowText(Cairo::Context& context);
    void drawAboveText(Cairo::Context& context);

private:
    void redrawLines(std::size_t start, std::size_t end);

    Mark kind_;
    std::vector<Span> marks_;
    MarkPlaces places_;
    MarkPlaces::Rectangles drawn_;
    int width_ = 0;
};

} // namespace quillmark
