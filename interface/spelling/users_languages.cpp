#include "spelling/users_languages.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string_view>
#include <utility>

namespace quillmark {
namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

// "de" for "de_AT.UTF-8"; empty for "C".
std::string languageOf(std::string_view locale) {
    const auto code = locale.substr(0, locale.find_first_of("_.@"));
    return code == "C" || code == "POSIX" ? std::string() : std::string(code);
}

// keyboard(5) of Debian: XKBLAYOUT="us,de". Layouts have the codes of countries, and most of these
// are the code of the country's language too: all but the ones below.
std::string languageOfKeyboard() {
    using Pair = std::pair<std::string_view, std::string_view>;
    static constexpr std::array<Pair, 12> others{{{"us", "en"},
                                                  {"gb", "en"},
                                                  {"au", "en"},
                                                  {"nz", "en"},
                                                  {"at", "de"},
                                                  {"br", "pt"},
                                                  {"cz", "cs"},
                                                  {"dk", "da"},
                                                  {"gr", "el"},
                                                  {"latam", "es"},
                                                  {"se", "sv"},
                                                  {"ua", "uk"}}};
    constexpr std::string_view name = "XKBLAYOUT=";
    std::ifstream file("/etc/default/keyboard");
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with(name)) continue;
        std::erase(line, '"');
        const auto layout = line.substr(name.size(), line.find(',') - name.size());
        const auto* other = std::ranges::find(others, layout, &Pair::first);
        return other != others.end() ? std::string(other->second) : layout;
    }
    return {};
}

} // namespace

std::vector<std::string> usersLanguages() {
    std::vector<std::string> codes;
    const auto add = [&](const std::string& code) {
        if (!code.empty() && std::ranges::find(codes, code) == codes.end()) codes.push_back(code);
    };
    std::istringstream list(variable("LANGUAGE"));
    for (std::string locale; std::getline(list, locale, ':');)
        add(languageOf(locale));
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LC_MESSAGES", "LANG"})
        add(languageOf(variable(name)));
    if (codes.empty()) add(languageOfKeyboard());
    return codes;
}

} // namespace quillmark
