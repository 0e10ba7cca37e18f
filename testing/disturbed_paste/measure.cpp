// Measures how often a paste goes wrong when something happens at the same time, at a random moment.
//
//   disturbed_paste [--runs N] [--longest MS] [--seed N] [KIND OF DISTURBANCE…]
//
// Runs each kind N times (200), half of them with a selection and half with the whole field, half in a line
// and half in a text of lines; the moment is anything from 0 to MS milliseconds (100) after the paste was
// asked for. Exits with 0 when at most one in 200 of each kind was wrong and nothing came into a password
// field. Run it under script/virtual-desktop.
#include "testing/disturbed_paste/disturbed_paste.h"

#include <algorithm>
#include <iostream>
#include <random>

using namespace testbed;

namespace {

struct Options {
    int runs = 200;
    int longest = 100;
    unsigned seed = 1;
    std::vector<std::string> kinds;
};

struct Count {
    int runs = 0, typed = 0, nothing = 0, wrong = 0, inPasswordField = 0;
};

Options read(std::vector<std::string> arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "--runs")
            options.runs = std::stoi(arguments.at(++i));
        else if (arguments[i] == "--longest")
            options.longest = std::stoi(arguments.at(++i));
        else if (arguments[i] == "--seed")
            options.seed = static_cast<unsigned>(std::stoul(arguments.at(++i)));
        else
            options.kinds.push_back(arguments[i]);
    }
    return options;
}

Count measure(const Disturbance& disturbance, const Options& options, std::mt19937& random) {
    Count count;
    Desktop desktop;
    for (const char* kind : {"entry", "textview"}) {
        DisturbedPaste program(desktop, kind);
        for (int run = 0; run < options.runs / 2; ++run) {
            const bool wholeField = run % 2 == 1;
            const milliseconds moment(std::uniform_int_distribution(0, options.longest)(random));
            const Outcome outcome = program.run(disturbance, wholeField, moment);
            ++count.runs;
            count.typed += outcome.typed;
            count.nothing += outcome.answer == "pasted" && !outcome.typed;
            count.wrong += outcome.wrong;
            count.inPasswordField += outcome.inPasswordField;
            if (outcome.wrong)
                std::cout << "  wrong: " << kind << (wholeField ? ", whole field, " : ", selection, ")
                          << moment.count() << " ms: \"" << outcome.text << "\", answer " << outcome.answer
                          << std::endl;
        }
    }
    return count;
}

} // namespace

int main(int argc, char** argv) {
    const Options options = read({argv + 1, argv + argc});
    std::mt19937 random(options.seed);
    bool good = true;
    for (const Disturbance& disturbance : disturbances()) {
        if (!options.kinds.empty() &&
            std::ranges::find(options.kinds, disturbance.name) == options.kinds.end())
            continue;
        const Count count = measure(disturbance, options, random);
        std::cout << disturbance.name << ": " << count.runs << " runs, typed " << count.typed
                  << ", answered \"pasted\" but typed nothing " << count.nothing << ", wrong " << count.wrong
                  << ", in the password field " << count.inPasswordField << std::endl;
        good = good && count.wrong * 200 <= count.runs && count.inPasswordField == 0;
    }
    return good ? 0 : 1;
}
