// The whole job once, as a writer would do it: a real editor, real keys, the real host with the interface
// that comes with it. Each step is said with its time; the verdict is the file that the editor saved.
//
//   quillmark-demo HOST INTERFACE PICTURES-FOLDER
#include "testing/desktop/desktop.h"
#include "testing/desktop/editor.h"
#include "testing/desktop/process.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace {

using namespace testbed;

const Clock::time_point started = Clock::now();

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

// What the interface prints, said as it comes, until a line holds `words`.
class Narrator {
public:
    explicit Narrator(const Process& process) : process_(process) {}

    void waitFor(const std::string& words) {
        const bool came = waitUntil([&] { return sayNewLines(words); });
        require(came,
                "the interface never said \"" + words + "\"; the host and it printed:\n" + process_.output());
    }

private:
    bool sayNewLines(const std::string& words) {
        const std::string output = process_.output();
        for (std::size_t end; (end = output.find('\n', said_)) != std::string::npos; said_ = end + 1) {
            const std::string line = output.substr(said_, end - said_);
            say("  interface " + line);
            if (line.ends_with(words)) {
                said_ = end + 1;
                return true;
            }
        }
        return false;
    }

    const Process& process_;
    std::size_t said_ = 0;
};

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

void show(const Programs& programs, const std::filesystem::path& pictures) {
    Desktop desktop;
    TemporaryFolder folder;
    say("starting the host with its interface");
    Process host({programs.host, programs.interface});
    Narrator narrator(host);
    narrator.waitFor("press Alt+Shift+Space");

    say("opening a letter full of typos in the editor");
    const std::string letter = greeting + body + farewell;
    Editor editor(desktop, folder / "letter.txt", letter);
    require(editor.selectLines(2, 3), "the editor did not select the letter's body");
    say("selected the letter's body with the keyboard");
    std::filesystem::create_directories(pictures);
    picture(desktop, pictures / "before.png");

    desktop.keyboard.press("Alt+Shift+space");
    say("pressed Alt+Shift+Space");
    narrator.waitFor(" pasted");

    // Whatever was pasted is still on the pasteboard, so that is what must stand in the letter now.
    const std::string rewritten = desktop.text("CLIPBOARD").value_or("");
    const std::string saved = editor.savedText(letter);
    picture(desktop, pictures / "after.png");
    require(!rewritten.empty() && rewritten != body, "nothing was rewritten");
    for (const char* typo : {"recieved", "teh", "alot", "definately", "wich", "untill"})
        require(rewritten.find(typo) == std::string::npos, std::string("a typo is left: ") + typo);
    require(saved == greeting + rewritten + farewell, "the editor saved something else:\n" + saved);
    say("saved with Control+S; the file now reads:\n\n" + saved);
    say("pictures: before.png and after.png in " + pictures.string());
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
