// A value that a channel message can carry: null, boolean, integer, floating-point number, string,
// typed lists of numbers, list or map. A plain value: copying copies everything below it.
//
// Equality means "the same on the wire": an int32_t and an int64_t holding one number are equal, a NaN
// equals itself, 0.0 differs from -0.0, and two maps are equal when they hold equal pairs in the same order.
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

// Pairs in the order in which their keys were first set; a key occurs once. A lookup walks the pairs.
class EncodableMap {
public:
    using Pair = std::pair<EncodableValue, EncodableValue>;
    using const_iterator = std::vector<Pair>::const_iterator;

    EncodableMap() = default;
    EncodableMap(std::initializer_list<Pair> pairs);

    // Takes any number of pairs at once, in n log n. A key that occurs again keeps its first place and
    // takes the last value.
    static EncodableMap fromPairs(std::vector<Pair> pairs);

    // The value under a key; null pointer when there is none. Valid until the map changes.
    const EncodableValue* find(std::string_view key) const;
    const EncodableValue* find(const EncodableValue& key) const;

    // Adds a pair at the end, or replaces the value of a key that is already there.
    void set(EncodableValue key, EncodableValue value);

    std::size_t size() const;
    bool empty() const;
    const_iterator begin() const;
    const_iterator end() const;

    friend bool operator==(const EncodableMap& a, const EncodableMap& b);

private:
    std::vector<Pair> pairs_;
};

// An integer type whose every number fits into an int32_t or, failing that, an int64_t.
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

    // The value as exactly the type T of the list above; null pointer when it has another type.
    template <class T>
    const T* getIf() const {
        return std::get_if<T>(&storage_);
    }

    const Storage& storage() const { return storage_; }

    friend std::strong_ordering operator<=>(const EncodableValue& a, const EncodableValue& b);
    friend bool operator==(const EncodableValue& a, const EncodableValue& b) { return (a <=> b) == 0; }

private:
    template <EncodableInteger T>
    static auto integer(T value) {
        constexpr bool narrow = std::signed_integral<T> ? sizeof(T) <= 4 : sizeof(T) < 4;
        return static_cast<std::conditional_t<narrow, std::int32_t, std::int64_t>>(value);
    }

    Storage storage_;
};

} // namespace flutter
