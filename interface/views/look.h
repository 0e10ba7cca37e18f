// What the style sheet of the desktop's theme does not know. Colours are the theme's; both light and dark
// fit.
#pragma once

#include <gtkmm/widget.h>

namespace quillmark {

// Once, after the toolkit has started.
void installLook();

// Classes of the style sheet.
namespace look {
inline constexpr auto dim = "quillmark-dim";         // less important words
inline constexpr auto key = "quillmark-key";         // the key of an action, under its name
inline constexpr auto heading = "quillmark-heading"; // above a group of controls
inline constexpr auto compact = "quillmark-compact"; // buttons of a row
inline constexpr auto banner = "quillmark-banner";
inline constexpr auto text = "quillmark-text";              // where people read and write at length
inline constexpr auto underCheck = "quillmark-under-check"; // below the words of a check or radio button
} // namespace look

void addClass(Gtk::Widget& widget, const char* name);

// What a screen reader says a widget is.
void nameFor(Gtk::Widget& widget, const std::string& name, const std::string& description = {});

} // namespace quillmark
