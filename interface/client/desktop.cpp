#include "client/desktop.h"

#include "flutter/arguments.h"

#include <utility>

namespace quillmark {

using flutter::EncodableList;
using flutter::EncodableMap;
using flutter::EncodableValue;

namespace {

std::string stringMember(const EncodableMap* map, std::string_view key) {
    const std::string* value = flutter::asString(flutter::member(map, key));
    return value ? *value : std::string();
}

Capture captureOf(const EncodableValue& arguments) {
    const EncodableMap* map = flutter::asMap(arguments);
    return {.text = stringMember(map, "text"),
            .source = stringMember(map, "source"),
            .appId = stringMember(map, "app_id"),
            .appName = stringMember(map, "app_name"),
            .title = stringMember(map, "title"),
            .token = stringMember(map, "token"),
            .truncated = flutter::asBool(flutter::member(map, "truncated")).value_or(false)};
}

// The answer's value; null, with the reason in `failure`, when there is none.
EncodableValue valueOf(const flutter::CallOutcome& outcome, std::optional<std::string>& failure) {
    if (const auto* value = std::get_if<EncodableValue>(&outcome)) return *value;
    const auto* error = std::get_if<flutter::FlutterError>(&outcome);
    failure = error ? error->message.value_or(error->code) : "This host does not know that call";
    return {};
}

} // namespace

Desktop::Desktop(flutter::BinaryMessenger& messenger, HostCalls calls)
    : channel_(messenger, "quillmark.quillmark/desktop") {
    channel_.setMethodCallHandler(
        [calls = std::move(calls)](const flutter::MethodCall& call, flutter::MethodResult result) {
            if (call.method == "capture" && calls.capture)
                calls.capture(captureOf(call.arguments));
            else if (call.method == "close" && calls.close)
                calls.close();
            else if (call.method == "quit" && calls.quit)
                calls.quit();
            else
                return result.notImplemented();
            result.success();
        });
}

void Desktop::initialize(const std::vector<std::string>& excludedApps, const HotKey& hotKey,
                         std::function<void(bool)> done) {
    const EncodableMap keys{{"keyCode", hotKey.keyCode},
                            {"command", hotKey.command},
                            {"option", hotKey.option},
                            {"control", hotKey.control},
                            {"shift", hotKey.shift}};
    const EncodableMap arguments{{"excluded_apps", EncodableList(excludedApps.begin(), excludedApps.end())},
                                 {"hotkey", keys}};
    channel_.invokeMethod(
        "initialize", arguments, [done = std::move(done)](const flutter::CallOutcome& outcome) {
            std::optional<std::string> failure;
            const EncodableValue reply = valueOf(outcome, failure);
            done(
                flutter::asBool(flutter::member(flutter::asMap(reply), "hotkey_registered")).value_or(false));
        });
}

void Desktop::paste(std::string_view text, std::string_view token,
                    std::function<void(bool, std::optional<std::string>)> done) {
    const EncodableMap arguments{{"text", text}, {"token", token}};
    channel_.invokeMethod("paste", arguments, [done = std::move(done)](const flutter::CallOutcome& outcome) {
        std::optional<std::string> failure;
        const EncodableValue reply = valueOf(outcome, failure);
        done(reply == EncodableValue("pasted"), std::move(failure));
    });
}

void Desktop::show() { channel_.invokeMethod("show"); }
void Desktop::hide() { channel_.invokeMethod("hide"); }
void Desktop::pin(bool above) { channel_.invokeMethod("pin", above); }
void Desktop::growHeight(double points) { channel_.invokeMethod("growHeight", points); }
void Desktop::quit() { channel_.invokeMethod("quit"); }
void Desktop::cancelQuit() { channel_.invokeMethod("cancelQuit"); }
void Desktop::requestPermission() { channel_.invokeMethod("requestPermission"); }

void Desktop::localize(const std::map<std::string, std::string>& labels) {
    EncodableMap map;
    for (const auto& [key, label] : labels)
        map.set(key, label);
    channel_.invokeMethod("localize", map);
}

void Desktop::openPath(std::string_view path, Done done) { call("openPath", path, std::move(done)); }
void Desktop::openUrl(std::string_view url, Done done) { call("openUrl", url, std::move(done)); }
void Desktop::excludeModelBackups(std::string_view directory, Done done) {
    call("excludeModelBackups", directory, std::move(done));
}

void Desktop::call(std::string_view method, EncodableValue arguments, Done done) {
    channel_.invokeMethod(method, std::move(arguments),
                          [done = std::move(done)](const flutter::CallOutcome& outcome) {
                              std::optional<std::string> failure;
                              valueOf(outcome, failure);
                              if (done) done(std::move(failure));
                          });
}

} // namespace quillmark
