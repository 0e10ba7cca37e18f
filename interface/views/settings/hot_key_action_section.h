// Whether the person sees the rewrite first.
#pragma once

#include "views/settings/actions.h"
#include "views/settings/section.h"

namespace quillmark {

class HotKeyActionSection : public Section {
public:
    explicit HotKeyActionSection(const SettingsActions& actions);
};

} // namespace quillmark
