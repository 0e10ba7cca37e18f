#include "views/history_page.h"

#include "language/main_phrases.h"
#include "rewriting/describe.h"
#include "views/action_button.h"
#include "views/keys.h"
#include "views/look.h"

#include <utility>

namespace quillmark {

namespace {

// The start of a text, on one line.
std::string start(const std::string& text) {
    constexpr std::size_t length = 300;
    const Glib::ustring whole(text);
    std::string result = whole.substr(0, length);
    if (whole.size() > length) result += "…";
    for (char& c : result)
        if (c == '\n' || c == '\r' || c == '\t') c = ' ';
    return result;
}

} // namespace

HistoryPage::HistoryPage(Actions actions)
    : Gtk::Box(Gtk::ORIENTATION_VERTICAL, 8), actions_(std::move(actions)),
      empty_(say(phrases::historyEmpty)), clear_(say(phrases::clearHistory)) {
    set_border_width(12);
    auto* back = Gtk::make_managed<ActionButton>(say(phrases::back), keys::back);
    auto* title = Gtk::make_managed<Gtk::Label>(say(phrases::history), Gtk::ALIGN_START);
    addClass(*title, look::heading);
    auto* top = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, 8);
    top->pack_start(*back, Gtk::PACK_SHRINK);
    top->pack_start(*title, Gtk::PACK_EXPAND_WIDGET);
    top->pack_end(clear_, Gtk::PACK_SHRINK);
    scroller_.add(list_);
    empty_.set_line_wrap();
    empty_.set_margin_top(24);
    list_.set_selection_mode(Gtk::SELECTION_NONE);
    nameFor(list_, say(phrases::history));
    pack_start(*top, Gtk::PACK_SHRINK);
    pack_start(empty_, Gtk::PACK_SHRINK); // a screen reader does not come to the placeholder of a GTK 3 list
    pack_start(scroller_, Gtk::PACK_EXPAND_WIDGET);
    show_all();

    back->signal_clicked().connect([this] { actions_.back(); });
    clear_.signal_clicked().connect([this] { actions_.clear(); });
    list_.signal_row_activated().connect(
        [this](Gtk::ListBoxRow* row) { actions_.open(static_cast<std::size_t>(row->get_index())); });
}

void HistoryPage::show(const History& history) {
    for (auto* row : list_.get_children())
        list_.remove(*row);
    for (const auto& entry : history.entries()) {
        auto* place = Gtk::make_managed<Gtk::Label>(placeOf(entry.capture) + " · " + entry.instruction.name,
                                                    Gtk::ALIGN_START);
        auto* text = Gtk::make_managed<Gtk::Label>(start(entry.text), Gtk::ALIGN_START);
        addClass(*place, look::dim);
        auto* column = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_VERTICAL, 2);
        column->set_border_width(6);
        for (auto* label : {place, text}) {
            label->set_ellipsize(Pango::ELLIPSIZE_END);
            column->pack_start(*label, Gtk::PACK_SHRINK);
        }
        list_.append(*column);
        nameFor(*column->get_parent(), place->get_text(), text->get_text()); // the row
    }
    list_.show_all_children();
    const bool empty = history.entries().empty();
    empty_.set_visible(empty);
    scroller_.set_visible(!empty);
    clear_.set_sensitive(!empty);
    if (auto* first = list_.get_row_at_index(0)) first->grab_focus();
}

} // namespace quillmark
