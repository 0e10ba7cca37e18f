#include "platform/linux/accessibility/late_selection.h"

#include "platform/linux/at_spi/text_quirks.h"
#include "platform/linux/x11/pasteboard/primary.h"
#include "platform/linux/x11/windows/front_window.h"
#include "platform/main_queue.h"

#include <chrono>
#include <string>
#include <utility>

namespace platform::ax {
namespace {

using namespace std::chrono_literals;

// A browser that has shown no selection for longer has none: it leaves on PRIMARY what was selected before.
constexpr auto mostDelay = 3s;

constexpr auto mostWait = 100ms;
constexpr std::uint32_t pollInterval = 20'000; // microseconds

// Texts of embedded objects are not in the element's own.
bool mayHold(const std::string& text, const std::string& selected) {
    return !selected.empty() &&
           (at_spi::countOfEmbeddedObjects(text) > 0 || text.find(selected) != text.npos);
}

} // namespace

at_spi::TextReading settled(at_spi::Bus& bus, const at_spi::FocusedObject& element,
                            at_spi::TextReading reading) {
    static std::uint32_t waitedFor = 0;
    if (!tellsSelectionLate(element.toolkit) || !element.states.canBeEdited()) return reading;
    if (reading.hasSelection != false || !reading.text) return reading;
    const auto window = static_cast<std::uint32_t>(x11::focusedWindow());
    const auto selected = selection::primarySelection(window);
    if (!selected || selected->age >= mostDelay || !mayHold(*reading.text, selected->text)) return reading;
    if (std::exchange(waitedFor, selected->since) == selected->since) return reading;
    const auto end = std::chrono::steady_clock::now() + mostWait;
    while (reading.hasSelection == false && std::chrono::steady_clock::now() < end) {
        usleep(pollInterval);
        reading = readText(bus, element.object, element.toolkit);
    }
    return reading.hasSelection == false ? at_spi::TextReading{} : reading;
}

} // namespace platform::ax
