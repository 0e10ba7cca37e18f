#include "hotkey/hot_key.h"

#include <utility>

namespace {

constexpr platform::EventTypeSpec pressed{platform::kEventClassKeyboard, platform::kEventHotKeyPressed};
constexpr platform::EventHotKeyID identifier{0x514D484B /* 'QMHK' */, 1};

} // namespace

HotKey::HotKey(std::function<void()> callback) : callback_(std::move(callback)) {}

std::unique_ptr<HotKey> HotKey::create(std::uint32_t keyCode, std::uint32_t modifiers,
                                       std::function<void()> callback) {
    std::unique_ptr<HotKey> hotKey{new HotKey(std::move(callback))};
    const auto target = platform::GetApplicationEventTarget();

    auto press = [hotKey = hotKey.get()] {
        hotKey->callback_();
        return platform::noErr;
    };
    hotKey->handlerRef_ = platform::InstallEventHandler(target, press, pressed);
    if (!hotKey->handlerRef_) return nullptr;

    hotKey->hotKeyRef_ = platform::RegisterEventHotKey(keyCode, modifiers, identifier, target, 0);
    if (!hotKey->hotKeyRef_) return nullptr;
    return hotKey;
}

HotKey::~HotKey() {
    hotKeyRef_.reset();
    handlerRef_.reset();
}
