// The client library against the other end of a socket pair, which plays the host.
#include "client/connection.h"
#include "client/desktop.h"
#include "flutter/fake_messenger.h"
#include "flutter/frame.h"
#include "flutter/standard_codec.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <functional>
#include <thread>

namespace quillmark {
namespace {

using flutter::EncodableMap;
using flutter::Frame;
using flutter::FrameKind;

// The host's end, on a thread of its own; `talk` runs there and the connection closes behind it.
class FakeHost {
public:
    explicit FakeHost(const std::function<void(FakeHost&)>& talk) {
        if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends_.data()) != 0) std::abort();
        thread_ = std::thread([this, talk] {
            talk(*this);
            close(ends_[1]);
        });
    }
    ~FakeHost() { thread_.join(); }

    int interfaceEnd() const { return ends_[0]; }

    void send(const Frame& frame) { sendBytes(flutter::encodeFrame(frame).value()); }
    void sendBytes(std::vector<std::uint8_t> bytes) {
        for (const auto byte : bytes)
            if (::send(ends_[1], &byte, 1, MSG_NOSIGNAL) != 1) return; // the interface has seen enough
    }
    Frame next() {
        for (;;) {
            if (auto frame = reader_.next()) return *frame;
            std::array<std::uint8_t, 4096> buffer;
            const ssize_t count = recv(ends_[1], buffer.data(), buffer.size(), 0);
            if (count <= 0) return {};
            reader_.feed({buffer.data(), static_cast<std::size_t>(count)});
        }
    }

private:
    std::array<int, 2> ends_{};
    flutter::FrameReader reader_;
    std::thread thread_;
};

const char* const channelName = "quillmark.quillmark/desktop";

TEST(ClientLibrary, HandsACaptureOverAndItsRewriteBack) {
    std::optional<flutter::MethodCall> paste;
    FakeHost host([&](FakeHost& self) {
        const EncodableMap capture{
            {"text", "teh"}, {"source", "selection"}, {"token", "T"}, {"truncated", true}};
        self.send({FrameKind::message, 0, channelName, flutter::encodeMethodCall({"capture", capture})});
        const Frame call = self.next();
        paste = flutter::decodeMethodCall(call.payload);
        self.send({FrameKind::reply, call.id, "", flutter::encodeSuccessEnvelope("pasted")});
    });
    Connection connection(host.interfaceEnd());
    bool pasted = false;
    Desktop desktop(connection.messenger(), {.capture = [&](const Capture& capture) {
                        EXPECT_EQ(capture.source, "selection");
                        EXPECT_TRUE(capture.truncated);
                        EXPECT_EQ(capture.appName, "") << "an absent member counts as empty";
                        desktop.paste(capture.text + "!", capture.token,
                                      [&](bool done, auto) { pasted = done; });
                    }});
    connection.run();
    EXPECT_TRUE(pasted);
    ASSERT_TRUE(paste);
    EXPECT_EQ(paste->method, "paste");
    EXPECT_EQ(paste->arguments, flutter::EncodableValue(EncodableMap{{"text", "teh!"}, {"token", "T"}}));
}

TEST(ClientLibrary, ReportsTheHostsRefusals) {
    FakeMessenger host;
    Desktop desktop(host, {});
    std::vector<std::optional<std::string>> failures;
    desktop.openUrl("http://example.org", [&](auto failure) { failures.push_back(failure); });
    desktop.openPath("/nowhere", [&](auto failure) { failures.push_back(failure); });
    host.sent.at(0).onReply(flutter::encodeErrorEnvelope("open_url", "Could not"));
    host.sent.at(1).onReply({});
    EXPECT_EQ(failures,
              (std::vector<std::optional<std::string>>{"Could not", "This host does not know that call"}));
}

TEST(ClientLibrary, AMessageLargerThanTheSocketTakesArrivesWhole) {
    const std::string text(8 << 20, 'x');
    std::size_t arrived = 0;
    FakeHost host([&](FakeHost& self) { arrived = self.next().payload.size(); });
    Connection connection(host.interfaceEnd());
    Desktop desktop(connection.messenger(), {});
    desktop.paste(text, "", [](bool, auto) {});
    connection.run();
    EXPECT_GT(arrived, text.size());
}

TEST(ClientLibrary, ThrowsWithoutAHostAndWhenTheHostBreaksTheRules) {
    unsetenv("QUILLMARK_SOCKET");
    EXPECT_THROW(Connection::toHost(), ConnectionError);
    setenv("QUILLMARK_SOCKET", "/nowhere/socket", 1);
    EXPECT_THROW(Connection::toHost(), ConnectionError);

    FakeHost host([](FakeHost& self) { self.sendBytes({5, 0, 0, 0, 9, 0, 0, 0, 0}); });
    Connection connection(host.interfaceEnd());
    EXPECT_THROW(connection.run(), ConnectionError) << "an unknown kind of frame went unnoticed";
}

} // namespace
} // namespace quillmark
