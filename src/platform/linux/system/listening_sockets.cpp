// Asked over netlink (sock_diag(7)): /proc/net/tcp says the same, but has the kernel walk through the table
// of all connections, which takes 10 ms and more on a large computer.
#include "platform/listening_sockets.h"

#include "platform/linux/base/file_descriptor.h"

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <pwd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

namespace platform {
namespace {

// Accounts below are the system's own (SYS_UID_MAX in /etc/login.defs, the same in Debian, Fedora and Arch).
constexpr uid_t firstPerson = 1000;

struct Question {
    nlmsghdr header{};
    inet_diag_req_v2 request{};
};

bool askForListeners(const FileDescriptor& socket, int family) {
    Question question;
    question.header.nlmsg_len = sizeof question;
    question.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
    question.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    question.request.sdiag_family = static_cast<std::uint8_t>(family);
    question.request.sdiag_protocol = IPPROTO_TCP;
    question.request.idiag_states = 1U << TCP_LISTEN;
    return send(socket.number(), &question, sizeof question, 0) == sizeof question;
}

bool isLoopbackOrAny(std::uint32_t address) {
    return address == INADDR_ANY || address >> IN_CLASSA_NSHIFT == IN_LOOPBACKNET;
}

bool isReachedOnLoopback(const inet_diag_msg& entry) {
    const auto& words = entry.id.idiag_src; // in network byte order
    if (entry.idiag_family == AF_INET) return isLoopbackOrAny(ntohl(words[0]));
    if (words[0] != 0 || words[1] != 0) return false;
    if (ntohl(words[2]) == 0xFFFF) return isLoopbackOrAny(ntohl(words[3])); // ::ffff:127.0.0.1
    return words[2] == 0 && ntohl(words[3]) <= 1;                           // :: and ::1
}

ListeningSocket::Owner ownerOf(uid_t user) {
    if (user == geteuid()) return ListeningSocket::Owner::thisUser;
    return user < firstPerson ? ListeningSocket::Owner::system : ListeningSocket::Owner::anotherUser;
}

// False once the last message has been read.
bool readListeners(const FileDescriptor& socket, std::vector<ListeningSocket>& sockets) {
    alignas(nlmsghdr) std::array<char, 32768> buffer;
    const ssize_t received = recv(socket.number(), buffer.data(), buffer.size(), 0);
    if (received <= 0) return false;
    auto left = static_cast<std::uint32_t>(received);
    for (const auto* header = reinterpret_cast<const nlmsghdr*>(buffer.data()); NLMSG_OK(header, left);
         header = NLMSG_NEXT(header, left)) {
        if (header->nlmsg_type != SOCK_DIAG_BY_FAMILY) return false; // the end, or an error
        const auto& entry = *static_cast<const inet_diag_msg*>(NLMSG_DATA(header));
        if (isReachedOnLoopback(entry))
            sockets.push_back({ntohs(entry.id.idiag_sport), ownerOf(entry.idiag_uid), entry.idiag_uid});
    }
    return true;
}

} // namespace

std::vector<ListeningSocket> listeningSockets() {
    std::vector<ListeningSocket> sockets;
    const FileDescriptor socket(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_SOCK_DIAG));
    for (const int family : {AF_INET, AF_INET6})
        if (socket && askForListeners(socket, family))
            while (readListeners(socket, sockets)) {
            }
    return sockets;
}

std::string accountName(std::uint32_t userId) {
    passwd account{};
    passwd* found = nullptr;
    std::array<char, 16384> words;
    if (getpwuid_r(userId, &account, words.data(), words.size(), &found) == 0 && found)
        return account.pw_name;
    return std::to_string(userId);
}

} // namespace platform
