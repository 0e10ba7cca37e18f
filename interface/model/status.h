// The language model that would answer, as the host's command line says it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmark {

struct ModelStatus {
    bool available = false;
    std::string model = {};   // its name; empty when its server does not say
    std::string address = {}; // the URL of its server; empty when there is none
    bool onThisComputer = false;
    bool chosen = false;                  // by the person; else it was found by itself
    std::string whyNot = {};              // a sentence of the host's, when it is not available
    std::vector<std::string> others = {}; // sentences on the other servers that were looked at

    friend bool operator==(const ModelStatus&, const ModelStatus&) = default;
};

// Of what `quillmark-host --language-model --json` prints. Absent when it is something else.
std::optional<ModelStatus> readModelStatus(std::string_view json);

// Which model it is and where it runs; without one, what the person can do about it.
std::string inWords(const ModelStatus& status);

} // namespace quillmark
