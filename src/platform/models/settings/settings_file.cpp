#include "platform/models/settings/settings_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <sstream>
#include <system_error>

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view blanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const auto start = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(start, text.find_last_not_of(blanks) + 1 - start);
}

// Empty, or what is wrong with the value.
std::string set(ModelSettings& settings, std::string_view name, std::string_view value) {
    if (std::ranges::any_of(value, [](char c) { return static_cast<unsigned char>(c) < ' '; }))
        return "the value holds a control character";
    if (name == "address") {
        settings.address = readServerAddress(value);
        return settings.address
                   ? ""
                   : "this is not the address of a model server, such as http://127.0.0.1:8080/v1";
    }
    if (name == "model") {
        settings.model = value;
    } else if (name == "key") {
        settings.key = value;
    } else if (name == "thinking") {
        settings.thinking = value == "true";
        if (value != "true" && value != "false") return "thinking is true or false";
    } else {
        return "there is no setting \"" + std::string(name) + "\", only address, model, key and thinking";
    }
    return "";
}

std::string setFrom(ModelSettings& settings, std::string_view line) {
    constexpr std::string_view group = "[Language Model]";
    if (line.empty() || line.front() == '#' || line == group) return "";
    if (line.front() == '[') return "the only group is " + std::string(group);
    const auto equals = line.find('=');
    if (equals == std::string_view::npos) return "a setting is written as name=value";
    return set(settings, trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
}

// Empty, or why the file is not trusted.
std::string permissionProblem(const fs::path& file, bool holdsKey) {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0) return "";
    const bool writable = (status.st_mode & (S_IWGRP | S_IWOTH)) != 0;
    const bool readable = (status.st_mode & (S_IRGRP | S_IROTH)) != 0;
    if (status.st_uid != geteuid() && status.st_uid != 0)
        return file.string() + " belongs to another user, so it is not used. Remove it, or make it your own.";
    if (writable || (readable && holdsKey))
        return "Others on this computer may " + std::string(writable ? "change " : "read the key in ") +
               file.string() + ", so it is not used. Run: chmod 600 " + file.string();
    return "";
}

std::string textOf(const ModelSettings& settings) {
    std::string text =
        "# Which language model Quillmark uses; see quillmark-host --language-model.\n[Language Model]\n";
    if (settings.address) text += "address=" + settings.address->url() + '\n';
    if (!settings.model.empty()) text += "model=" + settings.model + '\n';
    if (!settings.key.empty()) text += "key=" + settings.key + '\n';
    if (settings.thinking) text += "thinking=true\n";
    return text;
}

} // namespace

ReadSettings parseSettingsFile(std::string_view text, const std::string& fileName) {
    ReadSettings read;
    read.source = fileName;
    for (int number = 1; !text.empty(); ++number) {
        const auto end = std::min(text.find('\n'), text.size());
        const auto problem = setFrom(read.settings, trimmed(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (problem.empty() || !read.problem.empty()) continue;
        read.problem =
            "Line " + std::to_string(number) + " of " + fileName + ": " + problem + ". Correct it there.";
    }
    return read;
}

ReadSettings readSettingsFile(const fs::path& file) {
    std::error_code unknown;
    if (!fs::exists(file, unknown) && !unknown) return {.source = file.string()};
    std::ifstream stream(file);
    if (!stream)
        return {.problem = file.string() + " cannot be read. Make it readable for you, or remove it.",
                .source = file.string()};
    std::ostringstream text;
    text << stream.rdbuf();
    auto read = parseSettingsFile(text.str(), file.string());
    if (auto problem = permissionProblem(file, !read.settings.key.empty()); !problem.empty())
        read.problem = std::move(problem);
    return read;
}

// Written beside it first: whoever reads meanwhile sees the old file or the new one.
std::string writeSettingsFile(const fs::path& file, const ModelSettings& settings) {
    const auto text = textOf(settings);
    const fs::path fresh = file.string() + ".new";
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    const int descriptor = open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, S_IRUSR | S_IWUSR);
    const bool written = descriptor >= 0 && fchmod(descriptor, S_IRUSR | S_IWUSR) == 0 &&
                         write(descriptor, text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
                         fsync(descriptor) == 0;
    const int failure = errno;
    if (descriptor >= 0) close(descriptor);
    if (written) {
        fs::rename(fresh, file, error);
        if (!error) return "";
    }
    return file.string() + " could not be written (" +
           (written ? error.message() : std::generic_category().message(failure)) +
           "). Make its folder writable.";
}

} // namespace platform
