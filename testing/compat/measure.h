#pragma once

#include "testing/compat/outcome.h"
#include "testing/compat/target.h"
#include "testing/desktop/desktop.h"
#include "testing/desktop/host.h"

namespace compat {

// Tries one target once: its selection, its field and its password field, each in a program of its own.
Outcomes measure(testbed::Desktop& desktop, testbed::Host& host, const Target& target);

} // namespace compat
