#include "platform/linux/programs/theme_sound.h"

#include "platform/linux/base/handle.h"
#include "platform/main_queue.h"
#include "platform/never_destroyed.h"

#include <canberra.h>
#include <gtkmm/settings.h>

#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace platform {
namespace {

// The connection to the sound server. Any thread; connecting takes milliseconds, longer with a busy server.
class Sounds {
public:
    bool play(const char* name, const std::string& theme) {
        const std::lock_guard lock(mutex_);
        if (!context_) connect();
        const bool plays =
            ca_context_play(context_.get(), 0, CA_PROP_EVENT_ID, name, CA_PROP_CANBERRA_XDG_THEME_NAME,
                            theme.c_str(), nullptr) == CA_SUCCESS;
        if (!plays) context_.reset(); // the server may come back, and a connection that was lost does not
        return plays;
    }

    static Sounds& shared() {
        static const NeverDestroyed<Sounds> sounds;
        return *sounds;
    }

private:
    void connect() {
        ca_context* context = nullptr;
        ca_context_create(&context);
        context_.reset(context);
        // libcanberra's other drivers are for computers without a sound server; its ALSA one writes to
        // standard error where there is no sound card.
        ca_context_set_driver(context, "pulse");
        ca_context_change_props(context, CA_PROP_APPLICATION_NAME, "Quillmark", nullptr);
    }

    std::mutex mutex_;
    Handle<ca_context, ca_context_destroy> context_;
};

struct SoundRequest {
    const char* name;
    std::string theme;
    std::function<void()> otherwise;
};

// Sound servers take tens of milliseconds at first, and seconds when they hang.
void playInBackground(SoundRequest request) {
    const Handle<GTask, g_object_unref> task(g_task_new(nullptr, nullptr, nullptr, nullptr));
    g_task_set_task_data(task.get(), std::make_unique<SoundRequest>(std::move(request)).release(),
                         [](void* data) { std::unique_ptr<SoundRequest>(static_cast<SoundRequest*>(data)); });
    g_task_run_in_thread(task.get(), [](GTask* done, void*, void* data, GCancellable*) {
        auto& asked = *static_cast<SoundRequest*>(data);
        if (!Sounds::shared().play(asked.name, asked.theme)) MainQueue::async(std::move(asked.otherwise));
        g_task_return_boolean(done, TRUE);
    });
}

} // namespace

void playThemeSound(const char* name, std::function<void()> otherwise) {
    const auto settings = Gtk::Settings::get_default();
    if (!settings || !settings->property_gtk_enable_event_sounds().get_value()) return otherwise();
    playInBackground({name, settings->property_gtk_sound_theme_name().get_value(), std::move(otherwise)});
}

} // namespace platform
