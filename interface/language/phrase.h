// What the person reads, in each language that there is. A phrase is one constant with all its languages, so
// that none can be missing. Main thread only.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillmark {

enum class Language { english, korean };

// The one in use from now on.
void setLanguage(Language language);
Language language();

// Of a locale's name such as "ko_KR.UTF-8".
Language languageOf(std::string_view locale);

struct Phrase {
    const char* english;
    const char* korean;
};

std::string say(const Phrase& phrase);
// With %1, %2 … replaced.
std::string say(const Phrase& phrase, const std::vector<std::string>& values);
// A text that reads as one of those phrases does in English, in the language in use; any other as it is.
std::string translated(const std::string& text, std::span<const Phrase> phrases);

// "1 change", "1,204 changes": %1 is the number.
std::string count(std::size_t number, const Phrase& one, const Phrase& many);

} // namespace quillmark
