#include "platform/linux/programs/desktop_files.h"

#include "platform/linux/base/handle.h"

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <algorithm>
#include <map>
#include <string_view>

namespace platform {
namespace {

constexpr std::string_view suffix = ".desktop";

using Entry = Handle<GDesktopAppInfo, g_object_unref>;

// Finds a program by the names that its windows give. GIO has no such search, and reading all files takes it
// 2 to 14 ms for 54 of them.
class Index {
public:
    Index() {
        GList* const all = g_app_info_get_all();
        for (const GList* each = all; each != nullptr; each = each->next)
            add(Entry(G_DESKTOP_APP_INFO(each->data)));
        g_list_free(all);
    }

    std::optional<std::string> identifierOf(const x11::WindowClass& names) const {
        // The instance first: web applications have their own there, and the browser's in the class.
        for (const Identifiers* known : {&byWindowClass_, &byFileName_})
            for (const std::string& name : {x11::lowerCase(names.instance), x11::lowerCase(names.name)})
                if (const auto found = known->find(name); !name.empty() && found != known->end())
                    return found->second;
        return std::nullopt;
    }

private:
    using Identifiers = std::map<std::string, std::string, std::less<>>; // by a name in lower case

    void add(const Entry& entry) {
        const char* file = g_app_info_get_id(G_APP_INFO(entry.get()));
        if (file == nullptr || !std::string_view(file).ends_with(suffix)) return;
        const std::string identifier(file, std::string_view(file).size() - suffix.size());
        add(byFileName_, identifier, identifier);
        if (const char* name = g_desktop_app_info_get_startup_wm_class(entry.get()))
            add(byWindowClass_, name, identifier);
    }

    // GIO lists the files in no particular order; of several with one name the same one is taken every time.
    static void add(Identifiers& identifiers, std::string_view name, const std::string& identifier) {
        const auto [entry, isNew] = identifiers.emplace(x11::lowerCase(name), identifier);
        if (!isNew) entry->second = std::min(entry->second, identifier);
    }

    Identifiers byWindowClass_;
    Identifiers byFileName_;
};

// Made at the first question, and again when programs have been installed or removed.
const Index& index() {
    static std::optional<Index> index;
    static GAppInfoMonitor* const monitor = [] {
        GAppInfoMonitor* made = g_app_info_monitor_get(); // kept until the program ends
        g_signal_connect(made, "changed", G_CALLBACK(+[](GAppInfoMonitor*, gpointer) { index.reset(); }),
                         nullptr);
        return made;
    }();
    static_cast<void>(monitor);
    if (!index) index.emplace();
    return *index;
}

} // namespace

std::optional<std::string> desktopFileOf(const x11::WindowClass& windowClass) {
    return index().identifierOf(windowClass);
}

std::optional<std::string> desktopFileName(const std::string& identifier) {
    const Entry entry(g_desktop_app_info_new((identifier + std::string(suffix)).c_str()));
    return entry ? std::optional<std::string>(g_app_info_get_name(G_APP_INFO(entry.get()))) : std::nullopt;
}

} // namespace platform
