#include "testing/soak/copied.h"

#include <utility>

namespace soak {

using namespace std::chrono_literals;
using pasteboard_test::Faults;
using pasteboard_test::Representation;

namespace {

// Each as long as the host waits for at most, or costing only what it is about.
const std::vector<Faults> misbehaviours{{.delay = 20ms},
                                        {.refused = {"TARGETS"}},
                                        {.refused = {"image/png"}},
                                        {.ignored = {"image/png"}},
                                        {.endless = {"image/png"}}};

} // namespace

std::string Copied::copy(Chance& chance) {
    const std::string text = chance.words(true);
    const std::vector<Representation> contents{
        {"UTF8_STRING", "UTF8_STRING", 8, text},
        {"text/html", "text/html", 8, "<b>" + text + "</b>"},
        {"image/png", "image/png", 8, std::string(1 + chance.below(600'000), 'p')}};
    const bool behaves = chance.below(3) > 0;
    const Faults& faults = chance.from(misbehaviours);
    // The new owner first: the pasteboard is never without one.
    const auto former = std::move(owner_);
    if (behaves) {
        owner_ = std::make_unique<pasteboard_test::Owner>(contents);
        misbehavingOwner_.reset();
    } else {
        misbehavingOwner_.reset();
        misbehavingOwner_ = std::make_unique<pasteboard_test::MisbehavingOwner>(contents, faults);
    }
    isText(text);
    others_.push_back(contents[1]);
    if (behaves) others_.push_back(contents[2]);
    return behaves ? "copied " + text : "copied in a program that serves it badly: " + text;
}

void Copied::isText(const std::string& text) {
    text_ = text;
    others_.clear();
}

void Copied::isUnknown() {
    text_.reset();
    others_.clear();
}

std::vector<std::string> Copied::faults(testbed::Desktop& desktop) {
    if (!text_) return {};
    std::vector<std::string> faults;
    std::optional<std::string> now;
    if (!testbed::waitUntil([&] { return (now = desktop.text("CLIPBOARD")) == text_; }, 3000ms))
        faults.push_back("the pasteboard holds " + (now ? '"' + *now + '"' : "no text") + " and not \"" +
                         *text_ + '"');
    for (const Representation& other : others_)
        if (pasteboard_test::given(other.target) != other)
            faults.push_back("the pasteboard has lost " + other.target);
    if (!faults.empty()) isUnknown();
    return faults;
}

} // namespace soak
