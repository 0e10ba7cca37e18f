#include "platform/accessibility.h"

#include "platform/simulated/world.h"

namespace platform {

// An element is known by its program's process identifier, or by its place in the world's memory.
class AXUIElement {
public:
    enum class Kind { application, window, field, systemWide };

    Kind kind = Kind::systemWide;
    pid_t pid = 0;
    const void* place = nullptr;

    bool operator==(const AXUIElement&) const = default;
};

namespace {

using simulated::Accessibility;
using simulated::AttributeRead;
using simulated::Field;
using simulated::Program;
using simulated::ProgramWindow;
using simulated::World;
using Kind = AXUIElement::Kind;

AXUIElementRef handle(Kind kind, pid_t pid, const void* place) {
    return AXUIElementRef(std::make_shared<AXUIElement>(AXUIElement{kind, pid, place}));
}

AXUIElementRef handleOf(const Field& field) { return handle(Kind::field, 0, &field); }
AXUIElementRef handleOf(const ProgramWindow& window) { return handle(Kind::window, 0, &window); }

// What a handle refers to in the world; the program is null when that no longer exists.
struct Found {
    Program* program = nullptr;
    ProgramWindow* window = nullptr;
    Field* field = nullptr;
};

Found findWithin(Program& program, const AXUIElement& element) {
    if (element.kind == Kind::application) {
        return element.pid == program.pid ? Found{&program, nullptr, nullptr} : Found{};
    }
    for (ProgramWindow& window : program.windows) {
        if (element.place == &window) return {&program, &window, nullptr};
        for (Field& field : window.fields) {
            if (element.place == &field) return {&program, &window, &field};
        }
    }
    return {};
}

Found find(const AXUIElement& element) {
    for (const auto& program : World::current().programs) {
        if (program->ended) continue;
        if (const Found found = findWithin(*program, element); found.program != nullptr) return found;
    }
    return {};
}

bool shows(const Program& program) {
    if (program.ended || program.accessibility == Accessibility::missing) return false;
    if (program.accessibility == Accessibility::shown) return true;
    return program.showsFrom && *program.showsFrom <= now();
}

// Blocks for the program's reaction time, or, when it hangs, for the whole time limit. False when it hangs.
bool waitForReaction(const Program& program) {
    World& world = World::current();
    world.clock.block(program.reactionTime);
    if (program.accessibility != Accessibility::hung) return true;
    world.clock.block(world.accessibilityTimeout);
    return false;
}

AttributeRead read(const Program& program, std::string_view attribute) {
    if (attribute == "AXFocusedUIElement" && program.focusedField != nullptr)
        return handleOf(*program.focusedField);
    if (attribute == "AXFocusedWindow" && program.focusedWindow != nullptr)
        return handleOf(*program.focusedWindow);
    return std::nullopt;
}

AttributeRead read(const ProgramWindow& window, std::string_view attribute) {
    if (attribute == "AXTitle") return window.title;
    if (attribute == "AXRole") return "AXWindow";
    return std::nullopt;
}

// The text as accessibility reports it: a bullet for each byte of a password.
std::string shown(const Field& field, const std::string& text) {
    if (field.subrole != "AXSecureTextField") return text;
    std::string bullets;
    for (std::size_t i = 0; i < text.size(); ++i)
        bullets += "•";
    return bullets;
}

AttributeRead read(const Field& field, std::string_view attribute) {
    if (attribute == "AXRole") return field.role;
    if (attribute == "AXSubrole" && !field.subrole.empty()) return field.subrole;
    if (attribute == "AXEditable") return field.editable;
    if (attribute == "AXValue") return shown(field, field.value);
    if (attribute == "AXSelectedText") return shown(field, field.selectedText());
    if (attribute == "AXSelectedTextRange") return AXValue{AXValueType::cfRange, field.selection};
    return std::nullopt;
}

template <class Element>
AttributeRead readOrOverride(const Element& element, std::string_view attribute) {
    const auto found = element.overrides.find(attribute);
    return found != element.overrides.end() ? found->second : read(element, attribute);
}

AttributeRead ask(const AXUIElement& element, std::string_view attribute) {
    const Found found = find(element);
    if (found.program == nullptr) return std::nullopt;
    ++found.program->reads[std::string(attribute)];
    if (!waitForReaction(*found.program) || !shows(*found.program)) return std::nullopt;
    if (found.field != nullptr) return readOrOverride(*found.field, attribute);
    if (found.window != nullptr) return readOrOverride(*found.window, attribute);
    return readOrOverride(*found.program, attribute);
}

AttributeRead askSystemWide(std::string_view attribute) {
    const World& world = World::current();
    if (attribute != "AXFocusedUIElement") return std::nullopt;
    if (world.systemWideFocus) return *world.systemWideFocus;
    if (!world.frontmost) return std::nullopt;
    return ask({Kind::application, world.frontmost->pid, nullptr}, attribute);
}

} // namespace

bool CFEqual(const AXUIElementRef& left, const AXUIElementRef& right) {
    return left && right && *left.get() == *right.get();
}

std::optional<CFRange> AXValueGetValue(const AXValue& value, AXValueType type) {
    if (value.type != type || type != AXValueType::cfRange) return std::nullopt;
    return value.range;
}

AXUIElementRef AXUIElementCreateApplication(pid_t pid) { return handle(Kind::application, pid, nullptr); }

AXUIElementRef AXUIElementCreateSystemWide() { return handle(Kind::systemWide, 0, nullptr); }

std::optional<AXAttributeValue> AXUIElementCopyAttributeValue(const AXUIElementRef& element,
                                                              std::string_view attribute) {
    if (!element || !World::current().trusted) return std::nullopt;
    if (element.get()->kind == Kind::systemWide) return askSystemWide(attribute);
    return ask(*element.get(), attribute);
}

bool AXUIElementSetAttributeValue(const AXUIElementRef& element, std::string_view attribute, bool value) {
    World& world = World::current();
    if (!element || !world.trusted || element.get()->kind != Kind::application) return false;
    Program* const program = find(*element.get()).program;
    const bool manual = attribute == "AXManualAccessibility";
    if (program == nullptr || (!manual && attribute != "AXEnhancedUserInterface")) return false;
    world.note("attribute " + std::string(attribute) + " of " + program->name);
    if (!waitForReaction(*program) || program->accessibility == Accessibility::missing) return false;
    (manual ? program->manualAccessibility : program->enhancedUserInterface) = value;
    if (program->manualAccessibility && program->enhancedUserInterface && !program->showsFrom) {
        program->showsFrom = world.clock.timeAfter(program->showsAfter);
    }
    return true;
}

bool AXIsProcessTrustedWithOptions(AXTrustedCheckOptions options) {
    World& world = World::current();
    if (!world.trusted && options.kAXTrustedCheckOptionPrompt) ++world.permissionPrompts;
    return world.trusted;
}

} // namespace platform

namespace simulated {

platform::AXUIElementRef World::elementOf(const Field& field) const { return platform::handleOf(field); }
platform::AXUIElementRef World::elementOf(const ProgramWindow& window) const {
    return platform::handleOf(window);
}

} // namespace simulated
