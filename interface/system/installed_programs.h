// Programs that the desktop's menus list.
#pragma once

#include "settings/programs.h"

#include <vector>

namespace quillmark {

// By name. Reads a few hundred files; main thread only.
std::vector<ProgramName> installedPrograms();

} // namespace quillmark
