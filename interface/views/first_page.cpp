#include "views/first_page.h"

#include "language/main_phrases.h"
#include "views/keys.h"
#include "views/look.h"

#include <utility>

namespace quillmark {

namespace {

void wrap(Gtk::Label& label) {
    label.set_xalign(0);
    label.set_line_wrap();
    label.set_line_wrap_mode(Pango::WRAP_WORD_CHAR);
}

} // namespace

FirstPage::FirstPage(Actions actions)
    : Scroller(Holds::page), actions_(std::move(actions)), try_(say(phrases::tryIt), keys::primary),
      settings_(say(phrases::settings), keys::settings) {
    column_.set_border_width(16);
    Pango::AttrList large;
    auto size = Pango::Attribute::create_attr_scale(1.4);
    large.insert(size);
    title_.set_attributes(large);
    addClass(title_, look::heading);
    wrap(title_);
    auto* top = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, 8);
    top->pack_start(title_, Gtk::PACK_EXPAND_WIDGET);
    settings_.set_valign(Gtk::ALIGN_START);
    top->pack_end(settings_, Gtk::PACK_SHRINK);
    column_.pack_start(*top, Gtk::PACK_SHRINK);
    column_.pack_start(missing_, Gtk::PACK_SHRINK);
    for (const char* number : {"1.", "2.", "3."}) {
        auto* before = Gtk::make_managed<Gtk::Label>(number);
        before->set_valign(Gtk::ALIGN_START);
        auto* step = Gtk::make_managed<Gtk::Label>();
        wrap(*step);
        steps_.push_back(step);
        auto* row = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, 8);
        row->pack_start(*before, Gtk::PACK_SHRINK);
        row->pack_start(*step, Gtk::PACK_EXPAND_WIDGET);
        column_.pack_start(*row, Gtk::PACK_SHRINK);
    }
    for (auto* label : {&model_, &privacy_}) {
        wrap(*label);
        addClass(*label, look::dim);
        column_.pack_start(*label, Gtk::PACK_SHRINK);
    }

    auto* heading = Gtk::make_managed<Gtk::Label>(say(phrases::tryHere), Gtk::ALIGN_START);
    wrap(*heading);
    heading->set_mnemonic_widget(text_);
    nameFor(text_, say(phrases::tryHere));
    text_.get_buffer()->set_text(say(phrases::sample));
    auto* frame = Gtk::make_managed<Scroller>(Scroller::Holds::text);
    frame->set_min_content_height(120);
    frame->set_max_content_height(400);
    frame->set_propagate_natural_height();
    frame->add(text_);
    try_.set_halign(Gtk::ALIGN_END);
    column_.pack_start(*heading, Gtk::PACK_SHRINK);
    column_.pack_start(*frame, Gtk::PACK_SHRINK);
    column_.pack_start(try_, Gtk::PACK_SHRINK);
    try_.signal_clicked().connect([this] { tryOut(); });
    settings_.signal_clicked().connect([this] { actions_.settings(); });
    add(column_);
    column_.set_focus_vadjustment(get_vadjustment());
    show_all();
}

void FirstPage::show(const Facts& facts) {
    title_.set_text(say(facts.firstTime ? phrases::welcome : phrases::ready));
    steps_[0]->set_text(say(phrases::firstStep));
    steps_[1]->set_text(say(phrases::secondStep, {facts.hotKey}));
    steps_[2]->set_text(facts.atOnce ? say(phrases::thirdStepAtOnce)
                                     : say(phrases::thirdStep, {keyName(keys::primary)}));
    model_.set_text(facts.model);
    privacy_.set_text(say(phrases::privacy));
    missing_.show("dialog-warning-symbolic", facts.missing);
}

void FirstPage::tryOut() { actions_.tryOut(text_.get_buffer()->get_text()); }

} // namespace quillmark
