#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Programs that take connections on this computer.
namespace platform {

// A socket that can be reached at one of the loopback addresses.
struct ListeningSocket {
    enum class Owner { thisUser, system, anotherUser };

    std::uint16_t port = 0;
    Owner owner = Owner::anotherUser;
    std::uint32_t userId = 0;

    bool operator==(const ListeningSocket&) const = default;
};

// All of them at this moment; none when the system does not tell. Any thread.
std::vector<ListeningSocket> listeningSockets();

// The account's name, or its number where it has none. May ask a directory server.
std::string accountName(std::uint32_t userId);

} // namespace platform
