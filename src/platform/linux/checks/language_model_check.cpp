#include "platform/linux/checks/language_model_check.h"

#include "platform/models/language_model_report.h"

namespace platform {

using Grade = Finding::Grade;

Finding checkLanguageModel() {
    const std::string name = "language-model";
    const auto report = reportLanguageModel();
    if (!report.available)
        return {name, Grade::degraded, "none answers", "Until one does, only spelling is corrected.",
                report.detail};
    const std::string found = (report.model.empty() ? "one" : report.model) + " at " + report.address;
    return {name, Grade::good,
            found + (report.isOnThisComputer ? ", on this computer" : ", on another computer"), "", ""};
}

} // namespace platform
