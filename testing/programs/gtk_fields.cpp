// A small real program with text fields, driven by lines on its standard input, so that a test on a real
// desktop can prepare a field and afterwards judge the outcome by what the program itself says.
//
//   gtk_fields [--title TITLE] [--into XID] KIND[=TEXT] …
//
// KIND is entry, textview, password, readonly, combo, search or button. With --into it embeds its fields in
// that window of another program instead of showing one of its own. It prints "ready" once its window is
// mapped and has the keyboard focus (in field 0). Each command is answered by one line, "ok" unless said
// otherwise; fields count from 0, offsets count code points, TEXT may hold \n and \\:
//
//   focus N
//   select N START END
//   text N TEXT
//   append N TEXT
//   hidden N 0|1       a password entry, or not any more
//   title TITLE
//   minimize
//   present
//   hang SECONDS       answers first, then serves nobody
//   await N TEXT       answers once field N has TEXT in it, with the nanoseconds of the monotonic clock then
//   dump               answers {"title", "active", "focus", "fields": [{"kind", "text", "selection": [start,
//                      end]}]}
//   later MS COMMAND   answers first, and obeys the command that many milliseconds later, without an answer
//   onpaste COMMAND    obeys the command at the next Control+V, before the field gets that key
//   quit               ends the program, as does the end of its input
#include <gtkmm.h>
#include <gtkmm/plug.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::string unescaped(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape = text[i] == '\\' && i + 1 < text.size();
        if (!escape)
            result += text[i];
        else
            result += text[++i] == 'n' ? '\n' : text[i];
    }
    return result;
}

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '\n')
            result += "\\n";
        else if (c == '\t')
            result += "\\t";
        else if (c == '"' || c == '\\')
            result += std::string{'\\', c};
        else
            result += c;
    }
    return result + '"';
}

// One field; GTK owns the widgets.
class Field {
public:
    explicit Field(std::string kind) : kind_(std::move(kind)) {}
    virtual ~Field() = default;
    Field(const Field&) = delete;
    Field& operator=(const Field&) = delete;

    const std::string& kind() const { return kind_; }
    virtual Gtk::Widget& outer() = 0;
    virtual Gtk::Widget& focusable() { return outer(); }
    virtual std::string text() { return {}; }
    virtual void setText(const std::string&) {}
    virtual void append(const std::string&) {}
    virtual std::array<int, 2> selection() { return {0, 0}; }
    virtual void select(int, int) {}
    virtual void setHidden(bool) {}
    virtual void onChange(const sigc::slot<void>&) {}

private:
    std::string kind_;
};

class EntryField : public Field {
public:
    explicit EntryField(const std::string& kind) : Field(kind) {
        if (kind == "combo") {
            combo_ = std::make_unique<Gtk::ComboBoxText>(true);
            entry_ = combo_->get_entry();
        } else {
            owned_ = kind == "search" ? std::make_unique<Gtk::SearchEntry>() : std::make_unique<Gtk::Entry>();
            entry_ = owned_.get();
        }
        setHidden(kind == "password");
        entry_->set_editable(kind != "readonly");
    }
    Gtk::Widget& outer() override { return combo_ ? static_cast<Gtk::Widget&>(*combo_) : *entry_; }
    Gtk::Widget& focusable() override { return *entry_; }
    std::string text() override { return entry_->get_text().raw(); }
    void setText(const std::string& text) override { entry_->set_text(text); }
    void append(const std::string& text) override {
        int end = entry_->get_text_length();
        entry_->insert_text(text, -1, end);
    }
    std::array<int, 2> selection() override {
        std::array<int, 2> range{entry_->get_position(), entry_->get_position()};
        entry_->get_selection_bounds(range[0], range[1]);
        return range;
    }
    void select(int start, int end) override { entry_->select_region(start, end); }
    void setHidden(bool hidden) override {
        entry_->set_visibility(!hidden);
        entry_->set_input_purpose(hidden ? Gtk::INPUT_PURPOSE_PASSWORD : Gtk::INPUT_PURPOSE_FREE_FORM);
    }
    void onChange(const sigc::slot<void>& slot) override { entry_->signal_changed().connect(slot); }

private:
    std::unique_ptr<Gtk::ComboBoxText> combo_;
    std::unique_ptr<Gtk::Entry> owned_;
    Gtk::Entry* entry_ = nullptr;
};

