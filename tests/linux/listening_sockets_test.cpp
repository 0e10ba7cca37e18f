#include "platform/linux/base/file_descriptor.h"
#include "platform/listening_sockets.h"

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <ifaddrs.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <memory>
#include <optional>
#include <string>

namespace platform {
namespace {

// A socket that listens at an address, whatever port is free there.
struct Listener {
    explicit Listener(const std::string& address) {
        sockaddr_in6 six{};
        sockaddr_in four{};
        const bool isSix = inet_pton(AF_INET6, address.c_str(), &six.sin6_addr) == 1;
        if (!isSix) inet_pton(AF_INET, address.c_str(), &four.sin_addr);
        six.sin6_family = AF_INET6;
        four.sin_family = AF_INET;
        auto* where = isSix ? reinterpret_cast<sockaddr*>(&six) : reinterpret_cast<sockaddr*>(&four);
        socklen_t size = isSix ? sizeof six : sizeof four;
        socket = FileDescriptor(::socket(where->sa_family, SOCK_STREAM, 0));
        works = bind(socket.number(), where, size) == 0 && listen(socket.number(), 1) == 0 &&
                getsockname(socket.number(), where, &size) == 0;
        port = ntohs(isSix ? six.sin6_port : four.sin_port);
    }

    // What the system says of it.
    std::optional<ListeningSocket> found() const {
        for (const auto& each : listeningSockets())
            if (each.port == port) return each;
        return std::nullopt;
    }

    FileDescriptor socket;
    bool works = false;
    std::uint16_t port = 0;
};

std::optional<std::string> addressOnTheNetwork() {
    ifaddrs* all = nullptr;
    if (getifaddrs(&all) != 0) return std::nullopt;
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> owner(all, freeifaddrs);
    for (const auto* each = all; each; each = each->ifa_next) {
        if (!each->ifa_addr || each->ifa_addr->sa_family != AF_INET) continue;
        const auto address = reinterpret_cast<const sockaddr_in*>(each->ifa_addr)->sin_addr;
        if (ntohl(address.s_addr) >> IN_CLASSA_NSHIFT != IN_LOOPBACKNET) return inet_ntoa(address);
    }
    return std::nullopt;
}

TEST(ListeningSockets, AreThoseThatTheLoopbackReaches) {
    for (const char* address : {"127.0.0.1", "127.0.0.9", "0.0.0.0", "::1", "::", "::ffff:127.0.0.1"}) {
        const Listener listener(address);
        if (!listener.works) continue; // no IPv6 here
        EXPECT_EQ(listener.found(),
                  (ListeningSocket{listener.port, ListeningSocket::Owner::thisUser, geteuid()}))
            << address;
    }
    if (const auto address = addressOnTheNetwork()) {
        const Listener elsewhere(*address);
        EXPECT_TRUE(elsewhere.works);
        EXPECT_EQ(elsewhere.found(), std::nullopt) << *address;
    }
}

TEST(ListeningSockets, BelongToWhoMadeThem) {
    if (geteuid() != 0) GTEST_SKIP() << "only root can listen as somebody else";
    using Owner = ListeningSocket::Owner;
    for (const auto& [user, owner] :
         {std::pair<uid_t, Owner>(101, Owner::system), {12345, Owner::anotherUser}}) {
        ASSERT_EQ(seteuid(user), 0);
        const Listener listener("127.0.0.1");
        ASSERT_EQ(seteuid(0), 0);
        EXPECT_EQ(listener.found(), (ListeningSocket{listener.port, owner, user}));
    }
}

} // namespace
} // namespace platform
