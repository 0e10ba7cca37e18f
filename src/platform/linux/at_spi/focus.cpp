#include "platform/linux/at_spi/focus.h"

#include "platform/linux/at_spi/focus_search.h"
#include "platform/linux/at_spi/text.h"
#include "platform/linux/at_spi/windows.h"

#include <algorithm>

namespace platform::at_spi {
namespace {

// More focused objects than these are not looked at: each costs calls.
constexpr std::size_t mostObjects = 16;

Toolkit toolkitOf(const Application& application) { return application.toolkit.value_or(Toolkit::other); }

std::vector<Object> latest(const FocusHistory* history, const Application& application) {
    return history != nullptr ? history->of(application.name) : std::vector<Object>();
}

bool anotherGainedFocus(const Application& application, const FocusHistory* history) {
    const auto objects = latest(history, application);
    if (objects.empty() || objects.front() == application.focusedElement) return false;
    // LibreOffice Calc tells that a panel gained the focus, and not in which of its thousands of cells it is;
    // Firefox 153 that a page gained it, and not that its address bar did.
    const Toolkit toolkit = toolkitOf(application);
    const bool mayBeSilent = toolkit == Toolkit::libreOffice || toolkit == Toolkit::gecko;
    return !mayBeSilent || objects.front() != application.latestBefore;
}

// Whether the object that was found last may still be the focused one, if it has the state FOCUSED. In
// Chromium a field of the page keeps that state while the user types into the address bar.
bool isLatest(const FocusedObject& element, const FocusHistory* history, const Application& application) {
    if (anotherGainedFocus(application, history)) return false;
    if (!latest(history, application).empty()) return rankOf(element) != Rank::none;
    return toolkitOf(application) != Toolkit::chromium && rankOf(element) == Rank::field;
}

// The element found last, if it still has the focus: the only round trip of most captures.
std::optional<FocusedObject> sameAsLast(Bus& bus, Application& application, const FocusHistory* history) {
    if (!application.activeWindow || !application.focusedElement || !application.toolkit) return std::nullopt;
    if (anotherGainedFocus(application, history)) return std::nullopt;
    std::vector<Call> calls;
    calls.push_back(stateOf(*application.activeWindow));
    addLook(*application.focusedElement, calls);
    calls.push_back(selectionOf(*application.focusedElement)); // no text, which a password field may hold
    const auto replies = bus.call(std::move(calls));
    if (!statesIn(replies[0]).has(State::active)) return std::nullopt;
    noteActive(application, *application.activeWindow);
    auto element = seenIn(&replies[1], *application.focusedElement, toolkitOf(application));
    if (!element.states.has(State::focused) || !isLatest(element, history, application)) return std::nullopt;
    element.selection = rangeIn(replies.back());
    return element;
}

// Whether the focus event of this object need not be followed by a look into it.
bool isFinal(const FocusedObject& element) {
    // Qt 5 gives the focus of an editable combo box to the box and to the field in it.
    return rankOf(element) != Rank::none && (element.text || element.role != Role::comboBox);
}

// Qt 5 gives the state FOCUSED, and tells of it, to the current cell of every table, wherever the focus is.
bool mayBeFocusedByMistake(const FocusedObject& element) {
    return !element.text && (element.role == Role::tableCell || element.role == Role::listItem ||
                             element.role == Role::treeItem);
}

// The object in `window` that gained the focus last and still has it.
std::optional<FocusedObject> latestIn(Bus& bus, const Object& window, const std::vector<Object>& windows,
                                      const Application& application, const FocusHistory* history) {
    for (const Object& object : latest(history, application)) {
        auto element = look(bus, object, toolkitOf(application)); // mostly the first is the one
        if (!element.states.has(State::focused) || !isInside(bus, element.object, window, windows)) continue;
        if (mayBeFocusedByMistake(element)) continue;
        return isFinal(element) ? std::optional(std::move(element)) : std::nullopt;
    }
    return std::nullopt;
}

std::optional<FocusedObject> best(Bus& bus, std::vector<Object> objects, Toolkit toolkit) {
    if (objects.empty()) return std::nullopt;
    objects.resize(std::min(objects.size(), mostObjects));
    auto elements = look(bus, objects, toolkit);
    const auto found = std::ranges::max_element(elements, {}, rankOf);
    if (rankOf(*found) >= Rank::text) return std::move(*found);
    // What is inside a focused container may belong to another process (the page in a web view), which the
    // search does not reach.
    for (const FocusedObject& element : elements)
        if (isContainer(element.role))
            if (auto inner = look(bus, walkToFocus(bus, element.object, toolkit), toolkit); !inner.empty())
                if (const auto deeper = std::ranges::max_element(inner, {}, rankOf);
                    rankOf(*deeper) != Rank::none)
                    return std::move(*deeper);
    return rankOf(*found) != Rank::none ? std::optional(std::move(*found)) : std::nullopt;
}

} // namespace

std::optional<FocusedObject> focusedElement(Bus& bus, Application& application, const FocusHistory* history) {
    if (application.search && !isFinished(bus, *application.search)) return std::nullopt;
    if (auto same = sameAsLast(bus, application, history)) return same;
    const auto before = latest(history, application);
    const auto windows = windowsOf(bus, application);
    const auto window = activeAmong(bus, windows);
    if (window) noteActive(application, *window);
    auto found = window ? latestIn(bus, *window, windows, application, history) : std::nullopt;
    if (!found) {
        const Object top = window ? *window : rootOf(application.name);
        found = best(bus, searchFocus(bus, application, top), toolkitOf(application));
    }
    if (found) {
        application.focusedElement = found->object;
        application.latestBefore = before.empty() ? std::nullopt : std::optional(before.front());
    }
    return found;
}

std::optional<FocusedObject> lastFocusedElement(Bus& bus, Application& application,
                                                const FocusHistory* history) {
    auto objects = latest(history, application);
    if (application.focusedElement) objects.push_back(*application.focusedElement);
    for (const Object& object : objects) {
        auto element = look(bus, object, toolkitOf(application));
        if (isOnScreen(element.states, element.toolkit) && isFinal(element)) return element;
    }
    return std::nullopt;
}

} // namespace platform::at_spi
