// Corrects the spelling of single English words, over hunspell and its dictionary.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quillmark {

// Used by one thread only: what is beneath is not made for more, not even for reading.
class WordCorrector {
public:
    // Whether the dictionary is on this computer. Any thread.
    static bool isInstalled();

    WordCorrector();
    ~WordCorrector();
    WordCorrector(const WordCorrector&) = delete;
    WordCorrector& operator=(const WordCorrector&) = delete;

    // Whether it is an English word as it stands, or a slip that only English has.
    bool knows(std::string_view word);

    // The word as it should be written; the word itself when it is right, unknown, or too far from any other.
    // Takes an ordinary word (text_pieces.h); tens of milliseconds when it is wrong and new.
    std::string correct(std::string_view word);

private:
    class Dictionary;

    std::unique_ptr<Dictionary> dictionary_;
};

} // namespace quillmark
