#include "views/edit_history.h"

#include <utility>

namespace quillmark {

namespace {

bool isWordEnd(const Glib::ustring& text) { return text == " " || text == "\n" || text == "\t"; }

} // namespace

EditHistory::EditHistory(Glib::RefPtr<Gtk::TextBuffer> buffer) : buffer_(std::move(buffer)) {
    buffer_->signal_insert().connect(
        [this](const Gtk::TextIter& at, const Glib::ustring& text, int) {
            if (remember_) note({true, at.get_offset(), text});
        },
        false);
    buffer_->signal_erase().connect(
        [this](const Gtk::TextIter& start, const Gtk::TextIter& end) {
            if (remember_) note({false, start.get_offset(), start.get_slice(end)});
        },
        false);
}

void EditHistory::begin(bool remember) {
    done_.clear();
    undone_.clear();
    remember_ = remember;
}

// Letters typed one after the other make one edit, up to the end of the word.
void EditHistory::note(Edit edit) {
    constexpr std::size_t mostEdits = 500;
    undone_.clear();
    edit.typed = edit.inserted && edit.text.size() == 1;
    if (!done_.empty() && edit.typed && done_.back().typed) {
        auto& last = done_.back();
        const auto length = static_cast<int>(last.text.size());
        if (last.position + length == edit.position && !isWordEnd(last.text.substr(last.text.size() - 1))) {
            last.text += edit.text;
            return;
        }
    }
    done_.push_back(std::move(edit));
    if (done_.size() > mostEdits) done_.erase(done_.begin());
}

void EditHistory::undo() {
    if (done_.empty()) return;
    undone_.push_back(std::move(done_.back()));
    done_.pop_back();
    apply(undone_.back(), false);
}

void EditHistory::redo() {
    if (undone_.empty()) return;
    done_.push_back(std::move(undone_.back()));
    undone_.pop_back();
    apply(done_.back(), true);
}

void EditHistory::apply(const Edit& edit, bool forwards) {
    const bool before = std::exchange(remember_, false);
    const auto start = buffer_->get_iter_at_offset(edit.position);
    const auto length = static_cast<int>(edit.text.size());
    const auto after = edit.inserted == forwards
                           ? buffer_->insert(start, edit.text)
                           : buffer_->erase(start, buffer_->get_iter_at_offset(edit.position + length));
    buffer_->place_cursor(after);
    remember_ = before;
}

} // namespace quillmark
