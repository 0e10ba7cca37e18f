#include "conformance/stage.h"

#include <gmock/gmock.h>

namespace conformance {
namespace {

using namespace platform;
using testing::ElementsAre;

struct PasteboardTest : testing::Test {
    Stage stage;
    std::unique_ptr<OtherProgram> program = stage.open({.value = "text"});
    Pasteboard& pasteboard = Pasteboard::generalPasteboard();

    // The only item there, once it has that type; fails without.
    PasteboardItem itemWith(const PasteboardType& type) {
        std::optional<PasteboardItem> found;
        const bool came = stage.runUntil([&] {
            const auto items = pasteboard.pasteboardItems();
            if (!items || items->size() != 1) return false;
            found = items->front();
            return std::ranges::count(found->types(), type) == 1;
        });
        EXPECT_TRUE(came) << "no item with " << type;
        return found.value_or(PasteboardItem());
    }

    static std::optional<std::string> bytes(const PasteboardItem& item, const PasteboardType& type) {
        const auto data = item.dataForType(type);
        return data ? std::optional(std::string(data->bytes.begin(), data->bytes.end())) : std::nullopt;
    }
};

TEST_F(PasteboardTest, EmptyingItEmptiesItForEveryProgramAndCountsAsAChange) {
    pasteboard.setString("before", PasteboardTypeString);
    const auto count = pasteboard.changeCount();
    pasteboard.clearContents();
    EXPECT_NE(pasteboard.changeCount(), count);
    EXPECT_EQ(pasteboard.stringForType(PasteboardTypeString), std::nullopt);
    EXPECT_TRUE(pasteboard.pasteboardItems().value_or(std::vector<PasteboardItem>{}).empty());
    EXPECT_EQ(program->pasteboardText().value_or(""), "");
}

TEST_F(PasteboardTest, TextReachesOtherProgramsAndComesBackFromThem) {
    const std::string text = "Grüße,\n\tAnna 👩‍🚀 ";
    pasteboard.clearContents();
    EXPECT_TRUE(pasteboard.setString(text, PasteboardTypeString));
    EXPECT_EQ(program->pasteboardText(), text);
    EXPECT_EQ(pasteboard.stringForType(PasteboardTypeString), text);

    const auto count = pasteboard.changeCount();
    program->copy({{PasteboardTypeString, "from the program"}});
    EXPECT_TRUE(stage.runUntil([&] { return pasteboard.changeCount() != count; }));
    EXPECT_EQ(pasteboard.stringForType(PasteboardTypeString), "from the program");
}

TEST_F(PasteboardTest, AnItemIsGivenBackWithItsTypesInOrderAndItsBytes) {
    const std::string picture{"\x89PNG\0\1\2\xff", 8};
    program->copy({{"text/html", "<b>bold</b>"}, {"image/png", picture}, {"application/x-note", ""}});
    const PasteboardItem item = itemWith("application/x-note");
    EXPECT_THAT(item.types(), ElementsAre("text/html", "image/png", "application/x-note"));
    PasteboardItem copy;
    for (const auto& type : item.types())
        EXPECT_TRUE(copy.setData(item.dataForType(type).value_or(Data{}), type));
    pasteboard.clearContents();
    EXPECT_TRUE(pasteboard.writeObjects(std::span(&copy, 1)));
    EXPECT_THAT(itemWith("application/x-note").types(),
                ElementsAre("text/html", "image/png", "application/x-note"));
    EXPECT_EQ(program->pasteboardBytes("text/html"), "<b>bold</b>");
    EXPECT_EQ(program->pasteboardBytes("image/png"), picture);
}

TEST_F(PasteboardTest, DataThatCannotBeProducedIsAbsentAndTheRestIsNot) {
    program->copy({{"text/html", "<i>"}}, std::vector<PasteboardType>{"image/png"});
    const PasteboardItem item = itemWith("image/png");
    EXPECT_EQ(bytes(item, "image/png"), std::nullopt);
    EXPECT_EQ(bytes(item, "application/x-never-offered"), std::nullopt);
    EXPECT_EQ(bytes(item, "text/html"), "<i>");
}

TEST_F(PasteboardTest, AnItemTakenFromItIsReadOnDemandAndOnlyUntilTheNextChange) {
    program->copy({{"text/html", "<i>"}});
    PasteboardItem item = itemWith("text/html");
    EXPECT_FALSE(item.setData({}, "text/x-more"));
    pasteboard.clearContents();
    EXPECT_EQ(bytes(item, "text/html"), std::nullopt);
}

TEST_F(PasteboardTest, AnOwnerThatHangsCostsABoundedTime) {
    program->copy({{PasteboardTypeString, "never delivered"}});
    const PasteboardItem item = itemWith(PasteboardTypeString);
    program->hang();
    const TimePoint start = now();
    EXPECT_EQ(bytes(item, PasteboardTypeString), std::nullopt);
    EXPECT_EQ(pasteboard.stringForType(PasteboardTypeString), std::nullopt);
    EXPECT_LT(now() - start, Seconds{4});
    // It can be taken from it all the same.
    EXPECT_TRUE(pasteboard.setString("mine", PasteboardTypeString));
    EXPECT_EQ(pasteboard.stringForType(PasteboardTypeString), "mine");
}

} // namespace
} // namespace conformance
