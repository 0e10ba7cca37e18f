// How good the interface's spelling corrector is, on the lists of its tests, and how long a word takes.
#include "spelling/english_corrector.h"
#include "testing/spelling_lists/spelling_lists.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>

namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;
using Clock = std::chrono::steady_clock;

void printMisspellings(spelling_lists::Result result) {
    std::printf("%-62s %zu of %zu right, %zu wrong\n", "misspelled words corrected", result.right, result.all,
                result.wrong);
    std::ranges::sort(result.times);
    std::printf("%-62s median %.2f ms   99 of 100 %.2f ms   limit 5 ms\n", "  one of them, when it is new",
                Milliseconds(result.times[result.times.size() / 2]).count(),
                Milliseconds(result.times[result.times.size() * 99 / 100]).count());
    for (const auto& each : result.wrongOnes)
        std::printf("  %s\n", each.c_str());
}

void printUnchanged(const std::string& what, const spelling_lists::Result& result, std::size_t limit) {
    std::printf("%-62s %zu of %zu   limit %zu\n", ("changed, though right: " + what).c_str(), result.wrong,
                result.all, limit);
    for (const auto& each : result.wrongOnes)
        std::printf("  %s\n", each.c_str());
}

} // namespace

int main() {
    const auto start = Clock::now();
    quillmark::EnglishCorrector english;
    std::printf("%-62s %.1f ms\n", "loading the dictionaries", Milliseconds(Clock::now() - start).count());
    printMisspellings(spelling_lists::misspellings(english));
    printUnchanged("names", spelling_lists::words("names", english), 0);
    printUnchanged("technical words", spelling_lists::words("technical", english), 5);
    printUnchanged("British words", spelling_lists::words("british", english), 0);
    quillmark::Languages unknown({}), preferred({"en"});
    printUnchanged("short texts in other languages", spelling_lists::texts("foreign", unknown), 0);
    printUnchanged("  for somebody who prefers English", spelling_lists::texts("foreign", preferred), 2);
    printUnchanged("code, units, names in sentences", spelling_lists::texts("unchanged", preferred), 0);
}
