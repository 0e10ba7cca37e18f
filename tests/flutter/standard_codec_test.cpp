#include "flutter/allocated.h"
#include "flutter/hex.h"
#include "flutter/standard_codec.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>
#include <numeric>
#include <sstream>

using namespace flutter;

namespace {

using Int32 = std::numeric_limits<std::int32_t>;
using Int64 = std::numeric_limits<std::int64_t>;
using Double = std::numeric_limits<double>;
constexpr auto pi = std::numbers::pi;

template <class T>
struct Vector {
    Bytes bytes;
    T value;
};

const std::vector<Vector<EncodableValue>> values = {
    {hex("00"), {}},
    {hex("01"), true},
    {hex("02"), false},
    {hex("0300000000"), 0},
    {hex("0378563412"), 0x12345678},
    {hex("0300000080"), Int32::min()},
    {hex("03ffffff7f"), Int32::max()},
    {hex("040000008000000000"), std::int64_t{Int32::max()} + 1},
    {hex("04ffffff7fffffffff"), std::int64_t{Int32::min()} - 1},
    {hex("04efcdab9078563412"), 0x1234567890abcdef},
    {hex("040000000000000080"), Int64::min()},
    {hex("04ffffffffffffff7f"), Int64::max()},
    {hex("0600000000000000000000000000f03f"), 1.0},
    {hex("0600000000000000182d4454fb210940"), pi},
    {hex("06000000000000000000000000000080"), -0.0},
    {hex("0600000000000000000000000000f87f"), Double::quiet_NaN()},
    {hex("0600000000000000000000000000f07f"), Double::infinity()},
    {hex("0700"), ""},
    {hex("070b68656c6c6f20776f726c64"), "hello world"},
    {hex("070568e298ba77"), "h☺w"},
    {hex("070668f09f988277"), "h😂w"},
    {hex("07fd") + Bytes(253, 'a'), std::string(253, 'a')},
    {hex("07fefe00") + Bytes(254, 'a'), std::string(254, 'a')},
    {hex("07feffff") + Bytes(65535, 'a'), std::string(65535, 'a')},
    {hex("07ff00000100") + Bytes(65536, 'a'), std::string(65536, 'a')},
    {hex("0804ba5eba11"), Bytes{0xba, 0x5e, 0xba, 0x11}},
    {hex("0903000078563412ffffffff00000000"), std::vector<std::int32_t>{0x12345678, -1, 0}},
    {hex("0a02000000000000efcdab9078563412ffffffffffffffff"),
     std::vector<std::int64_t>{0x1234567890abcdef, -1}},
    {hex("0b02000000000000182d4454fb2109400000000000408f40"), std::vector<double>{pi, 1000}},
    {hex("0e020000d80f494000007a44"), std::vector<float>{3.1415920257568359375F, 1000}},
    {hex("0800"), Bytes{}},
    {hex("09000000"), std::vector<std::int32_t>{}},
    {hex("0e000000"), std::vector<float>{}},
    {hex("0a00000000000000"), std::vector<std::int64_t>{}},
    {hex("0b00000000000000"), std::vector<double>{}},
    {hex("0c0301090000000002"), EncodableList{true, std::vector<std::int32_t>{}, false}},
    {hex("0c020b00000000000307000000"), EncodableList{std::vector<double>{}, 7}},
    {hex("0c00"), EncodableList{}},
    {hex("0d00"), EncodableMap{}},
    {hex("0d01070001"), EncodableMap{{"", true}}},
    {hex("0c0500070568656c6c6f0600000000001f85eb51b81e0940032f0000000c02032a00000007066e6573746564"),
     EncodableList{nullptr, "hello", 3.14, 47, EncodableList{42, "nested"}}},
    {hex("0c070001032a00000006000000000000182d4454fb210940070568656c6c6f0c000d00"),
     EncodableList{nullptr, true, 42, pi, "hello", EncodableList{}, EncodableMap{}}},
    {hex("0d0707046e756c6c000704626f6f6c010703696e74032a0000000705666c6f617406000000000000182d4454fb210940"
         "0706737472696e67070568656c6c6f07046c6973740c0007036d61700d00"),
     EncodableMap{{"null", nullptr},
                  {"bool", true},
                  {"int", 42},
                  {"float", pi},
                  {"string", "hello"},
                  {"list", EncodableList{}},
                  {"map", EncodableMap{}}}},
};

const std::vector<Vector<MethodCall>> calls = {
    {hex("070568656c6c6f00"), {"hello", {}}},
    {hex("070568656c6c6f0705776f726c64"), {"hello", "world"}},
    {hex("070568656c6c6f0c020705636f756e74032a000000"), {"hello", EncodableList{"count", 42}}},
    {hex("070568656c6c6f06000000000000f83f"), {"hello", 1.5}},
};

const std::vector<Vector<EncodableValue>> successes = {
    {hex("0000"), {}},
    {hex("00032a000000"), 42},
    {hex("00070568656c6c6f"), "hello"},
    {hex("0006000000000000000000000000f83f"), 1.5},
};

const std::vector<Vector<FlutterError>> errors = {
    {hex("0107096572726f72436f64650000"), {"errorCode", std::nullopt, {}}},
    {hex("0107096572726f72436f64650710736f6d657468696e67206661696c65640c02070161032a000000"),
     {"errorCode", "something failed", EncodableList{"a", 42}}},
};

// Messages with a space between them.
std::vector<Bytes> eachOf(const std::string& messages) {
    std::istringstream words(messages);
    std::vector<Bytes> all;
    for (std::string word; words >> word;)
        all.push_back(hex(word));
    return all;
}

Bytes nestedLists(int depth) { return repeated("0c01", static_cast<std::size_t>(depth)) + hex("00"); }

TEST(StandardCodec, WritesAndReadsEveryKindOfValueAsOthersDo) {
    for (const auto& [bytes, value] : values) {
        EXPECT_EQ(encodeMessage(value), bytes);
        EXPECT_EQ(decodeMessage(bytes), value) << testing::PrintToString(bytes);
    }
}

TEST(StandardCodec, WritesAndReadsCallsAndRepliesAsOthersDo) {
    for (const auto& [bytes, call] : calls) {
        EXPECT_EQ(encodeMethodCall(call), bytes);
        const auto decoded = decodeMethodCall(bytes);
        ASSERT_TRUE(decoded);
        EXPECT_EQ(decoded->method, call.method);
        EXPECT_EQ(decoded->arguments, call.arguments);
    }
    for (const auto& [bytes, value] : successes) {
        EXPECT_EQ(encodeSuccessEnvelope(value), bytes);
        EXPECT_EQ(decodeEnvelope(bytes), Envelope(value));
    }
    for (const auto& [bytes, error] : errors) {
        EXPECT_EQ(encodeErrorEnvelope(error.code, error.message, error.details), bytes);
        EXPECT_EQ(decodeEnvelope(bytes), Envelope(error));
    }
}

TEST(StandardCodec, ReadsWhatOthersMayWriteThoughItNeverWould) {
    EXPECT_EQ(decodeMessage(hex("040100000000000000")), EncodableValue(1));
    EXPECT_EQ(decodeMessage(hex("05023166")), EncodableValue("1f"));
    EXPECT_EQ(decodeMessage(hex("07fe010061")), EncodableValue("a"));
    EXPECT_EQ(encodeMessage(std::int64_t{1}), hex("0301000000"));
}

TEST(StandardCodec, RefusesBrokenMessagesAsAWhole) {
    for (const auto& bytes : eachOf("03 0367 03674523 04ef 0600000000000000 060000000000000000 07 0705 "
                                    "070568656c6c 08 0805 080500010203 "
                                    "09050000 0905000000 09ff000000 0a05000000000000 0a 0c 0c07 0c0700 "
                                    "0c010f 0d 0d07 0d0707 0d010700 0d010f00 0f "
                                    "07ffffffffff 0cffffffffff 0dffffffffff 0affffffffff 0702fffe 0702c080 "
                                    "0703eda080 0704f4908080 0702e298 07fe01 07ff0000 0900 0000 0c010000"))
        EXPECT_FALSE(decodeMessage(bytes)) << testing::PrintToString(bytes);
    for (const auto& bytes : eachOf("000000 070568 070568656c6c6f 030000000000 0701610000"))
        EXPECT_FALSE(decodeMethodCall(bytes)) << testing::PrintToString(bytes);
    for (const auto& bytes : eachOf("00 01 02 0200 000000 0107056572726f72 01070165030000000000 01000000 "
                                    "01070165000000"))
        EXPECT_FALSE(decodeEnvelope(bytes)) << testing::PrintToString(bytes);
    EXPECT_FALSE(decodeMessage({}) || decodeMethodCall({}) || decodeEnvelope({}));
}

TEST(StandardCodec, RefusesNestingBeyondItsLimit) {
    EXPECT_TRUE(decodeMessage(nestedLists(maxNesting)));
    EXPECT_FALSE(decodeMessage(nestedLists(maxNesting + 1)));
    EXPECT_FALSE(decodeMessage(nestedLists(10000)));
    EXPECT_FALSE(decodeMessage(repeated("0d0100", 10000) + hex("00")));
    // Beside each other is not inside each other.
    EXPECT_TRUE(decodeMessage(hex("0cfee803") + repeated("0c00", 1000)));
    EXPECT_TRUE(decodeMessage(hex("0cfee803") + repeated("0d00", 1000)));
}

TEST(StandardCodec, AllocatesInProportionToTheMessageWhateverItClaims) {
    const Bytes filler(100'000, 0);
    auto claims = eachOf("0cffffffff7f 0dffffffff7f 07ffffffff7f 0bffffffff7f");
    claims.push_back(repeated("0cff80000100", 200) + filler);
    claims.push_back(repeated("0dff40000100 00", 200) + filler);
    claims.push_back(hex("0c64 085a") + Bytes(90, 0) +
                     hex("0cfee803 00000000")); // too few bytes even without the 1000
    for (const auto& bytes : claims) {
        const auto before = allocatedBytes();
        EXPECT_FALSE(decodeMessage(bytes));
        EXPECT_LE(allocatedBytes() - before, 100 * bytes.size());
    }
}

TEST(StandardCodec, KeepsTheLastOfDuplicateKeysInTheFirstOnesPlace) {
    const auto map =
        decodeMessage(hex("0d05 070161 01 070162 02 070161 02 0301000000 01 040100000000000000 00"));
    EXPECT_EQ(map, EncodableValue(EncodableMap{{"a", false}, {"b", false}, {1, nullptr}}));

    constexpr std::uint32_t count = 200'000; // a walk per pair would take minutes
    EXPECT_EQ(decodeMessage(hex("0dff400d0300") + repeated("0001", count)),
              EncodableValue(EncodableMap{{nullptr, true}}));
    std::vector<EncodableMap::Pair> pairs;
    for (std::uint32_t key = 0; key < count; ++key)
        pairs.emplace_back(key, key);
    EXPECT_EQ(EncodableMap::fromPairs(std::move(pairs)).size(), count);
}

TEST(StandardCodec, WritesReadableMessagesFromTextThatIsNotUtf8) {
    EXPECT_EQ(decodeMessage(encodeMessage("caf\xe9 ☕\xf0\x9f")), EncodableValue("caf\uFFFD ☕\uFFFD\uFFFD"));
    // Texts are checked in pieces of several sizes: no byte of any of them may be left out.
    std::vector<std::size_t> lengths(100);
    std::iota(lengths.begin(), lengths.end(), 1);
    lengths.push_back(300);
    for (const std::size_t length : lengths) {
        std::string alphabet(length, 'a');
        for (std::size_t position = 0; position < length; ++position) {
            alphabet[position] = static_cast<char>('!' + position % 90);
            std::string text(length, 'a');
            text[position] = '\xff';
            auto bytes = encodeMessage(std::string(length, 'a'));
            bytes[bytes.size() - length + position] = 0xff;
            EXPECT_FALSE(decodeMessage(bytes)) << position << " of " << length;
            EXPECT_EQ(decodeMessage(encodeMessage(text)),
                      EncodableValue(text.replace(position, 1, "\uFFFD")));
        }
        EXPECT_EQ(decodeMessage(encodeMessage(alphabet)), EncodableValue(alphabet));
    }
}

TEST(StandardCodec, AllocatesAMessageOnceAndNotAtAllInMemoryThatIsLargeEnough) {
    const EncodableValue large =
        EncodableMap{{"text", std::string(5000, 'a')}, {"numbers", std::vector<double>{1}}};
    const EncodableValue small = EncodableMap{{"text", "a"}};
    auto before = allocatedBytes();
    auto bytes = encodeMessage(large);
    EXPECT_EQ(allocatedBytes() - before, bytes.size());
    before = allocatedBytes();
    bytes = encodeMessage(small, std::move(bytes));
    bytes = encodeMessage(large, std::move(bytes));
    EXPECT_EQ(allocatedBytes(), before);
    EXPECT_EQ(decodeMessage(bytes), large);
}

} // namespace
