#include "settings/settings.h"

#include <glib.h>

namespace quillmark {

std::vector<Instruction> instructionsOf(const Settings& settings) {
    return settings.instructions.empty() ? defaultInstructions() : settings.instructions;
}

Language languageIn(const Settings& settings) {
    switch (settings.language) {
    case ChosenLanguage::english:
        return Language::english;
    case ChosenLanguage::korean:
        return Language::korean;
    case ChosenLanguage::likeTheDesktop:
        return languageOf(g_get_language_names()[0]);
    }
    return Language::english;
}

} // namespace quillmark
