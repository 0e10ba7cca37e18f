#include "platform/models/http/exchange.h"

#include "platform/models/http/transfer_loop.h"
#include "platform/never_destroyed.h"

#include <cstdlib>
#include <utility>

namespace platform {
namespace {

struct Loops {
    TransferLoop ordinary, urgent;
};

// libcrypto 3.0, which libcurl initializes, frees what a handshake uses when the program ends. What is
// registered for the end later, as the halt is, runs before that.
Loops& loops() {
    static const auto initialized = curl_global_init(CURL_GLOBAL_DEFAULT);
    static const NeverDestroyed<Loops> loops;
    static const auto halting = std::atexit([] {
        loops->ordinary.halt();
        loops->urgent.halt();
    });
    static_cast<void>(initialized);
    static_cast<void>(halting);
    return *loops;
}

} // namespace

std::function<void()> startHttpExchange(HttpRequest request, std::shared_ptr<HttpReceiver> receiver) {
    auto& loop = request.urgent ? loops().urgent : loops().ordinary;
    const auto number = loop.start(std::move(request), std::move(receiver));
    return [&loop, number] { loop.stop(number); };
}

} // namespace platform
