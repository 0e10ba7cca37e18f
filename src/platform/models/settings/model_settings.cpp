#include "platform/models/settings/model_settings.h"

#include "platform/models/settings/settings_file.h"
#include "platform/settings_folder.h"

#include <cstdlib>

namespace platform {
namespace {

constexpr std::uint16_t ollamaPort = 11434;

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

// The variables of other programs redirect text without anybody noticing, so they count only when asked for.
ReadSettings settingsFromEnvironment() {
    ReadSettings read;
    read.source = "the environment";
    auto& settings = read.settings;
    settings.model = variable("OPENAI_MODEL");
    if (const auto url = variable("OPENAI_BASE_URL"); !url.empty()) {
        settings.address = readServerAddress(url);
        settings.key = variable("OPENAI_API_KEY");
        if (!settings.address)
            read.problem = "OPENAI_BASE_URL is not the address of a model server. Set it to one such as "
                           "http://127.0.0.1:8080/v1, or unset it.";
    }
    // Where Ollama listens, which reads the same variable: an address elsewhere is none that text may go to.
    const auto ollama = readServerAddress(variable("OLLAMA_HOST"), ollamaPort);
    if (ollama && ollama->isOnThisComputer()) settings.ollama = ollama;
    return read;
}

} // namespace

std::string problemWith(const ServerAddress& address) {
    if (address.encrypted || address.isOnThisComputer()) return "";
    return "The model server at " + address.shown() +
           " is on another computer, and text leaves this one encrypted only. Use an address that begins "
           "with https://.";
}

std::filesystem::path modelSettingsFile() { return settingsFolder() / "language-model.conf"; }

ReadSettings readModelSettings() {
    const bool fromEnvironment = variable("QUILLMARK_LANGUAGE_MODEL_FROM_ENVIRONMENT") == "1";
    auto read = fromEnvironment ? settingsFromEnvironment() : readSettingsFile(modelSettingsFile());
    if (read.problem.empty() && read.settings.address) read.problem = problemWith(*read.settings.address);
    return read;
}

} // namespace platform
