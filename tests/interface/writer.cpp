#include "interface/writer.h"

#include "testing/desktop/host.h"

#include <filesystem>
#include <iostream>

namespace testbed {

void Writer::start(const std::string& settings, const std::map<std::string, std::string>& environment) {
    std::map<std::string, std::string> all{{"XDG_CONFIG_HOME", folder / "config"},
                                           {"XDG_STATE_HOME", folder / "state"},
                                           {"QUILLMARK_LANGUAGE_MODEL_FROM_ENVIRONMENT", "1"},
                                           {"OPENAI_BASE_URL", model.address()},
                                           {"LANGUAGE", "en"}};
    for (const auto& [name, value] : environment)
        all[name] = value;
    std::filesystem::create_directories(folder / "config/quillmark");
    if (!settings.empty()) writeFile(folder / "config/quillmark/interface.conf", settings);
    const auto interface = std::filesystem::path(hostProgram()).parent_path() / "quillmark-interface";
    host.emplace(std::vector<std::string>{hostProgram(), "--trace", interface.string()}, all);
    screen_.emplace(host->pid());
    ASSERT_TRUE(comes([&] { return screen().isFocused("text", ""); })) << host->output();
    ASSERT_TRUE(comes([&] { return !desktop.windows(host->pid()).empty(); }));
    window_ = desktop.windows(host->pid()).front();
}

// Host and interface have said to each other what explains a failure.
void Writer::TearDown() {
    if (HasFailure() && host) std::cout << host->output();
}

void Writer::end() {
    host->signal(SIGTERM);
    EXPECT_EQ(host->exitStatus(), 0) << host->output();
    host.reset();
}

void Writer::write(const std::string& text) {
    fields.emplace(desktop, std::vector<std::string>{"textview=" + text}, "letter.txt");
    fields->command("select 0 0 " + std::to_string(text.size()));
}

void Writer::type(const std::string& letters) {
    for (const char letter : letters)
        press(letter == ' ' ? "space" : std::string(1, letter));
}

std::string Writer::rewrite() {
    std::optional<std::string> text;
    comes([&] { return (text = screen().text("text", "Rewrite")).has_value(); });
    return text.value_or("(there is no rewrite on the screen)");
}

} // namespace testbed
