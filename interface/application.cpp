#include "application.h"

#include "language/main_phrases.h"
#include "language/model_phrases.h"
#include "language/settings_phrases.h"
#include "language/system_phrases.h"
#include "settings/login.h"
#include "system/close_gesture.h"
#include "system/help_page.h"
#include "system/host_command.h"
#include "system/icon_place.h"
#include "system/installed_programs.h"
#include "views/hot_key_name.h"

#include <glibmm/main.h>

#include <chrono>
#include <utility>

namespace quillmark {

namespace {

using namespace std::chrono_literals;

void lookAtDesktop(SettingsActions::Checked done) {
    runHost({"--check", "--json"}, [done = std::move(done)](const HostAnswer& answer) {
        const auto findings = readFindings(answer.output);
        done(findings, findings ? std::string() : problemOf(answer));
    });
}

} // namespace

Application::Application(Connection& connection, unsigned long view)
    : preferences_(settingsFile(), [this](const Settings& before) { settingsChanged(before); }), view_(view),
      desktop_(connection.messenger(), {.capture = [this](const Capture& capture) { captured(capture); },
                                        .quit = [this] { askedToQuit(); }}),
      spelling_([&connection](std::function<void()> work) { connection.async(std::move(work)); }),
      notices_({.show = [this] { show(); }, .copy = [this] { assistant_.copy(); }}),
      model_([this] { showFacts(); }),
      assistant_(connection.messenger(), desktop_,
                 {.correct =
                      [this](const std::string& text, auto growing, auto done) {
                          spelling_.correct(text, {.growing = std::move(growing), .done = std::move(done)});
                      },
                  .cancel = [this] { spelling_.cancel(); }},
                 preferences_.settings(), *this),
      closing_(closingActions()) {
    registerHotKey(preferences_.settings().hotKey, {});
    useLanguage();
    // The window's first picture needs the processor more.
    after(200ms, [this] {
        useStatusIcon();
        model_.look();
    });
    if (const auto& file = preferences_.setAside())
        tell({.title = say(phrases::settingsSetAsideTitle), .body = say(phrases::settingsSetAside, {*file})});
}

Application::~Application() = default;

void Application::useLanguage() {
    setLanguage(languageIn(preferences_.settings()));
    std::map<std::string, std::string> labels;
    for (const auto& [key, label] : phrases::menuLabels)
        labels[key] = say(label);
    desktop_.localize(labels);
    buildWindow();
}

void Application::buildWindow() {
    window_.reset();
    window_ = std::make_unique<Window>(
        view_, assistant_, background_, settingsActions(),
        Window::Actions{.hide = [this] { hide(); },
                        .useModel = [this](bool use) { useModel(use); },
                        .grow = [this](int pixels) { desktop_.growHeight(pixels); }});
    window_->setInstructions(instructionsOf(preferences_.settings()));
    showFacts();
    Gtk::Widget& widget = *window_;
    widget.show();
}

void Application::useStatusIcon() {
    icon_.reset();
    if (!preferences_.settings().statusIcon) return;
    icon_ = std::make_unique<StatusIcon>(StatusIcon::Actions{.show = [this] { show(); },
                                                             .pause = [] { runHost({"--pause"}); },
                                                             .settings = [this] { showSettings(); },
                                                             .quit = [this] { closing_.quit(); }});
}

void Application::showFacts() {
    if (!window_) return;
    const auto& settings = preferences_.settings();
    const auto hotKey = hotKeyName(settings.hotKey);
    const auto model = model_.isKnown() ? inWords(model_.status(), settings) : say(phrases::lookingForModel);
    window_->setModel(model, model_.status().whyNot);
    window_->setFacts({.firstTime = !settings.introduced,
                       .atOnce = settings.way == WayOfWorking::atOnce,
                       .hotKey = hotKey,
                       .model = model,
                       .missing = hotKeyRegistered_ ? "" : say(phrases::hotKeyTaken, {hotKey})});
    window_->refreshSettings();
}

void Application::settingsChanged(const Settings& before) {
    const auto& now = preferences_.settings();
    if (now.excludedApps != before.excludedApps) registerHotKey(now.hotKey, {});
    if (now.statusIcon != before.statusIcon) useStatusIcon();
    if (now.instructions != before.instructions) window_->setInstructions(instructionsOf(now));
    window_->warn(preferences_.problem() ? say(phrases::notSaved, {*preferences_.problem()}) : std::string());
    showFacts();
    if (now.language == before.language) return;
    // In a later turn of the main loop: the widget that was just clicked goes with the old window.
    Glib::signal_idle().connect_once([this] {
        useLanguage();
        useStatusIcon();
        window_->showSettings();
    });
}

void Application::registerHotKey(const HotKey& hotKey, std::function<void(bool)> done) {
    desktop_.initialize(preferences_.settings().excludedApps, hotKey,
                        [this, hotKey, done = std::move(done)](bool registered) {
                            // When the host cannot register a new combination, it keeps the one before.
                            if (registered || hotKey == preferences_.settings().hotKey)
                                hotKeyRegistered_ = registered;
                            if (registered)
                                preferences_.change([&](Settings& settings) { settings.hotKey = hotKey; });
                            showFacts();
                            if (done) done(registered);
                        });
}

void Application::captured(const Capture& capture) {
    recent_.add({capture.appId, capture.appName});
    preferences_.change([](Settings& settings) { settings.introduced = true; });
    assistant_.captured(capture);
}

void Application::changed() {
    if (window_) window_->changed();
}

void Application::tell(const Notice& notice) {
    notices_.show(notice);
    if (icon_ && notice.mayShow) icon_->callAttention(true);
}

void Application::show() {
    window_->begin();
    if (icon_) icon_->callAttention(false);
    desktop_.show();
}

void Application::hide() { desktop_.hide(); }

void Application::captureAgain() { runHost({"--capture"}); }

// Looked up anew unless the person has chosen the server: another program may have taken the place of the one
// that may have the texts.
void Application::askForConsent(std::function<void(ModelConsent)> answer) {
    if (model_.status().chosen) return answer(ModelConsent::given);
    model_.look(
        [this, answer = std::move(answer)] { answer(consentTo(model_.status(), preferences_.settings())); });
}

void Application::useModel(bool use) {
    preferences_.change([&](Settings& settings) { setConsent(model_.status(), use, settings); });
    assistant_.consentAnswered();
}

void Application::after(std::chrono::milliseconds delay, std::function<void()> work) {
    Glib::signal_timeout().connect_once(work, static_cast<unsigned>(delay.count()));
}

void Application::askedToQuit() {
    if (personClosesWindow(view_))
        closing_.close();
    else
        closing_.quit();
}

void Application::hideToIcon() {
    hide();
    if (preferences_.settings().closeExplained) return;
    tell({.title = say(phrases::stillRunningTitle), .body = say(phrases::stillRunning)});
    preferences_.change([](Settings& settings) { settings.closeExplained = true; });
}

void Application::showSettings() {
    window_->showSettings();
    desktop_.show();
}

void Application::showHelp() { desktop_.openPath(helpPage()); }

Closing::Actions Application::closingActions() {
    return {.workIsUnfinished = [this] { return isUnfinished(assistant_.rewrite()); },
            .hasIcon = [this] { return icon_ && hasPlaceForIcon(); },
            .hideToIcon = [this] { hideToIcon(); },
            .hide =
                [this] {
                    window_->goHome();
                    hide();
                },
            .quit = [this] { desktop_.quit(); },
            .stay =
                [this] {
                    desktop_.cancelQuit();
                    window_->goHome();
                },
            .ask =
                [this](const std::string& question, const std::vector<QuestionPage::Choice>& choices) {
                    window_->ask(question, choices);
                    desktop_.show();
                }};
}

SettingsActions Application::settingsActions() {
    return {
        .settings = [this]() -> const Settings& { return preferences_.settings(); },
        .change = [this](const std::function<void(Settings&)>& how) { preferences_.change(how); },
        .tryHotKey = [this](const HotKey& hotKey,
                            std::function<void(bool)> done) { registerHotKey(hotKey, std::move(done)); },
        .model = [this]() -> const ModelStatus& { return model_.status(); },
        .chosenServer = [] { return readChosenServer(chosenServerFile()); },
        .chooseServer =
            [this](const SettingsActions::ServerChoice& choice, std::function<void(std::string)> done) {
                model_.choose(choice, std::move(done));
            },
        .useModel = [this](bool use) { useModel(use); },
        .lookForModel = [this] { model_.look([this] { window_->refreshSettings(); }); },
        .recentPrograms =
            [this] { return std::vector<ProgramName>(recent_.programs().begin(), recent_.programs().end()); },
        .installedPrograms = [] { return installedPrograms(); },
        .startsAtLogin = [] { return quillmark::startsAtLogin(loginFile()); },
        .setStartsAtLogin =
            [](bool starts) { return quillmark::setStartsAtLogin(loginFile(), starts, hostProgram()); },
        .hasPlaceForIcon = [] { return hasPlaceForIcon(); },
        .check = [](SettingsActions::Checked done) { lookAtDesktop(std::move(done)); },
        .copy =
            [this](const std::string& text, std::function<void(bool)> done) {
                desktop_.paste(text, {},
                               [done = std::move(done)](bool, const std::optional<std::string>& failure) {
                                   done(!failure);
                               });
            },
        .help = [this] { showHelp(); }};
}

} // namespace quillmark
