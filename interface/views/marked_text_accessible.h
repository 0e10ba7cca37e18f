// Says to a screen reader what the marks say to the eye: the marked text is struck through, or underlined.
#pragma once

#include <glibmm/object.h>

namespace quillmark {

// The type of the accessible object of a MarkedText.
GType markedTextAccessibleType();

} // namespace quillmark
