#include "platform/linux/at_spi/focus.h"

#include <algorithm>

namespace platform::at_spi {
namespace {

// More windows or hits than these are not looked at: no program has them, and each costs questions.
constexpr std::size_t mostWindows = 64;
constexpr std::size_t mostHits = 16;

struct WindowView {
    Object window;
    Answer focused; // the answer to `focusedWithin`
};

// The first active one of `windows`, with the focus inside it, in one round trip.
std::optional<WindowView> viewOfActive(Bus& bus, const std::vector<Object>& windows) {
    std::vector<Question> questions;
    for (const Object& window : windows) {
        questions.push_back(stateOf(window));
        questions.push_back(focusedWithin(window));
    }
    auto answers = bus.ask(std::move(questions));
    for (std::size_t i = 0; i < windows.size(); ++i)
        if (statesIn(answers[2 * i]).has(State::active))
            return WindowView{windows[i], std::move(answers[2 * i + 1])};
    return std::nullopt;
}

// Roles of what only holds other elements. Such an element can claim the focus that is really inside it, or
// that the program does not show yet (Chromium's asleep window, Qt's fillers and page tabs, LibreOffice's
// panel).
bool isContainer(Role role) {
    switch (role) {
    case Role::invalid:
    case Role::filler:
    case Role::frame:
    case Role::pageTab:
    case Role::pageTabList:
    case Role::panel:
    case Role::rootPane:
    case Role::scrollPane:
    case Role::unknown:
    case Role::window:
    case Role::application:
    case Role::documentFrame:
    case Role::documentWeb:
        return true;
    default:
        return false;
    }
}

constexpr int rankOfField = 3;

// How much an element is what the user types into; 0 when it is not a focused element at all.
int rank(const FocusedObject& element) {
    if (!element.states.has(State::focusable)) return 0;
    if (element.text) return element.states.canBeEdited() ? rankOfField : 2;
    return isContainer(element.role) ? 0 : 1;
}

// `seen` reads the three answers, from the one numbered `at` on.
void addQuestionsAbout(const Object& object, std::vector<Question>& questions) {
    questions.push_back(stateOf(object));
    questions.push_back(roleOf(object));
    questions.push_back(interfacesOf(object));
}

FocusedObject seen(Object object, const std::vector<Answer>& answers, std::size_t at,
                   const Program& program) {
    return {std::move(object), roleIn(answers[at + 1]).value_or(Role::invalid), statesIn(answers[at]),
            hasText(answers[at + 2]), program.toolkit.value_or(Toolkit::other)};
}

// Looks at each of `objects`, in one round trip.
std::vector<FocusedObject> look(Bus& bus, const std::vector<Object>& objects, Program& program) {
    std::vector<Question> questions;
    for (const Object& object : objects)
        addQuestionsAbout(object, questions);
    if (!program.toolkit) questions.push_back(toolkitOf(program.name));
    const auto answers = bus.ask(std::move(questions));
    if (!program.toolkit) program.toolkit = toolkitIn(answers.back());
    std::vector<FocusedObject> elements;
    for (std::size_t i = 0; i < objects.size(); ++i)
        elements.push_back(seen(objects[i], answers, 3 * i, program));
    return elements;
}

std::vector<Object> windowsOf(Bus& bus, Program& program) {
    const Answer windows = bus.ask(childrenOf(rootOf(program.name)));
    program.gone = windows.failure == Failure::gone;
    auto objects = objectsIn(windows);
    objects.resize(std::min(objects.size(), mostWindows));
    return objects;
}

// Whether the field found last still has the focus, in one round trip. Not for Chromium: its page keeps
// claiming the focus for the field that had it while the user types into the address bar.
std::optional<FocusedObject> sameAsLast(Bus& bus, Program& program) {
    if (!program.activeWindow || !program.focusedElement || !program.toolkit ||
        program.toolkit == Toolkit::chromium)
        return std::nullopt;
    std::vector<Question> questions;
    questions.push_back(stateOf(*program.activeWindow));
    addQuestionsAbout(*program.focusedElement, questions);
    const auto answers = bus.ask(std::move(questions));
    if (!statesIn(answers[0]).has(State::active)) return std::nullopt;
    auto element = seen(*program.focusedElement, answers, 1, program);
    if (!element.states.has(State::focused) || rank(element) < rankOfField) return std::nullopt;
    return element;
}

std::optional<FocusedObject> best(Bus& bus, std::vector<Object> objects, Program& program) {
    if (objects.empty()) return std::nullopt;
    objects.resize(std::min(objects.size(), mostHits));
    auto elements = look(bus, objects, program);
    const auto found = std::ranges::max_element(elements, {}, rank);
    if (rank(*found) > 1) return std::move(*found);
    // What is inside a focused container may belong to another process (a web view's page).
    for (const FocusedObject& element : elements)
        if (isContainer(element.role))
            if (auto inner = look(bus, walkToFocus(bus, element.object), program); !inner.empty())
                if (const auto deeper = std::ranges::max_element(inner, {}, rank); rank(*deeper) > 0)
                    return std::move(*deeper);
    return rank(*found) > 0 ? std::optional(std::move(*found)) : std::nullopt;
}

} // namespace

std::optional<FocusedObject> focusedElement(Bus& bus, Program& program) {
    if (auto same = sameAsLast(bus, program)) return same;
    std::optional<WindowView> view;
    if (program.activeWindow) view = viewOfActive(bus, {*program.activeWindow});
    if (!view) view = viewOfActive(bus, windowsOf(bus, program));
    if (view) program.activeWindow = view->window;
    // Chromium has no active window while nobody listens to its events.
    const Object top = view ? view->window : rootOf(program.name);
    const Answer focused = view ? std::move(view->focused) : bus.ask(focusedWithin(top));

    // Qt 5 knows no such question, and says that there is no such object.
    const bool mustWalk = view && focused.failure == Failure::refused;
    auto found = best(bus, mustWalk ? walkToFocus(bus, top) : objectsIn(focused), program);
    if (found) program.focusedElement = found->object;
    return found;
}

std::optional<Object> activeWindow(Bus& bus, Program& program) {
    if (program.activeWindow && statesIn(bus.ask(stateOf(*program.activeWindow))).has(State::active))
        return program.activeWindow;
    const auto windows = windowsOf(bus, program);
    const auto answers = bus.ask(toEach(windows, stateOf));
    for (std::size_t i = 0; i < windows.size(); ++i)
        if (statesIn(answers[i]).has(State::active)) return program.activeWindow = windows[i];
    return std::nullopt;
}

std::optional<FocusedObject> lastFocusedElement(Bus& bus, Program& program) {
    if (!program.focusedElement) return std::nullopt;
    auto found = look(bus, {*program.focusedElement}, program).front();
    if (!found.states.has(State::showing) || rank(found) == 0) return std::nullopt;
    return found;
}

std::optional<Object> lastActiveWindow(Bus& bus, Program& program) {
    if (!program.activeWindow || !statesIn(bus.ask(stateOf(*program.activeWindow))).has(State::showing))
        return std::nullopt;
    return program.activeWindow;
}

} // namespace platform::at_spi
