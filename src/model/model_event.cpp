#include "model/model_event.h"

#include <utility>
#include <vector>

// One comes with every word of an answer and holds all of it so far: the text is moved, never copied.
flutter::EncodableMap modelEvent(const std::string& id, std::string_view kind, std::string_view key,
                                 std::string value) {
    std::vector<flutter::EncodableMap::Pair> pairs;
    pairs.reserve(3);
    pairs.emplace_back("request_id", id);
    pairs.emplace_back("kind", kind);
    pairs.emplace_back(key, std::move(value));
    return flutter::EncodableMap::fromPairs(std::move(pairs));
}
