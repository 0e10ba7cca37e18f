#include "views/settings/model_section.h"

#include "language/model_phrases.h"
#include "language/settings_phrases.h"
#include "views/look.h"

namespace quillmark {

ModelSection::ModelSection(const SettingsActions& actions)
    : Section(say(phrases::languageModel)), actions_(actions), status_(addNote()),
      consent_(say(phrases::letModelHaveTexts)), use_(say(phrases::useServer)),
      lookAgain_(say(phrases::lookAgain)), problem_(addNote()), others_(say(phrases::otherServers)),
      otherServers_(wrappedLabel()) {
    Gtk::RadioButtonGroup group;
    found_.set_group(group);
    chosen_.set_group(group);
    found_.add(*wrappedLabel(say(phrases::findServer)));
    chosen_.add(*wrappedLabel(say(phrases::chooseServer)));
    form_.set_row_spacing(6);
    form_.set_column_spacing(8);
    addClass(form_, look::underCheck);
    addEntry(0, say(phrases::serverAddress), address_);
    addEntry(1, say(phrases::serverModel), model_);
    addEntry(2, say(phrases::serverKey), key_);
    form_.attach(use_, 1, 3, 1, 1);
    address_.set_placeholder_text("http://127.0.0.1:8080/v1");
    model_.set_placeholder_text(say(phrases::serverModelEmpty));
    key_.set_visibility(false);
    key_.set_input_purpose(Gtk::INPUT_PURPOSE_PASSWORD);
    for (auto* button : {&use_, &lookAgain_})
        button->set_halign(Gtk::ALIGN_START);
    otherServers_->set_margin_start(24);
    others_.add(*otherServers_);
    for (Gtk::Widget* row :
         std::initializer_list<Gtk::Widget*>{&consent_, &found_, &lookAgain_, &chosen_, &form_, &others_})
        pack_start(*row, Gtk::PACK_SHRINK);
    reorder_child(problem_, -1);
    sayIn(problem_, {});
    addClass(lookAgain_, look::underCheck);
    for (Gtk::Widget* row : std::initializer_list<Gtk::Widget*>{&consent_, &lookAgain_, &form_})
        row->set_no_show_all();
    form_.show_all_children();

    consent_.signal_toggled().connect([this] {
        if (!showing_) actions_.useModel(consent_.get_active());
    });
    found_.signal_toggled().connect([this] {
        if (showing_) return;
        showChoice();
        if (found_.get_active() && !actions_.chosenServer().address.empty()) choose({});
    });
    lookAgain_.signal_clicked().connect([this] {
        sayIn(status_, say(phrases::lookingForServer));
        actions_.lookForModel();
    });
    use_.signal_clicked().connect([this] { chooseTyped(); });
    for (auto* entry : {&address_, &model_, &key_})
        entry->signal_activate().connect([this] { chooseTyped(); });

    const auto server = actions_.chosenServer();
    showing_ = true;
    (server.address.empty() ? found_ : chosen_).set_active();
    showing_ = false;
    address_.set_text(server.address);
    model_.set_text(server.model);
    key_.set_placeholder_text(say(server.hasKey ? phrases::serverKeyKept : phrases::serverKeyEmpty));
    show();
}

void ModelSection::addEntry(int row, const std::string& name, Gtk::Entry& entry) {
    auto* label = Gtk::make_managed<Gtk::Label>(name, Gtk::ALIGN_START);
    label->set_mnemonic_widget(entry);
    nameFor(entry, name);
    entry.set_hexpand();
    entry.set_width_chars(1);
    form_.attach(*label, 0, row, 1, 1);
    form_.attach(entry, 1, row, 1, 1);
}

void ModelSection::show() {
    const auto& model = actions_.model();
    sayIn(status_, model.available || model.whyNot.empty() ? inWords(model) : model.whyNot);
    showing_ = true;
    consent_.set_active(consentTo(model, actions_.settings()) == ModelConsent::given);
    showing_ = false;
    consent_.set_visible(model.available && !model.chosen);
    std::string others;
    for (const auto& sentence : model.others)
        others += (others.empty() ? "" : "\n") + sentence;
    otherServers_->set_text(others);
    others_.set_visible(!others.empty());
    others_.set_no_show_all(others.empty());
    showChoice();
}

void ModelSection::showChoice() {
    form_.set_visible(chosen_.get_active());
    lookAgain_.set_visible(found_.get_active());
}

void ModelSection::chooseTyped() {
    SettingsActions::ServerChoice choice{.address = address_.get_text(), .model = model_.get_text()};
    if (!key_.get_text().empty()) choice.key = key_.get_text();
    if (choice.address.empty()) return address_.grab_focus();
    choose(choice);
}

void ModelSection::choose(const SettingsActions::ServerChoice& choice) {
    sayIn(problem_, say(phrases::lookingForServer));
    actions_.chooseServer(choice, [this, life = life()](const std::string& problem) {
        if (life.expired()) return;
        sayIn(problem_, problem);
        if (!problem.empty()) return;
        key_.set_text("");
        key_.set_placeholder_text(
            say(actions_.chosenServer().hasKey ? phrases::serverKeyKept : phrases::serverKeyEmpty));
        show();
    });
}

} // namespace quillmark
