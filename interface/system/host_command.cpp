#include "system/host_command.h"

#include "settings/free.h"

#include <gio/gio.h>

#include <filesystem>
#include <memory>
#include <utility>

namespace quillmark {

namespace {

using Done = std::function<void(const HostAnswer&)>;

void ended(GObject* source, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Done> done(static_cast<Done*>(data));
    auto* process = G_SUBPROCESS(source);
    char *output = nullptr, *problem = nullptr;
    GError* error = nullptr;
    g_subprocess_communicate_utf8_finish(process, result, &output, &problem, &error);
    const std::unique_ptr<char, Free> ownedOutput(output), ownedProblem(problem);
    HostAnswer answer;
    if (const std::unique_ptr<GError, Free> failure(error); failure)
        answer.error = failure->message;
    else
        answer = {g_subprocess_get_if_exited(process) ? g_subprocess_get_exit_status(process) : -1,
                  output ? output : "", problem ? problem : ""};
    if (*done) (*done)(answer);
}

} // namespace

std::string hostProgram() {
    std::error_code unknown;
    const auto own = std::filesystem::read_symlink("/proc/self/exe", unknown);
    const auto beside = own.parent_path() / "quillmark-host";
    return !unknown && std::filesystem::exists(beside, unknown) ? beside.string() : "quillmark-host";
}

void runHost(const std::vector<std::string>& arguments, Done done) {
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
    g_subprocess_communicate_utf8_async(process.get(), nullptr, nullptr, ended,
                                        std::make_unique<Done>(std::move(done)).release());
}

} // namespace quillmark
