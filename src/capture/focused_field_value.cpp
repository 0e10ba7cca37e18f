#include "capture/ax.h"
#include "text/text.h"

#include <algorithm>
#include <array>

using platform::AXUIElementRef;

namespace AX {

namespace {

constexpr std::array<std::string_view, 5> textRoles{"AXTextField", "AXTextArea", "AXComboBox",
                                                    "AXSearchField", "AXWebArea"};
constexpr std::size_t characterLimit = 3000;

bool isEditable(const AXUIElementRef& element) {
    const auto value = platform::AXUIElementCopyAttributeValue(element, "AXEditable");
    const auto* editable = value ? std::get_if<bool>(&*value) : nullptr;
    return editable && *editable;
}

bool isTextField(const AXUIElementRef& element) {
    const auto role = stringAttribute(element, "AXRole").value_or("");
    return std::ranges::find(textRoles, role) != textRoles.end() || isEditable(element);
}

} // namespace

std::optional<std::string> stringAttribute(const AXUIElementRef& element, std::string_view attribute) {
    auto value = platform::AXUIElementCopyAttributeValue(element, attribute);
    auto* string = value ? std::get_if<std::string>(&*value) : nullptr;
    if (!string) return std::nullopt;
    return std::move(*string);
}

bool isSecure(const AXUIElementRef& element) {
    return text::equalStrings(stringAttribute(element, "AXSubrole").value_or(""), "AXSecureTextField");
}

std::optional<FieldValue> focusedFieldValue() {
    const auto element = focusedElement();
    if (!isTextField(element)) return std::nullopt;
    const auto value = stringAttribute(element, "AXValue");
    if (!value) return std::nullopt;

    const auto trimmed = text::trimWhitespaceAndNewlines(*value);
    if (trimmed.empty()) return std::nullopt;
    const auto cut = text::firstCharacters(trimmed, characterLimit);
    return FieldValue{std::string(cut.text), cut.truncated};
}

} // namespace AX
