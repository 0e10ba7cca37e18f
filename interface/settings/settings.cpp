#include "settings/settings.h"

namespace quillmark {

std::vector<Instruction> instructionsOf(const Settings& settings) {
    return settings.instructions.empty() ? defaultInstructions() : settings.instructions;
}

} // namespace quillmark
