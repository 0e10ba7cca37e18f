// One of the theme's icons, as high as the words beside it. GTK 3.24 alone draws it 16 pixels high beside
// letters of any size.
#pragma once

#include <gtkmm/image.h>

#include <string>

namespace quillmark {

class Icon : public Gtk::Image {
public:
    Icon();
    explicit Icon(const std::string& name);

    // By its name in the icon theme.
    void set(const std::string& name);

private:
    void followFont();
};

} // namespace quillmark
