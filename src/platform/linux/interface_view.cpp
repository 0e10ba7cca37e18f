#include "platform/linux/interface_view.h"

namespace platform {

InterfaceView::InterfaceView() {
    socket_.signal_plug_added().connect([this] { socket_.grab_focus(); });
    socket_.signal_plug_removed().connect([] { return true; }); // else the socket goes with its first plug
    // A socket paints nothing itself, and its window would stay black.
    socket_.get_style_context()->add_class("view");
    socket_.signal_draw().connect([this](const Cairo::RefPtr<Cairo::Context>& context) {
        socket_.get_style_context()->render_background(context, 0, 0, socket_.get_allocated_width(),
                                                       socket_.get_allocated_height());
        return false;
    });
    add(socket_);
    show_all();
}

unsigned long InterfaceView::embeddingWindow() const { return socket_.get_id(); }

} // namespace platform
