#include "spelling/english_words.h"

#include "spelling/ascii.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillmark {
namespace {

using Pair = std::pair<std::string_view, std::string_view>;

constexpr std::array<Pair, 21> slips{{{"i", "I"},
                                      {"alot", "a lot"},
                                      {"allready", "already"},
                                      {"allways", "always"},
                                      {"aswell", "as well"},
                                      {"atleast", "at least"},
                                      {"eachother", "each other"},
                                      {"infact", "in fact"},
                                      {"im", "I'm"},
                                      {"ive", "I've"},
                                      {"cant", "can't"},
                                      {"dont", "don't"},
                                      {"werent", "weren't"},
                                      {"hes", "he's"},
                                      {"shes", "she's"},
                                      {"heres", "here's"},
                                      {"wheres", "where's"},
                                      {"whats", "what's"},
                                      {"whos", "who's"},
                                      {"wierd", "weird"},
                                      {"refered", "referred"}}};

constexpr std::array<Pair, 19> britishEndings{{{"our", "or"},
                                               {"ise", "ize"},
                                               {"isi", "izi"},
                                               {"isa", "iza"},
                                               {"yse", "yze"},
                                               {"ysi", "yzi"},
                                               {"tre", "ter"},
                                               {"tred", "tered"},
                                               {"lled", "led"},
                                               {"lling", "ling"},
                                               {"ller", "ler"},
                                               {"llery", "lry"},
                                               {"ogue", "og"},
                                               {"gramme", "gram"},
                                               {"fence", "fense"},
                                               {"cence", "cense"},
                                               {"bre", "ber"},
                                               {"llable", "lable"},
                                               {"gement", "gment"}}};

constexpr std::array<std::string_view, 24> britishWords{
    "ageing", "aluminium", "burnt",   "cheque",  "cheques", "cosy",   "draught",   "dreamt",
    "enrol",  "fulfil",    "grey",    "greys",   "kerb",    "learnt", "manoeuvre", "maths",
    "mould",  "plough",    "pyjamas", "sceptic", "skilful", "spelt",  "tyre",      "tyres"};

constexpr std::array<std::string_view, 10> shorthand{"lol", "omg",  "idk", "imo",   "imho",
                                                     "fyi", "asap", "aka", "afaik", "ok"};

constexpr std::array<std::string_view, 60> abbreviations{
    "al",   "apr", "approx", "aug", "ave", "ca",  "capt", "cf",   "co",   "col", "corp", "dec",
    "dept", "dr",  "ed",     "eq",  "est", "etc", "ext",  "feb",  "fig",  "fri", "gen",  "gov",
    "hon",  "hr",  "inc",    "jan", "jr",  "lb",  "lt",   "ltd",  "max",  "min", "mon",  "mr",
    "mrs",  "ms",  "mt",     "no",  "nov", "oct", "oz",   "prof", "rd",   "rev", "sat",  "sec",
    "sept", "sgt", "sr",     "st",  "sun", "tel", "thu",  "tue",  "univ", "vol", "vs",   "wed"};

} // namespace

std::string lowered(std::string_view word) {
    std::string result(word);
    std::ranges::transform(result, result.begin(), lower);
    return result;
}

std::string_view usualCorrection(std::string_view word) {
    const auto* slip = std::ranges::find(slips, word, &Pair::first);
    return slip != slips.end() ? slip->second : std::string_view();
}

bool isBritish(std::string_view word) { return std::ranges::find(britishWords, word) != britishWords.end(); }

std::vector<std::string> americanSpellings(std::string_view word) {
    std::vector<std::string> spellings;
    for (const auto& [british, american] : britishEndings) {
        const auto at = word.rfind(british);
        if (at != std::string_view::npos && at > 0)
            spellings.push_back(std::string(word).replace(at, british.size(), american));
    }
    return spellings;
}

bool isShorthand(std::string_view word) {
    constexpr std::size_t longest = 5;
    return std::ranges::find(shorthand, word) != shorthand.end() ||
           (word.size() <= longest && word.find_first_of("aeiouy'") == std::string_view::npos);
}

bool isAbbreviation(std::string_view word) {
    return std::ranges::find(abbreviations, word) != abbreviations.end();
}

} // namespace quillmark
