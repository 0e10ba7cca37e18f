#include "platform/linux/at_spi/object.h"

#include <cstring>

namespace platform::at_spi {
namespace {

Call plain(const Object& object, const char* method, const char* replyTypes) {
    return {object.program, object.path, interfaces::accessible, method, replyTypes, nullptr};
}

// The value of a property, when it is of that type.
Variant propertyIn(const Reply& reply, const GVariantType* type) {
    if (!reply.value) return nullptr;
    GVariant* value = nullptr;
    g_variant_get(reply.value.get(), "(v)", &value);
    Variant owned(value);
    if (!g_variant_is_of_type(value, type)) return nullptr;
    return owned;
}

std::string stringOf(GVariant* value) {
    gsize length = 0;
    const char* text = g_variant_get_string(value, &length);
    return {text, length};
}

// From a pair of names; absent for the null object.
std::optional<Object> objectOf(GVariant* pair) {
    const char* program = nullptr;
    const char* path = nullptr;
    g_variant_get(pair, "(&s&o)", &program, &path);
    if (std::strcmp(path, "/org/a11y/atspi/null") == 0 || g_dbus_is_name(program) == FALSE)
        return std::nullopt;
    return Object{program, path};
}

std::vector<Object> objectsOf(GVariant* list) {
    std::vector<Object> objects;
    for (gsize i = 0; i < g_variant_n_children(list); ++i)
        if (auto object = objectOf(Variant(g_variant_get_child_value(list, i)).get()))
            objects.push_back(std::move(*object));
    return objects;
}

} // namespace

Object rootOf(std::string program) { return {std::move(program), "/org/a11y/atspi/accessible/root"}; }

Call childrenOf(const Object& object) { return plain(object, "GetChildren", "(a(so))"); }
Call stateOf(const Object& object) { return plain(object, "GetState", "(au)"); }
Call roleOf(const Object& object) { return plain(object, "GetRole", "(u)"); }
Call nameOf(const Object& object) { return property(object, interfaces::accessible, "Name"); }
Call roleNameOf(const Object& object) { return plain(object, "GetRoleName", "(s)"); }
Call interfacesOf(const Object& object) { return plain(object, "GetInterfaces", "(as)"); }
Call attributesOf(const Object& object) { return plain(object, "GetAttributes", "(a{ss})"); }
Call relationsOf(const Object& object) { return plain(object, "GetRelationSet", "(a(ua(so)))"); }

Call toolkitOf(const std::string& program) {
    return property(rootOf(program), interfaces::application, "ToolkitName");
}

Call focusedWithin(const Object& object) {
    constexpr int matchAll = 1;
    constexpr unsigned documentOrder = 1;
    constexpr int noLimit = 0;
    GVariantBuilder states;
    g_variant_builder_init(&states, G_VARIANT_TYPE("ai"));
    g_variant_builder_add(&states, "i", 1 << static_cast<unsigned>(State::focused));
    g_variant_builder_add(&states, "i", 0);
    GVariant* rule = g_variant_new("(aiia{ss}iaiiasib)", &states, matchAll, nullptr, matchAll, nullptr,
                                   matchAll, nullptr, matchAll, FALSE);
    return {object.program,
            object.path,
            interfaces::collection,
            "GetMatches",
            "(a(so))",
            arguments("(@(aiia{ss}iaiiasib)uib)", rule, documentOrder, noLimit, TRUE)};
}

Call property(const Object& object, const char* interface, const char* name) {
    return {object.program, object.path, "org.freedesktop.DBus.Properties",
            "Get",          "(v)",       arguments("(ss)", interface, name)};
}

std::vector<Call> toEach(const std::vector<Object>& objects, Call (*call)(const Object&)) {
    std::vector<Call> calls;
    calls.reserve(objects.size());
    for (const Object& object : objects)
        calls.push_back(call(object));
    return calls;
}

std::vector<Object> objectsIn(const Reply& reply) {
    if (!reply.value) return {};
    return objectsOf(Variant(g_variant_get_child_value(reply.value.get(), 0)).get());
}

States statesIn(const Reply& reply) {
    if (!reply.value) return {};
    const Variant words(g_variant_get_child_value(reply.value.get(), 0));
    std::uint64_t bits = 0;
    for (gsize i = 0; i < 2 && i < g_variant_n_children(words.get()); ++i) {
        guint32 word = 0;
        g_variant_get_child(words.get(), i, "u", &word);
        bits |= std::uint64_t{word} << (32 * i);
    }
    return States(bits);
}

std::optional<Role> roleIn(const Reply& reply) {
    if (!reply.value) return std::nullopt;
    guint32 number = 0;
    g_variant_get(reply.value.get(), "(u)", &number);
    return static_cast<Role>(number);
}

bool hasText(const Reply& reply) {
    if (!reply.value) return false;
    const Variant list(g_variant_get_child_value(reply.value.get(), 0));
    GVariantIter iterator;
    g_variant_iter_init(&iterator, list.get());
    const char* name = nullptr;
    while (g_variant_iter_next(&iterator, "&s", &name) != FALSE)
        if (std::strcmp(name, interfaces::text) == 0) return true;
    return false;
}

std::optional<Toolkit> toolkitIn(const Reply& toolkit, const Reply& program) {
    const auto name = stringPropertyIn(toolkit);
    if (!name) return toolkit.failure == Failure::refused ? std::optional(Toolkit::other) : std::nullopt;
    if (*name == "Chromium") return Toolkit::chromium;
    if (*name == "Gecko") return Toolkit::gecko;
    if (*name == "GTK") return Toolkit::gtk4; // GTK 3 has a small "gtk"
    if (stringPropertyIn(program).value_or("").starts_with("soffice")) return Toolkit::libreOffice;
    return Toolkit::other;
}

std::optional<std::int32_t> intIn(const Reply& reply) {
    if (!reply.value) return std::nullopt;
    gint32 number = 0;
    g_variant_get(reply.value.get(), "(i)", &number);
    return number;
}

std::optional<std::string> stringIn(const Reply& reply) {
    if (!reply.value) return std::nullopt;
    const Variant value(g_variant_get_child_value(reply.value.get(), 0));
    return stringOf(value.get());
}

std::optional<std::string> stringPropertyIn(const Reply& reply) {
    const Variant value = propertyIn(reply, G_VARIANT_TYPE_STRING);
    return value ? std::optional(stringOf(value.get())) : std::nullopt;
}

std::optional<std::int32_t> intPropertyIn(const Reply& reply) {
    const Variant value = propertyIn(reply, G_VARIANT_TYPE_INT32);
    return value ? std::optional(g_variant_get_int32(value.get())) : std::nullopt;
}

std::optional<bool> boolPropertyIn(const Reply& reply) {
    const Variant value = propertyIn(reply, G_VARIANT_TYPE_BOOLEAN);
    return value ? std::optional(g_variant_get_boolean(value.get()) != FALSE) : std::nullopt;
}

std::optional<Object> objectPropertyIn(const Reply& reply) {
    const Variant value = propertyIn(reply, G_VARIANT_TYPE("(so)"));
    return value ? objectOf(value.get()) : std::nullopt;
}

std::vector<Object> relatedIn(const Reply& relations, Relation relation) {
    std::vector<Object> related;
    if (!relations.value) return related;
    const Variant all(g_variant_get_child_value(relations.value.get(), 0));
    for (gsize i = 0; i < g_variant_n_children(all.get()); ++i) {
        const Variant each(g_variant_get_child_value(all.get(), i));
        guint32 kind = 0;
        g_variant_get_child(each.get(), 0, "u", &kind);
        if (static_cast<Relation>(kind) != relation) continue;
        for (Object& object : objectsOf(Variant(g_variant_get_child_value(each.get(), 1)).get()))
            related.push_back(std::move(object));
    }
    return related;
}

std::optional<std::string> attributeIn(const Reply& reply, const char* name) {
    if (!reply.value) return std::nullopt;
    const Variant attributes(g_variant_get_child_value(reply.value.get(), 0));
    const char* value = nullptr;
    if (g_variant_lookup(attributes.get(), name, "&s", &value) == FALSE) return std::nullopt;
    return value;
}

} // namespace platform::at_spi
