// Whether the person has just closed the window.
#pragma once

namespace quillmark {

// The host asks whether to quit in the same way when its window is closed as when the person quits, or logs
// out. It is closed by the button on the title bar, where the pointer is then, or by a combination of the
// window manager's, such as Alt+F4, which is still held; the host's own for quitting has Control. `view` is
// the one in that window. Main thread only.
bool personClosesWindow(unsigned long view);

} // namespace quillmark
