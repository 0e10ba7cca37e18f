#include "testing/spelling_lists/spelling_lists.h"

#include "spelling/text_correction.h"

#include <fstream>
#include <functional>

namespace spelling_lists {
namespace {

std::ifstream open(const std::string& list) { return std::ifstream(SPELLING_LISTS "/" + list + ".txt"); }

void add(Result& result, const std::string& written, const std::string& meant,
         const std::function<std::string(const std::string&)>& correct) {
    const auto start = std::chrono::steady_clock::now();
    const auto corrected = correct(written);
    result.times.push_back(std::chrono::steady_clock::now() - start);
    ++result.all;
    if (corrected == meant) {
        ++result.right;
    } else if (corrected != written) {
        ++result.wrong;
        result.wrongOnes.push_back(written + " became " + corrected);
    }
}

} // namespace

Result misspellings(quillmark::WordCorrector& corrector) {
    Result result;
    auto file = open("misspellings");
    for (std::string written, meant; file >> written && std::getline(file >> std::ws, meant);)
        add(result, written, meant, [&](const std::string& word) { return corrector.correct(word, true); });
    return result;
}

Result words(const std::string& list, quillmark::WordCorrector& corrector) {
    Result result;
    auto file = open(list);
    for (std::string written; file >> written;)
        add(result, written, written, [&](const std::string& word) { return corrector.correct(word, true); });
    return result;
}

Result texts(const std::string& list, quillmark::Languages& languages) {
    Result result;
    auto file = open(list);
    for (std::string written; std::getline(file, written);)
        add(result, written, written, [&](const std::string& text) {
            quillmark::TextCorrection correction(text, languages);
            std::string corrected;
            while (const auto piece = correction.next())
                corrected += *piece;
            return corrected;
        });
    return result;
}

} // namespace spelling_lists
