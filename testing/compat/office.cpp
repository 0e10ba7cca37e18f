#include "testing/compat/kinds.h"

namespace compat {

void addOffice(std::vector<Target>& targets) {
    const Command program{"soffice", "-env:UserInstallation=file://{folder}/profile", "--norestore",
                          "--nologo", "--nofirststartwizard"};
    const auto with = [&](const std::string& kind, const std::string& file) {
        Command command = program;
        command.insert(command.end(), {kind, "{folder}/" + file});
        return command;
    };
    targets.push_back(editor("LibreOffice Writer, one paragraph", "libreoffice-writer",
                             with("--writer", "note.txt"), "note.txt"));
    targets.back().select = {"Control+Home", "Down", "Home", "Shift+End"};
    targets.back().newWindow = {"Control+n"};
    targets.back().remark = "each paragraph is an element of its own, and none of them is the whole field.";
    targets.push_back(targets.back());
    targets.back().name = "LibreOffice Writer, several paragraphs";
    targets.back().newWindow = {};
    targets.back().select = {"Control+a"};
    targets.back().selected = document;
    targets.back().remark = "accessibility gives only the part of the selection in one paragraph.";

    Target calc =
        editor("LibreOffice Calc, a cell", "libreoffice-calc", with("--calc", "table.ods"), "table");
    calc.command = with("--calc", "table.fods");
    calc.files = {{"table.fods", R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0"
 xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0" office:version="1.3"
 office:mimetype="application/vnd.oasis.opendocument.spreadsheet"><office:body><office:spreadsheet>
<table:table table:name="Sheet"><table:table-row><table:table-cell office:value-type="string"><text:p>teh words</text:p>
</table:table-cell></table:table-row></table:table></office:spreadsheet></office:body></office:document>)"}};
    calc.text = "teh words";
    calc.select = {"Control+Home"};
    calc.unselect = {};
    calc.selectAll = {"Control+Home"};
    calc.reasons = {{"field", "a cell is selected as a whole"},
                    {"paste into field", "a cell is selected as a whole"},
                    {"password", "has none"}};
    calc.remark =
        "accessibility shows no selected text in a cell, and what is copied has no place to be pasted into.";
    targets.push_back(std::move(calc));
}

} // namespace compat
