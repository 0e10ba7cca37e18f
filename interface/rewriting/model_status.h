// The language model that would answer, as the host's command line says it.
#pragma once

#include <string>

namespace quillmark {

struct ModelStatus {
    bool available = false;
    std::string words = {};   // its name and where it runs, or a sentence on why there is none
    std::string address = {}; // of its server; empty when there is none
    bool chosen = false;      // by the person; else it was found by itself
};

} // namespace quillmark
