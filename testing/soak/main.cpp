// Somebody works at random for a while, in several programs and with the host; after each step everything
// must be as it should be.
//
//   quillmark-soak MINUTES [SEED [STEPS…]]     STEPS are names such as "paste back"; without any, all of them
//
// In the first fifth of the time the host is ended and started again now and then. The one that runs then may
// not grow once the second fifth is over.
#include "testing/soak/captures.h"
#include "testing/soak/chores.h"
#include "testing/soak/footprint.h"
#include "testing/soak/generations.h"
#include "testing/soak/restarts.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <exception>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>

namespace {

using namespace soak;
using testbed::Clock;

void say(const std::string& line) {
    std::printf("soak: %s\n", line.c_str());
    std::fflush(stdout);
}

class Soak {
public:
    Soak(double minutes, unsigned long seed, const std::set<std::string_view>& only)
        : length_(std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(minutes * 60))),
          seed_(seed), first_(seed, 0), world_(first_) {
        for (const auto& list : {captureSteps(), choreSteps(), generationSteps(), restartSteps()})
            for (const Step& step : list) {
                if (!only.empty() && !only.contains(step.name)) continue;
                steps_.push_back(step);
                weights_.push_back(step.weight);
            }
    }

    // True when nothing was wrong.
    bool run() {
        const auto start = Clock::now();
        auto nextReport = start + std::chrono::minutes(1);
        for (unsigned long number = 1; Clock::now() < start + length_ && faulty_ < mostFaulty; ++number) {
            const auto past = Clock::now() - start;
            Chance chance(seed_, number);
            if (past < length_ / 5 && chance.oneIn(20)) restartTheHost(world_, chance);
            if (!warm_ && past > length_ * 2 / 5) {
                warm_ = now();
                say("warm: " + inWords(*warm_));
            }
            take(number, steps_[chance.byWeight(weights_)], chance);
            if (Clock::now() < nextReport) continue;
            nextReport += std::chrono::minutes(1);
            say(std::to_string(number) + " steps, " + inWords(now()));
        }
        finish();
        return faulty_ == 0;
    }

private:
    static constexpr int mostFaulty = 20;        // steps, and the run is over
    static constexpr std::size_t mostBefore = 5; // steps to name before a fault

    Footprint now() { return footprint(world_.host->process().pid()); }

    void take(unsigned long number, const Step& step, Chance& chance) {
        try {
            step.run(world_, chance);
            world_.check();
        } catch (const std::exception& error) {
            world_.fault(error.what());
        }
        ++taken_[step.name];
        const std::string where = "step " + std::to_string(number) + ", " + std::string(step.name);
        if (!world_.faults.empty()) complain(where);
        before_.push_back(where + (world_.notes.empty() ? "" : ": " + world_.notes.back()));
        if (before_.size() > mostBefore) before_.pop_front();
        world_.notes.clear();
        world_.faults.clear();
    }

    void complain(const std::string& where) {
        ++faulty_;
        say("");
        for (const auto& step : before_)
            say("    after " + step);
        say(where + ":");
        for (const auto& note : world_.notes)
            say("    " + note);
        for (const auto& fault : world_.faults)
            say("  ! " + fault);
        if (!world_.host->process().exitStatus(testbed::milliseconds(0))) return;
        say("  ! the host has ended; it printed: " + world_.host->process().output());
        world_.startHost();
    }

    void finish() {
        for (const auto& [name, count] : taken_)
            say(std::to_string(count) + " times: " + std::string(name));
        say("at the end: " + inWords(now()));
        if (const auto grown = warm_ ? growth(*warm_, now()) : ""; !grown.empty()) {
            ++faulty_;
            say("  ! " + grown);
        }
        say(faulty_ == 0 ? "nothing was wrong"
                         : std::to_string(faulty_) + " faults, seed " + std::to_string(seed_));
    }

    Clock::duration length_;
    unsigned long seed_;
    Chance first_;
    World world_;
    std::vector<Step> steps_;
    std::vector<int> weights_;
    std::map<std::string_view, int> taken_;
    std::deque<std::string> before_; // the latest steps
    std::optional<Footprint> warm_;
    int faulty_ = 0;
};

} // namespace

int main(int argc, char** argv) {
    const double minutes = argc > 1 ? std::atof(argv[1]) : 0;
    if (minutes <= 0) {
        std::fputs("soak: this is started by script/soak.\n", stderr);
        return 2;
    }
    try {
        const unsigned long seed = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : std::random_device()();
        say("seed " + std::to_string(seed));
        return Soak(minutes, seed, {argv + std::min(argc, 3), argv + argc}).run() ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "soak: %s\n", error.what());
        return 1;
    }
}
