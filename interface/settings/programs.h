// Programs by the names that captures and the setting of excluded programs know them by.
#pragma once

#include <deque>
#include <string>

namespace quillmark {

struct Program {
    std::string id;   // as Capture::appId
    std::string name; // for people

    friend bool operator==(const Program&, const Program&) = default;
};

// Those that texts were captured from lately, newest first, in memory only.
class LatePrograms {
public:
    static constexpr std::size_t mostPrograms = 8;

    void add(const Program& program) {
        if (program.id.empty()) return;
        std::erase_if(programs_, [&](const Program& known) { return known.id == program.id; });
        programs_.push_front(program);
        if (programs_.size() > mostPrograms) programs_.pop_back();
    }
    const std::deque<Program>& programs() const { return programs_; }

private:
    std::deque<Program> programs_;
};

} // namespace quillmark
