// Whether the language model that would answer may be given the person's texts.
#pragma once

#include "model/status.h"
#include "settings/settings.h"

#include <string>

namespace quillmark {

enum class ModelConsent { given, declined, notAsked };

// A server that the person has chosen may have them; of one that was found by itself they are asked once.
ModelConsent consentTo(const ModelStatus& status, const Settings& settings);

// The model as it counts for the person.
std::string inWords(const ModelStatus& status, const Settings& settings);

// Remembers the answer for that server.
void setConsent(const ModelStatus& status, bool given, Settings& settings);

} // namespace quillmark
