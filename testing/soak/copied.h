// What the user has copied last, and the program that it was copied in.
#pragma once

#include "testing/desktop/desktop.h"
#include "testing/desktop/misbehaving_owner.h"
#include "testing/desktop/pasteboard_programs.h"
#include "testing/soak/chance.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace soak {

class Copied {
public:
    // Copies something in a program, which may serve it badly.
    std::string copy(Chance& chance);

    // The host has put this text on the pasteboard.
    void isText(const std::string& text);
    // Nobody can say what is there: its owner has ended.
    void isUnknown();

    // What is not there that should be.
    std::vector<std::string> faults(testbed::Desktop& desktop);

private:
    std::optional<std::string> text_;
    std::vector<pasteboard_test::Representation> others_; // what must be there beside the text
    std::unique_ptr<pasteboard_test::Owner> owner_;
    std::unique_ptr<pasteboard_test::MisbehavingOwner> misbehavingOwner_;
};

} // namespace soak
