#pragma once

namespace platform {

// The help that comes with the program: share/doc/quillmark-host/docs/help.html, beside the folder of the
// program as it is installed, or in it as it is built.
bool hasHelpPages();

// Opens it with the user's default program for such files; beeps when there is none.
void showHelpPages();

} // namespace platform
