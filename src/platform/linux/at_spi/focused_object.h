#pragma once

#include "platform/accessibility.h"
#include "platform/linux/at_spi/object.h"

#include <optional>
#include <vector>

// Objects that may have the keyboard focus. Main thread only.
namespace platform::at_spi {

// An object with the keyboard focus, and what was seen of it when it was found.
struct FocusedObject {
    Object object;
    Role role = Role::invalid;
    States states;
    bool text = false; // it has the Text interface
    Toolkit toolkit = Toolkit::other;
    // Where it said meanwhile that its selection is, to be asked for again with the text; may be absent.
    std::optional<CFRange> selection = {};
};

// How likely it is that the user types into it.
enum class Rank { none, control, text, field };

// `none` when it cannot be the focused element.
Rank rankOf(const FocusedObject& element);

// As far as its states say.
bool isOnScreen(States states, Toolkit toolkit);

// What only holds other elements.
bool isContainer(Role role);

// Reads each of `objects`, in one round trip.
std::vector<FocusedObject> look(Bus& bus, const std::vector<Object>& objects, Toolkit toolkit);

FocusedObject look(Bus& bus, const Object& object, Toolkit toolkit);

// The calls of `look`, to be made together with others: three for each object.
void addLook(const Object& object, std::vector<Call>& calls);
// The object, from its three replies.
FocusedObject seenIn(const Reply* replies, Object object, Toolkit toolkit);

} // namespace platform::at_spi
