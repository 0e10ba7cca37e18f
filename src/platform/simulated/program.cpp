#include "platform/simulated/program.h"

#include <algorithm>
#include <utility>

namespace simulated {
namespace {

// The selection's start and length, cut to what lies inside the value.
std::pair<std::size_t, std::size_t> bounds(const Field& field) {
    const auto size = static_cast<std::int64_t>(field.value.size());
    const std::int64_t start = std::clamp<std::int64_t>(field.selection.location, 0, size);
    const std::int64_t length = std::clamp<std::int64_t>(field.selection.length, 0, size - start);
    return {static_cast<std::size_t>(start), static_cast<std::size_t>(length)};
}

} // namespace

std::string Field::selectedText() const {
    const auto [start, length] = bounds(*this);
    return value.substr(start, length);
}

void Field::selectAll() { selection = {0, static_cast<std::int64_t>(value.size())}; }

void Field::replaceSelection(std::string_view text) {
    const auto [start, length] = bounds(*this);
    value.replace(start, length, text);
    selection = {static_cast<std::int64_t>(start + text.size()), 0};
}

Field passwordField(std::string value) {
    return {.role = "AXTextField",
            .subrole = "AXSecureTextField",
            .value = std::move(value),
            .copies = Copies::nothing};
}

ProgramWindow& Program::openWindow(std::string title) {
    focusedWindow = &windows.emplace_back(ProgramWindow{.title = std::move(title)});
    focusedField = nullptr;
    return *focusedWindow;
}

Field& Program::addField(Field field) {
    if (focusedWindow == nullptr) openWindow("Untitled");
    focusedField = &focusedWindow->fields.emplace_back(std::move(field));
    return *focusedField;
}

void Program::focus(Field& field) {
    focusedField = &field;
    for (ProgramWindow& window : windows) {
        for (const Field& candidate : window.fields) {
            if (&candidate == &field) focusedWindow = &window;
        }
    }
}

} // namespace simulated
