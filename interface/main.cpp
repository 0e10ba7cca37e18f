// The interface that comes with the host: rewrites what is captured and has it pasted back, one line per
// step.
#include "client/connection.h"
#include "client/desktop.h"
#include "rewriter.h"

#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;
const Clock::time_point started = Clock::now();

void say(const std::string& step) {
    const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - started);
    std::printf("[%6lld ms] %s\n", static_cast<long long>(elapsed.count()), step.c_str());
    std::fflush(stdout);
}

std::size_t characters(const std::string& text) {
    std::size_t count = 0;
    for (const char c : text)
        count += (c & 0xC0) != 0x80;
    return count;
}

void describe(const quillmark::Capture& capture) {
    say("captured " + std::to_string(characters(capture.text)) + " characters: " + capture.source + " in " +
        (capture.appName.empty() ? "an unnamed program" : capture.appName) + ", window \"" + capture.title +
        "\", token " + (capture.token.empty() ? "no" : "yes") + (capture.truncated ? ", truncated" : ""));
}

// The end of a text that grows, on one line.
std::string tail(const std::string& text) {
    constexpr std::size_t length = 48;
    std::size_t start = text.size() > length ? text.size() - length : 0;
    while (start < text.size() && (text[start] & 0xC0) == 0x80)
        ++start;
    std::string end = text.substr(start);
    for (char& c : end)
        if (c == '\n' || c == '\r') c = ' ';
    return (start > 0 ? "…" : "") + end;
}

void pasteBack(quillmark::Desktop& desktop, const std::string& text, const std::string& token) {
    say("rewrote it to " + std::to_string(characters(text)) + " characters");
    desktop.paste(text, token, [](bool pasted, const std::optional<std::string>& failure) {
        if (failure)
            say("not pasted: " + *failure);
        else if (pasted)
            say("pasted");
        else
            say("copied only: paste it yourself where you want it");
    });
}

void serve() {
    auto connection = quillmark::Connection::toHost();
    say("connected to the host");
    std::string token; // of the capture that is being rewritten
    std::optional<quillmark::Rewriter> rewriter;
    quillmark::Desktop desktop(connection.messenger(),
                               {.capture =
                                    [&](const quillmark::Capture& capture) {
                                        describe(capture);
                                        if (capture.text.empty()) return say("nothing to rewrite");
                                        token = capture.token;
                                        rewriter->rewrite(capture.text);
                                    },
                                .close = [] { say("the window is hidden; the hot key still works"); },
                                .quit =
                                    [&] {
                                        say("agreed to quit");
                                        desktop.quit();
                                    }});
    rewriter.emplace(
        connection.messenger(), [&](std::function<void()> work) { connection.async(std::move(work)); },
        quillmark::Rewriter::Handlers{
            .growing =
                [](const std::string& text) {
                    say("growing, " + std::to_string(characters(text)) + " characters: \"" + tail(text) +
                        '"');
                },
            .done = [&](const std::string& text) { pasteBack(desktop, text, token); },
            .failed = [](const std::string& why) { say("not rewritten: " + why); },
            .spellingOnly =
                [](const std::string& why) {
                    say("there is no language model, so only the spelling is corrected. " + why);
                }});
    desktop.initialize({}, {}, [](bool registered) {
        say(registered ? "ready: select text anywhere and press Alt+Shift+Space"
                       : "another program holds Alt+Shift+Space: free it there, then start again");
    });
    connection.run();
    say("the host has ended");
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 1) {
        std::puts("quillmark-interface rewrites what the host captures. Start it as: quillmark-host "
                  "quillmark-interface");
        return std::strcmp(argv[1], "--help") == 0 ? 0 : 2;
    }
    try {
        serve();
        return 0;
    } catch (const quillmark::ConnectionError& error) {
        std::fprintf(stderr, "quillmark-interface: %s\n", error.what());
        return 1;
    }
}
