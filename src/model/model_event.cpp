#include "model/model_event.h"

#include <utility>

flutter::EncodableMap modelEvent(const std::string& id, std::string_view kind, std::string_view key,
                                 std::string value) {
    flutter::EncodableMap event;
    event.set("request_id", id);
    event.set("kind", kind);
    event.set(key, std::move(value));
    return event;
}
