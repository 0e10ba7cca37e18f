#include "conformance/stage.h"
#include "platform/simulated/world.h"

namespace conformance {

using simulated::World;

struct OtherProgram::Native {
    simulated::Program& program;
    simulated::Field& field;
    simulated::Field& other;
};

OtherProgram::OtherProgram(std::unique_ptr<Native> native) : native_(std::move(native)) {}
OtherProgram::~OtherProgram() { kill(); }

pid_t OtherProgram::pid() const { return native_->program.pid; }
std::string OtherProgram::value() const { return native_->program.focusedField->value; }
std::string OtherProgram::selected() const { return native_->program.focusedField->selectedText(); }
void OtherProgram::setValue(std::string_view value) { native_->field.value = value; }
void OtherProgram::select(std::string_view part) {
    native_->field.selection = {static_cast<std::int64_t>(native_->field.value.find(part)),
                                static_cast<std::int64_t>(part.size())};
}
void OtherProgram::leaveField() { native_->program.focus(native_->other); }
void OtherProgram::hang() { native_->program.accessibility = simulated::Accessibility::hung; }
void OtherProgram::kill() { World::current().end(native_->program); }

void OtherProgram::copy(const Offer& offer, std::span<const platform::PasteboardType> undeliverable) {
    simulated::Item item;
    for (const auto& [type, bytes] : offer)
        item.push_back(simulated::bytes(type, {bytes.begin(), bytes.end()}));
    for (const auto& type : undeliverable)
        item.push_back(simulated::withoutData(type));
    World::current().putOnPasteboard({item}, native_->program);
}

std::optional<std::string> OtherProgram::pasteboardText() const { return World::current().pasteboardText(); }

std::optional<std::string> OtherProgram::pasteboardBytes(const platform::PasteboardType& wanted) const {
    for (const simulated::Item& item : World::current().pasteboardItems()) {
        for (const auto& [type, data, takes] : item) {
            if (type == wanted && data) return std::string(data->bytes.begin(), data->bytes.end());
        }
    }
    return std::nullopt;
}

struct Stage::Native {
    World world;
};

Stage::Stage() : native_(std::make_unique<Native>()) {}
Stage::~Stage() = default;

std::unique_ptr<OtherProgram> Stage::open(const FieldSetup& setup) {
    simulated::Field field =
        setup.kind == FieldKind::password ? simulated::passwordField() : simulated::Field{};
    if (setup.kind == FieldKind::line || setup.kind == FieldKind::readOnly) field.role = "AXTextField";
    field.editable = setup.kind != FieldKind::readOnly;
    field.value = setup.value;
    const std::size_t start = setup.selected.empty() ? setup.value.size() : setup.value.find(setup.selected);
    field.selection = {static_cast<std::int64_t>(start), static_cast<std::int64_t>(setup.selected.size())};

    simulated::Program& program = native_->world.openProgram();
    program.openWindow(setup.title);
    auto& other = program.addField({});
    auto& focused = program.addField(std::move(field));
    native_->world.bringToFront(program);
    return std::make_unique<OtherProgram>(
        std::make_unique<OtherProgram::Native>(OtherProgram::Native{program, focused, other}));
}

void Stage::hold(platform::CGEventFlags modifiers) { native_->world.heldModifiers |= modifiers; }
void Stage::releaseAll() { native_->world.heldModifiers = 0; }
void Stage::press(platform::CGKeyCode keyCode, platform::CGEventFlags modifiers) {
    native_->world.userPresses(keyCode, modifiers);
}

std::shared_ptr<void> Stage::takeHotKey(std::uint32_t keyCode, std::uint32_t modifiers) {
    auto& taken = native_->world.hotKeys.taken;
    taken.emplace(keyCode, modifiers);
    return {&taken, [=](auto* held) { held->erase({keyCode, modifiers}); }};
}

bool Stage::shown(const platform::Window& window) const {
    return window.native().visible && !window.native().miniaturized;
}
bool Stage::minimised(const platform::Window& window) const { return window.native().miniaturized; }
bool Stage::keptAbove(const platform::Window& window) const {
    return window.native().level > platform::NormalWindowLevel;
}

bool Stage::runUntil(const std::function<bool()>& condition, platform::Seconds within) {
    return native_->world.runUntil(condition, within);
}
void Stage::runABit() { native_->world.runFor(platform::Seconds{1}); }

} // namespace conformance
