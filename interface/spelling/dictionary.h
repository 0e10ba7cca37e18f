#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillmark {

// The dictionary of one language, as installed for hunspell. Used by one thread only: what is beneath is not
// made for more, not even for reading.
class Dictionary {
public:
    // For a language such as "en_US" or "de"; null when none is installed.
    static std::unique_ptr<Dictionary> open(const std::string& language);

    ~Dictionary();
    Dictionary(const Dictionary&) = delete;
    Dictionary& operator=(const Dictionary&) = delete;

    // Whether it holds the word, which is UTF-8, as it is written.
    bool knows(std::string_view word) const;

    // The language's small letters, in UTF-8 each.
    const std::vector<std::string>& letters() const { return letters_; }

private:
    class Native;

    explicit Dictionary(std::unique_ptr<Native> native);

    std::unique_ptr<Native> native_;
    std::vector<std::string> letters_;
};

// Whether such a dictionary is installed. Any thread.
bool hasDictionary(const std::string& language);

} // namespace quillmark
