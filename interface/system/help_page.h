// The help that comes with the program.
#pragma once

#include <string>

namespace quillmark {

// share/doc/quillmark-host/docs/help.html beside the folder of this program. Empty when it is not installed.
std::string helpPage();

} // namespace quillmark
