#include "model/loop_host.h"

#include "platform/main_queue.h"
#include "support/describe.h"

#include <glib.h>

#include <chrono>
#include <thread>

using namespace std::chrono_literals;
using flutter::EncodableMap;

LoopHost::LoopHost() {
    // The main thread makes the queue, as in the host: the thread sanitizer does not see GLib's own locks.
    platform::MainQueue::async([] {});
    messenger.deliver("quillmark.quillmark/system_model/events", flutter::encodeMethodCall({"listen", {}}));
}

std::string LoopHost::call(const char* method, EncodableMap arguments) {
    const auto answer = messenger.deliver("quillmark.quillmark/system_model",
                                          flutter::encodeMethodCall({method, std::move(arguments)}));
    return answer ? describeAnswer(*answer) : "unanswered";
}

std::string LoopHost::respond(const std::string& id, const std::string& prompt) {
    return call("respond",
                {{"request_id", id}, {"instructions", "be kind"}, {"prompt", prompt}, {"max_tokens", 7}});
}

std::vector<std::string> LoopHost::eventsUntil(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + 20s;
    while (!condition() && std::chrono::steady_clock::now() < deadline) {
        if (!g_main_context_iteration(nullptr, FALSE)) std::this_thread::sleep_for(200us);
    }
    std::vector<std::string> events;
    for (const auto& sent : std::exchange(messenger.sent, {}))
        events.push_back(describeEvent(sent.message));
    return events;
}

std::vector<std::string> LoopHost::allEvents() {
    return eventsUntil([&] {
        if (messenger.sent.empty()) return false;
        const auto last = describeEvent(messenger.sent.back().message);
        return last.find(" text text=") == std::string::npos && !g_main_context_pending(nullptr);
    });
}
