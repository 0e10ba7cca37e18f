#include "views/text_pane.h"

#include "rewriting/words.h"
#include "views/look.h"
#include "views/text_size.h"

#include <gtkmm/adjustment.h>

#include <algorithm>
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
        shown_ = {buffer_->get_text().raw(), {}};
        marks_.clear();
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
    auto wanted = growing ? breakLongLines(text) : BrokenLines{text, {}};
    if (wanted.text == shown_.text) return;
    const auto& position = scroller_.get_vadjustment();
    const bool atEnd = position->get_value() + position->get_page_size() >= position->get_upper() - 1;
    const auto same = commonStart(shown_.text, wanted.text);
    const auto start = static_cast<int>(characters(std::string_view(wanted.text).substr(0, same)));
    const bool grew = same == shown_.text.size() && !shown_.text.empty();
    settingText_ = true;
    buffer_->erase(buffer_->get_iter_at_offset(start), buffer_->end());
    buffer_->insert(buffer_->end(), wanted.text.data() + same, wanted.text.data() + wanted.text.size());
    settingText_ = false;
    shown_ = std::move(wanted);
    while (!marks_.empty() && marks_.back().end > static_cast<std::size_t>(start))
        marks_.pop_back();
    if (!grew) buffer_->place_cursor(buffer_->begin());
    if (grew && atEnd) view_.scroll_to(end_);
}

// Marks are kept by their places in the text that is shown, which has more characters where long lines are
// broken.
void TextPane::mark(std::vector<Span> spans) {
    for (auto& span : spans)
        span = {shown_.placeOf(span.start), shown_.placeOf(span.end)};
    const auto [old, now] = std::mismatch(marks_.begin(), marks_.end(), spans.begin(), spans.end());
    if (old == marks_.end() && now == spans.end()) return;
    const auto first =
        std::min(old == marks_.end() ? now->start : old->start, now == spans.end() ? old->start : now->start);
    auto at = buffer_->get_iter_at_offset(static_cast<int>(first));
    for (const auto& tag : {changed_, changedEmoji_})
        buffer_->remove_tag(tag, at, buffer_->end());
    auto position = static_cast<int>(first);
    for (auto span = now; span != spans.end(); ++span) {
        at.forward_chars(static_cast<int>(span->start) - position);
        auto end = at;
        end.forward_chars(static_cast<int>(span->end - span->start));
        markSpan(at, end);
        at = end;
        position = static_cast<int>(span->end);
    }
    marks_ = std::move(spans);
}

void TextPane::markSpan(const Gtk::TextIter& start, const Gtk::TextIter& end) {
    buffer_->apply_tag(changed_, start, end);
    for (auto at = start; at != end;) {
        const auto letter = at++;
        if (isEmoji(*letter)) buffer_->apply_tag(changedEmoji_, letter, at);
    }
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
