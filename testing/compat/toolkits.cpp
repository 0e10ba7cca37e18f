// Programs of the toolkits.
#include "testing/compat/kinds.h"

namespace compat {
namespace {

const std::string programs = COMPAT_PROGRAMS;
const std::string twice = "takes back the insertion with one undo and the removal with the next one.";

Target longer(const std::string& name, Target target, int lines) {
    target.name = name;
    makeLong(target, lines);
    return target;
}

Target withSecondWindow(Target target, const std::string& key) {
    target.newWindow = {key};
    return target;
}

Target withPicture(Target target) {
    target.text = document + "\uFFFC";
    target.holdsPicture = true;
    target.remark = pictureRemark;
    target.password.reset();
    target.reasons["password"] = "has none";
    return target;
}

Target withoutUndo(Target target) {
    target.undo = {};
    return target;
}

Target with(std::string remark, Target target) {
    target.remark = std::move(remark);
    return target;
}

Command java(const std::vector<std::string>& options) {
    Command command{"java"};
    command.insert(command.end(), options.begin(), options.end());
    command.push_back(programs + "/SwingFields.java");
    return command;
}

} // namespace

void addEditors(std::vector<Target>& targets) {
    const Command gtk4{"/usr/bin/python3", programs + "/gtk4_fields.py"};
    const Command qt5{"/usr/bin/python3", programs + "/qt_fields.py", "PyQt5"};
    const Command qt6{"/usr/bin/python3", programs + "/qt_fields.py", "PyQt6"};
    const Command zenity{"sh", programs + "/zenity_fields.sh"};
    const Target mousepad =
        editor("mousepad (GTK 3)", "mousepad", {"mousepad", "--disable-server", "{folder}/note.txt"});
    const Target qtText = fields("Qt 5: text", "libqt5widgets5", qt5, "text", true);
    for (Target& target : std::vector<Target>{
             withSecondWindow(mousepad, "Control+Shift+n"),
             longer("mousepad: 3,000 characters", mousepad, 60),
             longer("mousepad: 30,000 characters", mousepad, 600),
             editor("gedit (GTK 3)", "gedit", {"gedit", "--standalone", "{folder}/note.txt"}),
             editor("geany (GTK 3)", "geany", {"geany", "-i", "-s", "-t", "-m", "{folder}/note.txt"}),
             withoutUndo(fields("zenity (GTK 3): text", "zenity", zenity, "text", true)),
             withoutUndo(fields("zenity (GTK 3): entry", "zenity", zenity, "entry", false)),
             withSecondWindow(editor("gnome-text-editor (GTK 4)", "gnome-text-editor",
                                     {"gnome-text-editor", "-s", "{folder}/note.txt"}),
                              "Control+n"),
             fields("GTK 4: text view", "libgtk-4-1", gtk4, "textview", true),
             with(twice, fields("GTK 4: entry", "libgtk-4-1", gtk4, "entry", false)),
             editor("featherpad (Qt 5)", "featherpad", {"featherpad", "-s", "{folder}/note.txt"}),
             with("copies the line where nothing is selected.",
                  editor("kate (Qt 5)", "kate", {"kate", "-n", "{folder}/note.txt"})),
             editor("FocusWriter (Qt 5)", "focuswriter",
                    // Else one that is about to end is given the file.
                    {"env", "HOME={folder}", "TMPDIR={folder}", "XDG_CONFIG_HOME={folder}",
                     "XDG_DATA_HOME={folder}", "focuswriter", "{folder}/note.txt"},
                    "note"),
             qtText,
             longer("Qt 5: 3,000 characters", qtText, 60),
             longer("Qt 5: 30,000 characters", qtText, 600),
             withPicture(fields("Qt 5: text with a picture", "libqt5widgets5", qt5, "picture", true)),
             fields("Qt 5: line", "libqt5widgets5", qt5, "line", false),
             fields("Qt 6: text", "libqt6widgets6", qt6, "text", true),
             fields("Qt 6: line", "libqt6widgets6", qt6, "line", false),
         })
        targets.push_back(std::move(target));
}

void addOthers(std::vector<Target>& targets) {
    const Command tk{"wish", programs + "/tk_fields.tcl"};
    const Command bridged =
        java({"-cp", "/usr/share/java/java-atk-wrapper.jar",
              "-Djavax.accessibility.assistive_technologies=org.GNOME.Accessibility.AtkWrapper"});
    const std::string silent =
        "shows nothing to accessibility, and so not which fields are for passwords either.";
    for (Target& target : std::vector<Target>{
             with(silent, fields("Tk: text", "tk", tk, "text", true)),
             with(silent, fields("Tk: entry", "tk", tk, "entry", false)),
             with(silent, fields("Swing: text area", "openjdk-17-jre", java({}), "area", true)),
             with(silent, fields("Swing: text field", "openjdk-17-jre", java({}), "field", false)),
             with(twice,
                  fields("Swing with its bridge: text area", "libatk-wrapper-java", bridged, "area", true)),
             with(twice, fields("Swing with its bridge: text field", "libatk-wrapper-java", bridged, "field",
                                false)),
             with("does not show its document to accessibility.",
                  editor("abiword (GTK 3)", "abiword", {"abiword", "{folder}/note.txt"})),
         })
        targets.push_back(std::move(target));
}

} // namespace compat
