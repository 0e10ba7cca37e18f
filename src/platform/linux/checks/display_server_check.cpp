#include "platform/linux/checks/display_server_check.h"

#include "platform/linux/base/environment.h"
#include "platform/linux/checks/sentence.h"
#include "platform/linux/x11/base/display_check.h"
#include "platform/linux/x11/base/xlib_connection.h"

#include <X11/Xlib.h>

namespace platform {

using Grade = Finding::Grade;

Finding checkDisplayServer() {
    const std::string name = "display-server";
    if (const auto problem = displayProblem()) return notThere(name, "none that the host can use", *problem);
    Display* display = x11::XlibConnection::shared()->display();
    for (const char* extension : {"XTEST", "XFIXES", "XKEYBOARD", "XInputExtension"}) {
        int ignored = 0;
        if (XQueryExtension(display, extension, &ignored, &ignored, &ignored) == False)
            return {name, Grade::missing, std::string("an X server without the extension ") + extension,
                    "The host cannot follow the keyboard and the pasteboard, or type.",
                    "Start the X server with this extension, or use another X server."};
    }
    const int screen = DefaultScreen(display);
    return {name, Grade::good,
            "X11 on " + environmentVariable("DISPLAY") + ", " +
                std::to_string(DisplayWidth(display, screen)) + " × " +
                std::to_string(DisplayHeight(display, screen)) + " pixels",
            "", ""};
}

} // namespace platform
