// Where marks are drawn, beside the place that the toolkit gives for every single letter.
#include "views/mark_places.h"

#include <gmock/gmock.h>
#include <gtkmm/main.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/window.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace quillmark {
namespace {

struct Text {
    Gtk::Main toolkit;
    Gtk::Window window;
    Gtk::ScrolledWindow scroller;
    Gtk::TextView view;
    MarkPlaces places{view};
    int width = 0;

    Text() {
        view.set_wrap_mode(Gtk::WRAP_WORD_CHAR);
        window.set_default_size(300, 400);
        scroller.add(view);
        window.add(scroller);
        window.show_all();
        view.signal_size_allocate().connect([this](const Gtk::Allocation& now) {
            if (std::exchange(width, now.get_width()) != width) places.forget();
        });
        settle();
    }
    static void settle() {
        while (Gtk::Main::events_pending())
            Gtk::Main::iteration();
    }
    Glib::RefPtr<Gtk::TextBuffer> buffer() { return view.get_buffer(); }
    Gtk::TextIter at(std::size_t place) { return buffer()->get_iter_at_offset(static_cast<int>(place)); }
    std::size_t size() { return static_cast<std::size_t>(buffer()->get_char_count()); }

    // What is wrong with the places of these marks; empty when nothing is.
    std::string check(const MarkPlaces::Rows& rows, const std::vector<Span>& marks) {
        const auto blocks = places.in(rows, marks);
        for (std::size_t place = 0; place < size(); ++place) {
            Gdk::Rectangle letter;
            view.get_iter_location(at(place), letter);
            const int x = letter.get_x() + letter.get_width() / 2;
            const int y = letter.get_y() + letter.get_height() / 2;
            if (std::abs(letter.get_width()) < 2 || y < rows.top || y > rows.bottom) continue;
            const bool marked = std::any_of(marks.begin(), marks.end(), [&](const Span& mark) {
                return mark.start <= place && place < mark.end;
            });
            const auto covering = std::count_if(blocks.begin(), blocks.end(), [&](const Gdk::Rectangle& b) {
                return x >= b.get_x() && x < b.get_x() + b.get_width() && y >= b.get_y() &&
                       y < b.get_y() + b.get_height();
            });
            if (covering != (marked ? 1 : 0))
                return "letter " + std::to_string(place) + ", " + (marked ? "marked" : "not marked") +
                       ", is in " + std::to_string(covering) + " places of:\n" + buffer()->get_text().raw();
        }
        return {};
    }
};

TEST(MarkPlaces, AreThoseOfTheirLettersInAnyDirectionAndAfterAnyEdit) {
    Text text;
    std::mt19937 random(7);
    const std::vector<std::string> words{"word ", "12, 34 ", "(так) ",   "שלום ", "ذهبت إلى ",
                                         "أمس. ", "한국어 ", "私は昨日", "🐶 ",    "ABC-אבג ",
                                         "\n",    "2024\n",  "\t",       "\u2029"};
    const auto place = [&](std::size_t size) { return random() % (size + 1); };
    for (int step = 0; step < 300; ++step) {
        const auto size = text.size();
        auto start = place(size), end = place(size);
        if (start > end) std::swap(start, end);
        if (size > 400 || random() % 4 == 0)
            text.buffer()->erase(text.at(start), text.at(std::min(end, start + 60)));
        else
            for (auto count = random() % 20; count > 0; --count)
                text.buffer()->insert(text.at(std::min(start, text.size())), words[random() % words.size()]);

        std::vector<Span> marks;
        for (std::size_t behind = random() % 30; behind < text.size(); behind += random() % 30) {
            const auto length = 1 + random() % (random() % 10 == 0 ? 100 : 12);
            marks.push_back({behind, std::min(behind + length, text.size())});
            behind = marks.back().end;
        }
        if (step % 50 == 0) text.window.resize(200 + static_cast<int>(random() % 200), 400);
        Text::settle();
        ASSERT_EQ(text.check({0, 10'000}, marks), "") << "in step " << step;
        const int top = static_cast<int>(random() % 200);
        ASSERT_EQ(text.check({top, top + 100}, marks), "") << "in step " << step << ", from row " << top;
    }
}

} // namespace
} // namespace quillmark
