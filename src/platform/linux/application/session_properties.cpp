#include "platform/linux/application/session_properties.h"

#include <glib.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>

namespace platform {
namespace {

void setProperty(SmcConn connection, const char* name, const char* type, std::vector<std::string> values) {
    std::vector<SmPropValue> parts;
    for (auto& value : values)
        parts.push_back({static_cast<int>(value.size()), value.data()});
    SmProp property{const_cast<char*>(name), const_cast<char*>(type), static_cast<int>(parts.size()),
                    parts.data()};
    SmProp* all = &property;
    SmcSetProperties(connection, 1, &all);
}

} // namespace

void describeProgram(SmcConn connection, const std::vector<std::string>& clone,
                     const std::vector<std::string>& restart) {
    std::error_code unknown;
    setProperty(connection, SmProgram, SmARRAY8, {restart.front()});
    setProperty(connection, SmUserID, SmARRAY8, {g_get_user_name()});
    setProperty(connection, SmProcessID, SmARRAY8, {std::to_string(getpid())});
    setProperty(connection, SmCurrentDirectory, SmARRAY8, {std::filesystem::current_path(unknown).string()});
    setProperty(connection, SmCloneCommand, SmLISTofARRAY8, clone);
    setProperty(connection, SmRestartCommand, SmLISTofARRAY8, restart);
}

void setRestartStyle(SmcConn connection, RestartStyle style) {
    setProperty(connection, SmRestartStyleHint, SmCARD8, {std::string(1, static_cast<char>(style))});
}

} // namespace platform