class ViewField : public Field {
public:
    explicit ViewField(const std::string& kind) : Field(kind) {
        scroller_.add(view_);
        scroller_.set_size_request(-1, 120);
    }
    Gtk::Widget& outer() override { return scroller_; }
    Gtk::Widget& focusable() override { return view_; }
    std::string text() override { return view_.get_buffer()->get_text(true).raw(); }
    void setText(const std::string& text) override { view_.get_buffer()->set_text(text); }
    void append(const std::string& text) override {
        view_.get_buffer()->insert(view_.get_buffer()->end(), text);
    }
    std::array<int, 2> selection() override {
        Gtk::TextIter start, end;
        view_.get_buffer()->get_selection_bounds(start, end);
        return {start.get_offset(), end.get_offset()};
    }
    void select(int start, int end) override {
        const auto buffer = view_.get_buffer();
        buffer->select_range(buffer->get_iter_at_offset(end), buffer->get_iter_at_offset(start));
    }
    void onChange(const sigc::slot<void>& slot) override {
        view_.get_buffer()->signal_changed().connect(slot);
    }

private:
    Gtk::ScrolledWindow scroller_;
    Gtk::TextView view_;
};

// What has the focus when no text has it.
class ButtonField : public Field {
public:
    explicit ButtonField(const std::string& kind) : Field(kind), button_("Button") {}
    Gtk::Widget& outer() override { return button_; }

private:
    Gtk::Button button_;
};

std::unique_ptr<Field> makeField(const std::string& kind) {
    if (kind == "textview") return std::make_unique<ViewField>(kind);
    if (kind == "button") return std::make_unique<ButtonField>(kind);
    return std::make_unique<EntryField>(kind);
}

class FieldsWindow : public Gtk::Window {
public:
    FieldsWindow(const std::string& title, const std::vector<std::string>& fields)
        : box_(Gtk::ORIENTATION_VERTICAL, 6) {
        set_title(title);
        set_default_size(420, 200);
        add(box_);
        for (const std::string& each : fields) {
            const auto equals = each.find('=');
            fields_.push_back(makeField(each.substr(0, equals)));
            if (equals != std::string::npos) fields_.back()->setText(unescaped(each.substr(equals + 1)));
            fields_.back()->onChange([this] { answerWhatIsAwaited(); });
            box_.pack_start(fields_.back()->outer(), Gtk::PACK_SHRINK);
        }
        Glib::signal_io().connect(sigc::mem_fun(*this, &FieldsWindow::readInput), STDIN_FILENO,
                                  Glib::IO_IN | Glib::IO_HUP);
        signal_key_press_event().connect(
            [this](const GdkEventKey* key) {
                if (key->keyval == GDK_KEY_v && (key->state & GDK_CONTROL_MASK) != 0)
                    obey(std::exchange(onPaste_, {}));
                return false;
            },
            false);
        property_is_active().signal_changed().connect(
            [this] { Glib::signal_idle().connect_once([this] { sayReady(); }); });
        show_all();
        if (!fields_.empty()) focus(0);
    }

    void moveInto(Gtk::Plug& plug) {
        remove();
        hide();
        plug.add(box_);
        plug.show_all();
        focus(0);
        plug.property_has_toplevel_focus().signal_changed().connect([this, &plug] {
            if (!ready_ && plug.property_has_toplevel_focus()) std::cout << "ready" << std::endl;
            ready_ = ready_ || plug.property_has_toplevel_focus();
        });
    }

private:
    Field& field(std::istream& words) {
        std::size_t index = 0;
        words >> index;
        return *fields_.at(index);
    }

    void focus(std::size_t index) {
        fields_.at(index)->focusable().grab_focus();
        fields_[index]->select(0, 0);
    }

    void sayReady() {
        if (ready_ || !property_is_active()) return;
        ready_ = true;
        std::cout << "ready" << std::endl;
    }

