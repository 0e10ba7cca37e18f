#include "platform/linux/checks/hot_key_check.h"

#include "platform/hot_key.h"
#include "platform/linux/checks/hot_key_holder.h"
#include "platform/linux/x11/keyboard/combination_name.h"
#include "platform/linux/x11/keyboard/key_positions.h"

namespace platform {
namespace {

using Grade = Finding::Grade;
using HotKeyState = HostReport::HotKeyState;

constexpr std::uint32_t usualKey = 49; // the space bar
constexpr std::uint32_t usualModifiers = optionKey | shiftKey;

// As the host would find it when it starts now.
HostReport withoutHost() {
    HostReport report;
    const auto key = x11::xKeyCode(usualKey);
    if (key) report.combination = x11::combinationName(*key, usualModifiers);
    const auto taken = RegisterEventHotKey(usualKey, usualModifiers, {}, GetApplicationEventTarget(), 0);
    report.hotKey = taken ? HotKeyState::held : HotKeyState::refused;
    return report;
}

constexpr const char* mend =
    "Choose another combination in the settings, free it in the program that has it, or "
    "have a shortcut of the desktop run: quillmark-host --capture";

} // namespace

Finding checkHotKey(const std::optional<HostReport>& host) {
    const std::string name = "hot-key";
    const HostReport report = host ? *host : withoutHost();
    const std::string& keys = report.combination;
    switch (report.hotKey) {
    case HotKeyState::none:
        return {name, Grade::degraded, "none", "The interface has not asked for one: no key captures a text.",
                "Wait until the interface has started, or have a shortcut of the desktop run: quillmark-host "
                "--capture"};
    case HotKeyState::paused:
        return {name, Grade::degraded, keys + ", paused", "Other programs get these keys.",
                "Run: quillmark-host --pause"};
    case HotKeyState::refused: {
        const auto holder = hotKeyHolder(keys);
        return {name, Grade::missing, keys + " belongs to " + holder.value_or("another program"),
                "Pressing it captures nothing.", mend};
    }
    case HotKeyState::held:
        break;
    }
    if (const auto option = layoutSwitchWithin(keys))
        return {name, Grade::degraded,
                keys + ", of which the keyboard's layout switch takes a part (" + *option + ")",
                "The keys switch the layout and may not reach the host.", mend};
    return {name, Grade::good, keys + (host ? " is the host's" : " is free"), "", ""};
}

} // namespace platform
