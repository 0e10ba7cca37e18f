// The world around the host, the same for every desktop: what these tests set up with it, and what they see
// of it besides the host. Each desktop has its own stage_….cpp. One stage lives at a time.
#pragma once

#include "platform/event.h"
#include "platform/hot_key.h"
#include "platform/main_queue.h"
#include "platform/pasteboard.h"
#include "platform/window.h"

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace conformance {

inline constexpr platform::CGEventFlags realModifiers =
    platform::kCGEventFlagMaskShift | platform::kCGEventFlagMaskControl |
    platform::kCGEventFlagMaskAlternate | platform::kCGEventFlagMaskCommand;

// What a real program takes at most to react to something.
inline constexpr platform::Seconds reaction{5};

enum class FieldKind { line, text, readOnly, password };

struct FieldSetup {
    FieldKind kind = FieldKind::text;
    std::string value;
    // What is selected: a part of the value, or nothing.
    std::string selected = {};
    std::string title = "Letter to Anna";
};

// Types and their bytes, in order.
using Offer = std::vector<std::pair<platform::PasteboardType, std::string>>;

// Another program with one focused field. Destroying it ends it.
class OtherProgram {
public:
    struct Native;
    explicit OtherProgram(std::unique_ptr<Native> native);
    ~OtherProgram();

    pid_t pid() const;
    // Of the field with the focus, as the program itself knows them.
    std::string value() const;
    std::string selected() const;

    // It changes its field by itself: the whole text, or what is selected.
    void setValue(std::string_view value);
    void select(std::string_view part);

    // The focus goes to the other field.
    void leaveField();

    // It answers nothing and reads no keys any more.
    void hang();
    // It dies at once, and is gone when the call returns.
    void kill();

    // It puts one item on the pasteboard; one of a type without bytes it announces and cannot deliver.
    void copy(const Offer& offer, std::span<const platform::PasteboardType> undeliverable = {});
    // The text it would paste; absent when there is none.
    std::optional<std::string> pasteboardText() const;
    // The bytes of a type that it would get.
    std::optional<std::string> pasteboardBytes(const platform::PasteboardType& type) const;

private:
    std::unique_ptr<Native> native_;
};

class Stage {
public:
    Stage();
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    // The program is in front and its field, which is followed by an empty one, has the focus when the call
    // returns.
    std::unique_ptr<OtherProgram> open(const FieldSetup& setup);

    // What the user does.
    void hold(platform::CGEventFlags modifiers);
    void releaseAll();
    void press(platform::CGKeyCode keyCode, platform::CGEventFlags modifiers);

    // Another program holds that combination until the handle goes.
    std::shared_ptr<void> takeHotKey(std::uint32_t keyCode, std::uint32_t modifiers);

    // How the desktop shows one of the host's windows.
    bool shown(const platform::Window& window) const;
    bool minimised(const platform::Window& window) const;
    bool keptAbove(const platform::Window& window) const;

    // Runs the main loop until the condition holds; false when it does not in time.
    bool runUntil(const std::function<bool()>& condition, platform::Seconds within = reaction);
    // Runs the main loop for a moment, in which nothing is expected to happen.
    void runABit();

    struct Native;

private:
    std::unique_ptr<Native> native_;
};

} // namespace conformance
