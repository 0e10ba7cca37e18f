#pragma once

#include <chrono>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace simulated {

// One thing that happened, and when, counted from the world's beginning.
struct JournalEntry {
    std::chrono::microseconds at{};
    std::string what;

    bool operator==(const JournalEntry&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const JournalEntry& entry);

// What happened in the world, in order. Entries read:
//
//     attribute AXManualAccessibility of Writer        pasteboard cleared by Quillmark
//     activation of Writer requested                   pasteboard "text" by Quillmark
//     Writer in front                                  keystroke Command+8 to Writer
//     beep                                             hot key 49+2560 registered | unregistered | pressed
//     terminated                                       hot key handler removed
//     window ordered out | front | miniaturized | deminiaturized
class Journal {
public:
    void add(std::chrono::microseconds at, std::string what);

    const std::vector<JournalEntry>& entries() const { return entries_; }

    std::vector<JournalEntry> entriesThatBeginWith(std::string_view beginning) const;

    void clear() { entries_.clear(); }

private:
    std::vector<JournalEntry> entries_;
};

} // namespace simulated
