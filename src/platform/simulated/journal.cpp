#include "platform/simulated/journal.h"

#include <algorithm>
#include <iterator>

namespace simulated {

std::ostream& operator<<(std::ostream& stream, const JournalEntry& entry) {
    return stream << entry.at.count() << " µs: " << entry.what;
}

void Journal::add(std::chrono::microseconds at, std::string what) {
    entries_.push_back({at, std::move(what)});
}

std::vector<JournalEntry> Journal::entriesThatBeginWith(std::string_view beginning) const {
    std::vector<JournalEntry> found;
    std::ranges::copy_if(entries_, std::back_inserter(found),
                         [&](const JournalEntry& entry) { return entry.what.starts_with(beginning); });
    return found;
}

} // namespace simulated
