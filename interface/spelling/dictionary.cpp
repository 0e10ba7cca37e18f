#include "spelling/dictionary.h"

#include <hunspell/hunspell.hxx>
#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>

namespace quillmark {
namespace {

namespace fs = std::filesystem;

const fs::path folder = "/usr/share/hunspell";

// "en_US" for itself, "de" for the first of "de_AT", "de_CH" and "de_DE" that there is; without the ending.
std::optional<fs::path> filesFor(const std::string& language) {
    const auto exists = [](const fs::path& base) {
        return fs::exists(base.string() + ".aff") && fs::exists(base.string() + ".dic");
    };
    if (exists(folder / language)) return folder / language;
    const auto own = language.substr(0, language.find('_'));
    std::set<fs::path> others;
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(folder, none))
        if (entry.path().stem().string().starts_with(own + '_') && exists(folder / entry.path().stem()))
            others.insert(folder / entry.path().stem());
    const auto same = folder / (own + '_' + own); // "de_DE", but for the letters' case
    for (const auto& other : others) {
        auto small = other.string();
        std::ranges::transform(small, small.begin(),
                               [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        if (small == same) return other;
    }
    return others.empty() ? std::nullopt : std::optional(*others.begin());
}

// The line of the affix file that begins with this word (hunspell(5)).
std::string option(const fs::path& affixFile, const std::string& name) {
    std::ifstream file(affixFile);
    for (std::string word; file >> word;)
        if (word == name && file >> word) return word;
    return {};
}

using Converter = std::unique_ptr<UConverter, decltype(&ucnv_close)>;

Converter converterFor(const std::string& encoding) {
    UErrorCode status = U_ZERO_ERROR;
    // hunspell's name for KOI8-U and others is the usual one but for a hyphen, which ICU does not mind.
    return {ucnv_open(encoding.empty() ? "ISO-8859-1" : encoding.c_str(), &status), ucnv_close};
}

} // namespace

// The dictionary's words are in its own encoding.
class Dictionary::Native {
public:
    explicit Native(const fs::path& base)
        : spelling_((base.string() + ".aff").c_str(), (base.string() + ".dic").c_str()),
          isUtf8_(spelling_.get_dict_encoding() == "UTF-8"),
          converter_(converterFor(spelling_.get_dict_encoding())),
          letters_(option(base.string() + ".aff", "TRY")) {}

    bool knows(std::string_view word) const {
        const auto own = isUtf8_ ? std::string(word) : encoded(word);
        return !own.empty() && spelling_.spell(own);
    }

    std::vector<std::string> letters() const {
        UErrorCode status = U_ZERO_ERROR;
        const auto text =
            isUtf8_ ? icu::UnicodeString::fromUTF8(letters_)
                    : icu::UnicodeString(letters_.data(), static_cast<std::int32_t>(letters_.size()),
                                         converter_.get(), status);
        std::vector<std::string> letters;
        for (std::int32_t at = 0; at < text.length(); at = text.moveIndex32(at, 1))
            if (u_islower(text.char32At(at)))
                icu::UnicodeString(text.char32At(at)).toUTF8String(letters.emplace_back());
        return letters;
    }

private:
    // Empty when the encoding has no such letters.
    std::string encoded(std::string_view word) const {
        if (!converter_) return {};
        UErrorCode status = U_ZERO_ERROR;
        ucnv_setFromUCallBack(converter_.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                              &status);
        const auto text = icu::UnicodeString::fromUTF8({word.data(), static_cast<std::int32_t>(word.size())});
        std::string own(word.size() * 2 + 1, '\0');
        const auto length =
            text.extract(own.data(), static_cast<std::int32_t>(own.size()), converter_.get(), status);
        return U_SUCCESS(status) ? own.substr(0, static_cast<std::size_t>(length)) : std::string();
    }

    mutable Hunspell spelling_;
    bool isUtf8_;
    Converter converter_;
    std::string letters_;
};

std::unique_ptr<Dictionary> Dictionary::open(const std::string& language) {
    const auto files = filesFor(language);
    if (!files) return nullptr;
    return std::unique_ptr<Dictionary>(new Dictionary(std::make_unique<Native>(*files)));
}

Dictionary::Dictionary(std::unique_ptr<Native> native)
    : native_(std::move(native)), letters_(native_->letters()) {}
Dictionary::~Dictionary() = default;

bool Dictionary::knows(std::string_view word) const { return native_->knows(word); }

bool hasDictionary(const std::string& language) { return filesFor(language).has_value(); }

} // namespace quillmark
