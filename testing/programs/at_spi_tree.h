// The objects of the scripted program, as its script lists them.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace at_spi_program {

struct Object {
    std::string name;
    std::uint32_t role = 0;
    std::uint64_t states = 0;
    std::map<std::string, std::string> values; // "text", "caret", and whatever else stands as KEY=VALUE
    std::string parent;                        // empty: the program itself
    std::vector<std::string> children;

    bool has(const std::string& key) const { return values.contains(key); }
    std::string value(const std::string& key, const std::string& otherwise = {}) const;
    std::int32_t number(const std::string& key, std::int32_t otherwise) const;
};

class Tree {
public:
    // A line for each object, indented below the one it is in:
    //
    //   NAME ROLE STATE … KEY=VALUE …
    //
    // ROLE and STATE are the interface's words ("entry", "multi_line"); a VALUE may stand in quotes, and hold
    // \n, and \F for the invisible U+FEFF. Throws when it cannot be read.
    explicit Tree(const std::string& script);

    const std::vector<std::string>& windows() const { return windows_; }
    bool contains(const std::string& name) const { return objects_.contains(name); }
    Object& at(const std::string& name) { return objects_.at(name); }
    // Those of `names` and everything in them that have the state FOCUSED, in their order.
    std::vector<std::string> focusedIn(const std::vector<std::string>& names) const;
    // Adds a state ("focused") or takes it away ("-focused").
    void change(const std::string& name, const std::string& state);

private:
    std::map<std::string, Object> objects_;
    std::vector<std::string> windows_;
};

// Words separated by spaces; those in quotes may hold some.
std::vector<std::string> wordsOf(const std::string& line);

} // namespace at_spi_program
