#include "model/consent.h"

#include "language/model_phrases.h"

#include <algorithm>

namespace quillmark {

ModelConsent consentTo(const ModelStatus& status, const Settings& settings) {
    const auto holds = [&](const std::vector<std::string>& servers) {
        return std::ranges::find(servers, status.address) != servers.end();
    };
    if (!status.available || status.chosen || holds(settings.trustedServers)) return ModelConsent::given;
    return holds(settings.declinedServers) ? ModelConsent::declined : ModelConsent::notAsked;
}

std::string inWords(const ModelStatus& status, const Settings& settings) {
    const auto words = inWords(status);
    return consentTo(status, settings) == ModelConsent::declined ? say(phrases::notUsed, {words}) : words;
}

void setConsent(const ModelStatus& status, bool given, Settings& settings) {
    std::erase(settings.trustedServers, status.address);
    std::erase(settings.declinedServers, status.address);
    (given ? settings.trustedServers : settings.declinedServers).push_back(status.address);
}

} // namespace quillmark
