// The model channel's methods, and the events' way to the interface.
#include "model/system_model_bridge.h"

#include "flutter/arguments.h"
#include "model/model_event.h"
#include "platform/main_queue.h"

#include <utility>

using flutter::asString;
using flutter::member;

std::shared_ptr<SystemModelBridge> SystemModelBridge::create(flutter::BinaryMessenger& messenger) {
    std::shared_ptr<SystemModelBridge> bridge{new SystemModelBridge(messenger)};
    const std::weak_ptr weak{bridge};
    bridge->events_.setStreamHandler(weak);
    bridge->method_.setMethodCallHandler(
        [weak](const flutter::MethodCall& call, flutter::MethodResult result) {
            const auto alive = weak.lock();
            if (!alive) return result.notImplemented();
            alive->handle(call, std::move(result));
        });
    return bridge;
}

SystemModelBridge::SystemModelBridge(flutter::BinaryMessenger& messenger)
    : method_(messenger, "quillmark.quillmark/system_model"),
      events_(messenger, "quillmark.quillmark/system_model/events") {}

std::optional<flutter::FlutterError> SystemModelBridge::onListen(const flutter::EncodableValue&,
                                                                 flutter::EventSink sink) {
    sink_ = std::move(sink);
    return std::nullopt;
}

std::optional<flutter::FlutterError> SystemModelBridge::onCancel(const flutter::EncodableValue&) {
    sink_ = nullptr;
    return std::nullopt;
}

void SystemModelBridge::handle(const flutter::MethodCall& call, flutter::MethodResult result) {
    const auto* arguments = flutter::asMap(call.arguments);
    if (call.method == "availability") return result.success(availability());
    if (call.method == "respond") return respond(arguments, std::move(result));
    if (call.method == "cancel") {
        cancel(arguments);
        return result.success();
    }
    if (call.method == "prewarm") return result.success();
    result.notImplemented();
}

void SystemModelBridge::respond(const flutter::EncodableMap* arguments, flutter::MethodResult result) {
    const auto* id = asString(member(arguments, "request_id"));
    if (!id) return result.error("args", "request_id required");

    GenerationRequest request;
    request.id = *id;
    if (const auto* text = asString(member(arguments, "instructions"))) request.instructions = *text;
    if (const auto* text = asString(member(arguments, "prompt"))) request.prompt = *text;
    if (const auto greedy = flutter::asBool(member(arguments, "greedy"))) request.greedy = *greedy;
    if (const auto limit = flutter::asInt64(member(arguments, "max_tokens"))) request.maxTokens = *limit;
    respond(std::move(request));
    result.success();
}

void SystemModelBridge::respond(GenerationRequest request) {
    if (!systemHasLanguageModel()) {
        emit(modelEvent(request.id, "error", "error", "system model unavailable on this macOS"));
        return;
    }
    const auto id = request.id;
    tasks_.insert_or_assign(id, generate(weak_from_this(), std::move(request)));
}

void SystemModelBridge::cancel(const flutter::EncodableMap* arguments) {
    const auto* id = asString(member(arguments, "request_id"));
    if (!id) return;
    if (const auto task = tasks_.find(*id); task != tasks_.end()) task->second.cancel();
}

void SystemModelBridge::emit(flutter::EncodableMap event) {
    platform::MainQueue::async([bridge = shared_from_this(), event = std::move(event)]() mutable {
        if (bridge->sink_) bridge->sink_(std::move(event));
    });
}
