// The main job, timed on a real desktop beside what it must cost at the very least: from the hot key to the
// interface, and from the interface's "paste" to the text in the field. Also what the host costs at rest.
#include "bench/bare_round_trips.h"
#include "flutter/arguments.h"
#include "testing/desktop/desktop.h"
#include "testing/desktop/fields.h"
#include "testing/desktop/host.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;
using flutter::EncodableMap;
using flutter::member;
using testbed::Clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int rounds = 100;
// Between two rounds, as between two things that a person does: programs draw what was pasted and read the
// keyboard's new map meanwhile.
constexpr auto pauseBetweenRounds = 50ms;

class Samples {
public:
    void add(Clock::duration time) { milliseconds_.push_back(Milliseconds(time).count()); }
    double at(double share) {
        std::ranges::sort(milliseconds_);
        return milliseconds_.at(
            static_cast<std::size_t>(share * static_cast<double>(milliseconds_.size() - 1)));
    }
    double median() { return at(0.5); }
    void print(const char* what) {
        std::printf("%-58s median %7.2f ms   9 of 10 %7.2f ms\n", what, median(), at(0.9));
        std::fflush(stdout);
    }

private:
    std::vector<double> milliseconds_;
};

std::string answerText(const flutter::CallOutcome& answer) {
    const auto* value = std::get_if<flutter::EncodableValue>(&answer);
    const auto* text = value != nullptr ? flutter::asString(*value) : nullptr;
    return text != nullptr ? *text : "no text";
}

struct Stage {
    testbed::Desktop desktop;
    testbed::Host host;
    testbed::Fields fields{desktop, {"textview=Dear Anna, thank you for yor letter."}};

    Stage() {
        host.bringToFront(desktop); // or it would come to the front in the middle
        host.call("initialize", EncodableMap{});
        if (!desktop.bringToFront(fields.process().pid()))
            throw std::runtime_error("The program with fields did not come to the front.");
        fields.command("select 0 25 28");
    }

    // The capture's token, and the time from the key to the message.
    std::string capture(Samples& samples) {
        desktop.keyboard.hold("Alt+Shift");
        std::this_thread::sleep_for(pauseBetweenRounds);
        const auto start = Clock::now();
        desktop.keyboard.hold("space");
        host.awaitBytes();
        const auto arguments = host.nextCall("capture");
        if (!arguments)
            throw std::runtime_error("The hot key brought nothing. The host printed: " +
                                     host.process().output());
        samples.add(host.received().back().at - start);
        desktop.keyboard.letGoAll();
        return *flutter::asString(member(flutter::asMap(*arguments), "token"));
    }

    // From the call to the changed text in the program.
    void paste(const std::string& token, const std::string& word, Samples& samples) {
        const auto start = Clock::now();
        const auto call = host.startCall("paste", EncodableMap{{"text", word}, {"token", token}});
        try {
            samples.add(fields.awaitText("for " + word + " letter") - start);
        } catch (const std::exception&) {
            throw std::runtime_error("The text never changed. The host's answer: " +
                                     answerText(host.answer(call)));
        }
        host.answer(call);
    }
};

void timeTheMainJob(Stage& stage) {
    Samples hotKeyToCapture, pasteToText, questions, atOnce, display;
    const bench::BareRoundTrips bare(stage.fields.process().pid());
    for (int round = 0; round < rounds; ++round) {
        const auto token = stage.capture(hotKeyToCapture);
        questions.add(bare.accessibility());
        atOnce.add(bare.accessibilityAtOnce());
        display.add(bare.display());
        const std::string word = round % 2 == 0 ? "your" : "yore";
        stage.paste(token, word, pasteToText);
        stage.fields.command("select 0 25 29");
    }
    hotKeyToCapture.print("hot key pressed to \"capture\" at the interface");
    questions.print("  its questions over the accessibility bus, bare");
    atOnce.print("  the same, all sent at once");
    display.print("  its questions to the X server, bare");
    const double least = questions.median() + display.median();
    std::printf("  that is %.2f times the bare sum of %.2f ms\n", hotKeyToCapture.median() / least, least);
    pasteToText.print("\"paste\" sent to the text in the field");
    std::printf("  of which 30 ms are the fixed pause before the keys\n");
}

long processorTicks(pid_t pid) {
    std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
    std::string field;
    long user = 0, system = 0;
    for (int i = 0; i < 13; ++i)
        stat >> field;
    stat >> user >> system;
    return user + system;
}

long residentKilobytes(pid_t pid) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    for (std::string word; status >> word;)
        if (word == "VmRSS:") {
            long kilobytes = 0;
            status >> kilobytes;
            return kilobytes;
        }
    return 0;
}

void measureHostAtRest(Stage& stage) {
    const pid_t pid = stage.host.process().pid();
    const auto before = processorTicks(pid);
    std::this_thread::sleep_for(5s); // what is measured is five seconds of rest
    std::printf("%-58s %.1f MB resident, %ld ms of processor time in 5 s\n", "host at rest",
                static_cast<double>(residentKilobytes(pid)) / 1024,
                (processorTicks(pid) - before) * 1000 / sysconf(_SC_CLK_TCK));
}

} // namespace

int main() {
    try {
        Stage stage;
        timeTheMainJob(stage);
        measureHostAtRest(stage);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "main_job_bench: %s\n", problem.what());
        return 1;
    }
}
