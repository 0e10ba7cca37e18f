// The program that shows a desktop's notices (freedesktop.org Desktop Notifications Specification), with the
// test as the person who reads them.
#pragma once

#include "testing/desktop/bus_service.h"
#include "testing/desktop/wait.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace testbed {

class NoticeBoard {
public:
    NoticeBoard();

    struct Notice {
        std::string title, body;
        std::vector<std::pair<std::string, std::string>> buttons; // key and label
    };
    // The next one that has not been looked at; absent when none comes in time.
    std::optional<Notice> next(milliseconds limit = reactionLimit);
    // Of the latest one, by its label.
    void press(const std::string& button);

private:
    GVariant* take(const std::string& method, GVariant* arguments);

    std::vector<Notice> notices_;
    std::size_t seen_ = 0;
    BusService service_;
};

} // namespace testbed
