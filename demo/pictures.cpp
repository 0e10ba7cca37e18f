// Pictures of every view of the interface, made on the real desktop with the real host: in each size, theme
// and font, with texts of several scripts. A person looks at them; the README shows one.
//
//   quillmark-pictures HOST INTERFACE FOLDER [LOOK…]     without LOOK all of them: light dark light-18
//   dark-18
#include "testing/desktop/desktop.h"
#include "testing/desktop/fields.h"
#include "testing/desktop/process.h"
#include "testing/desktop/screen_reader.h"
#include "testing/model_server/rewriting_model.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>

namespace {

using namespace testbed;

const std::string letter = "i recieved teh proofs on monday , thank you .\n"
                           "alot of it reads well.  the second chapter is definately my favourite !\n"
                           "i cant say wich cover i like best untill i see them side by side.\n";
const std::string correctedLetter = "I received the proofs on Monday, thank you.\n"
                                    "A lot of it reads well. The second chapter is definitely my favourite!\n"
                                    "I can't say which cover I like best until I see them side by side.\n";
const std::string korean = "안녕하세요, 보내 주신 원고 잘 받앗습니다.\n두번째 장이 제일 마음에 들어요 👍";
const std::string correctedKorean =
    "안녕하세요, 보내 주신 원고 잘 받았습니다.\n두 번째 장이 제일 마음에 들어요 👍🎉";
const std::string arabic = "شكرا لك علي ارسال المسودات يوم الاثنين.\nالفصل الثاني هو المفضل لدي.";
const std::string correctedArabic = "شكرًا لك على إرسال المسودات يوم الاثنين.\nالفصل الثاني هو المفضل لدي.";

std::string repeated(const std::string& text, std::size_t length) {
    std::string result;
    while (result.size() < length)
        result += text;
    return result;
}

// With its line breaks as the program with fields wants them.
std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text)
        result += c == '\n' ? "\\n" : std::string(1, c);
    return result;
}

struct Look {
    std::string name, theme, font;
};
const Look looks[]{{"light", "Adwaita", "Sans 10"},
                   {"dark", "Adwaita:dark", "Sans 10"},
                   {"light-18", "Adwaita", "Sans 18"},
                   {"dark-18", "Adwaita:dark", "Sans 18"}};

bool isAsleep(const std::string& process) {
    const auto state = readFile("/proc/" + process + "/stat");
    return state.find(") S ") != std::string::npos;
}

void require(bool done, const std::string& otherwise) {
    if (!done) throw std::runtime_error(otherwise);
}

