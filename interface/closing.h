// What closing the window and quitting do.
#pragma once

#include "views/question_page.h"

#include <functional>
#include <string>
#include <vector>

namespace quillmark {

class Closing {
public:
    struct Actions {
        std::function<bool()> workIsUnfinished;
        // The window can be brought back by an icon.
        std::function<bool()> hasIcon;
        std::function<void()> hideToIcon;
        std::function<void()> hide;
        std::function<void()> quit;
        std::function<void()> stay; // refuses the quit that the host asked about, if it did
        // Shows the window with it.
        std::function<void(const std::string&, const std::vector<QuestionPage::Choice>&)> ask;
    };

    explicit Closing(Actions actions) : actions_(std::move(actions)) {}

    // The close button was pressed.
    void close();
    // Somebody wants the program to end.
    void quit();

private:
    Actions actions_;
};

} // namespace quillmark
