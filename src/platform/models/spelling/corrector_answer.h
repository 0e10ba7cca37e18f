#pragma once

#include "platform/models/generation/answer.h"

#include <memory>
#include <string>

namespace platform {

// Answers with the text itself, its spelling corrected: one piece for each word, one word of each answer in
// turn. Any thread.
void answerFromCorrector(std::string text, std::shared_ptr<Answer> answer);

} // namespace platform
