#include "platform/grid/model/CellText.h"

#include "platform/runtime/Text.h"

#include <gtest/gtest.h>

#include <string>

namespace norvel::grid {
namespace {

TEST(CellText, NullAndEmptyAreBlank) {
    EXPECT_EQ(cellText(Variant::null()), "");
    EXPECT_EQ(cellText(Variant()), "");
}

TEST(CellText, NumbersDatesAndBooleansFollowItalianConventions) {
    EXPECT_EQ(cellText(Variant(1234.5)), "1234,5");
    EXPECT_EQ(cellText(Variant(Date{40666})), "03/05/2011");
    EXPECT_EQ(cellText(Variant(true)), "True");
}

TEST(CellText, ABlobAndAnObjectSayWhatTheyAre) {
    EXPECT_EQ(cellText(Variant(Bytes(10'000'000, 0x42))), "(binario)");
    EXPECT_EQ(cellText(Variant(ObjectRef())), "(oggetto)");
    EXPECT_EQ(cellText(Variant(std::vector<Variant>{1, 2})), "(oggetto)");
}

TEST(CellText, LineBreaksAndControlCharactersBecomeBlanks) {
    EXPECT_EQ(cellText(Variant("prima\r\nseconda\nterza\tquarta\x01quinta")),
              "prima seconda terza quarta quinta");
    EXPECT_EQ(cellText(Variant("a\xC2\x85"
                               "b\xE2\x80\xA8"
                               "c\x7F"
                               "d")),
              "a b c d");
    EXPECT_EQ(cellText(Variant(std::string("a\0b", 3))), "a b");
}

TEST(CellText, ATextOfTenMegabytesIsCutAtACharacterWithAnEllipsis) {
    std::string longText;
    while (longText.size() < 10'000'000)
        longText += "perché ";
    const std::string shown = cellText(Variant(longText));
    EXPECT_LE(shown.size(), maxCellBytes + 3);
    EXPECT_TRUE(shown.ends_with("\xE2\x80\xA6"));
    EXPECT_TRUE(isValidUtf8(shown));
    EXPECT_EQ(shown.substr(0, 8), "perché ");
}

TEST(CellText, ATextOfExactlyTheLimitIsKeptWhole) {
    const std::string whole(maxCellBytes, 'x');
    EXPECT_EQ(cellText(Variant(whole)), whole);
}

TEST(CellText, BytesThatAreNoUtf8AreShownAsWindows1252) {
    EXPECT_EQ(cellText(Variant("citt\xE0 10 \x80")), "città 10 €");
}

TEST(CellText, ADateOutOfEveryCalendarNeverRaises) {
    EXPECT_NO_THROW(cellText(Variant(Date{1e300})));
    EXPECT_NO_THROW(cellText(Variant(Date{-1e300})));
}

} // namespace
} // namespace norvel::grid
