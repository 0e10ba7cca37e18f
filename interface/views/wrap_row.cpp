#include "views/wrap_row.h"

#include <algorithm>

namespace quillmark {

namespace {

std::pair<int, int> naturalSize(const Gtk::Widget& widget) {
    Gtk::Requisition least, natural;
    widget.get_preferred_size(least, natural);
    return {natural.width, natural.height};
}

} // namespace

WrapRow::WrapRow(int spacing) : spacing_(spacing) {
    set_has_window(false);
    set_redraw_on_allocate(false);
}

WrapRow::~WrapRow() { clear(); }

void WrapRow::clear() {
    while (!children_.empty())
        remove(*children_.back());
}

Gtk::SizeRequestMode WrapRow::get_request_mode_vfunc() const { return Gtk::SIZE_REQUEST_HEIGHT_FOR_WIDTH; }

void WrapRow::get_preferred_width_vfunc(int& least, int& natural) const {
    least = natural = 0;
    for (const auto* child : children_) {
        if (!child->get_visible()) continue;
        const int width = naturalSize(*child).first;
        least = std::max(least, width);
        natural += width + (natural > 0 ? spacing_ : 0);
    }
}

void WrapRow::get_preferred_height_vfunc(int& least, int& natural) const {
    int leastWidth = 0, naturalWidth = 0;
    get_preferred_width_vfunc(leastWidth, naturalWidth);
    least = natural = heightFor(naturalWidth);
}

void WrapRow::get_preferred_height_for_width_vfunc(int width, int& least, int& natural) const {
    least = natural = heightFor(width);
}

std::vector<Gtk::Allocation> WrapRow::arrange(int width) const {
    std::vector<Gtk::Allocation> places;
    int x = 0, y = 0, rowHeight = 0;
    std::size_t unfinished = 0; // the first place of the row
    const auto endRow = [&] {
        for (; unfinished < places.size(); ++unfinished)
            places[unfinished].set_height(rowHeight);
    };
    for (const auto* child : children_) {
        if (!child->get_visible()) continue;
        const auto [childWidth, childHeight] = naturalSize(*child);
        if (x > 0 && x + childWidth > width) {
            endRow();
            x = 0;
            y += rowHeight + spacing_;
            rowHeight = 0;
        }
        places.emplace_back(x, y, std::min(childWidth, width), childHeight);
        x += childWidth + spacing_;
        rowHeight = std::max(rowHeight, childHeight);
    }
    endRow();
    return places;
}

int WrapRow::heightFor(int width) const {
    const auto places = arrange(width);
    return places.empty() ? 0 : places.back().get_y() + places.back().get_height();
}

void WrapRow::on_size_allocate(Gtk::Allocation& allocation) {
    set_allocation(allocation);
    const auto places = arrange(allocation.get_width());
    const bool mirrored = get_direction() == Gtk::TEXT_DIR_RTL;
    auto place = places.begin();
    for (auto* child : children_) {
        if (!child->get_visible()) continue;
        const int x =
            mirrored ? allocation.get_width() - place->get_x() - place->get_width() : place->get_x();
        Gtk::Allocation own(allocation.get_x() + x, allocation.get_y() + place->get_y(), place->get_width(),
                            place->get_height());
        child->size_allocate(own);
        ++place;
    }
}

void WrapRow::on_add(Gtk::Widget* child) {
    children_.push_back(child);
    child->set_parent(*this);
}

void WrapRow::on_remove(Gtk::Widget* child) {
    std::erase(children_, child);
    child->unparent();
    queue_resize();
}

GType WrapRow::child_type_vfunc() const { return Gtk::Widget::get_type(); }

void WrapRow::forall_vfunc(gboolean, GtkCallback callback, gpointer data) {
    const auto children = children_; // the callback may remove some
    for (auto* child : children)
        callback(child->gobj(), data);
}

} // namespace quillmark
