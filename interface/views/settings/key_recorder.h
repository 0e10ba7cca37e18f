// A button that shows a combination of keys, and takes another one by its being pressed.
#pragma once

#include <gtkmm/button.h>

#include <functional>
#include <string>

namespace quillmark {

class KeyRecorder : public Gtk::Button {
public:
    // A key that is no modifier was pressed.
    using Recorded = std::function<void(const GdkEventKey& event)>;

    explicit KeyRecorder(Recorded recorded);
    ~KeyRecorder() override;

    // The name of the combination, and what a screen reader says.
    void show(const std::string& name, const std::string& spoken);

protected:
    void on_clicked() override;
    bool on_focus_out_event(GdkEventFocus* event) override;

private:
    bool take(GdkEventKey* event);
    void stop();

    Recorded recorded_;
    std::string name_, spoken_;
    bool recording_ = false;
    sigc::connection keys_; // the window's, before its shortcuts see them
};

} // namespace quillmark
