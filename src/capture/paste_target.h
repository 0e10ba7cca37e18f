// The place a paste goes to, as it was when the text was captured. A plain record; it keeps its elements
// alive.
#pragma once

#include "capture/capture_state.h"

#include <optional>
#include <string>

struct PasteTarget {
    explicit PasteTarget(const CaptureState& capture);

    platform::AXUIElementRef element;
    platform::AXUIElementRef window;
    std::optional<std::string> value;
    std::optional<std::string> selection;
    std::optional<platform::CFRange> range;
    bool replaceAll = false;

    // Whether the element's whole text is what it was, where it was known.
    bool textUnchanged(const platform::AXUIElementRef& current) const;

    // Whether the selected text is what it was, wherever it stands.
    bool selectionUnchanged(const platform::AXUIElementRef& current) const;
};
