#include "platform/linux/corrector_answer.h"

#include "platform/linux/correction_pieces.h"
#include "platform/linux/corrector.h"
#include "platform/linux/worker.h"

#include <cstddef>
#include <utility>
#include <vector>

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
        if (next_ == 0) pieces_ = correctionPieces(text_);
        if (next_ == pieces_.size()) return answer_->end(std::nullopt);
        const auto& piece = pieces_[next_++];
        std::string out(piece.before);
        out += piece.isOrdinary ? corrector().correct(piece.word) : std::string(piece.word);
        answer_->add(std::move(out));
        goOn();
    }

    // Loaded by the thread that uses it, when it is first needed.
    static Corrector& corrector() {
        static auto& only = *std::make_unique<Corrector>().release();
        return only;
    }

    std::string text_;
    std::shared_ptr<Answer> answer_;
    std::vector<CorrectionPiece> pieces_;
    std::size_t next_ = 0;
};

} // namespace

void answerFromCorrector(std::string text, std::shared_ptr<Answer> answer) {
    std::make_shared<CorrectorAnswer>(std::move(text), std::move(answer))->goOn();
}

} // namespace platform
