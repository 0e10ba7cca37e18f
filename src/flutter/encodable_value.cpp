#include "flutter/encodable_value.h"

#include "flutter/integer.h"

#include <algorithm>
#include <numeric>
#include <optional>

namespace flutter {
namespace {

template <class T>
std::strong_ordering compare(const T& a, const T& b) {
    return a <=> b;
}

// The usual order of floating-point numbers leaves NaN without a place.
std::strong_ordering compare(double a, double b) { return std::strong_order(a, b); }

template <std::floating_point T>
std::strong_ordering compare(const std::vector<T>& a, const std::vector<T>& b) {
    return std::lexicographical_compare_three_way(a.begin(), a.end(), b.begin(), b.end(),
                                                  [](T x, T y) { return std::strong_order(x, y); });
}

std::strong_ordering compare(const EncodableMap& a, const EncodableMap& b) {
    return std::lexicographical_compare_three_way(a.begin(), a.end(), b.begin(), b.end());
}

} // namespace

std::strong_ordering operator<=>(const EncodableValue& a, const EncodableValue& b) {
    const auto x = integer(a), y = integer(b);
    if (x && y) return *x <=> *y;
    if (a.storage_.index() != b.storage_.index()) return a.storage_.index() <=> b.storage_.index();
    return std::visit(
        [&]<class T>(const T& left) -> std::strong_ordering {
            return compare(left, std::get<T>(b.storage_));
        },
        a.storage_);
}

EncodableMap::EncodableMap(std::initializer_list<Pair> pairs) : EncodableMap(fromPairs(pairs)) {}

EncodableMap EncodableMap::fromPairs(std::vector<Pair> pairs) {
    // The positions, equal keys side by side and in their order of arrival.
    std::vector<std::size_t> order(pairs.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        const auto keys = pairs[a].first <=> pairs[b].first;
        return keys != 0 ? keys < 0 : a < b;
    });

    std::vector<bool> repeated(pairs.size());
    for (std::size_t first = 0, next = 1; next < order.size(); ++next) {
        if (pairs[order[first]].first == pairs[order[next]].first) {
            pairs[order[first]].second = std::move(pairs[order[next]].second);
            repeated[order[next]] = true;
        } else {
            first = next;
        }
    }

    EncodableMap map;
    map.pairs_ = std::move(pairs);
    std::size_t index = 0;
    std::erase_if(map.pairs_, [&](const Pair&) { return repeated[index++]; });
    return map;
}

const EncodableValue* EncodableMap::find(std::string_view key) const {
    for (const auto& [candidate, value] : pairs_) {
        const auto* text = candidate.getIf<std::string>();
        if (text && *text == key) return &value;
    }
    return nullptr;
}

const EncodableValue* EncodableMap::find(const EncodableValue& key) const {
    const auto found = std::ranges::find(pairs_, key, &Pair::first);
    return found == pairs_.end() ? nullptr : &found->second;
}

void EncodableMap::set(EncodableValue key, EncodableValue value) {
    const auto found = std::ranges::find(pairs_, key, &Pair::first);
    if (found == pairs_.end()) {
        pairs_.emplace_back(std::move(key), std::move(value));
    } else {
        found->second = std::move(value);
    }
}

std::size_t EncodableMap::size() const { return pairs_.size(); }
bool EncodableMap::empty() const { return pairs_.empty(); }
EncodableMap::const_iterator EncodableMap::begin() const { return pairs_.begin(); }
EncodableMap::const_iterator EncodableMap::end() const { return pairs_.end(); }

bool operator==(const EncodableMap& a, const EncodableMap& b) { return a.pairs_ == b.pairs_; }

} // namespace flutter
