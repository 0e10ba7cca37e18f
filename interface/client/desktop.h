// The host's desktop channel as an interface uses it: its calls as functions, the host's calls as handlers.
// docs/channels.md says what each one does. Belongs to the messenger's thread; handlers run inside
// Connection::run().
#pragma once

#include "flutter/method_channel.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmark {

// A key by its place on the keyboard (49 is the space bar) and what is held with it.
struct HotKey {
    int keyCode = 49;
    bool command = false;
    bool option = true;
    bool control = false;
    bool shift = true;

    friend bool operator==(const HotKey&, const HotKey&) = default;
};

// What the user had selected or was editing when the hot key was pressed.
struct Capture {
    std::string text = {};
    std::string source = {}; // "selection", "field" or "clipboard"
    std::string appId = {};  // empty when unknown, like the two below
    std::string appName = {};
    std::string title = {};
    std::string token = {}; // empty: the text cannot be put back, only copied
    bool truncated = false;
};

struct HostCalls {
    std::function<void(const Capture&)> capture = {};
    std::function<void()> close = {}; // the window is being hidden, as asked
    std::function<void()> quit = {};  // answer with quit() or cancelQuit()
};

class Desktop {
public:
    // Absent on success, else the host's sentence.
    using Done = std::function<void(std::optional<std::string> failure)>;

    Desktop(flutter::BinaryMessenger& messenger, HostCalls calls);

    // Must come first: from now on the host asks before it quits. Tells whether the hot key is this
    // program's.
    void initialize(const std::vector<std::string>& excludedApps, const HotKey& hotKey,
                    std::function<void(bool registered)> done);

    // Puts `text` where the capture with that token came from. `pasted` false: it is on the pasteboard
    // instead.
    void paste(std::string_view text, std::string_view token,
               std::function<void(bool pasted, std::optional<std::string> failure)> done);

    void show();
    void hide();
    void pin(bool above);
    void growHeight(double points);
    void quit();
    void cancelQuit();
    void requestPermission();
    void localize(const std::map<std::string, std::string>& labels);
    void openPath(std::string_view path, Done done = {});
    void openUrl(std::string_view url, Done done = {});
    void excludeModelBackups(std::string_view directory, Done done = {});

private:
    void call(std::string_view method, flutter::EncodableValue arguments, Done done);

    flutter::MethodChannel channel_;
};

} // namespace quillmark
