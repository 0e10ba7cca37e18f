#include "testing/desktop/notice_board.h"

#include <algorithm>

namespace testbed {

namespace {

constexpr auto interface = R"(
<interface name="org.freedesktop.Notifications">
  <method name="GetCapabilities"><arg type="as" direction="out"/></method>
  <method name="Notify">
    <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
    <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/>
  </method>
  <signal name="ActionInvoked"><arg type="u"/><arg type="s"/></signal>
</interface>)";
constexpr guint number = 7; // of every notice: each takes the place of the one before

} // namespace

NoticeBoard::NoticeBoard()
    : service_("org.freedesktop.Notifications", "/org/freedesktop/Notifications", interface,
               [this](const std::string&, const std::string& method, GVariant* arguments) {
                   return take(method, arguments);
               }) {}

GVariant* NoticeBoard::take(const std::string& method, GVariant* arguments) {
    if (method == "GetCapabilities") {
        const char* abilities[]{"actions", "body", nullptr};
        return g_variant_new("(^as)", abilities);
    }
    const char *title = nullptr, *body = nullptr;
    GVariantIter* buttons = nullptr;
    g_variant_get(arguments, "(&su&s&s&sasa{sv}i)", nullptr, nullptr, nullptr, &title, &body, &buttons,
                  nullptr, nullptr);
    Notice notice{title, body, {}};
    const char *key = nullptr, *label = nullptr;
    while (g_variant_iter_next(buttons, "&s", &key) != FALSE &&
           g_variant_iter_next(buttons, "&s", &label) != FALSE)
        notice.buttons.emplace_back(key, label);
    g_variant_iter_free(buttons);
    notices_.push_back(std::move(notice));
    return g_variant_new("(u)", number);
}

std::optional<NoticeBoard::Notice> NoticeBoard::next(milliseconds limit) {
    const bool came = waitUntil(
        [this] {
            service_.serve();
            return notices_.size() > seen_;
        },
        limit);
    return came ? std::optional(notices_[seen_++]) : std::nullopt;
}

void NoticeBoard::press(const std::string& button) {
    const auto& buttons = notices_.at(seen_ - 1).buttons;
    const auto found =
        std::find_if(buttons.begin(), buttons.end(), [&](const auto& one) { return one.second == button; });
    service_.emit("ActionInvoked",
                  g_variant_new("(us)", number, found == buttons.end() ? "" : found->first.c_str()));
}

} // namespace testbed