// The host with its interface in one look.
class Stage {
public:
    Stage(const std::string& host, const std::string& interface, const Look& look, RewritingModel& model,
          const std::filesystem::path& pictures, const std::string& settings)
        : pictures_(pictures), look_(look), model_(model), config_(folder_ / "config"),
          host_({host, interface}, environment(settings)) {
        interface_.emplace(host_.pid());
        require(interface_->shows("text", "", milliseconds(10'000)),
                "the interface shows nothing: " + host_.output());
    }

    ScreenReader& interface() { return *interface_; }

    void capture(const std::string& text) {
        fields_.emplace(desktop_, std::vector<std::string>{"textview=" + escaped(text)}, "letter.txt");
        desktop_.keyboard.press("Control+a");
        desktop_.keyboard.press("Alt+Shift+space");
    }
    void show() { require(desktop_.activate(window()), "the window does not come to the front"); }
    // Nothing is scrolled out of sight then.
    void makeRoom() { desktop_.resize(window(), 1040, 4000); }
    void press(const std::string& keys) { desktop_.keyboard.press(keys); }

    void picture(const std::string& scene) {
        const struct {
            const char* name;
            int width, height;
        } sizes[]{{"540x500", 540, 500}, {"1040x650", 1040, 650}};
        for (const auto& [name, width, height] : sizes) {
            desktop_.resize(window(), width + frame, height + frame);
            save(scene + "-" + name);
        }
        fullScreen(true);
        save(scene + "-full");
        fullScreen(false);
    }

private:
    static constexpr int frame = 10; // of openbox without compositing

    std::map<std::string, std::string> environment(const std::string& settings) {
        std::filesystem::create_directories(config_ / "gtk-3.0");
        std::filesystem::create_directories(config_ / "quillmark");
        std::ofstream(config_ / "gtk-3.0/settings.ini")
            << "[Settings]\ngtk-enable-animations=0\ngtk-cursor-blink=0\n"
            << "gtk-font-name=" << look_.font << "\n";
        if (!settings.empty()) std::ofstream(config_ / "quillmark/interface.conf") << settings;
        return {{"XDG_CONFIG_HOME", config_},
                {"XDG_STATE_HOME", folder_ / "state"},
                {"GTK_THEME", look_.theme},
                {"QUILLMARK_LANGUAGE_MODEL_FROM_ENVIRONMENT", "1"},
                {"OPENAI_BASE_URL", model_.address()}};
    }

    WindowId window() {
        require(waitUntil([&] { return !desktop_.windows(host_.pid()).empty(); }), "the host has no window");
        return desktop_.windows(host_.pid()).front();
    }

    void fullScreen(bool on) {
        press("F11");
        waitUntil([&] { return desktop_.hasState(window(), "_NET_WM_STATE_FULLSCREEN") == on; });
    }

    // Once nothing moves any more and both programs wait for something to do.
    void save(const std::string& name) {
        const auto file = pictures_ / (look_.name + "-" + name + ".png");
        std::string last;
        int same = 0;
        const auto stands = [&] {
            desktop_.screenshot(file, desktop_.place(window()));
            const std::string now = readFile(file);
            const auto host = std::to_string(host_.pid());
            const auto interface = readFile("/proc/" + host + "/task/" + host + "/children");
            const bool rests = isAsleep(host) && isAsleep(interface.substr(0, interface.find(' ')));
            same = rests && now == last ? same + 1 : 0;
            last = now;
            return same == 8;
        };
        require(waitUntil(stands, milliseconds(40'000)), name + " does not come to rest");
    }

    std::filesystem::path pictures_;
    Look look_;
    RewritingModel& model_;
    Desktop desktop_;
    TemporaryFolder folder_;
    std::filesystem::path config_;
    Process host_;
    std::optional<ScreenReader> interface_;
    std::optional<Fields> fields_;
};

const std::string known = "[Interface]\nintroduced=true\n";

// By the title of the settings, the names of what leads to their pages, and of a button that waits for what
// is looked up.
struct SettingsNames {
    const char *title, *newInstruction, *addProgram, *check, *copyReport;
};

void takeSettings(Stage& stage, const std::string& prefix, const SettingsNames& names) {
    stage.press("Control+comma");
    require(stage.interface().shows("label", names.title), "the settings do not open");
    stage.picture(prefix + "settings");
    const std::pair<const char*, const char*> pages[]{
        {names.newInstruction, "instruction"}, {names.addProgram, "programs"}, {names.check, "check"}};
    for (const auto& [button, name] : pages) {
        stage.makeRoom();
        stage.interface().press("push button", button);
        if (button == names.check)
            require(waitUntil([&] { return stage.interface().isSensitive("push button", names.copyReport); }),
                    "nothing is known of the desktop");
        stage.picture(prefix + name);
        stage.press("Escape");
    }
}

void takeRewrites(Stage& stage, RewritingModel& model) {
    const auto scene = [&](const std::string& name, const std::string& text, const std::string& answer) {
        model.answers(answer);
        stage.capture(text);
        require(stage.interface().shows("push button", "Again"), "nothing was rewritten");
        stage.picture(name);
    };
    scene("letter", letter, correctedLetter);
    stage.press("Control+5");
    stage.picture("question");
    scene("korean", korean, correctedKorean);
    scene("arabic", arabic, correctedArabic);
    scene("long", repeated(letter + "\n", 30'000), repeated(correctedLetter + "\n", 30'000));
    scene("paragraph", repeated("teh same word , again and again. ", 30'000),
          repeated("the same word, again and again. ", 30'000));
    model.answers(correctedLetter, RewritingModel::Manner::half);
    stage.capture(letter);
    require(stage.interface().shows("push button", "Stop"), "nothing is being rewritten");
    stage.picture("streaming");
    stage.press("Control+period");
    stage.picture("stopped");
    model.answers({}, RewritingModel::Manner::fails);
    stage.capture(letter);
    require(stage.interface().shows("push button", "Again"), "the failure is not shown");
    stage.picture("failed");
    stage.press("Control+h");
    require(stage.interface().shows("label", "History"), "the history does not open");
    stage.picture("history");
    stage.press("Escape");
}

void takeQuestion(Stage& stage, RewritingModel& model) {
    model.answers(correctedLetter);
    stage.capture(letter);
    require(waitUntil([&] { return stage.interface().isSensitive("push button", "Apply"); }),
            "nothing was rewritten");
    require(waitUntil([&] { return stage.interface().isFocused("text", "Rewrite"); }),
            "the keyboard is not in the rewrite");
    stage.show();     // the view has the keyboard before the window manager has given it to the window
    stage.press("x"); // nobody quits in the middle of work without being asked
    stage.press("Control+q");
    require(stage.interface().shows("push button", "Stay"), "nothing is asked before the end");
    stage.picture("quit");
}

void takeKorean(Stage& stage, RewritingModel& model) {
    model.answers(correctedKorean);
    stage.capture(korean);
    require(stage.interface().shows("push button", "다시"), "nothing was rewritten");
    stage.picture("ko-letter");
    takeSettings(stage, "ko-",
                 {"설정", "새 지시", "제외한 프로그램: 추가 …", "필요한 것이 갖추어졌는지 살펴보기 …",
                  "신고용으로 복사"});
}

void take(const std::string& host, const std::string& interface, const std::filesystem::path& pictures,
          const Look& look) {
    std::printf("pictures: %s\n", look.name.c_str());
    std::fflush(stdout);
    RewritingModel model;
    {
        Stage first(host, interface, look, model, pictures, {});
        first.show();
        waitUntil([&] {
            return !first.interface().shows("label", "Looking for a language model …", milliseconds(0));
        });
        first.picture("first");
    }
    {
        Stage stage(host, interface, look, model, pictures, known);
        takeRewrites(stage, model);
        takeSettings(stage, "",
                     {"Settings", "New instruction", "Excluded programs: Add …",
                      "Check what Quillmark needs …", "Copy for a report"});
        stage.press("Escape");
        takeQuestion(stage, model);
    }
    Stage stage(host, interface, look, model, pictures, known + "language=ko\n");
    takeKorean(stage, model);
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fputs("pictures: this is started by script/pictures.\n", stderr);
        return 2;
    }
    try {
        std::filesystem::create_directories(argv[3]);
        for (const auto& look : looks) {
            bool wanted = argc == 4;
            for (int i = 4; i < argc; ++i)
                wanted = wanted || look.name == argv[i];
            if (wanted) take(argv[1], argv[2], argv[3], look);
        }
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "pictures: %s\n", error.what());
        return 1;
    }
}
