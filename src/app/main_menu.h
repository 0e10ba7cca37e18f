// The menu bar, the same on every desktop. Every item but the separators has an identifier, the key under
// which the interface relabels it.
#pragma once

#include "platform/menu.h"

#include <memory>

std::unique_ptr<platform::Menu> makeMainMenu();
