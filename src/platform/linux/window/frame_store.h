#pragma once

#include "platform/geometry.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// Below the user's state folder ($XDG_STATE_HOME, else ~/.local/state). Empty when this user has no place for
// it.
std::filesystem::path windowFrameFolder();

// A window's frame, kept under a name in that folder between runs.
class WindowFrameStore {
public:
    explicit WindowFrameStore(std::string_view name);

    // Absent when nothing was kept, or nothing that makes a frame.
    std::optional<Rect> load() const;

    // A frame that cannot be kept is not kept: the next window opens where a first one does.
    void save(const Rect& frame) const;

private:
    std::string path_; // empty when there is no folder
};

} // namespace platform
