#pragma once

namespace platform {

// The guide installed with the program: ../share/doc/quillmark-host/README.md as seen from the program's own
// folder.
bool hasHelpPages();

// Opens it with the user's default program for such files.
void showHelpPages();

} // namespace platform
