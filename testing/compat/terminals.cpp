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
    const Target terminal{.name = {},
                          .package = {},
                          .command = {},
                          .files = {{"lines", sixtyLines},
                                    {"show.sh", "#!/bin/sh\ntrap 'touch {folder}/interrupted' INT\n"
                                                "while :; do cat {folder}/lines; sleep 1000; done\n"}},
                          .title = "Terminal",
                          .text = {},
                          .selected = wideLine,
                          .undo = {},
                          .clicksAt = 0.5,
                          .reasons = {{"field", "no field"},
                                      {"password", "has none"},
                                      {"paste into selection", "typing does not replace it"},
                                      {"paste into field", "no field"}}};
    const auto add = [&](const std::string& name, const std::string& package,
                         const Command& command) -> Target& {
        targets.push_back(terminal);
        targets.back().name = name;
        targets.back().package = package;
        targets.back().command = command;
        return targets.back();
    };
    add("xterm", "xterm", {"xterm", "-T", "Terminal", "-e", "sh", "{folder}/show.sh"});
    add("xfce4-terminal", "xfce4-terminal",
        {"xfce4-terminal", "--disable-server", "-T", "Terminal", "--dynamic-title-mode=none", "-x", "sh",
         "{folder}/show.sh"});

    Target& geany =
        add("geany: its terminal", "geany", {"geany", "-c", "{folder}/config", "-i", "-s", "{folder}/lines"});
    geany.files["config/geany.conf"] = "[geany]\nmsgwindow_visible=true\n"
                                       "[VTE]\nload_vte=true\nshell=sh {folder}/show.sh\n";
    geany.title = "lines";
    geany.ready = {"F4", "", "", ""};
    geany.clicksAt = 0.85;
    // It remembers in both folders whether its terminal is open.
    Target& kate =
        add("kate: its terminal", "kate",
            {"sh", "-c",
             "chmod +x \"$0/show.sh\"; export XDG_CONFIG_HOME=$0 XDG_DATA_HOME=$0 SHELL=$0/show.sh; "
             "exec kate -n \"$0/lines\"",
             "{folder}"});
    kate.title = "lines";
    kate.ready = {"F4", "", "", "", ""};
    kate.clicksAt = 0.9;

    Target xedit = editor("xedit (Xaw)", "x11-apps", {"xedit", "{folder}/note.txt"}, "xedit");
    xedit.files["note.txt"] = sixtyLines;
    xedit.text = sixtyLines;
    xedit.selected = wideLine;
    xedit.clicksAt = 0.5;
    xedit.undo = {};
    xedit.remark = "gives Control+C a meaning of its own, so that only its selected text is read.";
    targets.push_back(std::move(xedit));
}

} // namespace compat
