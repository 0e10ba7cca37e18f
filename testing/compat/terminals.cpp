#include "testing/compat/kinds.h"

namespace compat {
namespace {

// Sixty of them fill a window, and one click after the other selects it, as a word or as a line.
const std::string wideLine(70, 'x');
const std::string sixtyLines = [] {
    std::string lines;
    for (int i = 0; i < 60; ++i)
        lines += wideLine + '\n';
    return lines;
}();

} // namespace

void addTerminals(std::vector<Target>& targets) {
    const std::string loop = "while :; do echo '" + sixtyLines + "'; sleep 1000; done";
    for (const auto& [name, command] :
         {std::pair<std::string, Command>("xterm", {"xterm", "-T", "Terminal", "-e", "sh", "-c", loop}),
          std::pair<std::string, Command>("xfce4-terminal",
                                          {"xfce4-terminal", "--disable-server", "-T", "Terminal",
                                           "--dynamic-title-mode=none", "-x", "sh", "-c", loop})}) {
        targets.push_back({.name = name,
                           .package = name,
                           .command = command,
                           .title = "Terminal",
                           .text = {},
                           .selected = wideLine,
                           .undo = {},
                           .selectsByClicks = true,
                           .reasons = {{"field", "no field"},
                                       {"password", "has none"},
                                       {"paste into selection", "typing does not replace it"},
                                       {"paste into field", "no field"}}});
    }

    Target xedit = editor("xedit (Xaw)", "x11-apps", {"xedit", "{folder}/note.txt"}, "xedit");
    xedit.files["note.txt"] = sixtyLines;
    xedit.text = sixtyLines;
    xedit.selected = wideLine;
    xedit.selectsByClicks = true;
    xedit.undo = {};
    xedit.remark = "gives Control+C a meaning of its own, so that only its selected text is read.";
    targets.push_back(std::move(xedit));
}

} // namespace compat
