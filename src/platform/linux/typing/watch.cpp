#include "platform/linux/typing/watch.h"

#include "platform/linux/typing/delivery.h"
#include "platform/linux/x11/base/event_listener.h"
#include "platform/linux/x11/keyboard/frozen_input.h"
#include "platform/linux/x11/pasteboard/held_requests.h"

namespace platform {
namespace {

using std::chrono::milliseconds;

// How often a place is looked at again when something has happened beside it meanwhile.
constexpr int mostLooks = 3;

// From the keystroke to the program's question for what it is to paste. GTK, Qt, Chromium and Firefox take
// 1 to 7 ms when they are not busy; LibreOffice takes 250 ms where the machine is.
constexpr milliseconds longestWait{300};

// GTK takes this long on a busy machine. A program that waits for the pasteboard and does nothing else
// meanwhile gives no answer at all.
constexpr milliseconds longestAnswer{40};

// From the keystroke to the pasted text, with all that is asked in between. A program that takes so long is
// busy: it would show a key no earlier.
constexpr milliseconds longestPaste = longestWait + 3 * longestAnswer;

KeystrokeGuard::Watch* living = nullptr;

} // namespace

KeystrokeGuard::Watch::Watch(pid_t process, Against against) : process_(process), against_(against) {
    living = this;
    const auto element = typing::focusedElement(process);
    role_ = typing::roleOf(element);
    if (against == Against::anyChange) {
        input_.emplace([this](x11::RawInput::Kind kind, unsigned, bool) {
            inputSeen_ |= kind != x11::RawInput::Kind::keyUp;
        });
        events_.emplace(element);
        place_ = typing::placeIn(process);
        events_->setText(place_.text.value_or(""));
    }
    window_ = x11::frontWindow();
}

KeystrokeGuard::Watch* KeystrokeGuard::Watch::current() { return living; }

KeystrokeGuard::Watch::~Watch() { living = nullptr; }

bool KeystrokeGuard::Watch::deliver() {
    living = nullptr;
    const typing::Delivery delivery(keystrokes, role_);
    if (against_ == Against::otherWindows) {
        const bool typed = delivery.deliver([this] { return isInFront(); });
        x11::awaitTyped();
        return typed;
    }
    x11::FrozenInput input;
    if (!placeIsUnchanged()) return false;
    showsFocus_ = typing::hasFocusSoon(place_.element, longestAnswer).value_or(false);
    selection::HeldRequests requests(static_cast<std::uint32_t>(x11::focusedWindow()), longestWait);
    // What a person types after the keystroke would come before the paste.
    const auto freezeIfRight = [this, &input] {
        if (!isInFront() || inputWasSeen()) return false;
        input.begin(longestPaste);
        return true;
    };
    if (!delivery.deliver(freezeIfRight)) return false;
    input.awaitBegun(); // what came before it shows in the place
    return decide(requests);
}

bool KeystrokeGuard::Watch::isInFront() const {
    const auto front = x11::frontWindow();
    // Openbox names no window for a moment even where the focus stays.
    if (!front || !window_) return x11::windowProcess(x11::focusedWindow()) == process_;
    return front == window_ && front->process == process_;
}

// A look asks several questions; the events tell what has changed between them.
bool KeystrokeGuard::Watch::placeIsUnchanged() {
    for (int look = 0; look < mostLooks; ++look) {
        const auto before = events_->sinceLast();
        // A caret that has moved and come back is no change: the place says where it is by now.
        if (!before || before->toText) return false;
        if (typing::placeIn(process_) != place_) return false;
        const auto meanwhile = events_->sinceLast();
        if (!meanwhile || meanwhile->toText || meanwhile->toSelection) return false;
        if (!meanwhile->anything) return true;
    }
    return true;
}

bool KeystrokeGuard::Watch::inputWasSeen() {
    x11::EventListener::handlePending();
    return inputSeen_;
}

// The program asks for what it is to paste when it gets the keystroke, and puts it wherever its focus and
// selection are once it has it. Until then the place may still change. True also for a program that has not
// asked yet.
bool KeystrokeGuard::Watch::decide(selection::HeldRequests& requests) {
    if (!requests.areMade()) return true;
    // GTK 3 tells of a new focus only when it has nothing else to do.
    const bool lostFocus = showsFocus_ && !typing::hasFocusSoon(place_.element, longestAnswer).value_or(true);
    const auto happened = events_->sinceLastUnasked();
    const bool isRight = !lostFocus && mayPaste(happened);
    // What has removed the selected text must get what is to replace it.
    const bool mayMove = happened.removed || typing::tellsSelectionLate(place_.element);
    return requests.deliverIf([isRight, mayMove, byThen = events_->sinceLastByThen()] {
        const auto since = byThen();
        return isRight && !since.focusElsewhere && (mayMove || !(since.toText || since.toSelection));
    });
}

bool KeystrokeGuard::Watch::mayPaste(const typing::Happened& happened) const {
    if (happened.focusElsewhere) return false;
    const bool selectsAll = keystrokes.size() > 1;
    // LibreOffice removes the selected text and then asks for what is to replace it.
    if (happened.removed)
        return selectsAll ? happened.removed->location == 0 : happened.removed == place_.selection;
    if (happened.toText) return false;
    if (!selectsAll) return !happened.toSelection;
    return typing::tellsSelectionLate(place_.element) || allIsSelected();
}

// Qt answers nothing while it waits for the pasteboard, and does nothing else either.
bool KeystrokeGuard::Watch::allIsSelected() const {
    const auto selected = typing::selectedTextSoon(place_.element, longestAnswer);
    return !selected || !place_.text || selected == place_.text;
}

KeystrokeGuard::KeystrokeGuard(pid_t process, Against against)
    : watch_(std::make_unique<Watch>(process, against)) {}

KeystrokeGuard::~KeystrokeGuard() = default;

bool KeystrokeGuard::deliver() { return watch_->deliver(); }

} // namespace platform
