#include "platform/models/spelling/corrector_answer.h"

#include "platform/models/generation/worker.h"
#include "platform/models/spelling/correction.h"
#include "platform/models/spelling/corrector.h"

#include <optional>
#include <utility>

namespace platform {
namespace {

// The one thread that corrects.
Worker& worker() {
    static Worker thread;
    return thread;
}

class CorrectorAnswer : public std::enable_shared_from_this<CorrectorAnswer> {
public:
    CorrectorAnswer(std::string text, std::shared_ptr<Answer> answer)
        : text_(std::move(text)), answer_(std::move(answer)) {}

    void goOn() {
        worker().async([self = shared_from_this()] { self->step(); });
    }

private:
    void step() {
        if (!answer_->isWanted()) return;
        if (!correction_) correction_.emplace(std::move(text_), corrector());
        auto piece = correction_->next();
        if (!piece) return answer_->end(std::nullopt);
        answer_->add(std::move(*piece));
        goOn();
    }

    // Loaded by the thread that uses it, when it is first needed.
    static Corrector& corrector() {
        static auto& only = *std::make_unique<Corrector>().release();
        return only;
    }

    std::string text_;
    std::shared_ptr<Answer> answer_;
    std::optional<Correction> correction_;
};

} // namespace

void answerFromCorrector(std::string text, std::shared_ptr<Answer> answer) {
    std::make_shared<CorrectorAnswer>(std::move(text), std::move(answer))->goOn();
}

} // namespace platform
