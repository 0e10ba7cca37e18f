#include "platform/models/language_model_command.h"

#include "platform/models/language_model_report.h"
#include "platform/models/settings/settings_file.h"

#include <algorithm>
#include <cstdio>

namespace platform {
namespace {

constexpr int answers = 0, doesNotAnswer = 1, unclear = 2;

int complain(const std::string& problem) {
    std::fprintf(stderr, "quillmark-host: %s\n", problem.c_str());
    return unclear;
}

// A key belongs to one server and goes to no other. Empty, or what went wrong.
std::string choose(const std::string& address, const std::string& model) {
    auto settings = readSettingsFile(modelSettingsFile()).settings;
    const auto before = settings.address;
    settings.address.reset();
    settings.model = model;
    if (address != "automatic") {
        settings.address = readServerAddress(address);
        if (!settings.address)
            return address +
                   " is not the address of a model server, such as http://127.0.0.1:8080/v1; \"automatic\" "
                   "has one looked for again.";
        if (auto problem = problemWith(*settings.address); !problem.empty()) return problem;
    }
    if (settings.address != before) settings.key.clear();
    return writeSettingsFile(modelSettingsFile(), settings);
}

} // namespace

int languageModelCommand(const std::vector<std::string>& arguments) {
    auto words = arguments;
    const bool asJson = std::erase(words, "--json") > 0;
    const auto option =
        std::ranges::find_if(words, [](const std::string& word) { return word.starts_with('-'); });
    if (option != words.end() || words.size() > 2)
        return complain(
            "after --language-model come an address, a model and --json, each of which may be left out.");
    if (!words.empty())
        if (const auto problem = choose(words.front(), words.size() == 2 ? words.back() : "");
            !problem.empty())
            return complain(problem);
    const auto report = reportLanguageModel();
    std::fputs((asJson ? inJson(report) : inWords(report)).c_str(), stdout);
    return report.available ? answers : doesNotAnswer;
}

} // namespace platform
