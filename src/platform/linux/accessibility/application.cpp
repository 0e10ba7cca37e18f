#include "platform/linux/accessibility/element.h"
#include "platform/linux/at_spi/session.h"
#include "platform/linux/base/own_processes.h"
#include "platform/linux/x11/windows/front_window.h"
#include "platform/linux/x11/windows/stacking.h"

#include <algorithm>

namespace platform::ax {
namespace {

using namespace std::chrono_literals;
using at_spi::Bus;
using at_spi::Program;

// For the questions that go to every program at once.
constexpr at_spi::Milliseconds everybody = 150ms;

at_spi::Programs& programs() { return at_spi::Session::shared().programs(); }

// The window of that process that has the keyboard focus, as an element of last resort; while the host has
// the focus, the one that it took it from.
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

AXUIElementRef windowReference(at_spi::Object window) {
    AXUIElement::Accessible accessible; // never seen yet: looked at when asked for more than its title
    accessible.seen.object = std::move(window);
    return reference(std::move(accessible));
}

bool isActive(pid_t process) { return x11::windowProcess(x11::activeWindow()) == process; }

AXUIElementRef elementIn(Bus& bus, Program& program) {
    auto element = at_spi::focusedElement(bus, program);
    if (!element && program.focusedElement && !isActive(program.process))
        element = at_spi::lastFocusedElement(bus, program);
    if (!element) return {};
    program.askedToShow = program.showsNothing = false;
    return reference(std::move(*element));
}

// The one of the sandboxed programs whose active window has the title of the process's active window.
std::vector<Program*> sandboxed(Bus& bus, pid_t process) {
    const x11::WindowId active = x11::activeWindow();
    const auto title = x11::windowProcess(active) == process ? x11::windowTitle(active) : std::nullopt;
    if (!title) return {};
    for (Program* program : programs().sandboxed()) {
        const auto window = at_spi::activeWindow(bus, *program);
        if (!window || stringPropertyIn(bus.ask(nameOf(*window))) != title) continue;
        program->process = process;
        return {program};
    }
    return {};
}

// The programs of a process, when it may be asked; absent when nothing can be known.
std::optional<std::vector<Program*>> programsOf(Bus* bus, pid_t process) {
    if (bus == nullptr || isOwnProcess(process)) return std::nullopt;
    auto found = programs().of(*bus, process);
    if (found && found->empty()) return sandboxed(*bus, process);
    return found;
}

// What `find` finds in the first of the process's programs in which it finds something; null when in none.
template <typename Find>
AXUIElementRef firstAmong(Bus& bus, pid_t process, Find find) {
    while (const auto found = programsOf(&bus, process)) {
        for (Program* program : *found)
            if (AXUIElementRef element = find(*program)) return element;
        if (std::ranges::none_of(*found, &Program::gone)) return {};
    }
    return {};
}

// The first of the programs with an active window that has a focused element.
AXUIElementRef focusedAmong(Bus& bus, const std::vector<Program*>& candidates) {
    std::vector<at_spi::Object> roots;
    roots.reserve(candidates.size());
    for (const Program* program : candidates)
        roots.push_back(at_spi::rootOf(program->name));
    const auto lists = bus.ask(toEach(roots, at_spi::childrenOf), everybody);
    std::vector<at_spi::Question> questions;
    std::vector<Program*> owners;
    for (std::size_t i = 0; i < lists.size(); ++i)
        for (const at_spi::Object& window : objectsIn(lists[i])) {
            questions.push_back(stateOf(window));
            owners.push_back(candidates[i]);
        }
    const auto states = bus.ask(std::move(questions), everybody);
    for (std::size_t i = 0; i < states.size(); ++i)
        if (statesIn(states[i]).has(at_spi::State::active))
            if (auto element = at_spi::focusedElement(bus, *owners[i])) return reference(std::move(*element));
    return {};
}

} // namespace

AXUIElementRef focusedElement(pid_t process) {
    Bus* bus = at_spi::Session::shared().accessibilityBus();
    if (bus == nullptr) return {};
    const Bus::Budget budget(*bus, wholeQuery);
    auto element = firstAmong(*bus, process, [&](Program& program) { return elementIn(*bus, program); });
    if (element) return element;
    const auto found = programsOf(bus, process);
    if (found && std::ranges::all_of(*found, &Program::showsNothing)) return bareWindow(process);
    return {};
}

AXUIElementRef focusedWindow(pid_t process) {
    Bus* bus = at_spi::Session::shared().accessibilityBus();
    if (bus == nullptr || isOwnProcess(process)) return {};
    const Bus::Budget budget(*bus, wholeQuery);
    auto window = firstAmong(*bus, process, [&](Program& program) {
        auto object = at_spi::activeWindow(*bus, program);
        if (!object && !isActive(process)) object = at_spi::lastActiveWindow(*bus, program);
        return object ? windowReference(std::move(*object)) : AXUIElementRef();
    });
    return window ? window : bareWindow(process);
}

bool askToShow(pid_t process) {
    auto& session = at_spi::Session::shared();
    if (!session.enable()) return false;
    Bus* bus = session.accessibilityBus();
    const auto found = programsOf(bus, process);
    if (!found) return false;
    const Bus::Budget budget(*bus, wholeQuery);
    bool asked = false;
    for (Program* program : *found) {
        // Chromium wakes when somebody asks for its window's attributes, and by nothing less.
        const auto windows = objectsIn(bus->ask(childrenOf(at_spi::rootOf(program->name))));
        bus->ask(toEach(windows, at_spi::attributesOf));
        program->askedToShow = asked = true;
    }
    return asked;
}

AXUIElementRef systemWideFocusedElement() {
    const auto active = x11::windowProcess(x11::activeWindow());
    if (active && !isOwnProcess(*active))
        if (auto element = focusedElement(*active)) return element;

    Bus* bus = at_spi::Session::shared().accessibilityBus();
    if (bus == nullptr) return {};
    const Bus::Budget budget(*bus, wholeQuery);
    // Whoever asks here has given the active program its time: from now on its window stands for it.
    std::vector<Program*> others = programs().all(*bus);
    for (Program* program : others)
        if (program->process == active && program->askedToShow && !bus->owes(program->name)) {
            program->showsNothing = true;
            return bareWindow(*active);
        }
    std::erase_if(others, [&](const Program* program) { return program->process == active; });
    return focusedAmong(*bus, others);
}

} // namespace platform::ax
