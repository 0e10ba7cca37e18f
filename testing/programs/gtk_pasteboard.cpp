// Another program's clipboard, through GTK.
//
//   gtk_pasteboard own            reads representations from standard input, each a line "TARGET TYPE FORMAT
//                                 LENGTH" and LENGTH bytes; says "ready" when it owns them, and serves them
//                                 until it is ended
//   gtk_pasteboard read TARGET    prints "TYPE FORMAT" on a line and then the bytes, of TARGETS one name a
//                                 line, in the owner's order; exits 1 when there is nothing
#include <gtk/gtk.h>

#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

namespace {

struct Representation {
    std::string target;
    std::string type;
    int format = 8;
    std::string bytes;
};

GdkAtom atom(const std::string& name) { return gdk_atom_intern(name.c_str(), FALSE); }

GtkClipboard* clipboard() { return gtk_clipboard_get(GDK_SELECTION_CLIPBOARD); }

// GTK keeps 32-bit units in longs, as Xlib does.
std::string widened(const std::string& bytes) {
    std::string longs;
    for (std::size_t at = 0; at + 4 <= bytes.size(); at += 4)
        longs += bytes.substr(at, 4) + std::string(4, '\0');
    return longs;
}

std::string narrowed(const std::string& longs) {
    std::string bytes;
    for (std::size_t at = 0; at + 8 <= longs.size(); at += 8)
        bytes += longs.substr(at, 4);
    return bytes;
}

void serve(GtkClipboard*, GtkSelectionData* selection, guint index, gpointer data) {
    const Representation& wanted = (*static_cast<std::vector<Representation>*>(data))[index];
    if (wanted.format == 0) return; // on offer, and nothing comes
    const std::string bytes = wanted.format == 32 ? widened(wanted.bytes) : wanted.bytes;
    gtk_selection_data_set(selection, atom(wanted.type), wanted.format,
                           reinterpret_cast<const guchar*>(bytes.data()), static_cast<gint>(bytes.size()));
}

int own() {
    std::vector<Representation> contents;
    std::size_t length = 0;
    for (Representation next; std::cin >> next.target >> next.type >> next.format >> length;) {
        next.bytes.resize(length);
        std::cin.get();
        std::cin.read(next.bytes.data(), static_cast<std::streamsize>(length));
        contents.push_back(next);
    }
    std::vector<GtkTargetEntry> targets;
    targets.reserve(contents.size());
    for (Representation& one : contents)
        targets.push_back({one.target.data(), 0, static_cast<guint>(targets.size())});
    if (!gtk_clipboard_set_with_data(clipboard(), targets.data(), static_cast<guint>(targets.size()), serve,
                                     nullptr, &contents))
        return 1;
    gdk_display_sync(gdk_display_get_default());
    std::cout << "ready" << std::endl;
    gtk_main();
    return 0;
}

int read(const std::string& target) {
    GtkSelectionData* selection = gtk_clipboard_wait_for_contents(clipboard(), atom(target));
    if (!selection) return 1;
    gint length = 0;
    const guchar* data = gtk_selection_data_get_data_with_length(selection, &length);
    const int format = gtk_selection_data_get_format(selection);
    std::string bytes(data, data + length);
    if (format == 32) bytes = narrowed(bytes);
    GdkAtom* names = nullptr;
    gint count = 0;
    if (gtk_selection_data_get_targets(selection, &names, &count)) bytes.clear();
    for (gint index = 0; index < count; ++index)
        bytes += gdk_atom_name(names[index]) + std::string("\n");
    std::cout << gdk_atom_name(gtk_selection_data_get_data_type(selection)) << ' ' << format << '\n' << bytes;
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    // What the toolkit has to say must not stand in what is read.
    if (std::freopen("/dev/null", "w", stderr) == nullptr) return 2;
    gtk_init(&count, &arguments);
    const std::string verb = count > 1 ? arguments[1] : "";
    if (verb == "own") return own();
    if (verb == "read" && count == 3) return read(arguments[2]);
    return 2;
}
