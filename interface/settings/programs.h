// Programs by the names that captures and the setting of excluded programs know them by.
#pragma once

#include <deque>
#include <string>

namespace quillmark {

struct ProgramName {
    std::string id;   // as Capture::appId
    std::string name; // for people

    friend bool operator==(const ProgramName&, const ProgramName&) = default;
};

// Those that texts were captured from lately, newest first, in memory only.
class RecentPrograms {
public:
    static constexpr std::size_t mostPrograms = 8;

    void add(const ProgramName& program) {
        if (program.id.empty()) return;
        std::erase_if(programs_, [&](const ProgramName& known) { return known.id == program.id; });
        programs_.push_front(program);
        if (programs_.size() > mostPrograms) programs_.pop_back();
    }
    const std::deque<ProgramName>& programs() const { return programs_; }

private:
    std::deque<ProgramName> programs_;
};

} // namespace quillmark
