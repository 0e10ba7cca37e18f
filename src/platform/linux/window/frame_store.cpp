#include "platform/linux/window/frame_store.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <locale>
#include <system_error>

namespace platform {
namespace {

namespace fs = std::filesystem;

std::string fileName(std::string_view name) {
    std::string file(name);
    std::replace(file.begin(), file.end(), '/', '_');
    return file + ".frame";
}

bool isSensible(const Rect& frame) {
    constexpr double farthest = 1e6; // far beyond any screen
    const auto near = [](double number) { return std::isfinite(number) && std::abs(number) <= farthest; };
    return near(frame.x) && near(frame.y) && near(frame.width) && near(frame.height) && frame.width >= 1 &&
           frame.height >= 1;
}

} // namespace

fs::path windowFrameFolder() {
    if (const char* state = std::getenv("XDG_STATE_HOME"); state && *state == '/')
        return fs::path(state) / "quillmark";
    if (const char* home = std::getenv("HOME"); home && *home == '/')
        return fs::path(home) / ".local" / "state" / "quillmark";
    return {};
}

WindowFrameStore::WindowFrameStore(std::string_view name) {
    if (const auto folder = windowFrameFolder(); !folder.empty()) path_ = folder / fileName(name);
}

std::optional<Rect> WindowFrameStore::load() const {
    std::ifstream file(path_);
    file.imbue(std::locale::classic());
    Rect frame;
    if (!(file >> frame.x >> frame.y >> frame.width >> frame.height) || !isSensible(frame))
        return std::nullopt;
    return frame;
}

void WindowFrameStore::save(const Rect& frame) const {
    if (path_.empty() || !isSensible(frame)) return;
    std::error_code failed;
    fs::create_directories(fs::path(path_).parent_path(), failed);
    const std::string fresh = path_ + ".new";
    std::ofstream file(fresh);
    file.imbue(std::locale::classic());
    file << frame.x << ' ' << frame.y << ' ' << frame.width << ' ' << frame.height << '\n';
    file.close();
    // In one step, so that a host killed here leaves the old frame or the new one.
    if (file) fs::rename(fresh, path_, failed);
}

} // namespace platform
