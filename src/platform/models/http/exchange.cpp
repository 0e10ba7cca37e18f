#include "platform/models/http/exchange.h"

#include "platform/models/http/transfer_loop.h"
#include "platform/never_destroyed.h"

#include <utility>

namespace platform {
namespace {

TransferLoop& loopFor(bool urgent) {
    static const auto initialized = curl_global_init(CURL_GLOBAL_DEFAULT);
    static const NeverDestroyed<TransferLoop> ordinary, ahead;
    static_cast<void>(initialized);
    return urgent ? *ahead : *ordinary;
}

} // namespace

std::function<void()> startHttpExchange(HttpRequest request, std::shared_ptr<HttpReceiver> receiver) {
    auto& loop = loopFor(request.urgent);
    const auto number = loop.start(std::move(request), std::move(receiver));
    return [&loop, number] { loop.stop(number); };
}

} // namespace platform
