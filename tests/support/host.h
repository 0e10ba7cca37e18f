// The host on a simulated desktop, with the test as its interface.
#pragma once

#include "app/app_delegate.h"
#include "app/main_flutter_window.h"
#include "flutter/method_channel.h"
#include "platform/simulated/world.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

struct Host {
    simulated::World world;
    std::shared_ptr<AppDelegate> delegate;
    std::shared_ptr<MainFlutterWindow> window;

    // Started and awake; the interface has said nothing yet.
    Host();
    // A pending paste holds the bridge, so the host lets go of the window first.
    ~Host();

    // A call of the interface's; the answer fills in when it comes.
    class Call {
    public:
        explicit Call(std::shared_ptr<const simulated::HostReply> answer) : answer_(std::move(answer)) {}
        bool answered() const { return answer_->bytes.has_value(); }
        // In a readable form (describe.h), or "unanswered".
        std::string text() const;
        simulated::TimePoint at() const { return answer_->at; }

    private:
        std::shared_ptr<const simulated::HostReply> answer_;
    };
    Call call(std::string method, flutter::EncodableValue arguments = {});

    // The methods the host has called on the interface, in order.
    std::vector<std::string> calledMethods() const;
    std::vector<flutter::MethodCall> calls() const;

    // Option+Shift+Space in whatever program is in front, and all that follows from it.
    void pressHotkey();
    // Presses it and returns what the interface was handed; absent when nothing was.
    std::optional<flutter::EncodableMap> capture();

    const platform::Window::Native& windowState() const { return window->native(); }
};

// A text of a map; the empty string when it is absent.
std::string textOf(const flutter::EncodableMap& map, std::string_view key);
