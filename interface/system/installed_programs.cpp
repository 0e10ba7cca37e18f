#include "system/installed_programs.h"

#include <giomm/appinfo.h>
#include <glibmm/ustring.h>

#include <algorithm>
#include <string_view>

namespace quillmark {

std::vector<ProgramName> installedPrograms() {
    constexpr std::string_view ending = ".desktop";
    std::vector<ProgramName> programs;
    for (const auto& info : Gio::AppInfo::get_all()) {
        std::string id = info->get_id();
        if (!info->should_show() || !id.ends_with(ending)) continue;
        id.resize(id.size() - ending.size());
        programs.push_back({id, info->get_display_name()});
    }
    std::sort(programs.begin(), programs.end(), [](const ProgramName& a, const ProgramName& b) {
        return Glib::ustring(a.name).casefold_collate_key() < Glib::ustring(b.name).casefold_collate_key();
    });
    return programs;
}

} // namespace quillmark
