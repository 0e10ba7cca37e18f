// A service of the desktop on the session bus, answered by the test whenever it looks.
#pragma once

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <string>

namespace testbed {

struct UnrefValue {
    void operator()(GVariant* value) const { g_variant_unref(value); }
};
using BusValue = std::unique_ptr<GVariant, UnrefValue>;

class BusService {
public:
    // What the service answers, a tuple; null: an empty one.
    using CallHandler =
        std::function<GVariant*(const std::string& caller, const std::string& method, GVariant* arguments)>;
    // Of a property of the service.
    using PropertyHandler = std::function<GVariant*(const std::string& name)>;

    // `interface` is one in D-Bus's XML. Throws where another program is that service already.
    BusService(const std::string& name, const std::string& path, const std::string& interface,
               CallHandler answer, PropertyHandler property = {});
    ~BusService();
    BusService(const BusService&) = delete;
    BusService& operator=(const BusService&) = delete;

    // Answers what has been asked meanwhile.
    void serve();

    void emit(const std::string& signal, GVariant* arguments);
    // A call to another program; null when it answers an error, or nothing.
    BusValue call(const std::string& program, const std::string& path, const std::string& interface,
                  const std::string& method, GVariant* arguments = nullptr);

private:
    struct Native;
    std::unique_ptr<Native> native_;
    std::string path_;
};

} // namespace testbed
