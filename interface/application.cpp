#include "application.h"

#include "language/main_phrases.h"
#include "settings/hot_key.h"
#include "system/host_command.h"

#include <glibmm/main.h>

#include <utility>

namespace quillmark {

Application::Application(Connection& connection, unsigned long view)
    : loaded_(loadSettings(settingsFile())), view_(view),
      desktop_(connection.messenger(), {.capture = [this](const Capture& capture) { captured(capture); },
                                        .quit = [this] { quitAsked(); }}),
      spelling_([&connection](std::function<void()> work) { connection.async(std::move(work)); }),
      notices_({.show = [this] { show(); }, .copy = [this] { assistant_.copy(); }}),
      assistant_(connection.messenger(), desktop_,
                 {.correct =
                      [this](const std::string& text, auto growing, auto done) {
                          spelling_.correct(text, {.growing = std::move(growing), .done = std::move(done)});
                      },
                  .cancel = [this] { spelling_.cancel(); }},
                 settings_, *this) {
    buildWindow();
    registerHotKey();
}

Application::~Application() = default;

void Application::buildWindow() {
    window_ = std::make_unique<Window>(
        view_, assistant_, background_,
        Window::Actions{.hide = [this] { hide(); },
                        .help = [] {},
                        .useModel = [this](bool use) { useModel(use); },
                        .grow = [this](int pixels) { desktop_.growHeight(pixels); }});
    window_->setInstructions(instructionsOf(settings_));
    window_->setModel(model_);
    showFacts();
    Gtk::Widget& widget = *window_;
    widget.show();
}

void Application::showFacts() {
    const auto hotKey = nameOf(settings_.hotKey, "Space");
    window_->setFacts({.firstTime = !settings_.introduced,
                       .atOnce = settings_.way == WayOfWorking::atOnce,
                       .hotKey = hotKey,
                       .model = model_.available ? model_.words : say(phrases::noModel),
                       .missing = hotKeyRegistered_ ? "" : say(phrases::hotKeyTaken, {hotKey})});
}

void Application::registerHotKey() {
    desktop_.initialize(settings_.excludedApps, settings_.hotKey, [this](bool registered) {
        hotKeyRegistered_ = registered;
        showFacts();
    });
}

void Application::captured(const Capture& capture) {
    late_.add({capture.appId, capture.appName});
    assistant_.captured(capture);
}

void Application::changed() { window_->changed(); }

void Application::tell(const Notice& notice) { notices_.show(notice); }

void Application::show() {
    window_->begin();
    desktop_.show();
}

void Application::hide() { desktop_.hide(); }

void Application::captureAgain() { runHost({"--capture"}); }

ModelConsent Application::modelConsent() { return ModelConsent::given; }

void Application::useModel(bool) { assistant_.consentGiven(); }

void Application::after(std::chrono::milliseconds delay, std::function<void()> work) {
    Glib::signal_timeout().connect_once(std::move(work), static_cast<unsigned>(delay.count()));
}

void Application::quitAsked() {
    if (!isUnfinished(assistant_.rewrite())) return desktop_.quit();
    window_->ask(say(phrases::quitUnfinished), {{say(phrases::stay),
                                                 [this] {
                                                     desktop_.cancelQuit();
                                                     window_->goHome();
                                                 }},
                                                {say(phrases::quitNow), [this] { desktop_.quit(); }}});
    desktop_.show();
}

} // namespace quillmark
