// A value of a channel message: null, boolean, integer, floating-point number, string, list of numbers of one
// type, list or map. A plain value: a copy is independent of the original.
//
// Two values are equal when their bytes on the wire are the same: an int32_t and an int64_t with the same
// number are equal, a NaN is equal to itself, 0.0 is not equal to -0.0, and maps are equal when they have
// equal pairs in the same order.
#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace flutter {

class EncodableValue;
using EncodableList = std::vector<EncodableValue>;

// Pairs in the order in which their keys were first set; no key occurs twice. A look-up compares one key
// after another.
class EncodableMap {
public:
    using Pair = std::pair<EncodableValue, EncodableValue>;
    using const_iterator = std::vector<Pair>::const_iterator;

    EncodableMap() = default;
    EncodableMap(std::initializer_list<Pair> pairs);

    // From any number of pairs, in n log n. A key that occurs several times has its first place and its last
    // value.
    static EncodableMap fromPairs(std::vector<Pair> pairs);

    // The value of a key; null when the map does not have the key. Valid until the map changes.
    const EncodableValue* find(std::string_view key) const;
    const EncodableValue* find(const EncodableValue& key) const;

    // Adds a pair at the end, or replaces the value of a key that the map has already.
    void set(EncodableValue key, EncodableValue value);

    std::size_t size() const;
    bool empty() const;
    const_iterator begin() const { return pairs_.begin(); }
    const_iterator end() const { return pairs_.end(); }

    friend bool operator==(const EncodableMap& a, const EncodableMap& b);

private:
    std::vector<Pair> pairs_;
};

// An integer type all of whose numbers fit into an int64_t.
template <class T>
concept EncodableInteger = std::integral<T> && !std::same_as<T, bool> &&
                           (std::signed_integral<T> || sizeof(T) < sizeof(std::int64_t));

class EncodableValue {
public:
    using Storage =
        std::variant<std::monostate, bool, std::int32_t, std::int64_t, double, std::string,
                     std::vector<std::uint8_t>, std::vector<std::int32_t>, std::vector<std::int64_t>,
                     std::vector<double>, std::vector<float>, EncodableList, EncodableMap>;

    EncodableValue() = default; // null
    EncodableValue(std::nullptr_t) {}
    EncodableValue(std::same_as<bool> auto value) : storage_(value) {}
    EncodableValue(double value) : storage_(value) {}
    EncodableValue(const char* value) : storage_(std::in_place_type<std::string>, value) {}
    EncodableValue(std::string_view value) : storage_(std::in_place_type<std::string>, value) {}
    EncodableValue(std::string value) : storage_(std::move(value)) {}
    EncodableValue(std::vector<std::uint8_t> value) : storage_(std::move(value)) {}
    EncodableValue(std::vector<std::int32_t> value) : storage_(std::move(value)) {}
    EncodableValue(std::vector<std::int64_t> value) : storage_(std::move(value)) {}
    EncodableValue(std::vector<double> value) : storage_(std::move(value)) {}
    EncodableValue(std::vector<float> value) : storage_(std::move(value)) {}
    EncodableValue(EncodableList value) : storage_(std::move(value)) {}
    EncodableValue(EncodableMap value) : storage_(std::move(value)) {}

    EncodableValue(EncodableInteger auto value) : storage_(integer(value)) {}

    bool isNull() const { return std::holds_alternative<std::monostate>(storage_); }

    // The value as the type T, one of those of Storage; null when it has another type.
    template <class T>
    const T* getIf() const {
        return std::get_if<T>(&storage_);
    }

    // Replaces the value by a new T, one of the types of Storage, and returns it.
    template <class T, class... Arguments>
    T& emplace(Arguments&&... arguments) {
        return storage_.emplace<T>(std::forward<Arguments>(arguments)...);
    }

    const Storage& storage() const { return storage_; }

    friend std::strong_ordering operator<=>(const EncodableValue& a, const EncodableValue& b);
    friend bool operator==(const EncodableValue& a, const EncodableValue& b);

private:
    template <EncodableInteger T>
    static auto integer(T value) {
        constexpr bool narrow = std::signed_integral<T> ? sizeof(T) <= 4 : sizeof(T) < 4;
        return static_cast<std::conditional_t<narrow, std::int32_t, std::int64_t>>(value);
    }

    Storage storage_;
};

// Here, where a pair is a complete type.
inline std::size_t EncodableMap::size() const { return pairs_.size(); }
inline bool EncodableMap::empty() const { return pairs_.empty(); }

} // namespace flutter
