#include "testing/desktop/desktop.h"

#include <X11/X.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace testbed {

namespace {

// A window may vanish while it is being asked about; what it was asked is then simply absent.
int ignoreError(Display*, XErrorEvent*) { return 0; }

} // namespace

class Desktop::Server {
public:
    Server() : display(XOpenDisplay(nullptr)) {
        if (display == nullptr) throw std::runtime_error("There is no display. Use script/virtual-desktop.");
        XSetErrorHandler(ignoreError);
        root = DefaultRootWindow(display);
        own = XCreateSimpleWindow(display, root, -1, -1, 1, 1, 0, 0, 0);
    }
    ~Server() { XCloseDisplay(display); }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    Atom atom(const char* name) const { return XInternAtom(display, name, False); }

    struct DestroyImage {
        void operator()(XImage* image) const { XDestroyImage(image); }
    };
    // What the screen shows there; absent where it cannot be read.
    std::unique_ptr<XImage, DestroyImage> read(const Area& part) const {
        const int screen = DefaultScreen(display);
        const int left = std::max(part.x, 0), top = std::max(part.y, 0);
        const int width = std::min(part.x + part.width, DisplayWidth(display, screen)) - left;
        const int height = std::min(part.y + part.height, DisplayHeight(display, screen)) - top;
        if (width <= 0 || height <= 0) return nullptr;
        return std::unique_ptr<XImage, DestroyImage>(
            XGetImage(display, root, left, top, static_cast<unsigned>(width), static_cast<unsigned>(height),
                      AllPlanes, ZPixmap));
    }

    struct Property {
        std::string bytes; // 32-bit values are in the library's form: each an unsigned long
        Atom type = None;
    };

    Property property(WindowId window, Atom name, bool remove = false) const {
        int format = 0;
        unsigned long count = 0, left = 0;
        unsigned char* data = nullptr;
        Property result;
        if (XGetWindowProperty(display, window, name, 0, 1 << 22, remove ? True : False, AnyPropertyType,
                               &result.type, &format, &count, &left, &data) != Success)
            return {};
        const std::size_t size = format == 32 ? sizeof(long) : static_cast<std::size_t>(format / 8);
        if (data != nullptr) result.bytes.assign(reinterpret_cast<char*>(data), count * size);
        XFree(data);
        return result;
    }

    std::vector<unsigned long> values(WindowId window, const char* name) const {
        const std::string bytes = property(window, atom(name)).bytes;
        std::vector<unsigned long> result(bytes.size() / sizeof(unsigned long));
        if (!result.empty()) std::memcpy(result.data(), bytes.data(), result.size() * sizeof(unsigned long));
        return result;
    }

    std::optional<unsigned long> value(WindowId window, const char* name) const {
        const auto all = values(window, name);
        return all.empty() ? std::nullopt : std::optional(all.front());
    }

    // Asks the window manager, as a task bar does.
    void request(const char* message, WindowId window, long first, long second) const {
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = window;
        event.xclient.message_type = atom(message);
        event.xclient.format = 32;
        event.xclient.data.l[0] = first;
        event.xclient.data.l[1] = second;
        XSendEvent(display, root, False, SubstructureRedirectMask | SubstructureNotifyMask, &event);
        XSync(display, False);
    }

    // The server's clock, for requests that somebody makes now.
    Time now() const {
        XSelectInput(display, own, PropertyChangeMask);
        XChangeProperty(display, own, atom("QUILLMARK_TIME"), XA_STRING, 8, PropModeAppend, nullptr, 0);
        XEvent event{};
        XWindowEvent(display, own, PropertyChangeMask, &event);
        XSelectInput(display, own, NoEventMask);
        return event.xproperty.time;
    }

    // Not where the window manager does not say.
    void awaitWindowManager() const {
        const auto supported = values(root, "_NET_SUPPORTED");
        if (std::ranges::find(supported, atom("_NET_REQUEST_FRAME_EXTENTS")) == supported.end()) return;
        const Atom answer = atom("_NET_FRAME_EXTENTS");
        XDeleteProperty(display, own, answer);
        const auto isAnswered = [&] { return property(own, answer).type != None; };
        // One that has just started does not hear of what was asked before.
        waitUntil([&] {
            request("_NET_REQUEST_FRAME_EXTENTS", own, 0, 0);
            return waitUntil(isAnswered, milliseconds(500));
        });
    }

