// The whole job once, as a writer would do it: a real editor, real keys, the real host with the interface
// that comes with it. Each step is said with its time; the verdict is the file that the editor saved.
//
//   quillmark-demo HOST INTERFACE PICTURES-FOLDER
#include "testing/desktop/desktop.h"
#include "testing/desktop/editor.h"
#include "testing/desktop/process.h"
#include "testing/desktop/screen_reader.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace {

using namespace testbed;

const Clock::time_point started = Clock::now();

// Nothing listens there, so the spelling corrector works: what a model would write is not known beforehand.
const std::string noServer = "http://127.0.0.1:9/v1";

const std::string greeting = "Dear Mrs Okafor,\n\n";
const std::string body = "i recieved teh proofs on monday , thank you .\n"
                         "alot of it reads well.  the second chapter is definately my favourite !\n"
                         "i cant say wich cover i like best untill i see them side by side.\n";
const std::string farewell = "\nyours,\nteh author\n";

void say(const std::string& step) {
    const auto elapsed = std::chrono::duration_cast<milliseconds>(Clock::now() - started).count();
    std::printf("demo [%6lld ms] %s\n", static_cast<long long>(elapsed), step.c_str());
    std::fflush(stdout);
}

void require(bool done, const std::string& otherwise) {
    if (!done) throw std::runtime_error(otherwise);
}

// Once nothing moves any more, or soon: programs draw a moment after they have done what they were told.
void picture(Desktop& desktop, const std::filesystem::path& file) {
    std::string last;
    int same = 0;
    waitUntil(
        [&] {
            desktop.screenshot(file);
            const std::string now = readFile(file);
            same = now == last ? same + 1 : 0;
            last = now;
            return same == 5;
        },
        milliseconds(1500));
}

struct Programs {
    std::string host;
    std::string interface;
};

void requireCorrected(const std::string& rewritten) {
    require(!rewritten.empty() && rewritten != body, "nothing was rewritten");
    for (const char* typo : {"recieved", "teh", "alot", "definately", "wich", "untill"})
        require(rewritten.find(typo) == std::string::npos, std::string("a typo is left: ") + typo);
}

void show(const Programs& programs, const std::filesystem::path& pictures) {
    Desktop desktop;
    TemporaryFolder folder;
    say("starting the host with its interface");
    Process host({programs.host, programs.interface},
                 {{"QUILLMARK_LANGUAGE_MODEL_FROM_ENVIRONMENT", "1"}, {"OPENAI_BASE_URL", noServer}});
    ScreenReader interface(host.pid());
    require(interface.shows("push button", "Try it"),
            "the interface shows nothing; the host and it printed:\n" + host.output());
    say("the interface's first page is there");

    say("opening a letter full of typos in the editor");
    const std::string letter = greeting + body + farewell;
    Editor editor(desktop, folder / "letter.txt", letter);
    require(editor.selectLines(2, 3), "the editor did not select the letter's body");
    say("selected the letter's body with the keyboard");
    std::filesystem::create_directories(pictures);
    picture(desktop, pictures / "before.png");

    desktop.keyboard.press("Alt+Shift+space");
    say("pressed Alt+Shift+Space");
    require(waitUntil([&] { return interface.isSensitive("push button", "Apply"); }),
            "there is nothing to apply; the host and the interface printed:\n" + host.output());
    picture(desktop, pictures / "rewrite.png");
    say("the window shows the text and its rewrite, with what was changed marked");

    desktop.keyboard.press("Control+Return");
    say("pressed Control+Enter");
    require(waitUntil([&] { return desktop.activeWindow() == editor.window(); }),
            "the editor did not come back to the front");
    // A key pressed before the rewrite has arrived would keep it away.
    ScreenReader letterInEditor(editor.pid());
    require(waitUntil([&] { return letterInEditor.text("text", "").value_or(letter) != letter; }),
            "the rewrite did not come back to the editor; the host and the interface printed:\n" +
                host.output());

    // Whatever was pasted is still on the pasteboard, so that is what must stand in the letter now.
    const std::string rewritten = desktop.text("CLIPBOARD").value_or("");
    const std::string saved = editor.savedText(letter);
    picture(desktop, pictures / "after.png");
    requireCorrected(rewritten);
    require(saved == greeting + rewritten + farewell, "the editor saved something else:\n" + saved);
    say("saved with Control+S; the file now reads:\n\n" + saved);
    say("pictures: before.png, rewrite.png and after.png in " + pictures.string());
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fputs("demo: this is started by script/run.\n", stderr);
        return 2;
    }
    try {
        show({argv[1], argv[2]}, argv[3]);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "demo: %s\n", error.what());
        return 1;
    }
}
