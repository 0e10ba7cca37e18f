// Widgets one after the other in rows, as many to a row as fit: what a line of buttons needs in a narrow
// window.
#pragma once

#include <gtkmm/container.h>

#include <vector>

namespace quillmark {

class WrapRow : public Gtk::Container {
public:
    explicit WrapRow(int spacing = 6);
    ~WrapRow() override;

    void clear();

protected:
    Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void get_preferred_width_vfunc(int& least, int& natural) const override;
    void get_preferred_height_vfunc(int& least, int& natural) const override;
    void get_preferred_height_for_width_vfunc(int width, int& least, int& natural) const override;
    void on_size_allocate(Gtk::Allocation& allocation) override;
    void on_add(Gtk::Widget* child) override;
    void on_remove(Gtk::Widget* child) override;
    GType child_type_vfunc() const override;
    void forall_vfunc(gboolean internals, GtkCallback callback, gpointer data) override;

private:
    // Where each child that is shown would stand; all those of a row are as high as the highest.
    std::vector<Gtk::Allocation> arrange(int width) const;
    int heightFor(int width) const;

    int spacing_;
    std::vector<Gtk::Widget*> children_;
};

} // namespace quillmark
