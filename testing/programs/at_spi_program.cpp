// A program with a window whose elements stand in a script: it shows them on the accessibility bus, and makes
// the same mistakes there as browsers and toolkits do, so that each can be tried without installing them.
//
//   at_spi_program [OPTION=VALUE …] SCRIPT        (at_spi_tree.h says how a script is written)
//
// Texts, carets and selections are given as they stand in the script ("text", "caret", "selection=2,5"),
// counted in code points; of an object without "selection" nothing is selected. Other values of an object:
// "name", "role_name", "attributes=KEY:VALUE,…", "flows_to", "flows_from", "selected_children", and
// "unsearched" for one that a search does not find.
//
//   toolkit, program   the names of both
//   title              of the window; "none": there is no window
//   collection         "no_object" or "no_interface": what a call to search is answered with, as in Qt 5 and
//   GTK 4 unselected         what GetSelection(0) gives when nothing is selected: "caret", "-1", "0" or
//   "error" first_text=empty   the first text that is asked for is given as an empty one, as in Firefox
//   end_of_text=empty  an end of -1 is taken for the start, as in GTK 4
//   asleep=yes         it shows windows only, until somebody asks for a window's attributes, as Chromium
//   objects=none       it is on the bus but shows nothing there, as a screen reader
//   process=NAME       what the system knows its process by
//
// It prints "ready" once its window has the keyboard focus. Each command on its standard input is answered by
// a line, "ok" unless said otherwise:
//
//   focus NAME             tells that the object has gained the focus
//   activate NAME          tells that the window has come to the front
//   change NAME STATE      gives it that state, or takes it: -focused
//   select NAME RANGE S    tells the X server that this part of its text is selected ("4,7"), and shows it
//                          itself so many seconds later
//   slow METHOD SECONDS    answers calls of that method later from now on
//   calls METHOD           answers how often the method was called
#include "testing/programs/at_spi_tree.h"

#include <glib-unix.h>
#include <gtkmm.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <stdexcept>

