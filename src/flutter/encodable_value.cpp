#include "flutter/encodable_value.h"

#include "flutter/integer.h"

#include <algorithm>
#include <numeric>

namespace flutter {
namespace {

template <class T>
std::strong_ordering compare(const T& a, const T& b) {
    return a <=> b;
}

// <=> of floating-point numbers gives NaN no place in the order.
std::strong_ordering compare(double a, double b) { return std::strong_order(a, b); }

template <std::floating_point T>
std::strong_ordering compare(const std::vector<T>& a, const std::vector<T>& b) {
    return std::lexicographical_compare_three_way(a.begin(), a.end(), b.begin(), b.end(),
                                                  [](T x, T y) { return std::strong_order(x, y); });
}

std::strong_ordering compare(const EncodableMap& a, const EncodableMap& b) {
    return std::lexicographical_compare_three_way(a.begin(), a.end(), b.begin(), b.end());
}

// Up to this many pairs, comparing all keys with each other is faster than sorting them.
constexpr std::size_t fewPairs = 16;

void uniteEqualKeysByComparison(std::vector<EncodableMap::Pair>& pairs) {
    auto end = pairs.begin();
    for (auto pair = pairs.begin(); pair != pairs.end(); ++pair) {
        const auto first =
            std::find_if(pairs.begin(), end, [&](auto& other) { return other.first == pair->first; });
        if (first != end)
            first->second = std::move(pair->second);
        else if (end++ != pair)
            *std::prev(end) = std::move(*pair);
    }
    pairs.erase(end, pairs.end());
}

void uniteEqualKeysBySorting(std::vector<EncodableMap::Pair>& pairs) {
    // Positions: equal keys side by side, and those in their order of arrival.
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
    std::size_t index = 0;
    std::erase_if(pairs, [&](const auto&) { return repeated[index++]; });
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

bool operator==(const EncodableValue& a, const EncodableValue& b) {
    const auto* x = a.getIf<std::string>();
    const auto* y = b.getIf<std::string>();
    return x && y ? *x == *y : (a <=> b) == 0; // strings, which most keys are, need no order
}

EncodableMap::EncodableMap(std::initializer_list<Pair> pairs) : EncodableMap(fromPairs(pairs)) {}

EncodableMap EncodableMap::fromPairs(std::vector<Pair> pairs) {
    EncodableMap map;
    map.pairs_ = std::move(pairs);
    if (map.pairs_.size() <= fewPairs)
        uniteEqualKeysByComparison(map.pairs_);
    else
        uniteEqualKeysBySorting(map.pairs_);
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

bool operator==(const EncodableMap& a, const EncodableMap& b) { return a.pairs_ == b.pairs_; }

} // namespace flutter
