#include "platform/linux/at_spi/events.h"

#include <array>
#include <mutex>
#include <string_view>
#include <utility>

namespace platform::at_spi {
namespace {

// The bus itself answers within 0.2 ms.
constexpr Milliseconds busDeadline{10};

// The events that the registry is asked for; it passes the wish on to the programs. To withdraw a wish
// withdraws those for its subclasses as well ("object:text-changed" also "object:text-changed:insert"), so
// none of these contains one that other programs of the session have.
constexpr std::array wanted{"object:text-changed", "object:text-caret-moved",
                            "object:text-selection-changed"};

std::vector<Call> toRegistry(const char* method, const char* types, auto... more) {
    std::vector<Call> calls;
    for (const char* event : wanted)
        calls.push_back(
            {registry, "/org/a11y/atspi/registry", registry, method, "()", arguments(types, event, more...)});
    return calls;
}

std::optional<Event::Kind> kindOf(std::string_view member, std::string_view detail, std::int32_t first) {
    if (member == "TextChanged")
        return detail.starts_with("delete") ? Event::Kind::textRemoved : Event::Kind::textInserted;
    if (member == "TextCaretMoved") return Event::Kind::caretMoved;
    if (member == "TextSelectionChanged") return Event::Kind::selectionChanged;
    if (member == "StateChanged" && detail == "focused")
        return first != 0 ? Event::Kind::focusGained : Event::Kind::focusLost;
    return std::nullopt;
}

// Empty where the program does not say.
std::string insertedText(const Signal& signal) {
    if (g_variant_n_children(signal.body) < 4) return {};
    const Variant fourth(g_variant_get_child_value(signal.body, 3));
    if (!g_variant_is_of_type(fourth.get(), G_VARIANT_TYPE_VARIANT)) return {};
    const Variant text(g_variant_get_variant(fourth.get()));
    const bool isText = g_variant_is_of_type(text.get(), G_VARIANT_TYPE_STRING) != FALSE;
    return isText ? g_variant_get_string(text.get(), nullptr) : "";
}

// The body starts with a detail and two numbers in every library's events; what follows differs.
std::optional<Event> eventIn(const Signal& signal) {
    if (g_variant_n_children(signal.body) < 3) return std::nullopt;
    const Variant detail(g_variant_get_child_value(signal.body, 0));
    const Variant first(g_variant_get_child_value(signal.body, 1));
    const Variant second(g_variant_get_child_value(signal.body, 2));
    if (!g_variant_is_of_type(detail.get(), G_VARIANT_TYPE_STRING) ||
        !g_variant_is_of_type(first.get(), G_VARIANT_TYPE_INT32) ||
        !g_variant_is_of_type(second.get(), G_VARIANT_TYPE_INT32))
        return std::nullopt;
    const std::int32_t number = g_variant_get_int32(first.get());
    const auto kind = kindOf(signal.member, g_variant_get_string(detail.get(), nullptr), number);
    if (!kind) return std::nullopt;
    Event event{*kind, {signal.program, signal.path}};
    const bool changesText = kind == Event::Kind::textInserted || kind == Event::Kind::textRemoved;
    if (changesText || kind == Event::Kind::caretMoved) event.position = number;
    if (changesText) event.length = g_variant_get_int32(second.get());
    if (kind == Event::Kind::textInserted) event.text = insertedText(signal);
    return event;
}

} // namespace

struct Events::Heard {
    std::mutex mutex;
    std::vector<Event> events; // under the mutex

    void add(const Signal& signal) {
        auto event = eventIn(signal);
        if (!event) return;
        const std::lock_guard lock(mutex);
        events.push_back(std::move(*event));
    }

    std::vector<Event> take() {
        const std::lock_guard lock(mutex);
        return std::exchange(events, {});
    }
};

Events::Events(Bus& bus, const std::string& program)
    : program_(program), heard_(std::make_shared<Heard>()),
      subscription_(bus, {program, "org.a11y.atspi.Event.Object"},
                    [heard = heard_](const Signal& signal) { heard->add(signal); }) {
    // The registry signals the programs before it replies. The program handles what it receives in order, so
    // once it replies to the second call it knows of the first.
    bus.call(toRegistry("RegisterEvent", "(sass)", nullptr, ""));
    bus.call(stateOf(rootOf(program)));
}

Events::~Events() {
    for (const Call& call : toRegistry("DeregisterEvent", "(s)"))
        tell(subscription_.connection(), call);
}

std::optional<std::vector<Event>> Events::take(Bus& bus) {
    if (!subscription_.isOn(bus) || !bus.call(stateOf(rootOf(program_))).value) return std::nullopt;
    return heard_->take();
}

// The bus may read our first call before something that the program sent earlier, but reads both before our
// second one.
std::vector<Event> Events::takeSent(Bus& bus) {
    for (int call = 0; call < 2; ++call)
        bus.call(toBus("GetId", "(s)"), busDeadline);
    return heard_->take();
}

std::function<std::vector<Event>()> Events::takeLater() const {
    return [heard = heard_] { return heard->take(); };
}

} // namespace platform::at_spi
