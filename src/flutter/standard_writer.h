// Writes values in the standard codec. Padding counts from the first byte written.
#pragma once

#include "flutter/encodable_value.h"
#include "flutter/standard_types.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace flutter {

class StandardWriter {
public:
    void byte(std::uint8_t value) { bytes_.push_back(value); }
    void string(std::string_view text);
    void value(const EncodableValue& value);

    std::vector<std::uint8_t> take() { return std::move(bytes_); }

private:
    void write(std::monostate);
    void write(bool value);
    void write(std::int32_t value);
    void write(std::int64_t value);
    void write(double value);
    void write(const std::string& value) { string(value); }
    void write(const std::vector<std::uint8_t>& bytes);
    void write(const std::vector<std::int32_t>& numbers) { numberList(StandardType::int32List, numbers); }
    void write(const std::vector<std::int64_t>& numbers) { numberList(StandardType::int64List, numbers); }
    void write(const std::vector<double>& numbers) { numberList(StandardType::float64List, numbers); }
    void write(const std::vector<float>& numbers) { numberList(StandardType::float32List, numbers); }
    void write(const EncodableList& list);
    void write(const EncodableMap& map);

    template <class T>
    void numberList(StandardType type, const std::vector<T>& numbers);
    void type(StandardType type) { byte(static_cast<std::uint8_t>(type)); }
    void size(std::size_t count);
    void align(std::size_t width);

    std::vector<std::uint8_t> bytes_;
};

} // namespace flutter
