#include "platform/linux/application/session_membership.h"

#include "platform/linux/application/session_properties.h"
#include "platform/linux/base/handle.h"
#include "platform/main_queue.h"

#include <X11/ICE/ICElib.h>
#include <gdk/gdkx.h>
#include <glibmm/main.h>
#include <poll.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <utility>

namespace platform {
namespace {

constexpr unsigned long allCallbacks =
    SmcSaveYourselfProcMask | SmcDieProcMask | SmcSaveCompleteProcMask | SmcShutdownCancelledProcMask;

// The library's own handlers print a message and end the program.
void ignoreProtocolErrors() {
    IceSetErrorHandler([](IceConn, Bool, int, unsigned long, int, int, IcePointer) {});
    IceSetIOErrorHandler([](IceConn) {});
    SmcSetErrorHandler([](SmcConn, Bool, int, unsigned long, int, int, SmPointer) {});
}

} // namespace

SmcConn connectToSession(const std::string& clientId) {
    ignoreProtocolErrors();
    SmcCallbacks none{{[](SmcConn, SmPointer, int, Bool, int, Bool) {}, nullptr},
                      {[](SmcConn, SmPointer) {}, nullptr},
                      {[](SmcConn, SmPointer) {}, nullptr},
                      {[](SmcConn, SmPointer) {}, nullptr}};
    std::string former = clientId;
    char* identifier = nullptr;
    std::array<char, 256> whyNot{};
    const SmcConn connection = SmcOpenConnection(nullptr, nullptr, SmProtoMajor, SmProtoMinor, allCallbacks,
                                                 &none, former.empty() ? nullptr : former.data(), &identifier,
                                                 static_cast<int>(whyNot.size()), whyNot.data());
    std::free(identifier);
    return connection;
}

SessionMembership::SessionMembership(SmcConn connection, SessionCalls calls, std::vector<std::string> restart)
    : connection_(connection), calls_(std::move(calls)) {
    SmcCallbacks callbacks{
        {[](SmcConn, SmPointer self, int, Bool sessionEnds, int style, Bool) {
             static_cast<SessionMembership*>(self)->saveYourself(sessionEnds != False,
                                                                 style == SmInteractStyleAny);
         },
         this},
        {[](SmcConn, SmPointer self) { static_cast<SessionMembership*>(self)->dies(); }, this},
        {[](SmcConn, SmPointer) {}, this},
        {[](SmcConn, SmPointer self) { static_cast<SessionMembership*>(self)->calledOff(); }, this}};
    SmcModifyCallbacks(connection_, allCallbacks, &callbacks);
    const auto clone = restart;
    if (const Handle<char, std::free> identifier(SmcClientID(connection_)); identifier) {
        gdk_x11_set_sm_client_id(identifier.get()); // on the window, so that the manager knows whose it is
        restart.insert(restart.begin() + 1, {"--sm-client-id", identifier.get()});
    }
    describeProgram(connection_, clone, restart);
    setRestartStyle(connection_, RestartStyle::whenItEnds);
    messages_ = Glib::signal_io().connect([this](Glib::IOCondition) { return readMessages(); },
                                          IceConnectionNumber(SmcGetIceConnection(connection_)),
                                          Glib::IO_IN | Glib::IO_HUP | Glib::IO_ERR);
}

SessionMembership::~SessionMembership() {
    messages_.disconnect();
    if (question_ == Question::none) {
        // Whoever quits the program while the session goes on does not want it back.
        setRestartStyle(connection_, RestartStyle::ifItWasRunning);
    } else {
        answer(true);
        awaitEndOfSession();
    }
    SmcCloseConnection(connection_, 0, nullptr);
}

// False when the manager is gone, and with it whatever it asked.
bool SessionMembership::readMessages() {
    if (IceProcessMessages(SmcGetIceConnection(connection_), nullptr, nullptr) == IceProcessMessagesSuccess)
        return true;
    if (std::exchange(question_, Question::none) != Question::none) MainQueue::async(calls_.calledOff);
    return false;
}

// The manager sends this also to a program that has just joined, and to save a session that goes on.
void SessionMembership::saveYourself(bool sessionEnds, bool mayAskForTurn) {
    if (!sessionEnds) return SmcSaveYourselfDone(connection_, True);
    const auto ourTurn = [](SmcConn, SmPointer self) {
        static_cast<SessionMembership*>(self)->ask(Question::askedInTurn);
    };
    if (mayAskForTurn && SmcInteractRequest(connection_, SmDialogNormal, ourTurn, this) != 0)
        question_ = Question::turnAwaited;
    else
        ask(Question::askedWithoutTurn);
}

void SessionMembership::ask(Question question) {
    isDecided_ = false;
    question_ = question;
    MainQueue::async(calls_.endAsked);
}

void SessionMembership::answer(bool agreed) {
    if (question_ == Question::none || (question_ == Question::turnAwaited && !agreed)) return;
    if (question_ == Question::askedInTurn) SmcInteractDone(connection_, agreed ? False : True);
    SmcSaveYourselfDone(connection_, agreed ? True : False);
    question_ = Question::none;
}

// The manager forgets a program that leaves earlier, and does not start it at the next login (xfce4-session
// 4.18).
void SessionMembership::awaitEndOfSession() {
    constexpr std::chrono::seconds longestSaving{60}; // what xfce4-session gives all programs together
    const auto end = std::chrono::steady_clock::now() + longestSaving;
    pollfd message{IceConnectionNumber(SmcGetIceConnection(connection_)), POLLIN, 0};
    while (!isDecided_) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        if (left.count() <= 0) return;
        if (poll(&message, 1, static_cast<int>(left.count())) > 0 && !readMessages()) return;
    }
}

// The session ends now.
void SessionMembership::dies() {
    isDecided_ = true;
    MainQueue::async(calls_.endAsked);
}

// Another program has refused. The manager wants an answer from those that have not given one yet.
void SessionMembership::calledOff() {
    isDecided_ = true;
    if (question_ == Question::none) return;
    if (question_ == Question::askedInTurn) SmcInteractDone(connection_, False);
    SmcSaveYourselfDone(connection_, False);
    question_ = Question::none;
    MainQueue::async(calls_.calledOff);
}

} // namespace platform
