#include "platform/linux/say.h"

#include <iostream>

namespace platform {

void say(std::string_view sentence) { std::cerr << "quillmark-host: " << sentence << std::endl; }

} // namespace platform
