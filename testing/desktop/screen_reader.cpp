#include "testing/desktop/screen_reader.h"

#include <X11/Xlib.h>
#include <gio/gio.h>

#include <functional>
#include <stdexcept>

namespace testbed {

namespace {

using Value = std::unique_ptr<GVariant, decltype([](GVariant* value) { g_variant_unref(value); })>;
using BusConnection =
    std::unique_ptr<GDBusConnection, decltype([](gpointer object) { g_object_unref(object); })>;

constexpr auto registry = "org.a11y.atspi.Registry", root = "/org/a11y/atspi/accessible/root";
constexpr auto accessible = "org.a11y.atspi.Accessible", textInterface = "org.a11y.atspi.Text";

// AT-SPI's numbers of states.
constexpr int checked = 4, focusable = 11, focused = 12, sensitive = 24, showing = 25;

struct Object {
    std::string program; // its name on the bus
    std::string path;
};

// Where GTK says that the controls of an embedded view are: "PROGRAM:PATH", on the view's window.
std::optional<Object> embeddedView(Display* display, Window window) {
    const Atom property = XInternAtom(display, "_XEMBED_AT_SPI_PATH", False);
    Atom type = None;
    int format = 0;
    unsigned long length = 0, rest = 0;
    unsigned char* bytes = nullptr;
    XGetWindowProperty(display, window, property, 0, 1024, False, AnyPropertyType, &type, &format, &length,
                       &rest, &bytes);
    const std::string value(reinterpret_cast<const char*>(bytes), format == 8 ? length : 0);
    XFree(bytes);
    if (const auto colon = value.rfind(':'); colon != std::string::npos && !value.empty())
        return Object{value.substr(0, colon), value.substr(colon + 1)};

    Window ignored = None, *children = nullptr;
    unsigned count = 0;
    std::optional<Object> found;
    if (XQueryTree(display, window, &ignored, &ignored, &children, &count) == 0) return found;
    for (unsigned i = 0; i < count && !found; ++i)
        found = embeddedView(display, children[i]);
    XFree(children);
    return found;
}

std::optional<Object> embeddedView() {
    const std::unique_ptr<Display, decltype([](Display* display) { XCloseDisplay(display); })> display(
        XOpenDisplay(nullptr));
    return display ? embeddedView(display.get(), DefaultRootWindow(display.get())) : std::nullopt;
}

} // namespace

struct ScreenReader::Bus {
    pid_t program;
    BusConnection connection;

