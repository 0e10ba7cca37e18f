// What the program is made of: its delegate, its menu bar and its one window.
#pragma once

#include "platform/application.h"

platform::MainInterface loadMainInterface();
