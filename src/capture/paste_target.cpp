#include "capture/paste_target.h"

#include "capture/ax.h"
#include "text/text.h"

namespace {

bool same(const std::optional<std::string>& a, const std::optional<std::string>& b) {
    return a && b ? text::equalStrings(*a, *b) : !a && !b;
}

} // namespace

PasteTarget::PasteTarget(const CaptureState& capture)
    : element(capture.element), window(capture.sourceWindow), value(capture.originalValue),
      selection(capture.originalSelection), range(capture.originalRange), replaceAll(capture.replaceAll) {}

bool PasteTarget::textUnchanged(const platform::AXUIElementRef& current) const {
    return !value || same(AX::stringAttribute(current, "AXValue"), value);
}

bool PasteTarget::selectionUnchanged(const platform::AXUIElementRef& current) const {
    return same(AX::stringAttribute(current, "AXSelectedText"), selection);
}
