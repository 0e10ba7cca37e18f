#include "capture/ax.h"

namespace AX {

PasteboardSnapshot snapshotPasteboard(const platform::Pasteboard& pasteboard) {
    PasteboardSnapshot snapshot;
    const auto items = pasteboard.pasteboardItems();
    if (!items) return snapshot;
    for (const auto& item : *items) {
        auto& entry = snapshot.emplace_back();
        for (const auto& type : item.types()) {
            if (auto data = item.dataForType(type)) entry.emplace_back(type, std::move(*data));
        }
    }
    return snapshot;
}

void restorePasteboard(platform::Pasteboard& pasteboard, PasteboardSnapshot snapshot) {
    pasteboard.clearContents();
    std::vector<platform::PasteboardItem> items;
    for (auto& entry : snapshot) {
        auto& item = items.emplace_back();
        for (auto& [type, data] : entry)
            item.setData(std::move(data), type);
    }
    if (!items.empty()) pasteboard.writeObjects(items);
}

} // namespace AX
