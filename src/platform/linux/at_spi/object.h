#pragma once

#include "platform/linux/at_spi/bus.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// Objects on the accessibility bus, their roles and states, and the calls to them. The numbers are the
// interface's own (atspi-constants.h of at-spi2-core).
namespace platform::at_spi {

// An object of a program; two are the same when both fields are. The program's name is never used again by
// another program while the bus lives.
struct Object {
    std::string program;
    std::string path;

    bool operator==(const Object&) const = default;
};

enum class Role : std::uint32_t {
    invalid = 0,
    comboBox = 11,
    filler = 20,
    frame = 23,
    list = 31,
    listItem = 32,
    pageTab = 37,
    pageTabList = 38,
    panel = 39,
    passwordText = 40,
    rootPane = 46,
    scrollPane = 49,
    tableCell = 56,
    terminal = 60,
    text = 61,
    unknown = 67,
    window = 69,
    paragraph = 73,
    application = 75,
    entry = 79,
    documentFrame = 82,
    heading = 83,
    section = 85,
    treeItem = 91,
    documentText = 94,
    documentWeb = 95,
    blockQuote = 105,
    staticText = 116
};

enum class State : unsigned {
    active = 1,
    editable = 7,
    focusable = 11,
    focused = 12,
    multiLine = 17,
    showing = 25,
    visible = 30,
    managesDescendants = 31,
    readOnly = 43
};

enum class Relation : std::uint32_t { flowsTo = 10, flowsFrom = 11 };

class States {
public:
    States() = default;
    explicit States(std::uint64_t bits) : bits_(bits) {}
    bool has(State state) const { return (bits_ >> static_cast<unsigned>(state) & 1U) != 0; }
    // Text in it can be changed. Qt 5 says of a read-only field that it is editable, too.
    bool canBeEdited() const { return has(State::editable) && !has(State::readOnly); }

private:
    std::uint64_t bits_ = 0;
};

// The service that knows all programs on the bus.
inline constexpr const char* registry = "org.a11y.atspi.Registry";

// Which library builds a program's object tree, where that makes a difference.
enum class Toolkit { other, chromium, gecko, gtk4, libreOffice };

// Pages of browsers have a process of their own: what is selected in them the browser knows only some time
// after it is, and not while it waits for the pasteboard (Chromium 156, Firefox 153). Chromium shows the
// elements of a page, made when the host asked for them, without the selection at first.
constexpr bool tellsSelectionLate(Toolkit toolkit) {
    return toolkit == Toolkit::chromium || toolkit == Toolkit::gecko;
}

namespace interfaces {
inline constexpr const char* accessible = "org.a11y.atspi.Accessible";
inline constexpr const char* application = "org.a11y.atspi.Application";
inline constexpr const char* collection = "org.a11y.atspi.Collection";
inline constexpr const char* selection = "org.a11y.atspi.Selection";
inline constexpr const char* text = "org.a11y.atspi.Text";
} // namespace interfaces

// How long what was read of an object is used again: a capture finds an element and then reads one attribute
// after the other, within a few milliseconds. Not for longer: texts change, and "show the password" turns a
// password entry into a plain one and back, as the same object (GTK 3).
inline constexpr Milliseconds mostAge{20};

// The object that stands for a program as a whole.
Object rootOf(std::string program);

Call childrenOf(const Object& object);
Call stateOf(const Object& object);
Call roleOf(const Object& object);
Call nameOf(const Object& object);
Call roleNameOf(const Object& object);
Call interfacesOf(const Object& object);
Call attributesOf(const Object& object);
Call relationsOf(const Object& object);
Call toolkitOf(const std::string& program);
// Every object inside `object` that has the focus.
Call focusedWithin(const Object& object);
Call property(const Object& object, const char* interface, const char* name);

// The same call to each of `objects`.
std::vector<Call> toEach(const std::vector<Object>& objects, Call (*call)(const Object&));

// What the replies say; empty, absent or no state at all when the call failed.
std::vector<Object> objectsIn(const Reply& reply);
States statesIn(const Reply& reply);
std::optional<Role> roleIn(const Reply& reply);
bool hasText(const Reply& reply);
// From the toolkit's name and the program's own.
std::optional<Toolkit> toolkitIn(const Reply& toolkit, const Reply& program);
std::optional<std::int32_t> intIn(const Reply& reply);
std::optional<std::string> stringIn(const Reply& reply);
std::optional<std::string> stringPropertyIn(const Reply& reply);
std::optional<std::int32_t> intPropertyIn(const Reply& reply);
std::optional<bool> boolPropertyIn(const Reply& reply);
std::optional<Object> objectPropertyIn(const Reply& reply);
// The objects that an object has this relation to.
std::vector<Object> relatedIn(const Reply& relations, Relation relation);
// The value of one of the object attributes.
std::optional<std::string> attributeIn(const Reply& reply, const char* name);

} // namespace platform::at_spi
