#pragma once

#include "platform/linux/x11/pasteboard/reader.h"

#include <array>

namespace platform::selection {

// Gets what the user had copied out of a silent owner once that answers again. Requests that were sent while
// it was the owner wait for it in its connection, ahead of the event that says that it no longer is, so it
// answers them. On the connection's thread.
class LateContents {
public:
    // Asks the owner for everything it may have. Does nothing the second time for one owner.
    void ask(XcbConnection& connection, Reader& reader, const Request& request);

    // Drops what was asked for and what has come.
    void drop() { found_ = nullptr; }

    // True when an owner before that one was asked.
    bool areFromBefore(OwnerNumber owner) const { return found_ && found_->owner < owner; }

    // True when the owner has answered every request, and one of them with data.
    bool complete() const;

    // The contents, once.
    SharedContents take();

private:
    struct Found {
        OwnerNumber owner = 0;
        std::size_t unanswered = 0;
        std::vector<std::optional<Representation>> answers; // in the order asked for
    };
    std::shared_ptr<Found> found_;
};

// What is worth asking an owner for that does not say what it offers: text, files, and pictures without loss.
extern const std::array<PasteboardType, 11> commonTargets;

} // namespace platform::selection
