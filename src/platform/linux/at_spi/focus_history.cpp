#include "platform/linux/at_spi/focus_history.h"

#include <algorithm>

namespace platform::at_spi {
namespace {

// Objects remembered of one program: enough for its windows, each of which keeps a focus of its own.
constexpr std::size_t mostObjects = 8;
// Programs remembered. No event tells that a program has ended, so all are forgotten once there are this
// many.
constexpr std::size_t mostPrograms = 500;

// The body starts with the state's name and 1 for on, 0 for off.
bool isGained(GVariant* body) {
    if (g_variant_n_children(body) < 2) return false;
    const Variant on(g_variant_get_child_value(body, 1));
    return g_variant_is_of_type(on.get(), G_VARIANT_TYPE_INT32) && g_variant_get_int32(on.get()) != 0;
}

} // namespace

FocusHistory::FocusHistory(Bus& bus)
    : subscription_(bus, {"", "org.a11y.atspi.Event.Object", "StateChanged", "focused"},
                    [this](const Signal& signal) { hear(signal); }) {}

std::vector<Object> FocusHistory::of(const std::string& program) const {
    const std::lock_guard lock(mutex_);
    std::vector<Object> objects;
    if (const auto found = programs_.find(program); found != programs_.end())
        for (auto path = found->second.rbegin(); path != found->second.rend(); ++path)
            objects.push_back({program, *path});
    return objects;
}

void FocusHistory::hear(const Signal& signal) {
    if (!isGained(signal.body)) return;
    const std::lock_guard lock(mutex_);
    if (programs_.size() >= mostPrograms && !programs_.contains(signal.program)) programs_.clear();
    auto& paths = programs_[signal.program];
    std::erase(paths, signal.path);
    if (paths.size() >= mostObjects) paths.erase(paths.begin());
    paths.emplace_back(signal.path);
}

} // namespace platform::at_spi
