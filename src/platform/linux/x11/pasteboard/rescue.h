#pragma once

#include "platform/linux/x11/pasteboard/reader.h"

namespace platform::selection {

// Keeps what the user had copied from a program that does not answer just now. Its owner cannot be read
// before the selection is taken from it; but questions sent while it still owns the selection wait in its
// queue ahead of the news that it has lost it, so they are answered when it wakes up, and the contents can
// be put back then. On the connection's thread.
class Rescue {
public:
    // Asks the owner for everything it may have; once per owner.
    void ask(Connection& connection, Reader& reader, const Reader::Question& question);

    // Gives up what was asked for.
    void drop() { found_ = nullptr; }

    // True when an earlier owner than that one has been asked.
    bool isEarlierThan(std::uint64_t owner) const { return found_ && found_->owner < owner; }

    // True when the owner has answered and had something.
    bool ready() const;

    // The contents, once.
    SharedContents take();

private:
    struct Found {
        std::uint64_t owner = 0;
        std::size_t open = 0;
        std::vector<std::optional<Data>> answers;
    };
    std::shared_ptr<Found> found_;
};

} // namespace platform::selection