namespace at_spi_program {
namespace {

const std::string folder = "/org/a11y/atspi/accessible/";
constexpr const char* registry = "org.a11y.atspi.Registry";

// Bytes of `text` where its code point number `index` begins.
std::size_t byteOf(const std::string& text, std::int32_t index) {
    std::size_t at = 0;
    for (; at < text.size() && index > 0; --index)
        do
            ++at;
        while (at < text.size() && (text[at] & 0xC0) == 0x80);
    return at;
}

std::int32_t lengthOf(const std::string& text) {
    return static_cast<std::int32_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

class ScriptedProgram {
public:
    ScriptedProgram(std::map<std::string, std::string> options, const std::string& script)
        : options_(std::move(options)), tree_(script), asleep_(option("asleep") == "yes") {
        connect();
    }

    // What is missing here is answered with an error.
    GVariant* reply(const std::string& path, const std::string& method, GVariant* arguments);
    std::string obey(const std::string& line);
    std::string option(const std::string& name) const {
        const auto found = options_.find(name);
        return found == options_.end() ? "" : found->second;
    }

private:
    void connect();
    GVariant* property(Object* object, const std::string& name);
    GVariant* text(Object& object, const std::string& method, GVariant* arguments);
    GVariant* reference(const std::string& name) const {
        return g_variant_new("(so)", g_dbus_connection_get_unique_name(bus_),
                             (folder + (name.empty() ? "root" : name)).c_str());
    }
    GVariant* references(const std::vector<std::string>& names) const {
        GVariantBuilder list;
        g_variant_builder_init(&list, G_VARIANT_TYPE("a(so)"));
        for (const std::string& name : names)
            g_variant_builder_add_value(&list, reference(name));
        return g_variant_builder_end(&list);
    }
    GVariant* relations(const Object& object) const;
    GVariant* attributes(const Object& object) const;
    void select(const std::string& name, const std::string& range, double delay);
    void emit(const std::string& object, const std::string& kind, const char* member, const char* what);
    std::vector<std::string> searched(const std::vector<std::string>& names) const;

    static GDBusMessage* filter(GDBusConnection*, GDBusMessage* message, gboolean incoming, gpointer program);
    void answer(GDBusMessage* call);

    std::map<std::string, std::string> options_;
    mutable Tree tree_;
    bool asleep_;
    bool textWasAsked_ = false;
    GDBusConnection* bus_ = nullptr;
    std::map<std::string, int> calls_;
    std::map<std::string, double> delays_; // seconds
};

void ScriptedProgram::connect() {
    GDBusConnection* session = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    GVariant* reply =
        g_dbus_connection_call_sync(session, "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress",
                                    nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE, 5000, nullptr, nullptr);
    if (reply == nullptr) throw std::runtime_error("There is no accessibility bus.");
    const char* address = nullptr;
    g_variant_get(reply, "(&s)", &address);
    bus_ = g_dbus_connection_new_for_address_sync(
        address,
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr);
    if (bus_ == nullptr) throw std::runtime_error("The accessibility bus does not answer.");
    g_dbus_connection_add_filter(bus_, &ScriptedProgram::filter, this, nullptr);
    g_dbus_connection_call_sync(bus_, registry, (folder + "root").c_str(), "org.a11y.atspi.Socket", "Embed",
                                g_variant_new("(@(so))", reference("")), nullptr, G_DBUS_CALL_FLAGS_NONE,
                                5000, nullptr, nullptr);
}

// On GDBus's thread; the answer is given on the main thread, as programs do.
GDBusMessage* ScriptedProgram::filter(GDBusConnection*, GDBusMessage* message, gboolean incoming,
                                      gpointer program) {
    if (incoming == FALSE || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL)
        return message;
    struct Work {
        ScriptedProgram& program;
        GDBusMessage* call;
    };
    const auto run = [](gpointer data) -> gboolean {
        const std::unique_ptr<Work> work(static_cast<Work*>(data));
        work->program.answer(work->call);
        return G_SOURCE_REMOVE;
    };
    g_idle_add_full(G_PRIORITY_DEFAULT, run, new Work{*static_cast<ScriptedProgram*>(program), message},
                    nullptr);
    return nullptr;
}

void ScriptedProgram::answer(GDBusMessage* call) {
    const std::string method = g_dbus_message_get_member(call);
    ++calls_[method];
    if (const auto delay = delays_.find(method); delay != delays_.end())
        g_usleep(static_cast<gulong>(delay->second * 1e6));
    const std::string error =
        method == "GetMatches" && option("collection") == "no_object" ? "UnknownObject" : "UnknownMethod";
    GVariant* value = nullptr;
    if (option("objects") != "none")
        value = reply(g_dbus_message_get_path(call), method, g_dbus_message_get_body(call));
    GDBusMessage* message =
        value != nullptr
            ? g_dbus_message_new_method_reply(call)
            : g_dbus_message_new_method_error_literal(call, ("org.freedesktop.DBus.Error." + error).c_str(),
                                                      "This program does not answer that");
    if (value != nullptr) g_dbus_message_set_body(message, value);
    g_dbus_connection_send_message(bus_, message, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
    g_object_unref(message);
    g_object_unref(call);
}

GVariant* ScriptedProgram::reply(const std::string& path, const std::string& method, GVariant* arguments) {
    const std::string name = path.starts_with(folder) ? path.substr(folder.size()) : path;
    Object* object = tree_.contains(name) ? &tree_.at(name) : nullptr;
    if (object == nullptr && name != "root") return nullptr;
    const auto& children = object != nullptr ? object->children : tree_.windows();
    if (method == "GetChildren")
        return g_variant_new(
            "(@a(so))", references(asleep_ && object != nullptr ? std::vector<std::string>() : children));
    if (method == "GetRole") return g_variant_new("(u)", object != nullptr ? object->role : 75);
    if (method == "Get") {
        const char* wanted = nullptr;
        g_variant_get(arguments, "(&s&s)", nullptr, &wanted);
        GVariant* value = property(object, wanted);
        return value != nullptr ? g_variant_new("(v)", value) : nullptr;
    }
    if (method == "GetMatches" && option("collection").empty())
        return g_variant_new("(@a(so))",
                             references(asleep_ ? std::vector<std::string>() : searched(children)));
    if (object == nullptr) return nullptr;
    if (method == "GetState") {
        GVariant* words[]{g_variant_new_uint32(static_cast<guint32>(object->states)),
                          g_variant_new_uint32(static_cast<guint32>(object->states >> 32))};
        return g_variant_new("(@au)", g_variant_new_array(G_VARIANT_TYPE_UINT32, words, 2));
    }
    if (method == "GetRoleName") return g_variant_new("(s)", object->value("role_name", "something").c_str());
    if (method == "GetInterfaces") {
        const char* interfaces[]{"org.a11y.atspi.Accessible", "org.a11y.atspi.Text"};
        return g_variant_new("(@as)", g_variant_new_strv(interfaces, object->has("text") ? 2 : 1));
    }
    if (method == "GetAttributes") {
        asleep_ = false;
        return attributes(*object);
    }
    if (method == "GetRelationSet") return relations(*object);
    return object->has("text") ? text(*object, method, arguments) : nullptr;
}

GVariant* ScriptedProgram::property(Object* object, const std::string& name) {
    if (name == "ToolkitName" && object == nullptr) return g_variant_new_string(option("toolkit").c_str());
    if (name == "Name")
        return g_variant_new_string(object != nullptr ? object->value("name").c_str()
                                                      : option("program").c_str());
    if (object == nullptr) return nullptr;
    if (name == "Parent") return reference(object->parent);
    if (name == "CaretOffset") return g_variant_new_int32(object->number("caret", -1));
    if (name == "CharacterCount") return g_variant_new_int32(lengthOf(object->value("text")));
    if (name == "NSelectedChildren") return g_variant_new_int32(object->number("selected_children", 0));
    return nullptr;
}

GVariant* ScriptedProgram::text(Object& object, const std::string& method, GVariant* arguments) {
    const std::string whole = object.value("text");
    const auto comma = object.value("selection").find(',');
    if (method == "GetNSelections") return g_variant_new("(i)", comma != std::string::npos ? 1 : 0);
    if (method == "GetSelection") {
        if (comma != std::string::npos)
            return g_variant_new("(ii)", std::stoi(object.value("selection")),
                                 std::stoi(object.value("selection").substr(comma + 1)));
        const std::string unselected = object.value("unselected", option("unselected"));
        if (unselected == "error") return nullptr;
        const int at = unselected == "caret" ? object.number("caret", -1) : unselected == "0" ? 0 : -1;
        return g_variant_new("(ii)", at, at);
    }
    if (method != "GetText") return nullptr;
    gint32 start = 0, end = 0;
    g_variant_get(arguments, "(ii)", &start, &end);
    const bool isFirst = !std::exchange(textWasAsked_, true);
    if ((isFirst && option("first_text") == "empty") || (end == -1 && option("end_of_text") == "empty"))
        return g_variant_new("(s)", "");
    const std::size_t from = byteOf(whole, start);
    const std::size_t to = end < 0 ? whole.size() : byteOf(whole, end);
    return g_variant_new("(s)", whole.substr(from, to - from).c_str());
}

GVariant* ScriptedProgram::attributes(const Object& object) const {
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("a{ss}"));
    const std::string given = object.value("attributes");
    if (const auto colon = given.find(':'); colon != std::string::npos)
        g_variant_builder_add(&list, "{ss}", given.substr(0, colon).c_str(), given.substr(colon + 1).c_str());
    return g_variant_new("(@a{ss})", g_variant_builder_end(&list));
}

GVariant* ScriptedProgram::relations(const Object& object) const {
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("a(ua(so))"));
    for (const auto& [key, number] : {std::pair("flows_to", 10U), std::pair("flows_from", 11U)})
        if (object.has(key))
            g_variant_builder_add(&list, "(u@a(so))", number, references({object.value(key)}));
    return g_variant_new("(@a(ua(so)))", g_variant_builder_end(&list));
}

std::vector<std::string> ScriptedProgram::searched(const std::vector<std::string>& names) const {
    auto found = tree_.focusedIn(names);
    std::erase_if(found, [&](const std::string& name) { return tree_.at(name).has("unsearched"); });
    return found;
}

void ScriptedProgram::emit(const std::string& object, const std::string& kind, const char* member,
                           const char* what) {
    GVariantBuilder nothing;
    g_variant_builder_init(&nothing, G_VARIANT_TYPE("a{sv}"));
    g_dbus_connection_emit_signal(
        bus_, nullptr, (folder + object).c_str(), ("org.a11y.atspi.Event." + kind).c_str(), member,
        g_variant_new("(siiva{sv})", what, 1, 0, g_variant_new_int32(0), &nothing), nullptr);
    g_dbus_connection_flush_sync(bus_, nullptr, nullptr);
}

void ScriptedProgram::select(const std::string& name, const std::string& range, double delay) {
    auto& object = tree_.at(name);
    const std::int32_t start = std::stoi(range), end = std::stoi(range.substr(range.find(',') + 1));
    const std::string all = object.value("text");
    const std::size_t first = byteOf(all, start);
    Gtk::Clipboard::get(GDK_SELECTION_PRIMARY)->set_text(all.substr(first, byteOf(all, end) - first));
    Glib::signal_timeout().connect_once([&object, range] { object.values["selection"] = range; },
                                        static_cast<unsigned>(delay * 1000));
}

std::string ScriptedProgram::obey(const std::string& line) {
    const auto words = wordsOf(line);
    if (words.size() == 2 && words[0] == "focus")
        emit(words[1], "Object", "StateChanged", "focused");
    else if (words.size() == 2 && words[0] == "activate")
        emit(words[1], "Window", "Activate", "");
    else if (words.size() == 3 && words[0] == "change")
        tree_.change(words[1], words[2]);
    else if (words.size() == 4 && words[0] == "select")
        select(words[1], words[2], std::stod(words[3]));
    else if (words.size() == 3 && words[0] == "slow")
        delays_[words[1]] = std::stod(words[2]);
    else if (words.size() == 2 && words[0] == "calls")
        return std::to_string(calls_[words[1]]);
    else
        return "error: unknown command " + line;
    return "ok";
}

struct Input {
    ScriptedProgram& program;
    std::string unread = {};

