#include "platform/linux/accessibility/focus_queries.h"

#include "platform/linux/accessibility/element.h"
#include "platform/linux/at_spi/accessibility_bus.h"
#include "platform/linux/at_spi/focus.h"
#include "platform/linux/at_spi/windows.h"
#include "platform/linux/base/own_processes.h"
#include "platform/linux/x11/windows/front_window.h"
#include "platform/linux/x11/windows/stacking.h"

#include <algorithm>

namespace platform::ax {
namespace {

using namespace std::chrono_literals;
using at_spi::Application;
using at_spi::Bus;

// Of calls that go to every program at once.
constexpr at_spi::Milliseconds deadlineForAll = 150ms;

// Chromium 156 shows its elements within 61 ms of being asked to, Firefox 153 within 2 ms. A program that
// still shows none after this long has none to show.
constexpr auto mostTimeToShow = 1s;

at_spi::Applications& applications() { return at_spi::AccessibilityBus::shared().applications(); }

// The window of that process that has the keyboard focus, as the element of a program that shows none. While
// the host has the focus, it is the process's topmost window, which the host took the focus from.
AXUIElementRef bareWindow(pid_t process) {
    x11::WindowId window = x11::focusedWindow();
    const auto owner = x11::windowProcess(window);
    if (owner && isOwnProcess(*owner))
        window = x11::topmostWindow(process);
    else if (owner != process)
        window = x11::activeWindow();
    if (x11::windowProcess(window) != process) return {};
    return reference(AXUIElement::BareWindow{window, process});
}

// A capture wants the window's title after the texts: the program can reply to all of that together.
AXUIElementRef windowReference(Bus& bus, at_spi::Object window) {
    AXUIElement::Accessible accessible; // its role and states are read when they are asked for
    accessible.title = bus.send(nameOf(window));
    accessible.titleAskedAt = std::chrono::steady_clock::now();
    accessible.seen.object = std::move(window);
    return reference(std::move(accessible));
}

bool isActive(pid_t process) { return x11::windowProcess(x11::activeWindow()) == process; }

AXUIElementRef elementIn(Bus& bus, Application& program) {
    const auto* history = at_spi::AccessibilityBus::shared().focusHistory();
    std::optional<at_spi::FocusedObject> element;
    if (!isActive(program.process)) element = at_spi::lastFocusedElement(bus, program, history);
    if (!element) element = at_spi::focusedElement(bus, program, history);
    if (!element) return {};
    program.askedToShowAt.reset();
    return reference(std::move(*element));
}

bool showsNothing(Bus& bus, const Application& program) {
    return program.askedToShowAt &&
           std::chrono::steady_clock::now() - *program.askedToShowAt >= mostTimeToShow &&
           !bus.owes(program.name);
}

// The sandboxed program whose active window has the title of the process's active window.
std::vector<Application*> sandboxed(Bus& bus, pid_t process) {
    const x11::WindowId active = x11::activeWindow();
    const auto title = x11::windowProcess(active) == process ? x11::windowTitle(active) : std::nullopt;
    if (!title) return {};
    for (Application* program : applications().sandboxed()) {
        const auto window = at_spi::activeWindow(bus, *program);
        if (!window || stringPropertyIn(bus.call(nameOf(*window))) != title) continue;
        program->process = process;
        return {program};
    }
    return {};
}

// The programs of a process; absent for the host itself, and when they cannot be found out.
std::optional<std::vector<Application*>> programsOf(Bus* bus, pid_t process) {
    if (bus == nullptr || isOwnProcess(process)) return std::nullopt;
    auto found = applications().of(*bus, process);
    if (found && found->empty()) return sandboxed(*bus, process);
    return found;
}

// The first element that `find` returns for one of the process's programs.
template <typename Find>
AXUIElementRef firstAmong(Bus& bus, pid_t process, Find find) {
    while (const auto found = programsOf(&bus, process)) {
        for (Application* program : *found)
            if (AXUIElementRef element = find(*program)) return element;
        if (std::ranges::none_of(*found, &Application::gone)) return {};
    }
    return {};
}

// The focused element of the first program that has one in an active window.
AXUIElementRef focusedAmong(Bus& bus, const std::vector<Application*>& candidates) {
    std::vector<at_spi::Object> roots;
    roots.reserve(candidates.size());
    for (const Application* program : candidates)
        roots.push_back(at_spi::rootOf(program->name));
    const auto lists = bus.call(toEach(roots, at_spi::childrenOf), deadlineForAll);
    std::vector<at_spi::Call> calls;
    std::vector<Application*> owners;
    for (std::size_t i = 0; i < lists.size(); ++i)
        for (const at_spi::Object& window : objectsIn(lists[i])) {
            calls.push_back(stateOf(window));
            owners.push_back(candidates[i]);
        }
    const auto states = bus.call(std::move(calls), deadlineForAll);
    for (std::size_t i = 0; i < states.size(); ++i)
        if (statesIn(states[i]).has(at_spi::State::active))
            if (auto element = at_spi::focusedElement(bus, *owners[i],
                                                      at_spi::AccessibilityBus::shared().focusHistory()))
                return reference(std::move(*element));
    return {};
}

} // namespace

AXUIElementRef focusedElement(pid_t process) {
    Bus* bus = at_spi::AccessibilityBus::shared().bus();
    if (bus == nullptr) return {};
    const Bus::Budget budget(*bus, queryDeadline);
    auto element = firstAmong(*bus, process, [&](Application& program) { return elementIn(*bus, program); });
    if (element) return element;
    const auto found = programsOf(bus, process);
    const auto hasNothing = [&](const Application* program) { return showsNothing(*bus, *program); };
    if (found && std::ranges::all_of(*found, hasNothing)) return bareWindow(process);
    return {};
}

AXUIElementRef focusedWindow(pid_t process) {
    Bus* bus = at_spi::AccessibilityBus::shared().bus();
    if (bus == nullptr || isOwnProcess(process)) return {};
    const Bus::Budget budget(*bus, queryDeadline);
    auto window = firstAmong(*bus, process, [&](Application& program) {
        auto object = at_spi::activeWindowJustSeen(program);
        if (!object) object = at_spi::activeWindow(*bus, program);
        if (!object && !isActive(process)) object = at_spi::lastActiveWindow(*bus, program);
        return object ? windowReference(*bus, std::move(*object)) : AXUIElementRef();
    });
    return window ? window : bareWindow(process);
}

bool askToShow(pid_t process) {
    auto& accessibility = at_spi::AccessibilityBus::shared();
    if (!accessibility.enable()) return false;
    Bus* bus = accessibility.bus();
    const auto found = programsOf(bus, process);
    if (!found) return false;
    const Bus::Budget budget(*bus, queryDeadline);
    bool asked = false;
    for (Application* program : *found) {
        // Chromium builds its elements when it is asked for a window's attributes; no other call makes it.
        const auto windows = objectsIn(bus->call(childrenOf(at_spi::rootOf(program->name))));
        bus->call(toEach(windows, at_spi::attributesOf));
        if (!program->askedToShowAt) program->askedToShowAt = std::chrono::steady_clock::now();
        asked = true;
    }
    return asked;
}

AXUIElementRef systemWideFocusedElement() {
    const auto active = x11::windowProcess(x11::activeWindow());
    if (active && !isOwnProcess(*active))
        if (auto element = focusedElement(*active)) return element;

    Bus* bus = at_spi::AccessibilityBus::shared().bus();
    if (bus == nullptr) return {};
    const Bus::Budget budget(*bus, queryDeadline);
    std::vector<Application*> others = applications().all(*bus);
    std::erase_if(others, [&](const Application* program) { return program->process == active; });
    return focusedAmong(*bus, others);
}

} // namespace platform::ax
