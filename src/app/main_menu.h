// The menu bar: one description for every desktop. Every item has an identifier, the key under which the
// interface relabels it.
#pragma once

#include "platform/menu.h"

#include <memory>

std::unique_ptr<platform::Menu> makeMainMenu();
