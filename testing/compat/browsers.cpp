#include "testing/compat/kinds.h"

namespace compat {
namespace {

std::string page(const std::string& body) {
    return "<!doctype html><meta charset=utf-8><title>Fields</title><body>" + body;
}

const std::map<std::string, std::string> pages{
    {"area.html", page("<textarea autofocus rows=5 cols=50>" + document + "</textarea>")},
    {"input.html", page("<input autofocus size=50 value='" + line + "'>")},
    {"password.html", page("<input autofocus type=password value=secret>")},
    {"rich.html",
     page("<div contenteditable id=f><p>keep this</p><p>teh words</p><p>and <b>this</b></p></div>"
          "<script>f.focus()</script>")},
    {"picture.html",
     page("<div contenteditable id=f><p>keep this</p><p>teh words</p><p>and this"
          "<img src='data:image/gif;base64,R0lGODlhAQABAIAAAAAAAP///yH5BAEAAAAALAAAAAABAAEAAAIBRAA7'>"
          "</p></div><script>f.focus()</script>")},
    {"frame.html", page("<iframe src=inner.html width=500 height=200></iframe>")},
    {"inner.html", page("<textarea autofocus rows=5 cols=50>" + document + "</textarea>")},
    {"text.html", page("<p>teh words</p>")},
    {"large.html", page("<textarea autofocus rows=5 cols=50>" + document +
                        "</textarea><script>for (let i = 0; i < 20000; ++i) "
                        "document.body.append(Object.assign(document.createElement('p'), "
                        "{textContent: 'paragraph ' + i}))</script>")},
};

// Firefox asks and tells many things on a fresh profile.
const std::string quiet = R"(user_pref("browser.aboutwelcome.enabled", false);
user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("browser.startup.homepage_override.mstone", "ignore");
user_pref("app.update.enabled", false);
user_pref("browser.sessionstore.resume_from_crash", false);
user_pref("termsofuse.bypassNotification", true);
user_pref("browser.preonboarding.enabled", false);
user_pref("network.captive-portal-service.enabled", false);
user_pref("network.connectivity-service.enabled", false);
)";

void addBrowser(std::vector<Target>& targets, const std::string& name, const std::string& package,
                const Command& program) {
    const auto at = [&](const std::string& file) {
        Command command = program;
        command.push_back("file://{folder}/" + file);
        return command;
    };
    Target target{.name = {},
                  .package = package,
                  .command = {},
                  .files = pages,
                  .title = "Fields",
                  .text = document,
                  .select = secondLine,
                  .selected = "teh words",
                  .unselect = {"Control+Home"}};
    target.files["profile/user.js"] = quiet;
    const auto add = [&](const std::string& what, const std::string& file, const auto& change) {
        Target each = target;
        each.name = name + ": " + what;
        each.command = at(file);
        change(each);
        targets.push_back(std::move(each));
    };
    add("text area", "area.html", [](Target& each) { each.newWindow = {"Control+n"}; });
    add("text area, 3,000 characters", "area.html", [](Target& each) { makeLong(each, 60); });
    add("text area, 30,000 characters", "area.html", [](Target& each) { makeLong(each, 600); });
    add("input", "input.html", [&](Target& each) {
        each.text = line;
        each.select = words;
        each.unselect = {"Home"};
        each.password = at("password.html");
    });
    add("text area below 20,000 paragraphs", "large.html", [](Target&) {});
    add("rich text", "rich.html", [](Target& each) { each.hasSpacedParagraphs = true; });
    add("rich text with a picture", "picture.html", [](Target& each) {
        each.hasSpacedParagraphs = true;
        each.holdsPicture = true;
        each.remark = pictureRemark;
    });
    add("field in a frame", "frame.html", [&](Target& each) { each.ready = {"Tab"}; });
    add("address bar", "text.html", [](Target& each) {
        each.ready = {"", "", ""};
        each.fill = {"Control+l", "", "k", "e", "e", "p", "space", "t", "e", "h", "End"};
        each.text = each.selected = "keep teh";
        each.select = {"Home", "Shift+End"};
        each.unselect = {"End"};
    });
    add("selected text of a page", "text.html", [](Target& each) {
        each.text = "teh words";
        each.select = {"Control+a"};
        each.selected = "teh words";
        each.unselect = {};
        each.undo = {};
        each.reasons = {{"field", "no field"}, {"paste into field", "no field"}};
    });
}

} // namespace

void addBrowsers(std::vector<Target>& targets) {
    addBrowser(targets, "Chromium", "chromium",
               {"chromium", "--no-sandbox", "--no-first-run", "--password-store=basic",
                "--user-data-dir={folder}/profile", "--new-window"});
    addBrowser(targets, "Firefox", "firefox-esr",
               {"firefox-esr", "--no-remote", "--profile", "{folder}/profile"});
}

} // namespace compat