    static gboolean arrived(gint, GIOCondition, gpointer data) {
        Input& input = *static_cast<Input*>(data);
        std::array<char, 4096> bytes{};
        const ssize_t count = read(STDIN_FILENO, bytes.data(), bytes.size());
        if (count <= 0) std::exit(0);
        input.unread.append(bytes.data(), static_cast<std::size_t>(count));
        for (std::size_t end = 0; (end = input.unread.find('\n')) != std::string::npos;) {
            std::cout << input.program.obey(input.unread.substr(0, end)) << std::endl;
            input.unread.erase(0, end + 1);
        }
        return G_SOURCE_CONTINUE;
    }
};

int run(const std::vector<std::string>& arguments) {
    std::map<std::string, std::string> options;
    for (auto each = arguments.begin(); each + 1 < arguments.end(); ++each)
        options[each->substr(0, each->find('='))] = each->substr(each->find('=') + 1);
    setenv("NO_AT_BRIDGE", "1", 1); // the toolkit's own elements are not shown
    const auto application = Gtk::Application::create("", Gio::APPLICATION_NON_UNIQUE);
    application->register_application();
    ScriptedProgram program(options, arguments.back());
    if (const auto name = program.option("process"); !name.empty()) prctl(PR_SET_NAME, name.c_str());
    Input input{program};
    g_unix_fd_add(STDIN_FILENO, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP), &Input::arrived, &input);

    const bool hasWindow = program.option("title") != "none";
    const auto sayReady = [ready = false]() mutable {
        if (!std::exchange(ready, true)) std::cout << "ready" << std::endl;
    };
    Gtk::Window window;
    window.set_title(program.option("title"));
    window.property_is_active().signal_changed().connect(
        [sayReady]() mutable { Glib::signal_idle().connect_once(sayReady); });
    if (hasWindow)
        window.show();
    else
        Glib::signal_idle().connect_once(sayReady);
    application->hold();
    return application->run();
}

} // namespace
} // namespace at_spi_program

int main(int argc, char** argv) {
    try {
        return at_spi_program::run({argv + 1, argv + argc});
    } catch (const std::exception& problem) {
        std::cerr << "at_spi_program: " << problem.what() << std::endl;
        return 1;
    }
}
