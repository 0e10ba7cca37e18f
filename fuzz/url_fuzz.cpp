// Links come from the interface, addresses of model servers from the person and the environment: any text.
// What has been accepted must be accepted again as it is then written.
#include "check.h"
#include "platform/models/settings/server_address.h"
#include "platform/url.h"

using namespace platform;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto text = asText({data, size});
    if (const auto url = URL::URLWithString(text)) {
        const auto again = URL::URLWithString(url->absoluteString());
        check(again && again->absoluteString() == url->absoluteString());
        check(again->scheme() == url->scheme() && again->path() == url->path());
    }
    URL::fileURLWithPath(text, (size & 1U) != 0);
    if (const auto server = readServerAddress(text)) check(readServerAddress(server->url()) == server);
    return 0;
}
