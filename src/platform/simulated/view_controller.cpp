#include "platform/view_controller.h"

#include "platform/simulated/interface.h"
#include "platform/simulated/world.h"

namespace simulated {

std::shared_ptr<const HostReply> Interface::ask(std::string channel, Bytes message) {
    auto result = std::make_shared<HostReply>();
    World::current().clock.async(
        [this, life = handle(), channel = std::move(channel), message = std::move(message), result] {
            if (life.expired()) return;
            deliver(channel, message, [result](Bytes bytes) {
                if (result->bytes) return;
                *result = {std::move(bytes), platform::now()};
            });
        });
    return result;
}

void Interface::send(std::string_view channel, std::span<const std::uint8_t> message) {
    send(channel, message, nullptr);
}

void Interface::send(std::string_view channel, std::span<const std::uint8_t> message, Reply onReply) {
    Reply reply;
    if (onReply) {
        reply = [life = handle(), onReply = std::move(onReply)](Bytes bytes) {
            World::current().clock.async([life, onReply, bytes = std::move(bytes)] {
                if (!life.expired()) onReply(bytes);
            });
        };
    }
    Message& sent = received.emplace_back(Message{std::string(channel), Bytes(message.begin(), message.end()),
                                                  platform::now(), std::move(reply)});
    if (onMessage) onMessage(sent);
}

void Interface::setMessageHandler(std::string channel, MessageHandler handler) {
    if (handler)
        handlers_[std::move(channel)] = std::move(handler);
    else
        handlers_.erase(channel);
}

void Interface::deliver(const std::string& channel, std::span<const std::uint8_t> message, Reply reply) {
    const auto found = handlers_.find(channel);
    if (found == handlers_.end()) return reply({});
    // A copy: the handler may replace itself.
    const MessageHandler handler = found->second;
    handler({message.begin(), message.end()}, std::move(reply));
}

} // namespace simulated

namespace flutter {

using simulated::World;

ViewController::ViewController() : native_(std::make_unique<Native>()) {
    World::current().interfaces.push_back(&native_->interface);
}

ViewController::~ViewController() {
    if (World* world = World::currentOrNull()) std::erase(world->interfaces, &native_->interface);
}

BinaryMessenger& ViewController::binaryMessenger() const { return native_->interface; }
ViewController::Native& ViewController::native() const { return *native_; }

} // namespace flutter