    std::string dump() {
        std::ostringstream out;
        int focused = -1;
        std::string list;
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            if (&fields_[i]->focusable() == get_focus()) focused = static_cast<int>(i);
            const auto [start, end] = fields_[i]->selection();
            list += (i ? ", " : "") + ("{\"kind\": " + quoted(fields_[i]->kind())) +
                    ", \"text\": " + quoted(fields_[i]->text()) + ", \"selection\": [" +
                    std::to_string(start) + ", " + std::to_string(end) + "]}";
        }
        out << "{\"title\": " << quoted(get_title().raw())
            << ", \"active\": " << (property_is_active() ? "true" : "false") << ", \"focus\": " << focused
            << ", \"fields\": [" << list << "]}";
        return out.str();
    }

    void answerWhatIsAwaited() {
        if (awaitedIn_ == nullptr || awaitedIn_->text().find(awaited_) == std::string::npos) return;
        awaitedIn_ = nullptr;
        const std::chrono::nanoseconds now = std::chrono::steady_clock::now().time_since_epoch();
        std::cout << now.count() << std::endl;
    }

    // The answer to one command; empty when it comes later.
    std::string obey(const std::string& line) {
        std::istringstream words(line);
        std::string verb;
        words >> verb;
        const auto rest = [&] {
            std::string text;
            std::getline(words >> std::ws, text);
            return unescaped(text);
        };
        if (verb == "dump") return dump();
        if (verb == "title")
            set_title(rest());
        else if (verb == "minimize")
            iconify();
        else if (verb == "present")
            present();
        else if (verb == "quit")
            hide();
        else if (verb == "focus") {
            std::size_t index = 0;
            words >> index;
            focus(index);
        } else if (verb == "text") {
            Field& target = field(words);
            target.setText(rest());
        } else if (verb == "append") {
            Field& target = field(words);
            target.append(rest());
        } else if (verb == "later") {
            unsigned delay = 0;
            words >> delay;
            Glib::signal_timeout().connect_once([this, command = rest()] { obey(command); }, delay);
        } else if (verb == "onpaste") {
            onPaste_ = rest();
        } else if (verb == "select") {
            Field& target = field(words);
            int start = 0, end = 0;
            words >> start >> end;
            target.select(start, end);
        } else if (verb == "hidden") {
            Field& target = field(words);
            bool hidden = false;
            words >> hidden;
            target.setHidden(hidden);
        } else if (verb == "await") {
            awaitedIn_ = &field(words);
            awaited_ = rest();
            answerWhatIsAwaited();
            return {};
        } else
            return "error: unknown command " + verb;
        return "ok";
    }

    bool readInput(Glib::IOCondition) {
        std::array<char, 4096> bytes{};
        const ssize_t count = read(STDIN_FILENO, bytes.data(), bytes.size());
        if (count <= 0) {
            hide();
            return false;
        }
        input_.append(bytes.data(), static_cast<std::size_t>(count));
        for (std::size_t end = 0; (end = input_.find('\n')) != std::string::npos;) {
            const std::string line = input_.substr(0, end);
            input_.erase(0, end + 1);
            answer(line);
        }
        return true;
    }

    void answer(const std::string& line) {
        constexpr std::string_view hang = "hang ";
        if (line.starts_with(hang)) {
            std::cout << "ok" << std::endl;
            g_usleep(static_cast<gulong>(std::stod(line.substr(hang.size())) * 1e6));
            return;
        }
        try {
            const std::string said = obey(line);
            if (!said.empty()) std::cout << said << std::endl;
        } catch (const std::out_of_range&) {
            std::cout << "error: there is no such field" << std::endl;
        }
    }

    Gtk::Box box_;
    std::vector<std::unique_ptr<Field>> fields_;
    std::string input_;
    Field* awaitedIn_ = nullptr;
    std::string awaited_;
    std::string onPaste_; // a command
    bool ready_ = false;
};

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> fields(argv + 1, argv + argc);
    std::string title = "Fields";
    if (fields.size() >= 2 && fields[0] == "--title") {
        title = fields[1];
        fields.erase(fields.begin(), fields.begin() + 2);
    }
    unsigned long into = 0;
    if (fields.size() >= 2 && fields[0] == "--into") {
        into = std::stoul(fields[1]);
        fields.erase(fields.begin(), fields.begin() + 2);
    }
    const auto application = Gtk::Application::create("", Gio::APPLICATION_NON_UNIQUE);
    application->register_application();
    FieldsWindow window(title, fields);
    if (into == 0) return application->run(window);
    Gtk::Plug plug(into);
    window.moveInto(plug);
    return application->run(plug);
}
