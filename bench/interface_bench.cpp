// What long texts cost in the interface: comparing two of them, and how smooth its window stays while one
// grows. Run under script/virtual-desktop.
#include "flutter/standard_codec.h"
#include "rewriting/assistant.h"
#include "rewriting/differences.h"
#include "rewriting/words.h"
#include "views/line_field.h"
#include "views/look.h"
#include "views/main_page.h"

#include <glibmm/main.h>
#include <gtkmm/main.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/textview.h>
#include <gtkmm/window.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace quillmark;
using Clock = std::chrono::steady_clock;

double milliseconds(Clock::duration time) { return std::chrono::duration<double, std::milli>(time).count(); }

// Of this thread, in milliseconds.
double processorTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

constexpr std::size_t length = 30'000;

std::vector<std::string> wordsOfEnglish(std::mt19937& random) {
    // As often as words are in texts: few of them make up most.
    std::vector<std::string> words;
    for (std::size_t size = 0; size < length; size += words.back().size() + 1) {
        const double place = std::uniform_real_distribution<>(0, 1)(random);
        const auto number = static_cast<unsigned>(2500 * place * place * place);
        words.push_back(std::string(2 + number % 6, static_cast<char>('a' + number % 26)) +
                        std::to_string(number % 97));
        if (random() % 14 == 0) words.back() += '.';
    }
    return words;
}

std::string joined(const std::vector<std::string>& words, int paragraph) {
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i)
        text += words[i] + (paragraph > 0 && i % static_cast<std::size_t>(paragraph) == 0 ? "\n" : " ");
    return text;
}

void compare(const char* what, const std::string& before, const std::string& after) {
    std::vector<double> times;
    std::size_t count = 0;
    for (int round = 0; round < 7; ++round) {
        const auto start = Clock::now();
        count = differences(before, after).count;
        times.push_back(milliseconds(Clock::now() - start));
    }
    std::sort(times.begin(), times.end());
    std::printf("  %-44s %6.1f ms  (longest %.1f, %zu places)\n", what, times[3], times.back(), count);
}

void compareAll() {
    std::printf("differences of two texts of 30,000 characters, off the main loop (aim: 50 ms)\n");
    std::mt19937 random(1);
    const auto words = wordsOfEnglish(random);
    auto few = words, many = words, shuffled = words;
    for (std::size_t i = 0; i < words.size() / 20; ++i)
        few[random() % few.size()] += "x";
    for (std::size_t i = 0; i < words.size() / 3; ++i)
        many[random() % many.size()] = words[random() % words.size()];
    std::shuffle(shuffled.begin(), shuffled.end(), random);
    const auto before = joined(words, 80);
    compare("one word in twenty changed", before, joined(few, 80));
    compare("one word in three is another", before, joined(many, 80));
    compare("the same words in another order", before, joined(shuffled, 80));
    compare("another text", before, joined(wordsOfEnglish(random), 80));
    std::string line, changed, korean, koreanChanged;
    while (line.size() < length) {
        line += "teh same words , again and again ";
        changed += "the same words, again and  again ";
    }
    compare("the same line again and again", line, changed);
    for (std::size_t characters = 0; characters < length; characters += 20) {
        korean += "저는 어제 학교애 갔다가 집에 왔어요. ";
        koreanChanged += "저는 어제 학교에 갔다가 집에 왔어요. ";
    }
    compare("Korean", korean, koreanChanged);
}

// The host, as far as the assistant needs it.
class Host : public flutter::BinaryMessenger {
public:
    void send(std::string_view, std::span<const std::uint8_t>) override {}
    void send(std::string_view, std::span<const std::uint8_t> message, Reply onReply) override {
        const auto call = flutter::decodeMethodCall(message);
        if (call && call->method == "availability")
            onReply(flutter::encodeSuccessEnvelope(flutter::EncodableMap{{"state", "available"}}));
    }
    void setMessageHandler(std::string channel, MessageHandler handler) override {
        handlers_[channel] = handler;
    }

    void event(const char* kind, const char* key, const std::string& value) {
        handlers_["quillmark.quillmark/system_model/events"](
            flutter::encodeSuccessEnvelope(
                flutter::EncodableMap{{"request_id", "rewrite-1"}, {"kind", kind}, {key, value}}),
            {});
    }

private:
    std::map<std::string, MessageHandler> handlers_;
};

class Surrounding : public Surroundings {
public:
    MainPage* page = nullptr;

    void changed() override {
        if (page != nullptr) page->show();
    }
    void tell(const Notice&) override {}
    void show() override {}
    void hide() override {}
    void captureAgain() override {}
    void askForConsent(std::function<void(ModelConsent)> answer) override { answer(ModelConsent::given); }
    void watchPerson() override {}
    bool personWentOn() override { return false; }
    bool personHoldsModifiers() override { return false; }
    void after(std::chrono::milliseconds, std::function<void()>) override {}
};

// Lets the answer grow sixty times a second, and ends the loop a while after it is complete.
void sendGrowing(Host& host, const std::string& answer, const Glib::RefPtr<Glib::MainLoop>& loop) {
    Glib::signal_timeout().connect(
        [&host, &answer, loop, grown = std::size_t{0}]() mutable {
            grown = std::min(grown + 100, answer.size());
            while (grown < answer.size() && (answer[grown] & 0xC0) == 0x80)
                ++grown;
            host.event("text", "text", answer.substr(0, grown));
            if (grown < answer.size()) return true;
            host.event("done", "finish_reason", "stop");
            Glib::signal_timeout().connect_once([loop] { loop->quit(); }, 1500);
            return false;
        },
        16);
}

