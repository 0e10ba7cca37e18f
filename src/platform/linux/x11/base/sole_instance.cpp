#include "platform/linux/x11/base/sole_instance.h"

#include "platform/linux/x11/base/errors.h"
#include "platform/linux/x11/base/event_source.h"

#include <poll.h>
#include <unistd.h>

#include <chrono>
#include <optional>
#include <utility>

namespace platform {

// A connection with a window of its own, to hold the selection or to ask its holder. The holder is asked by
// converting the selection to the target "reopen": an action, answered with an empty property.
class SoleInstance::Claim {
public:
    explicit Claim(Display* display) : display_(display) {
        window_ = XCreateSimpleWindow(display, DefaultRootWindow(display), -1, -1, 1, 1, 0, 0, 0);
        selection_ = atom("_QUILLMARK_HOST_" + std::to_string(getuid()));
        reopen_ = atom("_QUILLMARK_REOPEN");
    }
    ~Claim() {
        source_.reset();
        XCloseDisplay(display_);
    }
    Claim(const Claim&) = delete;
    Claim& operator=(const Claim&) = delete;

    // Nobody else can come between the question and the taking.
    bool take() {
        XGrabServer(display_);
        const bool free = XGetSelectionOwner(display_, selection_) == None;
        if (free) XSetSelectionOwner(display_, selection_, window_, CurrentTime);
        XUngrabServer(display_);
        XSync(display_, False);
        return free;
    }

    // True when the holder agreed, false when there is none any more; absent when it stays silent.
    std::optional<bool> askHolder() {
        XConvertSelection(display_, selection_, reopen_, reopen_, window_, CurrentTime);
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(2);
        XEvent event{};
        while (!XCheckTypedWindowEvent(display_, window_, SelectionNotify, &event)) {
            const auto left =
                std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
            if (left.count() <= 0) return std::nullopt;
            pollfd answer{ConnectionNumber(display_), POLLIN, 0};
            poll(&answer, 1, static_cast<int>(left.count()));
        }
        return event.xselection.property != None;
    }

    void listen(std::function<void()> reopen) {
        source_ = std::make_unique<x11::EventLoopSource>(
            display_, [this, reopen = std::move(reopen)](const XEvent& event) {
                if (event.type == SelectionRequest) answer(event.xselectionrequest, reopen);
            });
    }

private:
    Atom atom(const std::string& name) { return XInternAtom(display_, name.c_str(), False); }

    // The asker may be gone by now: sending to its window then fails, which must not end the program.
    void answer(const XSelectionRequestEvent& request, const std::function<void()>& reopen) {
        const bool understood = request.target == reopen_ && request.property != None;
        XEvent reply{};
        reply.xselection.type = SelectionNotify;
        reply.xselection.requestor = request.requestor;
        reply.xselection.selection = request.selection;
        reply.xselection.target = request.target;
        reply.xselection.time = request.time;
        reply.xselection.property = understood ? request.property : None;
        x11::keepErrors(display_);
        XSendEvent(display_, request.requestor, False, NoEventMask, &reply);
        XSync(display_, False);
        if (understood) reopen();
    }

    Display* display_;
    ::Window window_ = None;
    Atom selection_ = None;
    Atom reopen_ = None;
    std::unique_ptr<x11::EventLoopSource> source_;
};

SoleInstance::SoleInstance(std::unique_ptr<Claim> claim) : claim_(std::move(claim)) {}

SoleInstance::~SoleInstance() = default;

SoleInstance::Outcome SoleInstance::claim(std::function<void()> reopen,
                                          std::unique_ptr<SoleInstance>& instance) {
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) return Outcome::claimed;
    auto claim = std::make_unique<Claim>(display);
    while (!claim->take()) { // once more when the holder ended before it could answer
        const auto agreed = claim->askHolder();
        if (!agreed) return Outcome::silent;
        if (*agreed) return Outcome::reopened;
    }
    claim->listen(std::move(reopen));
    instance.reset(new SoleInstance(std::move(claim)));
    return Outcome::claimed;
}

} // namespace platform
