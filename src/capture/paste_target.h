// The place that a paste goes to, as it was when the text was captured. A plain record, which keeps its
// elements alive.
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

    // Whether the element's whole text is what it was. True when the capture could not read it.
    bool textUnchanged(const platform::AXUIElementRef& current) const;

    // Whether the selected text is what it was; its place is not compared.
    bool selectionUnchanged(const platform::AXUIElementRef& current) const;
};
