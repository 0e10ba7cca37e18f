#pragma once

#include "platform/models/http/exchange.h"

#include <curl/curl.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

namespace platform {

// One exchange as libcurl carries it out. Used by its loop's thread only.
class HttpTransfer {
public:
    using Clock = std::chrono::steady_clock;

    HttpTransfer(std::uint64_t number, HttpRequest request, std::shared_ptr<HttpReceiver> receiver);
    ~HttpTransfer();
    HttpTransfer(const HttpTransfer&) = delete;
    HttpTransfer& operator=(const HttpTransfer&) = delete;

    std::uint64_t number() const { return number_; }
    CURL* handle() const { return handle_; }

    // By then the next step (the connection, the head, the next piece of the body) must have been made; else
    // the loop calls timeOut().
    Clock::time_point deadline() const { return deadline_; }
    void timeOut();
    // Called when libcurl has ended the transfer.
    void finish(CURLcode result);

private:
    void configure();
    HttpEnd endFor(CURLcode result) const;
    std::string reasonFor(CURLcode result) const;
    void allow(std::chrono::milliseconds limit) { deadline_ = Clock::now() + limit; }

    static int onConnected(void* self, char*, char*, int, int);
    static std::size_t onHeader(char* bytes, std::size_t, std::size_t size, void* self);
    static std::size_t onBody(char* bytes, std::size_t, std::size_t size, void* self);

    std::uint64_t number_;
    HttpRequest request_;
    std::shared_ptr<HttpReceiver> receiver_;
    CURL* handle_;
    curl_slist* headers_ = nullptr;
    std::array<char, CURL_ERROR_SIZE> words_{}; // libcurl's own, for what went wrong
    Clock::time_point deadline_;
    bool connected_ = false;
    bool hasEnough_ = false; // the receiver needs no more
};

} // namespace platform
