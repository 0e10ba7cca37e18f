// Whether the person sees the rewrite first.
#pragma once

#include "views/settings/actions.h"
#include "views/settings/section.h"

namespace quillmark {

class WaySection : public Section {
public:
    explicit WaySection(const SettingsActions& actions);
};

} // namespace quillmark
