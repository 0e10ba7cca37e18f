// A message bus in this process on which one program answers every call with whatever an input says.
#pragma once

#include "platform/linux/at_spi/bus.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>

class FakeBus {
public:
    // The body of the reply to a call of that method; null for an error. Called on GDBus's own thread.
    using CallHandler = std::function<GVariant*(std::string_view method)>;

    FakeBus();
    ~FakeBus();
    FakeBus(const FakeBus&) = delete;
    FakeBus& operator=(const FakeBus&) = delete;

    platform::at_spi::Bus& client() { return *client_; }
    // Who answers from now on.
    void setAnswer(CallHandler answer);

private:
    static GDBusMessage* handle(GDBusConnection* connection, GDBusMessage* message, gboolean incoming,
                                gpointer bus);
    GVariant* replyTo(GDBusMessage& call);

    std::filesystem::path folder_;
    std::mutex mutex_;
    CallHandler answer_; // under the mutex
    platform::Handle<GDBusConnection, g_object_unref> server_;
    std::unique_ptr<platform::at_spi::Bus> client_;
};
