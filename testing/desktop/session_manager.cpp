#include "testing/desktop/session_manager.h"

#include "testing/desktop/wait.h"

#include <X11/ICE/ICElib.h>
#include <X11/SM/SMlib.h>
#include <poll.h>

#include <array>
#include <cstdlib>
#include <deque>
#include <span>
#include <stdexcept>

// Of libICE, in no header of its: a manager that is not to be reached from outside calls it.
extern "C" int _IceTransNoListen(const char* protocol);

namespace testbed {

namespace {

bool readable(int descriptor) {
    pollfd socket{descriptor, POLLIN, 0};
    return poll(&socket, 1, 0) == 1;
}

} // namespace

struct SessionManager::Server {
    std::span<IceListenObj> doors;
    IceConn connection = nullptr;
    SmsConn program = nullptr;
    std::deque<std::string> said;
    std::map<std::string, std::vector<std::string>> properties;

    static Server& of(SmPointer server) { return *static_cast<Server*>(server); }
    static void heard(SmPointer server, const char* what) { of(server).said.emplace_back(what); }

    static Status welcome(SmsConn joining, SmPointer server, unsigned long* mask, SmsCallbacks* callbacks,
                          char**) {
        of(server).program = joining;
        *mask = 0x3FF; // all of them
        callbacks->register_client = {[](SmsConn who, SmPointer self, char*) {
                                          SmsRegisterClientReply(who, SmsGenerateClientID(who));
                                          heard(self, "joined");
                                          SmsSaveYourself(who, SmSaveLocal, False, SmInteractStyleNone,
                                                          False);
                                          return Status{1};
                                      },
                                      server};
        callbacks->interact_request = {[](SmsConn who, SmPointer self, int) {
                                           heard(self, "asks to interact");
                                           SmsInteract(who);
                                       },
                                       server};
        callbacks->interact_done = {[](SmsConn, SmPointer self, Bool refuses) {
                                        heard(self, refuses ? "refuses" : "has interacted");
                                    },
                                    server};
        callbacks->save_yourself_done = {
            [](SmsConn, SmPointer self, Bool success) { heard(self, success ? "agrees" : "does not agree"); },
            server};
        callbacks->close_connection = {[](SmsConn who, SmPointer self, int, char**) {
                                           heard(self, "leaves");
                                           SmsCleanUp(who);
                                           IceCloseConnection(of(self).connection);
                                           of(self).connection = nullptr;
                                       },
                                       server};
        callbacks->save_yourself_request = {[](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {}, server};
        callbacks->save_yourself_phase2_request = {[](SmsConn, SmPointer) {}, server};
        callbacks->set_properties = {[](SmsConn, SmPointer self, int count, SmProp** given) {
                                         of(self).remember({given, static_cast<std::size_t>(count)});
                                     },
                                     server};
        callbacks->delete_properties = {[](SmsConn, SmPointer, int, char**) {}, server};
        callbacks->get_properties = {[](SmsConn, SmPointer) {}, server};
        return 1;
    }

    void remember(std::span<SmProp*> told) {
        for (SmProp* one : told) {
            auto& values = properties[one->name];
            values.clear();
            for (const auto& value : std::span(one->vals, static_cast<std::size_t>(one->num_vals)))
                values.emplace_back(static_cast<char*>(value.value), static_cast<std::size_t>(value.length));
            SmFreeProperty(one);
        }
    }

    void listen() {
        for (auto& door : doors) {
            IceAcceptStatus status{};
            if (readable(IceGetListenConnectionNumber(door))) connection = IceAcceptConnection(door, &status);
        }
        while (connection != nullptr && readable(IceConnectionNumber(connection)))
            if (IceProcessMessages(connection, nullptr, nullptr) == IceProcessMessagesIOError) return;
    }
};

SessionManager::SessionManager() : server_(std::make_unique<Server>()) {
    std::array<char, 256> why{};
    const auto anybody = [](char*) { return Bool{True}; };
    int count = 0;
    IceListenObj* doors = nullptr;
    _IceTransNoListen("tcp");
    IceSetIOErrorHandler([](IceConn) {}); // the library's own ends the program
    if (SmsInitialize("test", "1", Server::welcome, server_.get(), anybody, int{why.size()}, why.data()) ==
            0 ||
        IceListenForConnections(&count, &doors, int{why.size()}, why.data()) == 0)
        throw std::runtime_error(std::string("There can be no session: ") + why.data());
    server_->doors = {doors, static_cast<std::size_t>(count)};
    for (auto& door : server_->doors)
        IceSetHostBasedAuthProc(door, anybody);
}

SessionManager::~SessionManager() {
    if (server_->connection != nullptr) {
        IceSetShutdownNegotiation(server_->connection, False);
        IceCloseConnection(server_->connection);
    }
    IceFreeListenObjs(static_cast<int>(server_->doors.size()), server_->doors.data());
}

std::map<std::string, std::string> SessionManager::environment() const {
    const std::unique_ptr<char, decltype(&std::free)> address{
        IceComposeNetworkIdList(static_cast<int>(server_->doors.size()), server_->doors.data()), std::free};
    return {{"SESSION_MANAGER", address.get()}};
}

std::string SessionManager::next() {
    waitUntil([&] {
        server_->listen();
        return !server_->said.empty();
    });
    if (server_->said.empty()) return "";
    auto next = std::move(server_->said.front());
    server_->said.pop_front();
    return next;
}

std::vector<std::string> SessionManager::property(const std::string& name) {
    server_->listen();
    return server_->properties[name];
}

void SessionManager::askToEnd(bool mayInteract) {
    SmsSaveYourself(server_->program, SmSaveBoth, True,
                    mayInteract ? SmInteractStyleAny : SmInteractStyleNone, False);
}

void SessionManager::callOff() { SmsShutdownCancelled(server_->program); }

void SessionManager::end() { SmsDie(server_->program); }

} // namespace testbed
