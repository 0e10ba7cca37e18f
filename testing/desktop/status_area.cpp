#include "testing/desktop/status_area.h"

#include <stdexcept>

namespace testbed {

namespace {

constexpr auto interface = R"(
<interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
</interface>)";
constexpr auto menuInterface = "com.canonical.dbusmenu";

GVariant* property(const std::string& name) {
    return name == "ProtocolVersion" ? g_variant_new_int32(0) : g_variant_new_boolean(TRUE);
}

} // namespace

StatusArea::StatusArea()
    : service_(
          "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher", interface,
          [this](const std::string& caller, const std::string&, GVariant* arguments) {
              const char* path = nullptr;
              g_variant_get(arguments, "(&s)", &path);
              program_ = caller;
              path_ = path;
              return static_cast<GVariant*>(nullptr);
          },
          property) {}

bool StatusArea::hasIcon(milliseconds limit) {
    return waitUntil(
        [this] {
            service_.serve();
            return !path_.empty();
        },
        limit);
}

int StatusArea::numberOf(const std::string& item) {
    const auto layout = service_.call(program_, path_ + "/Menu", menuInterface, "GetLayout",
                                      g_variant_new("(iias)", 0, -1, nullptr));
    if (!layout) return 0;
    const BusValue root(g_variant_get_child_value(layout.get(), 1)),
        items(g_variant_get_child_value(root.get(), 2));
    for (gsize i = 0; i < g_variant_n_children(items.get()); ++i) {
        const BusValue boxed(g_variant_get_child_value(items.get(), i)),
            entry(g_variant_get_variant(boxed.get()));
        int number = 0;
        GVariant* raw = nullptr;
        g_variant_get(entry.get(), "(i@a{sv}av)", &number, &raw, nullptr);
        const BusValue properties(raw);
        const char* label = "";
        g_variant_lookup(properties.get(), "label", "&s", &label);
        if (item == label) return number;
    }
    return 0;
}

void StatusArea::choose(const std::string& item) {
    int number = 0;
    if (!hasIcon() || !waitUntil([&] { return (number = numberOf(item)) != 0; }))
        throw std::runtime_error("No status icon has \"" + item + "\" in its menu.");
    service_.call(program_, path_ + "/Menu", menuInterface, "Event",
                  g_variant_new("(isvu)", number, "clicked", g_variant_new_int32(0), 0));
}

} // namespace testbed