    explicit Bus(pid_t process) : program(process) {
        const BusConnection session(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
        const Value address(g_dbus_connection_call_sync(session.get(), "org.a11y.Bus", "/org/a11y/bus",
                                                        "org.a11y.Bus", "GetAddress", nullptr, nullptr,
                                                        G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
        const char* text = nullptr;
        if (address) g_variant_get(address.get(), "(&s)", &text);
        if (text != nullptr)
            connection.reset(g_dbus_connection_new_for_address_sync(
                text,
                static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                  G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
                nullptr, nullptr, nullptr));
        if (!connection)
            throw std::runtime_error("There is no accessibility bus. Use script/virtual-desktop.");
    }

    Value call(const Object& object, const char* interface, const char* method,
               GVariant* arguments = nullptr) const {
        constexpr int deadline = 2000;
        return Value(g_dbus_connection_call_sync(connection.get(), object.program.c_str(),
                                                 object.path.c_str(), interface, method, arguments, nullptr,
                                                 G_DBUS_CALL_FLAGS_NONE, deadline, nullptr, nullptr));
    }

    std::vector<Object> children(const Object& object) const {
        std::vector<Object> found;
        if (const auto answer = call(object, accessible, "GetChildren")) {
            const Value list(g_variant_get_child_value(answer.get(), 0));
            for (gsize i = 0, count = g_variant_n_children(list.get()); i < count; ++i) {
                const char *name = nullptr, *path = nullptr;
                g_variant_get_child(list.get(), i, "(&s&o)", &name, &path);
                found.push_back({name, path});
            }
        }
        // at-spi2-atk 2.46 leaves out the embedded view of another program there.
        if (found.empty() && role(object) == "filler")
            if (const auto answer = call(object, accessible, "GetChildAtIndex", g_variant_new("(i)", 0))) {
                const char *name = nullptr, *path = nullptr;
                g_variant_get(answer.get(), "((&s&o))", &name, &path);
                if (name != object.program) found.push_back({name, path});
            }
        return found;
    }

    std::string name(const Object& object) const {
        const auto answer =
            call(object, "org.freedesktop.DBus.Properties", "Get", g_variant_new("(ss)", accessible, "Name"));
        if (!answer) return {};
        Value outer(g_variant_get_child_value(answer.get(), 0)), inner(g_variant_get_variant(outer.get()));
        return g_variant_get_string(inner.get(), nullptr);
    }

    std::string role(const Object& object) const {
        const auto answer = call(object, accessible, "GetRoleName");
        const char* text = "";
        if (answer) g_variant_get(answer.get(), "(&s)", &text);
        return text;
    }

    std::string text(const Object& object, int start, int end) const {
        const auto answer = call(object, textInterface, "GetText", g_variant_new("(ii)", start, end));
        const char* text = "";
        if (answer) g_variant_get(answer.get(), "(&s)", &text);
        return text;
    }

    bool is(const Object& object, int state) const {
        const auto answer = call(object, accessible, "GetState");
        if (!answer) return false;
        const Value list(g_variant_get_child_value(answer.get(), 0));
        guint32 word = 0;
        g_variant_get_child(list.get(), static_cast<gsize>(state / 32), "u", &word);
        return (word >> (state % 32) & 1U) != 0;
    }

    // A program that does not say what its windows hold may still hold a view that does.
    std::optional<Object> application() const {
        for (const auto& object : children({registry, root})) {
            const auto answer =
                call({"org.freedesktop.DBus", "/org/freedesktop/DBus"}, "org.freedesktop.DBus",
                     "GetConnectionUnixProcessID", g_variant_new("(s)", object.program.c_str()));
            guint32 process = 0;
            if (answer) g_variant_get(answer.get(), "(u)", &process);
            if (static_cast<pid_t>(process) == program) return object;
        }
        return embeddedView();
    }

    // Every control on the screen, parents first, until `wanted` says that it is the one.
    std::optional<Object> walk(const Object& from, const std::function<bool(const Object&)>& wanted) const {
        for (const auto& object : children(from)) {
            if (!is(object, showing)) continue;
            if (wanted(object)) return object;
            if (auto found = walk(object, wanted)) return found;
        }
        return std::nullopt;
    }

    std::optional<Object> find(const std::string& wantedRole, const std::string& wantedName) const {
        const auto from = application();
        if (!from) return std::nullopt;
        return walk(*from, [&](const Object& object) {
            return role(object) == wantedRole && (wantedName.empty() || name(object) == wantedName);
        });
    }

    Object await(const std::string& wantedRole, const std::string& wantedName) {
        std::optional<Object> found;
        if (!waitUntil([&] { return (found = find(wantedRole, wantedName)).has_value(); }))
            throw std::runtime_error("There is no " + wantedRole + " \"" + wantedName + "\" on the screen.");
        return *found;
    }
};

ScreenReader::ScreenReader(pid_t program) : bus_(std::make_unique<Bus>(program)) {}
ScreenReader::~ScreenReader() = default;

bool ScreenReader::shows(const std::string& role, const std::string& name, milliseconds limit) {
    return waitUntil([&] { return bus_->find(role, name).has_value(); }, limit);
}

std::optional<std::string> ScreenReader::text(const std::string& role, const std::string& name) {
    const auto object = bus_->find(role, name);
    return object ? std::optional(bus_->text(*object, 0, -1)) : std::nullopt;
}

std::vector<std::string> ScreenReader::textWith(const std::string& attribute, const std::string& role,
                                                const std::string& name) {
    const auto object = bus_->await(role, name);
    std::vector<std::string> parts;
    for (int at = 0, start = 0, end = 0;; at = end) {
        const auto run =
            bus_->call(object, textInterface, "GetAttributeRun", g_variant_new("(ib)", at, FALSE));
        if (!run) return parts;
        g_variant_get(run.get(), "(@a{ss}ii)", nullptr, &start, &end);
        if (start > at || end <= at) return parts; // behind the last letter
        const Value attributes(g_variant_get_child_value(run.get(), 0));
        if (g_variant_lookup(attributes.get(), attribute.c_str(), "&s", nullptr))
            parts.push_back(bus_->text(object, start, end));
    }
}

bool ScreenReader::hasState(const std::string& role, const std::string& name, int state) {
    const auto object = bus_->find(role, name);
    return object && bus_->is(*object, state);
}
bool ScreenReader::isSensitive(const std::string& role, const std::string& name) {
    return hasState(role, name, sensitive);
}
bool ScreenReader::isFocused(const std::string& role, const std::string& name) {
    return hasState(role, name, focused);
}
bool ScreenReader::isChecked(const std::string& role, const std::string& name) {
    return hasState(role, name, checked);
}

void ScreenReader::press(const std::string& role, const std::string& name) {
    bus_->call(bus_->await(role, name), "org.a11y.atspi.Action", "DoAction", g_variant_new("(i)", 0));
}

void ScreenReader::setText(const std::string& role, const std::string& name, const std::string& text) {
    bus_->call(bus_->await(role, name), "org.a11y.atspi.EditableText", "SetTextContents",
               g_variant_new("(s)", text.c_str()));
}

void ScreenReader::focus(const std::string& role, const std::string& name) {
    bus_->call(bus_->await(role, name), "org.a11y.atspi.Component", "GrabFocus");
}

std::vector<std::string> ScreenReader::all() {
    std::vector<std::string> lines;
    if (const auto from = bus_->application())
        bus_->walk(*from, [&](const Object& object) {
            lines.push_back(bus_->role(object) + ": " + bus_->name(object));
            return false;
        });
    return lines;
}

std::vector<std::string> ScreenReader::unnamed() {
    std::vector<std::string> lines;
    const auto reads = [&] {
        const auto from = bus_->application(), view = embeddedView();
        if (!from || !view) return false;
        bool found = false; // a control of the view
        lines.clear();
        bus_->walk(*from, [&](const Object& object) {
            if (!bus_->is(object, focusable)) return false;
            found = found || object.program == view->program;
            if (bus_->name(object).empty()) lines.push_back(bus_->role(object));
            return false;
        });
        return found;
    };
    if (!waitUntil(reads)) throw std::runtime_error("The embedded view has no controls on the screen.");
    return lines;
}

} // namespace testbed
