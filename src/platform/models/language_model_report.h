#pragma once

#include <string>
#include <vector>

namespace platform {

// Which model answers at this moment, found out without hurry, and why the others do not. A plain value.
struct LanguageModelReport {
    struct Server {
        std::string address; // its URL
        std::string whyNot;  // a sentence
    };

    bool available = false;
    std::string detail;  // a sentence: why none is
    std::string model;   // empty: the server does not say
    std::string address; // the URL of its server, like the following only when one is available
    bool isOnThisComputer = false;
    std::string user;           // whose program the server is; empty: not known
    bool isChosen = false;      // whether the user has chosen the server
    std::string settings;       // the file in which the user can choose one, or "the environment"
    std::vector<Server> others; // the other servers that were looked at
};

// Blocks for two seconds at most. Any thread.
LanguageModelReport reportLanguageModel();

// For a person, and for a program.
std::string inWords(const LanguageModelReport& report);
std::string inJson(const LanguageModelReport& report);

} // namespace platform
