#include "system/notices.h"

#include "language/system_phrases.h"

#include <giomm/error.h>
#include <glibmm/markup.h>

#include <map>
#include <utility>
#include <vector>

namespace quillmark {

namespace {

constexpr auto name = "org.freedesktop.Notifications", path = "/org/freedesktop/Notifications";
constexpr auto showButton = "show", copyButton = "copy", click = "default";

std::vector<Glib::ustring> buttonsOf(const Notice& notice) {
    std::vector<Glib::ustring> buttons;
    if (notice.mayShow) buttons = {click, say(phrases::showWindow), showButton, say(phrases::showWindow)};
    if (notice.mayCopy) buttons.insert(buttons.end(), {copyButton, say(phrases::copyRewrite)});
    return buttons;
}

} // namespace

Notices::Notices(Buttons pressed) : buttons_(std::move(pressed)) {
    try {
        bus_ = Gio::DBus::Connection::get_sync(Gio::DBus::BUS_TYPE_SESSION);
    } catch (const Glib::Error&) {
        return; // no session bus, so no notices
    }
    subscription_ = bus_->signal_subscribe(
        [this](const auto&, const auto&, const auto&, const auto&, const auto&,
               const Glib::VariantContainerBase& parameters) { this->pressed(parameters); },
        name, name, "ActionInvoked", path);
}

Notices::~Notices() {
    if (bus_) bus_->signal_unsubscribe(subscription_);
}

void Notices::show(const Notice& notice) {
    if (!bus_) return;
    bus_->call(
        path, name, "GetCapabilities", {},
        [this, notice, life = std::weak_ptr(life_)](const Glib::RefPtr<Gio::AsyncResult>& result) {
            if (life.expired()) return;
            try {
                Glib::Variant<std::vector<Glib::ustring>> abilities;
                bus_->call_finish(result).get_child(abilities);
                const auto list = abilities.get();
                send(notice, std::find(list.begin(), list.end(), "body-markup") != list.end());
            } catch (const Glib::Error&) {
                // Nobody shows notices here.
            }
        },
        name);
}

void Notices::send(const Notice& notice, bool markup) {
    constexpr gint32 asTheDesktopLikes = -1;
    const Glib::ustring body = markup ? Glib::Markup::escape_text(notice.body) : Glib::ustring(notice.body);
    const auto parameters = Glib::VariantContainerBase::create_tuple(std::vector<Glib::VariantBase>{
        Glib::Variant<Glib::ustring>::create("Quillmark"), Glib::Variant<guint32>::create(shown_),
        Glib::Variant<Glib::ustring>::create("quillmark-host"),
        Glib::Variant<Glib::ustring>::create(notice.title), Glib::Variant<Glib::ustring>::create(body),
        Glib::Variant<std::vector<Glib::ustring>>::create(buttonsOf(notice)),
        Glib::Variant<std::map<Glib::ustring, Glib::VariantBase>>::create(
            {{"desktop-entry", Glib::Variant<Glib::ustring>::create("quillmark-host")}}),
        Glib::Variant<gint32>::create(asTheDesktopLikes)});
    bus_->call(
        path, name, "Notify", parameters,
        [this, life = std::weak_ptr(life_)](const Glib::RefPtr<Gio::AsyncResult>& result) {
            if (life.expired()) return;
            try {
                Glib::Variant<guint32> number;
                bus_->call_finish(result).get_child(number);
                shown_ = number.get();
            } catch (const Glib::Error&) {
                // It went between the two calls.
            }
        },
        name);
}

void Notices::pressed(const Glib::VariantContainerBase& parameters) {
    Glib::Variant<guint32> number;
    Glib::Variant<Glib::ustring> button;
    parameters.get_child(number, 0);
    parameters.get_child(button, 1);
    if (shown_ == 0 || number.get() != shown_) return;
    if (button.get() == copyButton)
        buttons_.copy();
    else
        buttons_.show();
}

} // namespace quillmark
