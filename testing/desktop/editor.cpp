#include "testing/desktop/editor.h"

#include <sstream>
#include <stdexcept>

namespace testbed {

namespace {

std::string lines(const std::string& text, int first, int count) {
    std::istringstream all(text);
    std::string line, result;
    for (int number = 0; std::getline(all, line); ++number)
        if (number >= first && number < first + count) result += line + "\n";
    return result;
}

std::vector<std::string> start(const std::filesystem::path& file, std::string_view text) {
    writeFile(file, text);
    return {"mousepad", "--disable-server", file.string()};
}

} // namespace

Editor::Editor(Desktop& desktop, const std::filesystem::path& file, std::string_view text)
    : desktop_(desktop), file_(file), text_(text), process_(start(file, text)) {
    const auto shown = [&] {
        for (const WindowId window : desktop_.windows(pid()))
            if (desktop_.title(window).find(file_.filename()) != std::string::npos) window_ = window;
        return window_ != 0;
    };
    if (!waitUntil(shown) || !bringToFront())
        throw std::runtime_error("The editor did not come up. It printed: " + process_.output());
}

bool Editor::selectLines(int first, int count) {
    const std::string wanted = lines(text_, first, count);
    // The window shows before the editor takes keys; selecting is repeated until it has been done.
    return waitUntil([&] {
        desktop_.keyboard.press("Control+Home");
        for (int line = 0; line < first; ++line)
            desktop_.keyboard.press("Down");
        for (int line = 0; line < count; ++line)
            desktop_.keyboard.press("Shift+Down");
        return waitUntil([&] { return desktop_.text("PRIMARY") == wanted; }, milliseconds(500));
    });
}

std::string Editor::savedText(std::string_view before) {
    std::string saved;
    const auto changed = [&] {
        saved = readFile(file_);
        return !saved.empty() && saved != before;
    };
    waitUntil([&] {
        desktop_.keyboard.press("Control+s");
        return waitUntil(changed, milliseconds(500));
    });
    return saved;
}

} // namespace testbed
