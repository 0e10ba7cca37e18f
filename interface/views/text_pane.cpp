#include "views/text_pane.h"

#include "rewriting/words.h"
#include "views/long_lines.h"
#include "views/look.h"
#include "views/text_size.h"

#include <gtkmm/adjustment.h>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace quillmark {

namespace {

// Of two texts in UTF-8, in bytes.
std::size_t commonStart(std::string_view a, std::string_view b) {
    const auto ends = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    auto length = static_cast<std::size_t>(ends.first - a.begin());
    const auto isInside = [&](std::string_view text) {
        return length < text.size() && (text[length] & 0xC0) == 0x80;
    };
    while (length > 0 && (isInside(a) || isInside(b)))
        --length;
    return length;
}

bool isEmoji(gunichar c) { return g_unichar_iswide(c) && g_unichar_type(c) == G_UNICODE_OTHER_SYMBOL; }

} // namespace

TextPane::TextPane(const std::string& heading, Marks marks)
    : Gtk::Box(Gtk::ORIENTATION_VERTICAL, 4), heading_(heading, Gtk::ALIGN_START),
      buffer_(view_.get_buffer()), changed_(buffer_->create_tag()), changedEmoji_(buffer_->create_tag()),
      end_(buffer_->create_mark(buffer_->end(), false)), history_(buffer_), kind_(marks) {
    addClass(heading_, look::dim);
    addClass(view_, look::text);
    nameFor(view_, heading);
    heading_.set_mnemonic_widget(view_);

    if (marks == Marks::removed) {
        changed_->property_strikethrough() = true;
    } else {
        changed_->property_underline() = Pango::UNDERLINE_SINGLE;
        // Emoji fonts have it so low that it seems to stand above the next line.
        changedEmoji_->property_underline() = Pango::UNDERLINE_LOW;
    }
    followStyle();
    signal_style_updated().connect([this] { followStyle(); });

    scroller_.add(view_);
    pack_start(heading_, Gtk::PACK_SHRINK);
    pack_start(scroller_, Gtk::PACK_EXPAND_WIDGET);
    buffer_->signal_changed().connect([this] {
        if (settingText_) return;
        text_ = buffer_->get_text().raw();
        marks_ = marksInBuffer();
        edited.emit();
    });
    setEditable(false);
}

void TextPane::followStyle() {
    constexpr int fewestLines = 3;
    scroller_.set_min_content_height(fewestLines * textSize(*this).line + view_.get_top_margin() +
                                     view_.get_bottom_margin());
    Gdk::RGBA tint; // seen on a light and on a dark background
    tint.set_rgba(kind_ == Marks::removed ? 0.85 : 0.15, kind_ == Marks::removed ? 0.2 : 0.65, 0.25, 0.22);
    changed_->property_background_rgba() = tint;
}

void TextPane::setText(const std::string& text, bool growing) {
    auto breaks = growing ? breaksOfLongLines(text) : std::vector<std::size_t>{};
    if (text == text_ && breaks == breaks_) return;
    const auto& position = scroller_.get_vadjustment();
    const bool atEnd = position->get_value() + position->get_page_size() >= position->get_upper() - 1;
    const auto same = commonStart(text_, text);
    const auto start = characters(std::string_view(text).substr(0, same));
    const bool grew = same == text_.size() && !text_.empty();
    settingText_ = true;
    while (!marks_.empty() && marks_.back().end > start) {
        unmarkSpan(marks_.back());
        marks_.pop_back();
    }
    buffer_->erase(iterAt(start), buffer_->end());
    buffer_->insert(buffer_->end(), text.data() + same, text.data() + text.size());
    while (!breaks_.empty() && breaks_.back() > start)
        breaks_.pop_back();
    breakLines(std::move(breaks));
    settingText_ = false;
    text_ = text;
    if (!grew) buffer_->place_cursor(buffer_->begin());
    if (grew && atEnd) view_.scroll_to(end_);
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

// At a character of the text.
Gtk::TextIter TextPane::iterAt(std::size_t place) const {
    const auto before = std::upper_bound(breaks_.begin(), breaks_.end(), place) - breaks_.begin();
    return buffer_->get_iter_at_offset(static_cast<int>(place) + static_cast<int>(before));
}

void TextPane::mark(const std::vector<Span>& spans) {
    std::vector<Span> gone, added;
    std::ranges::set_difference(marks_, spans, std::back_inserter(gone));
    std::ranges::set_difference(spans, marks_, std::back_inserter(added));
    for (const auto& span : gone)
        unmarkSpan(span);
    // The last first: GTK finds a place faster, the fewer marks stand before it in its line.
    for (auto span = added.rbegin(); span != added.rend(); ++span)
        markSpan(*span);
    marks_ = spans;
}

// Where they have moved to when the person has edited the text.
std::vector<Span> TextPane::marksInBuffer() const {
    std::vector<Span> marks;
    auto at = buffer_->begin();
    while (at.starts_tag(changed_) || at.forward_to_tag_toggle(changed_)) {
        const auto start = static_cast<std::size_t>(at.get_offset());
        if (!at.starts_tag(changed_)) break;
        at.forward_to_tag_toggle(changed_);
        marks.push_back({start, static_cast<std::size_t>(at.get_offset())});
    }
    return marks;
}

void TextPane::markSpan(const Span& span) {
    const auto start = iterAt(span.start), end = iterAt(span.end);
    buffer_->apply_tag(changed_, start, end);
    for (auto at = start; at != end;) {
        const auto letter = at++;
        if (isEmoji(*letter)) buffer_->apply_tag(changedEmoji_, letter, at);
    }
}

void TextPane::unmarkSpan(const Span& span) {
    for (const auto& tag : {changed_, changedEmoji_})
        buffer_->remove_tag(tag, iterAt(span.start), iterAt(span.end));
}

void TextPane::setEditable(bool editable) {
    if (view_.get_editable() == editable && view_.get_cursor_visible() == editable) return;
    view_.set_editable(editable);
    view_.set_cursor_visible(editable);
    history_.begin(editable);
}

void TextPane::undo() { history_.undo(); }
void TextPane::redo() { history_.redo(); }

int TextPane::missingHeight() const {
    const auto position = const_cast<Scroller&>(scroller_).get_vadjustment();
    return static_cast<int>(position->get_upper() - position->get_page_size());
}

} // namespace quillmark
