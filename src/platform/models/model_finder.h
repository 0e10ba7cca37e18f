#pragma once

#include "platform/language_model.h"
#include "platform/models/server/model_server.h"
#include "platform/models/server_look.h"
#include "platform/models/settings/model_settings.h"

#include <functional>
#include <string>
#include <variant>

// Which model answers. Looks for it anew, but one look serves all who ask until a second after its outcome.
// Any thread.
namespace platform {

using ModelChoice = std::variant<ServedModel, SystemLanguageModel::UnavailableReason>;

// As far as it is known within 300 ms; blocks for as long. Not for the background threads.
ModelChoice findModel();

// The same for a generation, which can wait longer. Calls back once, on a background thread or the main one.
void findModelForGeneration(std::function<void(const ModelChoice&)> found);

// What a look comes to by now.
ModelChoice choiceOf(const ReadSettings& settings, const ServerLook& look);

// A model of that server takes no prompts: it is not asked again while another is there.
void rememberUnusable(const ServerAddress& server, const std::string& model);

// A server was lost: whoever asks next is not told what the last look saw.
void lookAnew();

} // namespace platform
