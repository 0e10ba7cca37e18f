#include "platform/linux/application/report.h"

#include "platform/linux/application/dialog.h"
#include "platform/linux/base/terminal_message.h"
#include "platform/linux/checks/sentence.h"

namespace platform {

void Report::say(const std::string& sentence) const {
    printMessage(sentence);
    if (inDialogs_) showDialog("Quillmark", asSentence(sentence), {"Close"});
}

bool Report::offersStart(const std::string& sentence) const { return choosesSecond(sentence, "Start again"); }

bool Report::offersEnd(const std::string& sentence) const {
    return choosesSecond(sentence, "End it and start again");
}

bool Report::choosesSecond(const std::string& sentence, const std::string& second) const {
    printMessage(sentence);
    return inDialogs_ && showDialog("Quillmark does not run", asSentence(sentence), {"Quit", second}) == 1;
}

} // namespace platform
