// An interface that only quits, once the host has answered it. The host ends with status 0 then.
#include <client/connection.h>
#include <client/desktop.h>

int main() {
    auto connection = quillmark::Connection::toHost();
    quillmark::Desktop desktop(connection.messenger(), {});
    desktop.initialize({}, {}, [&](bool) { desktop.quit(); });
    connection.run();
}
