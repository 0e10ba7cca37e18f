// The interface that comes with the host: shows what is captured, has it rewritten, and puts it back.
#include "application.h"
#include "client/connection.h"
#include "language/phrase.h"
#include "system/settings_request.h"
#include "views/look.h"

#include <giomm/init.h>
#include <glibmm/main.h>
#include <gtkmm/main.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

int failed(const char* sentence) {
    std::fprintf(stderr, "quillmark-interface: %s\n", sentence);
    return 1;
}

int serve(int& argc, char**& argv) {
    auto connection = quillmark::Connection::toHost();
    const char* view = std::getenv("QUILLMARK_VIEW");
    if (view == nullptr)
        return failed("QUILLMARK_VIEW is not set. Start this program through quillmark-host.");
    // Else GTK 3.24 loads OpenGL's driver in the session's first program, to learn of visuals: 50 MB.
    setenv("GDK_GL", "disable", 0);
    Gtk::Main toolkit(argc, argv);
    quillmark::installLook();

    const auto loop = Glib::MainLoop::create();
    int status = 0;
    Glib::signal_io().connect(
        [&](Glib::IOCondition) {
            try {
                if (connection.turn()) return true;
            } catch (const quillmark::ConnectionError& error) {
                status = failed(error.what());
            }
            loop->quit();
            return false;
        },
        connection.descriptor(), Glib::IO_IN);
    quillmark::Application application(connection, std::stoul(view));
    loop->run();
    return status;
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 1 && std::strcmp(argv[1], "--settings") == 0) {
        Gio::init();
        const auto problem = quillmark::askForSettings();
        return problem.empty() ? 0 : failed(problem.c_str());
    }
    if (argc > 1) {
        std::puts(
            "quillmark-interface shows and rewrites what the host captures. Start it as: quillmark-host "
            "quillmark-interface\nquillmark-interface --settings opens the settings of the one that runs.");
        return std::strcmp(argv[1], "--help") == 0 ? 0 : 2;
    }
    try {
        return serve(argc, argv);
    } catch (const quillmark::ConnectionError& error) {
        return failed(error.what());
    }
}
