#include "platform/linux/application/command_line.h"

namespace platform {

CommandLine readCommandLine(const std::vector<std::string>& arguments) {
    CommandLine line;
    auto next = arguments.begin();
    for (; next != arguments.end() && next->starts_with('-'); ++next) {
        if (*next == "--") {
            ++next;
            break;
        }
        if (*next == "--help" || *next == "-h") {
            line.wish = CommandLine::Wish::help;
        } else if (*next == "--version") {
            line.wish = CommandLine::Wish::version;
        } else if (*next == "--trace") {
            line.trace = trace::Detail::words;
        } else if (*next == "--trace=text") {
            line.trace = trace::Detail::texts;
        } else if (*next == "--language-model") {
            line.wish = CommandLine::Wish::languageModel;
            line.languageModel.assign(next + 1, arguments.end());
        } else {
            line.wish = CommandLine::Wish::unclear;
            line.problem =
                "there is no option \"" + *next + "\"; run quillmark-host --help to see what there is.";
        }
        if (line.wish != CommandLine::Wish::run) return line;
    }
    line.interface.assign(next, arguments.end());
    return line;
}

std::string helpText() {
    return "Usage: quillmark-host [OPTIONS] [PROGRAM ARGS…]\n"
           "\n"
           "Opens the writing assistant's window and starts its interface.\n"
           "\n"
           "PROGRAM is the interface: any program that speaks the host's channels on the socket named in "
           "its\n"
           "environment as QUILLMARK_SOCKET. It may show its view in the window named as QUILLMARK_VIEW. "
           "Without\n"
           "PROGRAM, quillmark-interface is started, from beside the host or else from the PATH. The host "
           "ends when\n"
           "its interface ends, with the interface's exit status.\n"
           "\n"
           "Options:\n"
           "  -h, --help      print this and exit\n"
           "  --version       print the version and exit\n"
           "  --language-model [ADDRESS [MODEL]] [--json]\n"
           "                  print which language model answers, where it runs and whose it is, and exit; "
           "with an\n"
           "                  ADDRESS such as http://127.0.0.1:8080/v1, choose that server first, with "
           "\"automatic\"\n"
           "                  have one looked for again\n"
           "  --trace[=text]  print every message to and from the interface, and what other programs were "
           "asked and "
           "how\n"
           "                  long that took; the texts of the user only with =text\n"
           "  --              what follows is PROGRAM, even if it begins with a dash\n";
}

std::string versionText() { return "quillmark-host " QUILLMARK_VERSION "\n"; }

} // namespace platform
