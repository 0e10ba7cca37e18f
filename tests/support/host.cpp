#include "support/host.h"

#include "app/main_interface.h"
#include "flutter/arguments.h"
#include "platform/hot_key.h"
#include "support/describe.h"

using flutter::EncodableMap;
using flutter::EncodableValue;

namespace {

constexpr auto desktopChannel = "quillmark.quillmark/desktop";

} // namespace

Host::Host() {
    auto made = loadMainInterface();
    delegate = std::dynamic_pointer_cast<AppDelegate>(made.delegate);
    window = std::dynamic_pointer_cast<MainFlutterWindow>(made.mainWindow);
    auto& application = platform::Application::sharedApplication();
    application.setDelegate(delegate.get());
    application.setMainMenu(std::move(made.mainMenu));
    window->awakeFromNib();
}

Host::~Host() {
    platform::Application::sharedApplication().setDelegate(nullptr);
    window.reset();
}

std::string Host::Call::text() const { return answered() ? describeAnswer(*answer_->bytes) : "unanswered"; }

Host::Call Host::call(std::string method, EncodableValue arguments) {
    auto answer = world.interface().ask(desktopChannel,
                                        flutter::encodeMethodCall({std::move(method), std::move(arguments)}));
    world.settle();
    return Call{answer};
}

std::vector<flutter::MethodCall> Host::calls() const {
    std::vector<flutter::MethodCall> calls;
    for (const auto& message : world.interface().received) {
        if (auto call = flutter::decodeMethodCall(message.bytes);
            call && message.channel == desktopChannel && !message.reply)
            calls.push_back(std::move(*call));
    }
    return calls;
}

std::vector<std::string> Host::calledMethods() const {
    std::vector<std::string> methods;
    for (auto& call : calls())
        methods.push_back(std::move(call.method));
    return methods;
}

void Host::pressHotkey() {
    if (!window->bridge()->initialized()) call("initialize");
    constexpr platform::CGKeyCode space = 49;
    world.userPresses(space, platform::kCGEventFlagMaskAlternate | platform::kCGEventFlagMaskShift);
    world.settle();
}

std::optional<EncodableMap> Host::capture() {
    const auto before = calls().size();
    pressHotkey();
    const auto all = calls();
    if (all.size() != before + 1 || all.back().method != "capture") return std::nullopt;
    const auto* map = flutter::asMap(all.back().arguments);
    return map ? std::optional{*map} : std::nullopt;
}

std::string textOf(const EncodableMap& map, std::string_view key) {
    const auto* text = flutter::asString(flutter::member(&map, key));
    return text ? *text : "";
}
