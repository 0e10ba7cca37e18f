#include "platform/linux/application/session_membership.h"

#include "platform/main_queue.h"

#include <X11/ICE/ICElib.h>
#include <gdk/gdkx.h>
#include <glibmm/main.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string>
#include <utility>

namespace platform {
namespace {

constexpr unsigned long allCallbacks =
    SmcSaveYourselfProcMask | SmcDieProcMask | SmcSaveCompleteProcMask | SmcShutdownCancelledProcMask;

// The library's own handlers print, and end the program.
void outliveTheManager() {
    IceSetErrorHandler([](IceConn, Bool, int, unsigned long, int, int, IcePointer) {});
    IceSetIOErrorHandler([](IceConn) {});
    SmcSetErrorHandler([](SmcConn, Bool, int, unsigned long, int, int, SmPointer) {});
}

// What a manager shows to the person, and that it is not to start the program itself next time: how it was
// started is for the person's own list of programs to say.
void introduceProgram(SmcConn connection) {
    struct Entry {
        const char* name;
        const char* type;
        std::string value;
    };
    const std::string program = g_get_prgname();
    std::array entries{
        Entry{SmProgram, SmARRAY8, program},
        Entry{SmUserID, SmARRAY8, g_get_user_name()},
        Entry{SmProcessID, SmARRAY8, std::to_string(getpid())},
        Entry{SmCloneCommand, SmLISTofARRAY8, program},
        Entry{SmRestartCommand, SmLISTofARRAY8, program},
        Entry{SmRestartStyleHint, SmCARD8, std::string(1, SmRestartNever)},
    };
    std::array<SmPropValue, entries.size()> values{};
    std::array<SmProp, entries.size()> properties{};
    std::array<SmProp*, entries.size()> all{};
    for (std::size_t i = 0; i < entries.size(); ++i) {
        auto& [name, type, value] = entries[i];
        values[i] = {static_cast<int>(value.size()), value.data()};
        properties[i] = {const_cast<char*>(name), const_cast<char*>(type), 1, &values[i]};
        all[i] = &properties[i];
    }
    SmcSetProperties(connection, static_cast<int>(all.size()), all.data());
}

} // namespace

SmcConn connectToSession() {
    outliveTheManager();
    SmcCallbacks none{{[](SmcConn, SmPointer, int, Bool, int, Bool) {}, nullptr},
                      {[](SmcConn, SmPointer) {}, nullptr},
                      {[](SmcConn, SmPointer) {}, nullptr},
                      {[](SmcConn, SmPointer) {}, nullptr}};
    char* identifier = nullptr;
    std::array<char, 256> whyNot{};
    const SmcConn connection =
        SmcOpenConnection(nullptr, nullptr, SmProtoMajor, SmProtoMinor, allCallbacks, &none, nullptr,
                          &identifier, static_cast<int>(whyNot.size()), whyNot.data());
    std::free(identifier);
    return connection;
}

SessionMembership::SessionMembership(SmcConn connection, std::function<void()> endAsked)
    : connection_(connection), endAsked_(std::move(endAsked)) {
    SmcCallbacks callbacks{
        {[](SmcConn, SmPointer self, int, Bool sessionEnds, int style, Bool) {
             static_cast<SessionMembership*>(self)->saveYourself(sessionEnds != False,
                                                                 style == SmInteractStyleAny);
         },
         this},
        {[](SmcConn, SmPointer self) { MainQueue::async(static_cast<SessionMembership*>(self)->endAsked_); },
         this},
        {[](SmcConn, SmPointer) {}, this},
        {[](SmcConn, SmPointer self) { static_cast<SessionMembership*>(self)->calledOff(); }, this}};
    SmcModifyCallbacks(connection_, allCallbacks, &callbacks);
    introduceProgram(connection_);
    if (char* identifier = SmcClientID(connection_)) {
        gdk_x11_set_sm_client_id(identifier); // on the window, so that the manager knows whose it is
        std::free(identifier);
    }
    messages_ = Glib::signal_io().connect([this](Glib::IOCondition) { return readMessages(); },
                                          IceConnectionNumber(SmcGetIceConnection(connection_)),
                                          Glib::IO_IN | Glib::IO_HUP | Glib::IO_ERR);
}

SessionMembership::~SessionMembership() {
    answer(true);
    messages_.disconnect();
    SmcCloseConnection(connection_, 0, nullptr);
}

bool SessionMembership::readMessages() {
    const auto status = IceProcessMessages(SmcGetIceConnection(connection_), nullptr, nullptr);
    return status == IceProcessMessagesSuccess; // else the manager is gone, and nobody will ask any more
}

// Also sent to whoever has just joined, and to save a session that goes on.
void SessionMembership::saveYourself(bool sessionEnds, bool mayTakeTurn) {
    if (!sessionEnds) return SmcSaveYourselfDone(connection_, True);
    const auto ourTurn = [](SmcConn, SmPointer self) {
        static_cast<SessionMembership*>(self)->put(Question::putAtOurTurn);
    };
    if (mayTakeTurn && SmcInteractRequest(connection_, SmDialogNormal, ourTurn, this) != 0)
        question_ = Question::turnAwaited;
    else
        put(Question::putWithoutTurn);
}

void SessionMembership::put(Question question) {
    question_ = question;
    MainQueue::async(endAsked_);
}

void SessionMembership::answer(bool agreed) {
    if (question_ == Question::none || (question_ == Question::turnAwaited && !agreed)) return;
    if (question_ == Question::putAtOurTurn) SmcInteractDone(connection_, agreed ? False : True);
    SmcSaveYourselfDone(connection_, agreed ? True : False);
    question_ = Question::none;
}

// Somebody else refused; whoever has not answered yet finishes without saying no.
void SessionMembership::calledOff() {
    if (question_ == Question::none) return;
    if (question_ == Question::putAtOurTurn) SmcInteractDone(connection_, False);
    SmcSaveYourselfDone(connection_, False);
    question_ = Question::none;
}

} // namespace platform
