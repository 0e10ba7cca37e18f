#include "platform/linux/at_spi/paragraph.h"

#include "platform/linux/at_spi/text.h"

#include <algorithm>

namespace platform::at_spi {
namespace {

// True when no part of the selection and neither of its ends is in the paragraph.
bool isUntouched(const Reply& selection) {
    if (!selection.value) return false;
    gint32 start = 0, end = 0;
    g_variant_get(selection.value.get(), "(ii)", &start, &end);
    return start == -1 && end == -1;
}

} // namespace

bool selectionStaysIn(Bus& bus, const Object& paragraph) {
    std::vector<Call> calls;
    calls.push_back(relationsOf(paragraph));
    calls.push_back(property(paragraph, interfaces::accessible, "Parent"));
    const auto replies = bus.call(std::move(calls));
    const auto parent = objectPropertyIn(replies[1]);
    if (!replies[0].value || !parent) return false;

    // A selection that reaches beyond the paragraph touches the one before or after it, on the screen or not.
    // Further pieces (selected with Ctrl) are counted by the document, as far as they are on the screen.
    std::vector<Call> more;
    more.push_back(property(*parent, interfaces::selection, "NSelectedChildren"));
    for (const Relation relation : {Relation::flowsTo, Relation::flowsFrom})
        for (const Object& neighbour : relatedIn(replies[0], relation))
            more.push_back(selectionOf(neighbour));
    const auto found = bus.call(std::move(more));
    return intPropertyIn(found[0]) == 1 && std::all_of(found.begin() + 1, found.end(), isUntouched);
}

} // namespace platform::at_spi
