#include "platform/linux/application/command_line.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace platform {
namespace {

using Wish = CommandLine::Wish;
using Words = std::span<const std::string>;

// How many of the words that follow belong to the option.
enum class Takes { none, one, all };

struct Option {
    std::string_view name;
    Takes takes;
    std::string_view values; // what the help calls those words
    std::string_view help;   // lines; empty: not in the help
    void (*take)(CommandLine&, Words);
};

template <Wish wish>
void wishFor(CommandLine& line, Words) {
    line.wish = wish;
}

template <InstanceRequest request>
void ask(CommandLine& line, Words) {
    line.wish = Wish::ask;
    line.request = request;
}

template <trace::Detail detail>
void traceWith(CommandLine& line, Words) {
    line.trace = detail;
}

void chooseLanguageModel(CommandLine& line, Words words) {
    line.wish = Wish::languageModel;
    line.languageModel.assign(words.begin(), words.end());
}

constexpr std::array options{
    Option{"--background", Takes::none, "", "start without showing the window, as at login",
           [](CommandLine& line, Words) { line.background = true; }},
    Option{"--dialogs", Takes::none, "", "say in dialogs what goes wrong, as from the desktop's menu",
           [](CommandLine& line, Words) { line.dialogs = true; }},
    Option{"--sm-client-id", Takes::one, "ID", "", // the session's manager restarts the host with it
           [](CommandLine& line, Words words) { line.sessionClientId = words.front(); }},
    Option{"--trace", Takes::none, "",
           "print every message to and from the interface, and what other programs\n"
           "were asked and how long that took",
           traceWith<trace::Detail::words>},
    Option{"--trace=text", Takes::none, "", "the same, with the texts of the user",
           traceWith<trace::Detail::texts>},
    Option{"--show", Takes::none, "", "bring the running host's window to the front",
           ask<InstanceRequest::show>},
    Option{"--hide", Takes::none, "", "hide the running host's window", ask<InstanceRequest::hide>},
    Option{"--capture", Takes::none, "", "capture as the hot key does", ask<InstanceRequest::capture>},
    Option{"--pause", Takes::none, "",
           "give the hot key to other programs; once more, or --show, takes it again",
           ask<InstanceRequest::pause>},
    Option{"--quit", Takes::none, "", "quit the running host, which asks its interface first",
           ask<InstanceRequest::quit>},
    Option{"--check", Takes::none, "[--json]",
           "print what the host needs on this desktop, each good, degraded or missing,\n"
           "and what to do about it; with a PROGRAM, for that interface",
           wishFor<Wish::check>},
    Option{"--json", Takes::none, "", "", [](CommandLine& line, Words) { line.json = true; }},
    Option{"--language-model", Takes::all, "[ADDRESS [MODEL]] [--json]",
           "print which language model answers, where it runs and whose it is; with an\n"
           "ADDRESS such as http://127.0.0.1:8080/v1, choose that server first, with\n"
           "\"automatic\" have one looked for again",
           chooseLanguageModel},
    Option{"--help", Takes::none, "", "print this", wishFor<Wish::help>},
    Option{"-h", Takes::none, "", "", wishFor<Wish::help>},
    Option{"--version", Takes::none, "", "print the version", wishFor<Wish::version>},
};

void fail(CommandLine& line, const std::string& problem) {
    line.wish = Wish::unclear;
    line.problem = problem + "; run quillmark-host --help to see what there is.";
}

constexpr std::size_t helpColumn = 17;

std::string helpOf(const Option& option) {
    std::string text = "  " + std::string(option.name);
    if (!option.values.empty()) text += " " + std::string(option.values);
    const std::string indent(helpColumn, ' ');
    if (text.size() < helpColumn)
        text.resize(helpColumn, ' ');
    else
        text += "\n" + indent;
    for (const char letter : option.help)
        text += letter == '\n' ? "\n" + indent : std::string(1, letter);
    return text + "\n";
}

} // namespace

CommandLine readCommandLine(const std::vector<std::string>& arguments) {
    CommandLine line;
    Words rest(arguments);
    while (!rest.empty() && rest.front().starts_with('-')) {
        const std::string& name = rest.front();
        rest = rest.subspan(1);
        if (name == "--") break;
        const auto* option = std::ranges::find(options, name, &Option::name);
        if (option == options.end()) {
            fail(line, "there is no option \"" + name + "\"");
            return line;
        }
        if (option->takes == Takes::one && rest.empty()) {
            fail(line, name + " needs a value");
            return line;
        }
        const Words values = rest.first(option->takes == Takes::all   ? rest.size()
                                        : option->takes == Takes::one ? 1
                                                                      : 0);
        option->take(line, values);
        rest = rest.subspan(values.size());
    }
    line.interface.assign(rest.begin(), rest.end());
    if (line.wish == Wish::ask && !line.interface.empty())
        fail(line, "a request to the running host takes no program");
    if (line.json && line.wish != Wish::check) fail(line, "--json goes with --check or --language-model");
    return line;
}

std::vector<std::string> restartCommand(const std::string& program, const CommandLine& line) {
    std::vector<std::string> command{program, "--background"};
    if (line.dialogs) command.emplace_back("--dialogs");
    if (!line.interface.empty()) command.emplace_back("--");
    command.insert(command.end(), line.interface.begin(), line.interface.end());
    return command;
}

std::string helpText() {
    std::string text = R"(Usage: quillmark-host [OPTIONS] [PROGRAM ARGS…]

Opens the writing assistant's window and starts its interface.

PROGRAM is the interface: any program that speaks the host's channels on the socket named in its environment as
QUILLMARK_SOCKET. It may show its view in the window whose number is in QUILLMARK_VIEW. Without PROGRAM,
quillmark-interface is started, from beside the host or else from the PATH. The host ends when its interface ends,
with the interface's exit status.

Options:
)";
    for (const auto& option : options)
        if (!option.help.empty()) text += helpOf(option);
    text += R"(  --             what follows is PROGRAM, even if it begins with a dash

A request to the running host (--show, --hide, --capture, --pause, --quit) exits with 0 when it is carried out,
1 when the host refuses or does not answer, and 3 when no host runs. --check exits with 0 when all is good, 4 when
something is degraded, and 5 when something is missing.
)";
    return text;
}

std::string versionText() { return "quillmark-host " QUILLMARK_VERSION "\n"; }

} // namespace platform
