#pragma once

#include "platform/language_model.h"
#include "platform/models/generation/answer.h"

#include <memory>

namespace platform {

// The stream of an answer that somebody else makes. Dropping it, like cancelling the task that waits for it,
// cancels the answer.
ResponseStream streamOf(std::shared_ptr<Answer> answer);

} // namespace platform
