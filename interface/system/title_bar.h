// Whether the person has just used the window's close button.
#pragma once

namespace quillmark {

// The pointer is on the title bar of the window that has this view in it: the host asks whether to quit in
// the same way when its close button is pressed as when the person quits, or logs out. Main thread only.
bool pointerIsOnTitleBar(unsigned long view);

} // namespace quillmark
