// The part of a desktop that shows status icons (StatusNotifierWatcher), with the test as the person who uses
// their menus.
#pragma once

#include "testing/desktop/bus_service.h"
#include "testing/desktop/wait.h"

#include <string>

namespace testbed {

class StatusArea {
public:
    StatusArea();

    // Some program shows an icon. Waits.
    bool hasIcon(milliseconds limit = reactionLimit);
    // In the menu of the latest icon. Throws when there is no such item.
    void choose(const std::string& item);

private:
    // Of the menu's item with that label, or 0.
    int numberOf(const std::string& item);

    std::string program_, path_; // of the latest icon
    BusService service_;
};

} // namespace testbed
