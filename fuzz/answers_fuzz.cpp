// A model server's answer may be any bytes, in any pieces: however they are cut, the same answer must come of
// them. The first byte says in which pieces the rest arrives, the second with which status.
#include "check.h"
#include "platform/models/server/chat_stream.h"
#include "platform/models/server/model_list.h"

#include <array>
#include <chrono>
#include <exception>
#include <memory>
#include <optional>
#include <string>

using namespace platform;

namespace {

// What follows the reason to end is left out after half a second, which a busy machine may take for it.
constexpr std::chrono::milliseconds quick(400);

struct Outcome {
    std::optional<std::string> text; // absent: the answer has failed
    std::string problem;
    std::optional<std::int64_t> tokens;

    bool operator==(const Outcome&) const = default;
};

Outcome outcomeOf(const Answer& answer) {
    check(answer.isReady(Answer::Until::end));
    try {
        return {answer.text(), "", answer.tokens()};
    } catch (const std::exception& problem) {
        return {std::nullopt, problem.what(), std::nullopt};
    }
}

Outcome receive(unsigned status, std::span<const std::uint8_t> bytes, std::size_t piece) {
    const auto answer = std::make_shared<Answer>();
    ChatStream stream("localhost:1", {.instructions = "", .text = "text", .options = {}}, {}, {}, answer);
    stream.head(status);
    bool open = true;
    inPieces(bytes, piece, [&](auto part) { open = open && stream.body(asText(part)); });
    if (open) stream.finished(HttpEnd::complete, "");
    return outcomeOf(*answer);
}

void readLists(std::string_view json) {
    if (auto list = readModelList(json)) addOllamaTags(json, list->models);
    readOllamaCapabilities(json);
    readError(json);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    static constexpr std::array statuses{200U, 400U, 500U};
    const unsigned status = statuses[data[1] % statuses.size()];
    const std::span bytes(data + 2, size - 2);
    const auto start = std::chrono::steady_clock::now();
    const bool isSame =
        receive(status, bytes, std::size_t{1} + data[0]) == receive(status, bytes, bytes.size());
    check(isSame || std::chrono::steady_clock::now() - start > quick);
    readLists(asText(bytes));
    return 0;
}
