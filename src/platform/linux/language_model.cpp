// No model is connected: availability says so, and a generation that is tried all the same fails with the
// same words.
#include "platform/language_model.h"

namespace platform {
namespace {

constexpr auto noModel = "This version of Quillmark connects to no language model. Choose another model.";

} // namespace

const SystemLanguageModel& SystemLanguageModel::defaultModel() {
    static const SystemLanguageModel model;
    return model;
}

SystemLanguageModel::Availability SystemLanguageModel::availability() const {
    return UnavailableReason{"appleIntelligenceNotEnabled", noModel};
}

// NOLINTBEGIN(performance-unnecessary-value-param): the seam's own signatures
class LanguageModelSession::Native {};
LanguageModelSession::LanguageModelSession(const SystemLanguageModel&, std::vector<Tool>, std::string) {}
LanguageModelSession::~LanguageModelSession() = default;

class ResponseStream::Native {
public:
    [[noreturn]] void fail() const { throw LanguageModelSession::GenerationError(noModel); }
};

ResponseStream LanguageModelSession::streamResponse(std::string, const GenerationOptions&) {
    return ResponseStream(std::make_unique<ResponseStream::Native>());
}
// NOLINTEND(performance-unnecessary-value-param)

ResponseStream::ResponseStream(std::unique_ptr<Native> native) : native_(std::move(native)) {}
ResponseStream::~ResponseStream() = default;
ResponseStream::ResponseStream(ResponseStream&&) noexcept = default;
ResponseStream& ResponseStream::operator=(ResponseStream&&) noexcept = default;

ResponseStream::Next ResponseStream::next() { return Next(*native_); }
bool ResponseStream::Next::await_ready() { return true; }
void ResponseStream::Next::await_suspend(Task::Suspended) {}
std::optional<ResponseStream::Snapshot> ResponseStream::Next::await_resume() { stream_.fail(); }

ResponseStream::Collect ResponseStream::collect() { return Collect(*native_); }
bool ResponseStream::Collect::await_ready() { return true; }
void ResponseStream::Collect::await_suspend(Task::Suspended) {}
Response ResponseStream::Collect::await_resume() { stream_.fail(); }

} // namespace platform
