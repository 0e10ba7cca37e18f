#include "platform/linux/base/end_hooks.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace platform {
namespace {

std::vector<const EndHook*> hooks;

} // namespace

EndHook::EndHook(std::function<void()> hook) : hook_(std::move(hook)) { hooks.push_back(this); }

EndHook::~EndHook() { hooks.erase(std::ranges::find(hooks, this)); }

void runEndHooks() {
    for (auto hook = hooks.rbegin(); hook != hooks.rend(); ++hook)
        (*hook)->hook_();
}

} // namespace platform
