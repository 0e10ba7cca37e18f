#include "platform/linux/programs/desktop_files.h"

#include <glib.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <system_error>
#include <utility>
#include <vector>

namespace platform {
namespace {

namespace fs = std::filesystem;
using Identifiers = std::map<std::string, std::string, std::less<>>; // by a name in lower case

std::vector<fs::path> folders() {
    std::vector<fs::path> found{fs::path(g_get_user_data_dir()) / "applications"};
    for (const char* const* data = g_get_system_data_dirs(); *data != nullptr; ++data)
        found.push_back(fs::path(*data) / "applications");
    return found;
}

// Only the first group of the file is the program's own; the others are its menu entries.
std::string startupWindowClass(const fs::path& file) {
    constexpr std::string_view key = "StartupWMClass=";
    std::ifstream stream(file);
    bool inGroup = false;
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with('[')) {
            if (inGroup) break;
            inGroup = true;
        }
        if (line.starts_with(key)) return line.substr(key.size());
    }
    return {};
}

class Index {
public:
    Index() {
        for (const fs::path& folder : folders()) {
            times_.push_back(changeTime(folder));
            std::error_code error;
            for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
                 entry.increment(error))
                if (entry->path().extension() == ".desktop") add(folder, entry->path());
        }
    }

    bool isCurrent() const {
        std::vector<std::int64_t> times;
        for (const fs::path& folder : folders())
            times.push_back(changeTime(folder));
        return times == times_;
    }

    std::optional<std::string> identifierOf(const x11::WindowClass& names) const {
        // The instance first: it tells the programs inside a browser from the browser.
        for (const Identifiers* known : {&byWindowClass_, &byFileName_})
            for (const std::string& name : {x11::lowerCase(names.instance), x11::lowerCase(names.name)})
                if (const auto found = known->find(name); !name.empty() && found != known->end())
                    return found->second;
        return std::nullopt;
    }

    std::optional<fs::path> fileOf(const std::string& identifier) const {
        const auto found = files_.find(identifier);
        return found == files_.end() ? std::nullopt : std::optional(found->second);
    }

private:
    static std::int64_t changeTime(const fs::path& folder) {
        std::error_code error;
        const auto time = fs::last_write_time(folder, error);
        return error ? 0 : static_cast<std::int64_t>(time.time_since_epoch().count());
    }

    // Earlier folders go before later ones, so what is known already stays.
    void add(const fs::path& folder, const fs::path& file) {
        std::string identifier = file.lexically_relative(folder).replace_extension().string();
        for (char& letter : identifier)
            if (letter == '/') letter = '-';
        if (!files_.emplace(identifier, file).second) return;
        byFileName_.emplace(x11::lowerCase(identifier), identifier);
        if (const std::string name = startupWindowClass(file); !name.empty())
            byWindowClass_.emplace(x11::lowerCase(name), identifier);
    }

    std::vector<std::int64_t> times_;
    std::map<std::string, fs::path> files_;
    Identifiers byWindowClass_;
    Identifiers byFileName_;
};

const Index& index() {
    static std::optional<Index> index;
    if (!index || !index->isCurrent()) index.emplace();
    return *index;
}

} // namespace

std::optional<std::string> desktopFileOf(const x11::WindowClass& windowClass) {
    return index().identifierOf(windowClass);
}

std::optional<std::string> desktopFileName(const std::string& identifier) {
    const auto file = index().fileOf(identifier);
    if (!file) return std::nullopt;
    const std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)> keys(g_key_file_new(), g_key_file_unref);
    if (g_key_file_load_from_file(keys.get(), file->c_str(), G_KEY_FILE_NONE, nullptr) == FALSE)
        return std::nullopt;
    const std::unique_ptr<char, decltype(&g_free)> name(
        g_key_file_get_locale_string(keys.get(), G_KEY_FILE_DESKTOP_GROUP, G_KEY_FILE_DESKTOP_KEY_NAME,
                                     nullptr, nullptr),
        g_free);
    return name ? std::optional<std::string>(name.get()) : std::nullopt;
}

} // namespace platform
