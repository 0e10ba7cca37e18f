// Whether the desktop shows status icons at all. Some have no place for them.
#pragma once

namespace quillmark {

// A StatusNotifierWatcher is on the session bus, or an older notification area on the screen (which the
// library of the status icon falls back to). Main thread only; takes a millisecond.
bool hasPlaceForIcon();

} // namespace quillmark
