// A writer at their desk: the real host with its interface, a program to write in, a model server, and the
// desktop's notices; driven by keys, and read as a screen reader reads.
#pragma once

#include "testing/desktop/desktop.h"
#include "testing/desktop/fields.h"
#include "testing/desktop/notice_board.h"
#include "testing/desktop/process.h"
#include "testing/desktop/screen_reader.h"
#include "testing/model_server/rewriting_model.h"

#include <gmock/gmock.h>

#include <map>
#include <optional>
#include <string>

namespace testbed {

class Writer : public testing::Test {
protected:
    using Manner = RewritingModel::Manner;

    void TearDown() override;

    // Starts host and interface; `settings` as the interface keeps them.
    void start(const std::string& settings = known,
               const std::map<std::string, std::string>& environment = {});
    // Ends both.
    void end();

    // Opens a program with that text in it, all of it selected.
    void write(const std::string& text);
    void pressHotKey() { desktop.keyboard.press("Alt+Shift+space"); }
    void press(const std::string& keys) { desktop.keyboard.press(keys); }
    void type(const std::string& letters);

    // The host's, with the interface in it.
    WindowId window() const { return window_; }
    bool isInFront() { return desktop.activeWindow() == window(); }
    bool isHidden() { return desktop.isHidden(window()); }
    // Once it is on the screen: the host takes its window away for a paste, and shows it again.
    std::string rewrite();
    bool originalIs(const std::string& text) {
        return comes([&] { return screen().text("text", "Original") == text; });
    }
    bool hasKeyboard(const std::string& role, const std::string& name) {
        return comes([&] { return screen().isFocused(role, name); });
    }
    ScreenReader& screen() { return *screen_; }
    bool comes(const std::function<bool()>& condition) { return waitUntil(condition); }
    // Waits for the rewrite of what has just been captured.
    bool rewritten(const std::string& text) {
        return comes([&] { return rewrite() == text && screen().isSensitive("push button", "Apply"); });
    }

    static constexpr auto known = "[Interface]\nintroduced=true\n";
    static constexpr auto atOnce = "[Interface]\nintroduced=true\nway_of_working=at_once\n";

    Desktop desktop;
    NoticeBoard notices;
    RewritingModel model;
    TemporaryFolder folder;
    std::optional<Fields> fields;
    std::optional<Process> host;

private:
    std::optional<ScreenReader> screen_;
    WindowId window_ = 0;
};

} // namespace testbed
