// The desktop's notices (freedesktop.org Desktop Notifications Specification), one at a time: a new one takes
// the place of the one before. Main thread only; never waits for the program that shows them.
#pragma once

#include "rewriting/notice.h"

#include <giomm/dbusconnection.h>

#include <functional>

namespace quillmark {

class Notices {
public:
    struct Buttons {
        std::function<void()> show;
        std::function<void()> copy;
    };

    explicit Notices(Buttons pressed);
    ~Notices();
    Notices(const Notices&) = delete;
    Notices& operator=(const Notices&) = delete;

    // Without a program that shows notices nothing happens.
    void show(const Notice& notice);

private:
    void send(const Notice& notice, bool markup);
    void pressed(const Glib::VariantContainerBase& parameters);

    Buttons buttons_;
    Glib::RefPtr<Gio::DBus::Connection> bus_;
    guint subscription_ = 0;
    guint32 shown_ = 0; // the number of the latest one; 0: none yet
    std::shared_ptr<char> life_ = std::make_shared<char>();
};

} // namespace quillmark
