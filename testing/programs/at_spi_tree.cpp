#include "testing/programs/at_spi_tree.h"

#include <span>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace at_spi_program {
namespace {

// The interface's numbers.
constexpr std::pair<std::string_view, unsigned> roles[]{
    {"combo_box", 11}, {"filler", 20},     {"frame", 23},         {"image", 27},         {"list", 31},
    {"list_item", 32}, {"page_tab", 37},   {"panel", 39},         {"password_text", 40}, {"push_button", 43},
    {"table", 55},     {"table_cell", 56}, {"terminal", 60},      {"text", 61},          {"paragraph", 73},
    {"entry", 79},     {"section", 85},    {"document_text", 94}, {"document_web", 95},  {"static", 116},
};
constexpr std::pair<std::string_view, unsigned> states[]{
    {"active", 1},   {"editable", 7},     {"focusable", 11}, {"focused", 12},   {"multi_line", 17},
    {"showing", 25}, {"single_line", 26}, {"visible", 30},   {"read_only", 43}, {"manages_descendants", 31},
};

unsigned numberOf(std::string_view word, std::span<const std::pair<std::string_view, unsigned>> known) {
    for (const auto& [name, number] : known)
        if (name == word) return number;
    throw std::runtime_error("There is no role or state " + std::string(word));
}

std::uint64_t bitOf(std::string_view state) { return std::uint64_t{1} << numberOf(state, states); }

} // namespace

std::string Object::value(const std::string& key, const std::string& otherwise) const {
    const auto found = values.find(key);
    return found == values.end() ? otherwise : found->second;
}

std::int32_t Object::number(const std::string& key, std::int32_t otherwise) const {
    return has(key) ? std::stoi(value(key)) : otherwise;
}

std::vector<std::string> wordsOf(const std::string& line) {
    std::vector<std::string> words;
    bool inWord = false, quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (c == '"') {
            quoted = !quoted;
            continue;
        }
        if (c == ' ' && !quoted) {
            inWord = false;
            continue;
        }
        if (!inWord) words.emplace_back();
        inWord = true;
        const char next = i + 1 < line.size() ? line[i + 1] : '\0';
        if (c != '\\' || (next != 'n' && next != 'F')) {
            words.back() += c;
            continue;
        }
        words.back() += next == 'n' ? "\n" : "\uFEFF";
        ++i;
    }
    return words;
}

Tree::Tree(const std::string& script) {
    std::istringstream lines(script);
    std::vector<std::pair<std::size_t, std::string>> around; // indentation and name
    for (std::string line; std::getline(lines, line);) {
        const auto words = wordsOf(line);
        if (words.empty()) continue;
        if (words.size() < 2) throw std::runtime_error("An object needs a name and a role: " + line);
        Object object{words[0], numberOf(words[1], roles), 0, {}, {}, {}};
        for (auto word = words.begin() + 2; word != words.end(); ++word)
            if (const auto equals = word->find('='); equals != word->npos)
                object.values[word->substr(0, equals)] = word->substr(equals + 1);
            else
                object.states |= bitOf(*word);

        const std::size_t indentation = line.find_first_not_of(' ');
        while (!around.empty() && around.back().first >= indentation)
            around.pop_back();
        if (!around.empty()) object.parent = around.back().second;
        (around.empty() ? windows_ : objects_.at(object.parent).children).push_back(object.name);
        around.emplace_back(indentation, object.name);
        objects_.emplace(object.name, std::move(object));
    }
}

std::vector<std::string> Tree::focusedIn(const std::vector<std::string>& names) const {
    std::vector<std::string> focused;
    for (const std::string& name : names) {
        const Object& object = objects_.at(name);
        if ((object.states & bitOf("focused")) != 0) focused.push_back(name);
        for (std::string& inner : focusedIn(object.children))
            focused.push_back(std::move(inner));
    }
    return focused;
}

void Tree::change(const std::string& name, const std::string& state) {
    auto& bits = objects_.at(name).states;
    if (state.starts_with('-'))
        bits &= ~bitOf(state.substr(1));
    else
        bits |= bitOf(state);
}

} // namespace at_spi_program
