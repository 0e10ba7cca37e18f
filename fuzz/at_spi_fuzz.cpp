// What a program says of its elements on the accessibility bus: any tree, without end or beginning too, and
// any text, selection and state in it. Whatever it says, a text that is taken for its text must be one.
#include "check.h"
#include "fake_bus.h"
#include "flutter/utf8.h"
#include "platform/linux/at_spi/applications.h"
#include "platform/linux/at_spi/embedded_objects.h"
#include "platform/linux/at_spi/focus.h"
#include "platform/linux/at_spi/paragraph.h"
#include "platform/linux/at_spi/text.h"

#include <algorithm>
#include <string>

using namespace platform;
using namespace platform::at_spi;
using namespace std::chrono_literals;

namespace {

// As long as a capture gives an attribute.
constexpr Milliseconds budget = 300ms;

struct MadeUpProgram {
    FuzzedDataProvider& input;

    GVariant* object() {
        const int number = input.ConsumeIntegralInRange(0, 9);
        const std::string path = number == 0 ? "/org/a11y/atspi/null" : "/o" + std::to_string(number);
        return g_variant_new("(so)", input.ConsumeBool() ? ":1.7" : ":1.8", path.c_str());
    }
    GVariant* text() {
        static constexpr const char* pieces[] = {"word ", "\uFFFC",   "😀",     "\uFEFF", "●",
                                                 "\n",    "Chromium", "Gecko", "GTK",    "soffice"};
        std::string text;
        for (int count = input.ConsumeIntegralInRange(0, 6); count > 0; --count)
            text += input.ConsumeBool() ? input.PickValueInArray(pieces) : input.ConsumeRandomLengthString(8);
        std::erase(text, '\0');
        return g_variant_new_string(flutter::repairedUtf8(text).c_str());
    }
    GVariant* number() { return g_variant_new_int32(input.ConsumeIntegralInRange(-2, 40)); }
    GVariant* anyNumber() {
        return input.ConsumeBool() ? number() : g_variant_new_int32(input.ConsumeIntegral<gint32>());
    }
    GVariant* word() { return g_variant_new_uint32(input.ConsumeIntegral<guint32>()); }

    GVariant* list(const char* type, GVariant* (MadeUpProgram::*member)()) {
        GVariantBuilder builder;
        g_variant_builder_init(&builder, G_VARIANT_TYPE(type));
        for (int count = input.ConsumeIntegralInRange(0, 4); count > 0; --count)
            g_variant_builder_add_value(&builder, (this->*member)());
        return g_variant_builder_end(&builder);
    }
    GVariant* objects() { return list("a(so)", &MadeUpProgram::object); }
    GVariant* relation() {
        return g_variant_new("(u@a(so))", input.ConsumeIntegralInRange(9U, 12U), objects());
    }
    GVariant* interface() {
        return g_variant_new_string(input.ConsumeBool() ? interfaces::text : interfaces::collection);
    }
    GVariant* property() {
        switch (input.ConsumeIntegralInRange(0, 3)) {
        case 0:
            return text();
        case 1:
            return object();
        case 2:
            return g_variant_new_boolean(input.ConsumeBool());
        default:
            return anyNumber();
        }
    }
    GVariant* names() { return g_variant_new_string(input.ConsumeBool() ? ":1.7" : ":1.8"); }

    GVariant* reply(std::string_view method) {
        if (input.ConsumeIntegralInRange(0, 15) == 1) return nullptr;
        const auto one = [](GVariant* value) { return g_variant_new_tuple(&value, 1); };
        if (method == "GetChildren" || method == "GetMatches") return one(objects());
        if (method == "GetState") return one(list("au", &MadeUpProgram::word));
        if (method == "GetRole") return g_variant_new("(u)", input.ConsumeIntegralInRange(0U, 120U));
        if (method == "GetInterfaces") return one(list("as", &MadeUpProgram::interface));
        if (method == "GetRelationSet") return one(list("a(ua(so))", &MadeUpProgram::relation));
        if (method == "GetText" || method == "GetRoleName") return one(text());
        if (method == "GetNSelections" || method == "GetIndexInParent") return one(number());
        if (method == "GetSelection") return g_variant_new("(@i@i)", anyNumber(), anyNumber());
        if (method == "ListNames") return one(list("as", &MadeUpProgram::names));
        if (method == "GetConnectionUnixProcessID")
            return g_variant_new("(u)", input.ConsumeIntegralInRange(0U, 2U));
        return g_variant_new("(v)", property());
    }
};

void readElement(Bus& bus, const FocusedObject& element) {
    const auto reading = readText(bus, element.object, element.toolkit);
    for (const auto& text :
         {reading.text, expandedText(bus, element, reading), expandedSelection(bus, element, reading)})
        check(!text || flutter::isUtf8(*text));
    check(!reading.range || (reading.range->location >= 0 && reading.range->length >= 0));
    selectionStaysIn(bus, element.object);
}

void capture(Bus& bus) {
    const Bus::Budget limit(bus, budget);
    Applications programs;
    for (Application* program : programs.of(bus, 1).value_or(std::vector<Application*>())) {
        if (const auto element = focusedElement(bus, *program, nullptr)) readElement(bus, *element);
        if (const auto element = lastFocusedElement(bus, *program, nullptr)) readElement(bus, *element);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static FakeBus bus;
    FuzzedDataProvider input(data, size);
    MadeUpProgram program{input};
    bus.setAnswer([&](std::string_view method) { return program.reply(method); });
    capture(bus.client());
    bus.setAnswer({});
    return 0;
}
