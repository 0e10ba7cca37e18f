// What the interface is told about the model. Nothing is remembered between two calls.
#include "model/system_model_bridge.h"
#include "platform/language_model.h"
#include "platform/process_info.h"

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

using platform::SystemLanguageModel;

namespace {

std::string_view codeOf(const SystemLanguageModel::UnavailableReason& reason) {
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 3> codes{{
        {"deviceNotEligible", "no_device"},
        {"appleIntelligenceNotEnabled", "not_enabled"},
        {"modelNotReady", "model_not_ready"},
    }};
    for (const auto& [caseName, code] : codes) {
        if (reason.caseName == caseName) return code;
    }
    return "not_supported";
}

std::string systemVersion() { return platform::ProcessInfo::processInfo().operatingSystemVersionString(); }

} // namespace

bool SystemModelBridge::systemHasLanguageModel() {
    return platform::ProcessInfo::processInfo().isOperatingSystemAtLeast({26, 0, 0});
}

flutter::EncodableMap SystemModelBridge::availability() const {
    if (!systemHasLanguageModel()) {
        return {{"state", "unavailable"},
                {"reason", "not_supported"},
                {"detail", "macOS 26 with Apple Intelligence required"},
                {"os_build", systemVersion()}};
    }
    const auto availability = SystemLanguageModel::defaultModel().availability();
    if (const auto* reason = std::get_if<SystemLanguageModel::UnavailableReason>(&availability)) {
        return {{"state", "unavailable"},
                {"reason", codeOf(*reason)},
                {"detail", reason->description},
                {"os_build", systemVersion()},
                {"sdk", "FoundationModels"}};
    }
    return {{"state", "available"}, {"os_build", systemVersion()}, {"sdk", "FoundationModels"}};
}
