// The latest rewrites, newest first, in memory only.
#pragma once

#include "rewriting/rewrite.h"

#include <deque>

namespace quillmark {

class History {
public:
    static constexpr std::size_t mostEntries = 20;

    // Keeps a rewrite that has a text.
    void add(const Rewrite& rewrite) {
        if (rewrite.text.empty()) return;
        entries_.push_front(rewrite);
        if (entries_.size() > mostEntries) entries_.pop_back();
    }
    // Takes one out, to work on again.
    Rewrite take(std::size_t index) {
        auto entry = entries_.at(index);
        entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(index));
        return entry;
    }
    const std::deque<Rewrite>& entries() const { return entries_; }
    void clear() { entries_.clear(); }

private:
    std::deque<Rewrite> entries_;
};

} // namespace quillmark
