#include "system/host_command.h"

#include "language/system_phrases.h"
#include "settings/free.h"

#include <gio/gio.h>
#include <glibmm/main.h>

#include <filesystem>
#include <memory>
#include <string_view>
#include <utility>

namespace quillmark {

namespace {

constexpr unsigned deadline = 30; // seconds; the slowest, --check, may need 17

struct Run {
    std::function<void(const HostAnswer&)> done = {};
    sigc::connection limit = {};
    bool tookTooLong = false;
};

HostAnswer answerOf(GSubprocess* process, GAsyncResult* result) {
    char *output = nullptr, *problem = nullptr;
    GError* error = nullptr;
    g_subprocess_communicate_utf8_finish(process, result, &output, &problem, &error);
    const std::unique_ptr<char, Free> ownedOutput(output), ownedProblem(problem);
    if (const std::unique_ptr<GError, Free> failure(error); failure) return {.error = failure->message};
    return {g_subprocess_get_if_exited(process) ? g_subprocess_get_exit_status(process) : -1,
            output ? output : "", problem ? problem : ""};
}

void ended(GObject* source, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Run> run(static_cast<Run*>(data));
    run->limit.disconnect();
    auto answer = answerOf(G_SUBPROCESS(source), result);
    if (run->tookTooLong) answer = {.error = say(phrases::tookTooLong)};
    if (run->done) run->done(answer);
}

} // namespace

std::string hostProgram() {
    std::error_code unknown;
    const auto own = std::filesystem::read_symlink("/proc/self/exe", unknown);
    const auto beside = own.parent_path() / "quillmark-host";
    return !unknown && std::filesystem::exists(beside, unknown) ? beside.string() : "quillmark-host";
}

std::string problemOf(const HostAnswer& answer) {
    if (answer.status < 0) return say(phrases::hostNotFound, {answer.error});
    auto words = answer.error;
    while (words.ends_with('\n'))
        words.pop_back();
    constexpr std::string_view name = "quillmark-host: ";
    return words.starts_with(name) ? words.substr(name.size()) : words;
}

void runHost(const std::vector<std::string>& arguments, std::function<void(const HostAnswer&)> done) {
    const std::string program = hostProgram();
    std::vector<const char*> command{program.c_str()};
    for (const auto& argument : arguments)
        command.push_back(argument.c_str());
    command.push_back(nullptr);

    GError* error = nullptr;
    const std::unique_ptr<GSubprocess, Free> process(g_subprocess_newv(
        command.data(),
        static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_PIPE),
        &error));
    if (const std::unique_ptr<GError, Free> failure(error); failure) {
        if (done) done({.error = failure->message});
        return;
    }
    auto run = std::make_unique<Run>(Run{std::move(done)});
    // Ends with the run, at the latest when the process has been ended here.
    run->limit = Glib::signal_timeout().connect_seconds(
        [run = run.get(), process = process.get()] {
            run->tookTooLong = true;
            g_subprocess_force_exit(process);
            return false;
        },
        deadline);
    g_subprocess_communicate_utf8_async(process.get(), nullptr, nullptr, ended, run.release());
}

} // namespace quillmark