    struct Family {
        WindowId parent = None;
        std::vector<WindowId> children;
    };

    Family family(WindowId window) const {
        Family result;
        WindowId unused = None;
        WindowId* children = nullptr;
        unsigned count = 0;
        if (XQueryTree(display, window, &unused, &result.parent, &children, &count) == 0) return {};
        if (children != nullptr) result.children.assign(children, children + count);
        XFree(children);
        return result;
    }

    bool isAncestor(WindowId ancestor, WindowId window) const {
        while (window != None && window != root && window != ancestor)
            window = family(window).parent;
        return window == ancestor;
    }

    Display* display;
    WindowId root = 0;
    WindowId own = 0;
};

Desktop::Desktop() : server_(std::make_unique<Server>()) {}
Desktop::~Desktop() = default;

void Desktop::click(WindowId window, double height) {
    XWindowAttributes attributes{};
    WindowId child = None;
    int x = 0, y = 0;
    if (XGetWindowAttributes(server_->display, window, &attributes) == 0) return;
    XTranslateCoordinates(server_->display, window, server_->root, attributes.width / 2,
                          static_cast<int>(attributes.height * height), &x, &y, &child);
    XTestFakeMotionEvent(server_->display, -1, x, y, CurrentTime);
    XTestFakeButtonEvent(server_->display, 1, True, CurrentTime);
    XTestFakeButtonEvent(server_->display, 1, False, CurrentTime);
    XSync(server_->display, False);
}

std::vector<WindowId> Desktop::windows(pid_t pid) {
    auto result = allWindows();
    std::erase_if(result, [&](WindowId window) { return processOf(window) != pid; });
    return result;
}

std::vector<WindowId> Desktop::allWindows() { return server_->values(server_->root, "_NET_CLIENT_LIST"); }

std::optional<pid_t> Desktop::processOf(WindowId window) {
    const auto owner = server_->value(window, "_NET_WM_PID");
    return owner ? std::optional(static_cast<pid_t>(*owner)) : std::nullopt;
}

std::optional<WindowId> Desktop::activeWindow() {
    const auto active = server_->value(server_->root, "_NET_ACTIVE_WINDOW");
    return active == None ? std::nullopt : active;
}

std::optional<unsigned long> Desktop::workspace() {
    return server_->value(server_->root, "_NET_CURRENT_DESKTOP");
}

std::optional<unsigned long> Desktop::workspace(WindowId window) {
    return server_->value(window, "_NET_WM_DESKTOP");
}

bool Desktop::goToWorkspace(unsigned long number) {
    server_->request("_NET_CURRENT_DESKTOP", server_->root, static_cast<long>(number), CurrentTime);
    return waitUntil([&] { return workspace() == number; });
}

std::string Desktop::title(WindowId window) {
    auto title = server_->property(window, server_->atom("_NET_WM_NAME")).bytes;
    return title.empty() ? server_->property(window, XA_WM_NAME).bytes : title; // xterm 379
}

bool Desktop::isHidden(WindowId window) {
    XWindowAttributes attributes{};
    return XGetWindowAttributes(server_->display, window, &attributes) == 0 ||
           attributes.map_state != IsViewable;
}

std::string Desktop::className(WindowId window) {
    return server_->property(window, XA_WM_CLASS).bytes.c_str();
}

std::optional<WindowId> Desktop::windowManager() {
    return server_->value(server_->root, "_NET_SUPPORTING_WM_CHECK");
}

// Twice, because it also has to hear of the changes of the focus that it makes itself.
void Desktop::awaitWindowManager() {
    server_->awaitWindowManager();
    server_->awaitWindowManager();
}

bool Desktop::hasIcon(WindowId window) { return server_->value(window, "_NET_WM_ICON").has_value(); }

bool Desktop::hasState(WindowId window, const char* state) {
    const auto states = server_->values(window, "_NET_WM_STATE");
    return std::find(states.begin(), states.end(), server_->atom(state)) != states.end();
}

Desktop::Area Desktop::place(WindowId window) {
    XWindowAttributes attributes{};
    Area place;
    WindowId unused = None;
    if (XGetWindowAttributes(server_->display, window, &attributes) == 0) return place;
    XTranslateCoordinates(server_->display, window, server_->root, 0, 0, &place.x, &place.y, &unused);
    place.width = attributes.width;
    place.height = attributes.height;
    return place;
}

