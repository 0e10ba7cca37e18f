#include "views/text_pane.h"

#include "rewriting/differences.h"
#include "rewriting/words.h"
#include "views/long_lines.h"
#include "views/look.h"
#include "views/text_size.h"

#include <gtkmm/adjustment.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace quillmark {

TextPane::TextPane(const std::string& heading, MarkedText::Mark kind)
    : Gtk::Box(Gtk::ORIENTATION_VERTICAL, 4), heading_(heading, Gtk::ALIGN_START), view_(kind),
      buffer_(view_.get_buffer()), top_(buffer_->create_mark(buffer_->begin())), history_(buffer_) {
    addClass(heading_, look::dim);
    addClass(view_, look::text);
    nameFor(view_, heading);
    heading_.set_mnemonic_widget(view_);

    followStyle();
    signal_style_updated().connect([this] { followStyle(); });

    scroller_.add(view_);
    pack_start(heading_, Gtk::PACK_SHRINK);
    pack_start(scroller_, Gtk::PACK_EXPAND_WIDGET);
    buffer_->signal_changed().connect([this] {
        if (settingText_) return;
        const auto before = std::exchange(text_, buffer_->get_text().raw());
        mark(movedByEdit(marks_, before, text_));
        edited.emit();
    });
    // gtkmm has no such signal.
    const auto copies = [](GtkTextView*, gpointer pane) { static_cast<TextPane*>(pane)->copySelected(); };
    g_signal_connect(view_.gobj(), "copy-clipboard", G_CALLBACK(+copies), this);
    setEditable(false);
}

void TextPane::followStyle() {
    constexpr int fewestLines = 3;
    scroller_.set_min_content_height(fewestLines * textSize(*this).line + view_.get_top_margin() +
                                     view_.get_bottom_margin());
}

void TextPane::setText(const std::string& text, bool growing) {
    auto breaks = growing ? breaksOfLongLines(text) : std::vector<std::size_t>{};
    if (text == text_ && breaks == breaks_) return;
    history_.begin(false);
    const auto same = commonStart(text_, text);
    const auto start = characters(std::string_view(text).substr(0, same));
    // Or lost blanks at its end, as it does once it is whole.
    const bool grew = same > 0 && same == std::min(text.size(), text_.size());
    // GTK 3 keeps its place by a paragraph, which is another one then.
    const bool moves = breaks.empty() != breaks_.empty() && rememberTop();
    settingText_ = true;
    while (!marks_.empty() && marks_.back().end > start)
        marks_.pop_back();
    buffer_->erase(iterAt(start), buffer_->end());
    buffer_->insert(buffer_->end(), text.data() + same, text.data() + text.size());
    while (!breaks_.empty() && breaks_.back() > start)
        breaks_.pop_back();
    breakLines(std::move(breaks));
    settingText_ = false;
    text_ = text;
    showMarks();
    if (!grew) {
        buffer_->place_cursor(buffer_->begin());
        // Scrolling lays out what is near only; without it GTK 3 lays out and draws all of a new text once.
        view_.scroll_to(buffer_->get_insert());
    } else if (moves) {
        view_.scroll_to(top_, 0, 0, 0);
    }
    history_.begin(view_.get_editable());
}

void TextPane::breakLines(std::vector<std::size_t> breaks) {
    constexpr auto separator = "\u2029";
    const auto isIn = [](const std::vector<std::size_t>& all, std::size_t place) {
        return std::binary_search(all.begin(), all.end(), place);
    };
    // A break is moved by as many separators as stand before it.
    for (auto i = breaks_.size(); i-- > 0;) {
        if (isIn(breaks, breaks_[i])) continue;
        const auto at = buffer_->get_iter_at_offset(static_cast<int>(breaks_[i] + i));
        auto behind = at;
        behind.forward_char();
        buffer_->erase(at, behind);
    }
    for (std::size_t i = 0; i < breaks.size(); ++i)
        if (!isIn(breaks_, breaks[i]))
            buffer_->insert(buffer_->get_iter_at_offset(static_cast<int>(breaks[i] + i)), separator);
    breaks_ = std::move(breaks);
}

// Of a character of the text.
std::size_t TextPane::placeInBuffer(std::size_t place) const {
    const auto before = std::upper_bound(breaks_.begin(), breaks_.end(), place) - breaks_.begin();
    return place + static_cast<std::size_t>(before);
}

Gtk::TextIter TextPane::iterAt(std::size_t place) const {
    return buffer_->get_iter_at_offset(static_cast<int>(placeInBuffer(place)));
}

std::size_t TextPane::placeInText(const Gtk::TextIter& at) const {
    const auto place = static_cast<std::size_t>(at.get_offset());
    std::size_t separators = 0;
    while (separators < breaks_.size() && breaks_[separators] + separators < place)
        ++separators;
    return place - separators;
}

// False when that is the start of the text.
bool TextPane::rememberTop() {
    Gdk::Rectangle seen;
    Gtk::TextIter top;
    view_.get_visible_rect(seen);
    view_.get_iter_at_location(top, seen.get_x(), seen.get_y());
    buffer_->move_mark(top_, top);
    return seen.get_y() > 0;
}

// Without the separators of a broken text, which the toolkit would copy.
void TextPane::copySelected() {
    Gtk::TextIter start, end;
    if (breaks_.empty() || !buffer_->get_selection_bounds(start, end)) return;
    const auto first = placeInText(start), last = placeInText(end);
    get_clipboard("CLIPBOARD")->set_text(Glib::ustring(text_).substr(first, last - first));
    g_signal_stop_emission_by_name(view_.gobj(), "copy-clipboard");
}

void TextPane::mark(std::vector<Span> spans) {
    marks_ = std::move(spans);
    showMarks();
}

void TextPane::showMarks() {
    auto marks = marks_;
    for (auto& mark : marks)
        mark = {placeInBuffer(mark.start), placeInBuffer(mark.end - 1) + 1};
    view_.setMarks(std::move(marks));
}

void TextPane::setEditable(bool editable) {
    if (view_.get_editable() == editable && view_.get_cursor_visible() == editable) return;
    view_.set_editable(editable);
    view_.set_cursor_visible(editable);
    history_.begin(editable);
}

void TextPane::undo() {
    history_.undo();
    view_.scroll_to(buffer_->get_insert());
}

void TextPane::redo() {
    history_.redo();
    view_.scroll_to(buffer_->get_insert());
}

int TextPane::missingHeight() const {
    const auto position = const_cast<Scroller&>(scroller_).get_vadjustment();
    return static_cast<int>(position->get_upper() - position->get_page_size());
}

} // namespace quillmark
