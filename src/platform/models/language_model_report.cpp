#include "platform/models/language_model_report.h"

#include "platform/listening_sockets.h"
#include "platform/models/model_finder.h"
#include "platform/models/server_look.h"
#include "platform/models/settings/model_settings.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include <memory>
#include <utility>
#include <variant>

namespace platform {
namespace {

namespace json = boost::json;

void addServers(const ServerLook& look, LanguageModelReport& report) {
    const auto served = look.served();
    for (const auto& entry : look.entries()) {
        const auto url = entry.server.address.url();
        if (!served && entry.server.isChosen) continue; // the report's own sentence is about it
        if (!served || served->server != entry.server) {
            const bool isReady = entry.state.kind == ServerState::Kind::ready;
            report.others.push_back(
                {url, isReady ? "The model server at " + entry.server.address.shown() + " could answer too."
                              : entry.state.sentence});
            continue;
        }
        report.model = served->models.front();
        report.address = url;
        report.isOnThisComputer = entry.server.address.isOnThisComputer();
        report.isChosen = entry.server.isChosen;
        if (entry.userId) report.user = accountName(*entry.userId);
    }
}

} // namespace

LanguageModelReport reportLanguageModel() {
    LanguageModelReport report;
    const auto settings = readModelSettings();
    report.settings = settings.source;
    const auto look =
        std::make_shared<ServerLook>(settings.settings, [](const auto&) { return KnownServer(); });
    if (settings.problem.empty()) {
        look->start();
        look->waitForAll();
        addServers(*look, report);
    }
    const auto choice = choiceOf(settings, *look);
    const auto* reason = std::get_if<SystemLanguageModel::UnavailableReason>(&choice);
    report.available = reason == nullptr;
    if (reason) report.detail = reason->description;
    return report;
}

std::string inWords(const LanguageModelReport& report) {
    std::string words;
    if (report.available) {
        words = "The model " + report.model + " answers. Its server is at " + report.address;
        words += report.isOnThisComputer ? ", on this computer"
                                         : ", on another computer; what is sent there is encrypted";
        if (!report.user.empty()) words += ", and belongs to the user " + report.user;
        words += report.isChosen ? ".\nIt has been chosen in " + report.settings + ".\n"
                                 : ".\nIt was found by itself. To choose another, run: quillmark-host "
                                   "--language-model ADDRESS [MODEL]\n";
    } else {
        words = report.detail + '\n';
    }
    if (!report.others.empty())
        words += report.available ? "\nOther servers:\n" : "\nServers that were looked for:\n";
    for (const auto& server : report.others)
        words += "  " + server.whyNot + '\n';
    return words;
}

std::string inJson(const LanguageModelReport& report) {
    json::array others;
    for (const auto& [address, whyNot] : report.others)
        others.push_back({{"address", address}, {"why_not", whyNot}});
    json::object object{{"state", report.available ? "available" : "unavailable"},
                        {"settings", report.settings}};
    if (report.available) {
        object["model"] = report.model;
        object["address"] = report.address;
        object["on_this_computer"] = report.isOnThisComputer;
        object["user"] = report.user;
        object["chosen"] = report.isChosen;
    } else {
        object["detail"] = report.detail;
    }
    object["others"] = std::move(others);
    return json::serialize(object) + '\n';
}

} // namespace platform
