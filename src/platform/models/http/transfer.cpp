#include "platform/models/http/transfer.h"

#include <cerrno>
#include <system_error>
#include <utility>

namespace platform {

HttpTransfer::HttpTransfer(std::uint64_t number, HttpRequest request, std::shared_ptr<HttpReceiver> receiver)
    : number_(number), request_(std::move(request)), receiver_(std::move(receiver)),
      handle_(curl_easy_init()), deadline_(Clock::now() + request_.connectLimit) {
    configure();
}

HttpTransfer::~HttpTransfer() {
    curl_easy_cleanup(handle_);
    curl_slist_free_all(headers_);
}

void HttpTransfer::configure() {
    const auto set = [this](CURLoption option, auto value) { curl_easy_setopt(handle_, option, value); };
    set(CURLOPT_URL, request_.url.c_str());
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    // A proxy would read what is not encrypted.
    if (!request_.url.starts_with("https:")) set(CURLOPT_PROXY, "");
    set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    set(CURLOPT_NOSIGNAL, 1L);
    // One connection for each exchange: closing it is how a server learns that nobody wants the answer.
    set(CURLOPT_FRESH_CONNECT, 1L);
    set(CURLOPT_FORBID_REUSE, 1L);
    set(CURLOPT_ERRORBUFFER, words_.data());

    // Without "Expect:", libcurl sends a long body only after a server has asked for it or a second has
    // passed.
    for (const char* header : {"Connection: close", "Expect:"})
        headers_ = curl_slist_append(headers_, header);
    if (!request_.bearer.empty())
        headers_ = curl_slist_append(headers_, ("Authorization: Bearer " + request_.bearer).c_str());
    if (!request_.body.empty()) {
        headers_ = curl_slist_append(headers_, "Content-Type: application/json");
        set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request_.body.size()));
        set(CURLOPT_POSTFIELDS, request_.body.c_str());
    }
    set(CURLOPT_HTTPHEADER, headers_);

    set(CURLOPT_PRIVATE, static_cast<void*>(this));
    set(CURLOPT_PREREQFUNCTION, &HttpTransfer::onConnected);
    set(CURLOPT_PREREQDATA, static_cast<void*>(this));
    set(CURLOPT_HEADERFUNCTION, &HttpTransfer::onHeader);
    set(CURLOPT_HEADERDATA, static_cast<void*>(this));
    set(CURLOPT_WRITEFUNCTION, &HttpTransfer::onBody);
    set(CURLOPT_WRITEDATA, static_cast<void*>(this));
}

int HttpTransfer::onConnected(void* self, char*, char*, int, int) {
    auto& transfer = *static_cast<HttpTransfer*>(self);
    transfer.connected_ = true;
    transfer.allow(transfer.request_.headLimit);
    transfer.receiver_->connected();
    return CURL_PREREQFUNC_OK;
}

// The last line of a head is empty. A head with a status below 200 is not the answer's own.
std::size_t HttpTransfer::onHeader(char* bytes, std::size_t, std::size_t size, void* self) {
    auto& transfer = *static_cast<HttpTransfer*>(self);
    if (std::string_view(bytes, size) != "\r\n" && std::string_view(bytes, size) != "\n") return size;
    long status = 0;
    curl_easy_getinfo(transfer.handle_, CURLINFO_RESPONSE_CODE, &status);
    if (status >= 200) transfer.allow(transfer.receiver_->head(static_cast<unsigned>(status)));
    return size;
}

std::size_t HttpTransfer::onBody(char* bytes, std::size_t, std::size_t size, void* self) {
    auto& transfer = *static_cast<HttpTransfer*>(self);
    const auto limit = transfer.receiver_->body({bytes, size});
    transfer.hasEnough_ = !limit;
    if (limit) transfer.allow(*limit);
    return limit ? size : 0; // 0 ends the transfer
}

void HttpTransfer::timeOut() {
    receiver_->finished(connected_ ? HttpEnd::silent : HttpEnd::unanswered,
                        std::generic_category().message(ETIMEDOUT));
}

void HttpTransfer::finish(CURLcode result) {
    if (!hasEnough_) receiver_->finished(endFor(result), reasonFor(result));
}

HttpEnd HttpTransfer::endFor(CURLcode result) const {
    switch (result) {
    case CURLE_OK:
        return HttpEnd::complete;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CACERT_BADFILE:
        return HttpEnd::untrusted;
    default:
        return connected_ ? HttpEnd::broken : HttpEnd::unreachable;
    }
}

// The operating system's words where it has some: they say what was tried.
std::string HttpTransfer::reasonFor(CURLcode result) const {
    long error = 0;
    if (result == CURLE_COULDNT_CONNECT) curl_easy_getinfo(handle_, CURLINFO_OS_ERRNO, &error);
    if (error != 0) return std::generic_category().message(static_cast<int>(error));
    return words_.front() != '\0' ? words_.data() : curl_easy_strerror(result);
}

} // namespace platform