// Processor time, not the clock's: what else the machine does meanwhile is not the interface's.
class Turns {
public:
    // Where each turn's time goes.
    explicit Turns(std::function<std::vector<double>&()> into) : into_(std::move(into)) {}
    ~Turns() { ticking_.disconnect(); }
    Turns(const Turns&) = delete;
    Turns& operator=(const Turns&) = delete;

private:
    bool tick() {
        const auto now = processorTime();
        into_().push_back(now - std::exchange(last_, now));
        return true;
    }

    std::function<std::vector<double>&()> into_;
    double last_ = processorTime();
    sigc::connection ticking_ =
        Glib::signal_timeout().connect([this] { return tick(); }, 1, Glib::PRIORITY_HIGH);
};

void print(const std::string& what, std::vector<double> turns) {
    std::sort(turns.begin(), turns.end());
    const auto late = std::count_if(turns.begin(), turns.end(), [](double turn) { return turn > 16; });
    std::printf("  %-44s longest %6.1f ms, 99 in 100 within %5.1f ms, %td turns above 16 ms\n", what.c_str(),
                turns.back(), turns[turns.size() * 99 / 100], late);
}

// The field on the screen that asks for one line of text.
LineField* fieldIn(Gtk::Container& parent) {
    for (auto* child : parent.get_children()) {
        if (auto* field = dynamic_cast<LineField*>(child); field != nullptr && field->get_mapped())
            return field;
        auto* container = dynamic_cast<Gtk::Container*>(child);
        if (auto* found = container != nullptr ? fieldIn(*container) : nullptr) return found;
    }
    return nullptr;
}

// The least that showing a whole text takes: a text view without marks, as wide as one of the two of the
// interface.
std::vector<double> turnsOfBareView(const std::string& text) {
    Gtk::Window window;
    Gtk::ScrolledWindow scroller;
    Gtk::TextView view;
    view.set_wrap_mode(Gtk::WRAP_WORD_CHAR);
    scroller.add(view);
    window.set_default_size(508, 400);
    window.add(scroller);
    window.show_all();
    while (Gtk::Main::events_pending())
        Gtk::Main::iteration();
    std::vector<double> all;
    const auto loop = Glib::MainLoop::create();
    const Turns turns([&]() -> auto& { return all; });
    view.get_buffer()->set_text(text);
    Glib::signal_timeout().connect_once([&] { loop->quit(); }, 700);
    loop->run();
    return all;
}

// How much the main loop does at a time, while a text grows sixty times a second and a person types quickly
// in the field of an instruction that asks something; and then, when the text is whole.
void grow(const char* what, const std::string& before, const std::string& after) {
    auto bare = turnsOfBareView(after); // first: a script's first letter loads its font
    Host host;
    Desktop desktop(host, {});
    Settings settings;
    Surrounding surroundings;
    Background background;
    Assistant assistant(host, desktop, {}, settings, surroundings);
    MainPage page(assistant, background,
                  {.history = [] {}, .settings = [] {}, .useModel = [](bool) {}, .grow = [](int) {}});
    surroundings.page = &page;
    page.setInstructions(defaultInstructions());
    Gtk::Window window;
    Shortcuts shortcuts(window);
    page.addKeys(shortcuts, defaultInstructions());
    window.set_default_size(1040, 584);
    window.add(page);
    window.show();
    while (Gtk::Main::events_pending()) // the first frame of the program is not what is measured
        Gtk::Main::iteration();

    std::vector<double> growing, whole;
    const auto loop = Glib::MainLoop::create();
    const Turns turns([&]() -> auto& {
        return assistant.rewrite().stage == Stage::rewriting ? growing : whole;
    });
    assistant.captured({.text = before, .source = "selection", .appName = "Bench", .token = "T"});
    gtk_accel_groups_activate(G_OBJECT(window.gobj()), GDK_KEY_5, GDK_CONTROL_MASK);
    auto typing = Glib::signal_timeout().connect(
        [&] {
            if (auto* field = fieldIn(page))
                g_signal_emit_by_name(field->view().gobj(), "insert-at-cursor", "a");
            return true;
        },
        50);
    sendGrowing(host, after, loop);
    loop->run();
    typing.disconnect();
    print(what, std::move(growing));
    print("  once it is whole", std::move(whole));
    print("  set at once in a bare text view", std::move(bare));
}

void growAll() {
    std::printf("turns of the main loop while 30,000 characters grow and a person types (aim: 16 ms)\n");
    std::mt19937 random(1);
    const auto words = wordsOfEnglish(random);
    auto changed = words;
    for (std::size_t i = 0; i < words.size() / 20; ++i)
        changed[random() % changed.size()] += "x";
    grow("paragraphs of 80 words", joined(words, 80), joined(changed, 80));
    grow("one paragraph", joined(words, 0), joined(changed, 0));
    const auto repeated = [](const std::string& sentence) {
        std::string text;
        while (characters(text) < length)
            text += sentence;
        return text;
    };
    const struct {
        const char *what, *before, *after;
    } table[]{
        {"one paragraph of Korean", "저는 어제 학교애 갔다가 집에 왔어요. ",
         "저는 어제 학교에 갔다가 집에 왔어요. "},
        {"one paragraph of Arabic", "ذهبت الى المدرسه امس ثم عدت. ", "ذهبت إلى المدرسة أمس ثم عدت. "},
        {"one paragraph of Japanese", "私は昨日学校え行って家に帰りました。",
         "私は昨日学校へ行って家に帰りました。"},
        {"one paragraph with emoji", "teh dog 🐶 runs and I 😀 laugh ", "the dog 🐶 runs and I 😀😀 laugh "}};
    for (const auto& [what, before, after] : table)
        grow(what, repeated(before), repeated(after));
}

} // namespace

int main(int argc, char** argv) {
    Gtk::Main toolkit(argc, argv);
    installLook();
    compareAll();
    growAll();
}
