#include "closing.h"

#include "language/main_phrases.h"

namespace quillmark {

void Closing::close() {
    if (actions_.hasIcon()) return actions_.hideToIcon();
    actions_.ask(say(phrases::closeOrQuit),
                 {{say(phrases::hide), actions_.hide}, {say(phrases::quitNow), [this] { quit(); }}});
}

void Closing::quit() {
    if (!actions_.workIsUnfinished()) return actions_.quit();
    actions_.ask(say(phrases::quitUnfinished),
                 {{say(phrases::stay), actions_.stay}, {say(phrases::quitNow), actions_.quit}});
}

} // namespace quillmark
