#include "testing/soak/footprint.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace soak {

namespace {

constexpr long mostGrowth = 2048; // kilobytes

} // namespace

Footprint footprint(pid_t process) {
    const auto folder = std::filesystem::path("/proc") / std::to_string(process);
    Footprint result;
    std::ifstream status(folder / "status");
    for (std::string word; status >> word;)
        if (word == "VmRSS:") status >> result.kilobytes;
    std::error_code forbidden;
    if (std::filesystem::directory_iterator open(folder / "fd", forbidden); !forbidden)
        result.descriptors = static_cast<std::size_t>(std::distance(begin(open), end(open)));
    return result;
}

std::string inWords(const Footprint& footprint) {
    return std::to_string(footprint.kilobytes) + " KB, " +
           (footprint.descriptors ? std::to_string(*footprint.descriptors) : "unknown") + " descriptors";
}

std::string growth(const Footprint& before, const Footprint& after) {
    std::string grown;
    if (after.kilobytes > before.kilobytes + mostGrowth) grown += "the memory ";
    if (after.descriptors > before.descriptors) grown += "the descriptors ";
    return grown.empty() ? grown : grown + "grew from " + inWords(before) + " to " + inWords(after);
}

} // namespace soak
