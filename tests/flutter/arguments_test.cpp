#include "flutter/arguments.h"

#include <gtest/gtest.h>

#include <limits>

using namespace flutter;

namespace {

using Int64 = std::numeric_limits<std::int64_t>;
constexpr auto nan = std::numeric_limits<double>::quiet_NaN();

TEST(Arguments, NumbersConvertAsThePlatformConvertsThem) {
    constexpr std::uint32_t highest = 0xffffffff;
    const struct {
        EncodableValue value;
        std::optional<std::uint32_t> asUnsigned;
        std::optional<std::int64_t> asSigned;
        std::optional<double> asFloating;
    } numbers[] = {
        {49, 49, 49, 49.0},
        {-1, highest, -1, -1.0},
        {0x100000031, 0x31, 0x100000031, 4294967345.0},
        {Int64::min(), 0, Int64::min(), -9223372036854775808.0},
        {49.9, 49, 49, 49.9},
        {-0.5, 0, 0, -0.5},
        {-2.5, 0, -2, -2.5},
        {4294967296.5, highest, 4294967296, 4294967296.5},
        {1e300, highest, Int64::max(), 1e300},
        {-1e300, 0, Int64::min(), -1e300},
        {9223372036854775808.0, highest, Int64::max(), 9223372036854775808.0},
        {true, {}, {}, {}},
        {"49", {}, {}, {}},
        {nullptr, {}, {}, {}},
        {std::vector<double>{1}, {}, {}, {}},
    };
    for (const auto& [value, asUnsigned, asSigned, asFloating] : numbers) {
        EXPECT_EQ(asUInt32(value), asUnsigned);
        EXPECT_EQ(asInt64(value), asSigned);
        EXPECT_EQ(asDouble(value), asFloating);
    }
    EXPECT_EQ(asUInt32(nan), 0U);
    EXPECT_EQ(asInt64(nan), 0);
}

TEST(Arguments, AnotherTypeCountsAsAbsent) {
    EXPECT_EQ(asBool(true), true);
    EXPECT_EQ(asBool(1), std::nullopt);
    EXPECT_EQ(*asString("text"), "text");
    EXPECT_EQ(asString(EncodableValue(std::vector<std::uint8_t>{'a'})), nullptr);
}

TEST(Arguments, OneWrongMemberMakesTheWholeAbsent) {
    using Strings = std::vector<std::string>;
    EXPECT_EQ(asStringList(EncodableList{"a", "b"}), (Strings{"a", "b"}));
    EXPECT_EQ(asStringList(EncodableList{}), Strings{});
    EXPECT_EQ(asStringList(EncodableList{"a", 1}), std::nullopt);
    EXPECT_EQ(asStringList("a"), std::nullopt);

    const EncodableValue strings = EncodableMap{{"a", "1"}, {"b", "2"}};
    const EncodableValue mixed = EncodableMap{{"a", "1"}, {"b", 2}};
    const EncodableValue oddKey = EncodableMap{{"a", "1"}, {2, "2"}};
    EXPECT_EQ(asStringMap(strings),
              (std::vector<std::pair<std::string, std::string>>{{"a", "1"}, {"b", "2"}}));
    EXPECT_EQ(asStringMap("a"), std::nullopt);
    EXPECT_EQ(asStringMap(mixed), std::nullopt);
    EXPECT_EQ(asStringMap(oddKey), std::nullopt);
    EXPECT_EQ(asMap(oddKey), nullptr);
    EXPECT_EQ(member(asMap(mixed), "b"), EncodableValue(2));
    EXPECT_TRUE(member(asMap(mixed), "c").isNull());
    EXPECT_TRUE(member(asMap(oddKey), "a").isNull());
}

} // namespace
