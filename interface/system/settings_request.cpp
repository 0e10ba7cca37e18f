#include "system/settings_request.h"

#include "system/host_command.h"

#include <giomm/dbusownname.h>
#include <giomm/error.h>
#include <giomm/simpleactiongroup.h>
#include <glibmm/spawn.h>

#include <chrono>
#include <map>
#include <thread>
#include <vector>

namespace quillmark {

namespace {

using namespace std::chrono_literals;

constexpr auto busName = "org.quillmark.Interface", path = "/org/quillmark/Interface", action = "settings";

constexpr auto startDeadline = 15s; // for the host and its interface

bool ask(const Glib::RefPtr<Gio::DBus::Connection>& bus) {
    const auto parameters = Glib::VariantContainerBase::create_tuple(std::vector<Glib::VariantBase>{
        Glib::Variant<Glib::ustring>::create(action),
        Glib::Variant<std::vector<Glib::VariantBase>>::create({}),
        Glib::Variant<std::map<Glib::ustring, Glib::VariantBase>>::create({})});
    try {
        bus->call_sync(path, "org.gtk.Actions", "Activate", parameters, busName);
        return true;
    } catch (const Glib::Error&) {
        return false;
    }
}

} // namespace

SettingsRequests::SettingsRequests(const std::function<void()>& show) {
    try {
        bus_ = Gio::DBus::Connection::get_sync(Gio::DBus::BUS_TYPE_SESSION);
        const auto group = Gio::SimpleActionGroup::create();
        group->add_action(action, show);
        actions_ = bus_->export_action_group(path, group);
        name_ = Gio::DBus::own_name(Gio::DBus::BUS_TYPE_SESSION, busName);
    } catch (const Glib::Error&) {
        // Only the window itself leads to the settings then.
    }
}

SettingsRequests::~SettingsRequests() {
    if (name_ != 0) Gio::DBus::unown_name(name_);
    if (actions_ != 0) bus_->unexport_action_group(actions_);
}

std::string askForSettings() try {
    const auto bus = Gio::DBus::Connection::get_sync(Gio::DBus::BUS_TYPE_SESSION);
    if (ask(bus)) return {};
    Glib::spawn_async("", std::vector<std::string>{hostProgram(), "--dialogs"},
                      Glib::SPAWN_SEARCH_PATH | Glib::SPAWN_STDOUT_TO_DEV_NULL);
    for (const auto start = std::chrono::steady_clock::now();
         std::chrono::steady_clock::now() - start < startDeadline; std::this_thread::sleep_for(100ms))
        if (ask(bus)) return {};
    return "the settings do not open. Start Quillmark and press Ctrl+, in its window.";
} catch (const Glib::Error& error) {
    return "the settings cannot be asked for: " + error.what() +
           ". Start Quillmark and press Ctrl+, in its window.";
}

} // namespace quillmark
