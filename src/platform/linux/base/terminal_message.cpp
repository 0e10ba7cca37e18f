#include "platform/linux/base/terminal_message.h"

#include <iostream>

namespace platform {

void printMessage(std::string_view sentence) { std::cerr << "quillmark-host: " << sentence << std::endl; }

} // namespace platform
