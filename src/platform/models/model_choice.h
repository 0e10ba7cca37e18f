// Which model answers: a model server.
#pragma once

#include "platform/language_model.h"
#include "platform/models/server/probe.h"

#include <functional>
#include <variant>

namespace platform {

using ModelChoice = std::variant<ServedModel, SystemLanguageModel::UnavailableReason>;

// As it is at this moment, found out within 300 ms. Any thread but the background ones.
ModelChoice chooseModel();

// The same for a generation that starts: generations that start within a second of each other share one
// answer. Calls back on a thread of its own.
void chooseModelForGeneration(std::function<void(const ModelChoice&)> chosen);

} // namespace platform
