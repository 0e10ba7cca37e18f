#pragma once

#include "platform/menu.h"

#include <gtkmm/menubar.h>

#include <memory>

namespace platform {

// The bar of a main menu, with what opens from it. The menu must outlive it. Main thread only.
class MenuBar : public Gtk::MenuBar {
public:
    explicit MenuBar(const Menu& menu);

protected:
    void on_unmap() override;
    void on_deactivate() override;

private:
    const Menu& menu_;
    std::shared_ptr<char> life_ = std::make_shared<char>();
};

} // namespace platform