std::pair<int, int> Desktop::smallestSize(WindowId window) {
    XSizeHints hints{};
    long unused = 0;
    if (XGetWMNormalHints(server_->display, window, &hints, &unused) == 0) return {};
    return {hints.min_width, hints.min_height};
}

std::optional<Desktop::Area> Desktop::openMenu() {
    for (const WindowId window : server_->family(server_->root).children) {
        const auto types = server_->values(window, "_NET_WM_WINDOW_TYPE");
        for (const char* menu : {"_NET_WM_WINDOW_TYPE_DROPDOWN_MENU", "_NET_WM_WINDOW_TYPE_POPUP_MENU"})
            if (!types.empty() && types.front() == server_->atom(menu) && !isHidden(window))
                return place(window);
    }
    return std::nullopt;
}

void Desktop::close(WindowId window) {
    constexpr long byTheUser = 2;
    server_->request("_NET_CLOSE_WINDOW", window, CurrentTime, byTheUser);
}

bool Desktop::activate(WindowId window) {
    constexpr long byTheUser = 2;
    awaitWindowManager();
    // Without the time, GTK would take the keyboard back for a window that had it before.
    server_->request("_NET_ACTIVE_WINDOW", window, byTheUser, static_cast<long>(server_->now()));
    awaitWindowManager();
    return waitUntil([&] {
        WindowId focused = None;
        int unused = 0;
        XGetInputFocus(server_->display, &focused, &unused);
        return activeWindow() == window && server_->isAncestor(window, focused);
    });
}

bool Desktop::bringToFront(pid_t program) {
    std::vector<WindowId> own;
    return waitUntil([&] { return !(own = windows(program)).empty(); }) && activate(own.front());
}

std::optional<std::string> Desktop::text(const char* selection) {
    const Atom target = server_->atom("UTF8_STRING");
    const Atom place = server_->atom("QUILLMARK_TEST");
    XConvertSelection(server_->display, server_->atom(selection), target, place, server_->own, CurrentTime);
    XEvent event{};
    const bool answered = waitUntil(
        [&] {
            return XCheckTypedWindowEvent(server_->display, server_->own, SelectionNotify, &event) == True;
        },
        milliseconds(2000));
    if (!answered || event.xselection.property == None) return std::nullopt;
    const auto [bytes, type] = server_->property(server_->own, place, true);
    if (type != target) return std::nullopt;
    return bytes;
}

WindowId Desktop::owner(const char* selection) {
    return XGetSelectionOwner(server_->display, server_->atom(selection));
}

bool Desktop::resize(WindowId window, int width, int height) {
    XResizeWindow(server_->display, window, static_cast<unsigned>(width), static_cast<unsigned>(height));
    return waitUntil(
        [&] {
            const auto now = place(window);
            return now.width == width && now.height == height;
        },
        milliseconds(1000));
}

bool Desktop::isPlain(const Area& part) {
    const auto image = server_->read(part);
    if (!image) return true;
    const auto bytes =
        static_cast<std::size_t>(image->bytes_per_line) * static_cast<std::size_t>(image->height);
    const auto pixel = static_cast<std::size_t>(image->bits_per_pixel / 8);
    return std::memcmp(image->data, image->data + pixel, bytes - pixel) == 0;
}

void Desktop::screenshot(const std::filesystem::path& file) { screenshot(file, place(server_->root)); }

void Desktop::screenshot(const std::filesystem::path& file, const Area& part) {
    const auto image = server_->read(part);
    if (!image) throw std::runtime_error("The screen cannot be read.");
    const int width = image->width, height = image->height;
    GdkPixbuf* picture = gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, width, height);
    for (int y = 0; y < height; ++y) {
        guchar* row = gdk_pixbuf_get_pixels(picture) + y * gdk_pixbuf_get_rowstride(picture);
        for (int x = 0; x < width; ++x) {
            const unsigned long colour = XGetPixel(image.get(), x, y);
            for (const int shift : {16, 8, 0})
                *row++ = static_cast<guchar>(colour >> shift & 0xFF);
        }
    }
    const gboolean saved = gdk_pixbuf_save(picture, file.c_str(), "png", nullptr, nullptr);
    g_object_unref(picture);
    if (!saved) throw std::runtime_error("The picture cannot be written: " + file.string());
}

} // namespace testbed
