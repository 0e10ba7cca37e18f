#include "system/status_icon.h"

#include "language/system_phrases.h"
#include "settings/free.h"

#include <libayatana-appindicator/app-indicator.h>

#include <utility>

namespace quillmark {

namespace {

constexpr auto icon = "quillmark-host";

void add(Gtk::Menu& menu, const Phrase& name, std::function<void()> chosen) {
    auto* item = Gtk::make_managed<Gtk::MenuItem>(say(name));
    item->signal_activate().connect(chosen);
    menu.append(*item);
}

} // namespace

struct StatusIcon::Indicator {
    std::unique_ptr<AppIndicator, Free> handle{
        app_indicator_new("quillmark", icon, APP_INDICATOR_CATEGORY_APPLICATION_STATUS)};
};

StatusIcon::StatusIcon(Actions actions)
    : actions_(std::move(actions)), indicator_(std::make_unique<Indicator>()) {
    add(menu_, phrases::showWindow, actions_.show);
    // Without a tick: other programs pause the hot key too, and the host does not tell.
    add(menu_, phrases::pauseHotKey, actions_.pause);
    add(menu_, phrases::settingsMenu, actions_.settings);
    add(menu_, phrases::quitMenu, actions_.quit);
    menu_.show_all();

    auto* indicator = indicator_->handle.get();
    app_indicator_set_title(indicator, "Quillmark");
    app_indicator_set_attention_icon_full(indicator, "dialog-information", "Quillmark");
    app_indicator_set_menu(indicator, menu_.gobj());
    app_indicator_set_secondary_activate_target(indicator, GTK_WIDGET(menu_.get_children().front()->gobj()));
    app_indicator_set_status(indicator, APP_INDICATOR_STATUS_ACTIVE);
}

StatusIcon::~StatusIcon() = default;

void StatusIcon::callAttention(bool wanted) {
    app_indicator_set_status(indicator_->handle.get(),
                             wanted ? APP_INDICATOR_STATUS_ATTENTION : APP_INDICATOR_STATUS_ACTIVE);
}

} // namespace quillmark
