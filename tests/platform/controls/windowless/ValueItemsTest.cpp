#include "platform/controls/ValueItems.h"

#include <gtest/gtest.h>

#include <string>

namespace norvel::controls {
namespace {

ValueItems of(std::initializer_list<const char*> texts) {
    ValueItems items;
    for (const char* text : texts)
        items.Add(text);
    return items;
}

TEST(ValueItems, KeepsEveryTextAsItCame) {
    ValueItems items = of({"uno", "", "tre\nrighe", "Forlì"});
    EXPECT_EQ(items.Count(), 4U);
    EXPECT_EQ(items.At(0), "uno");
    EXPECT_EQ(items.At(1), "");
    EXPECT_EQ(items.At(2), "tre\nrighe");
    EXPECT_EQ(items.At(3), "Forlì");
    items.Clear();
    EXPECT_EQ(items.Count(), 0U);
    items.Add("nuovo");
    EXPECT_EQ(items.At(0), "nuovo");
}

TEST(ValueItems, FindsByTheBeginningFromAPlaceOnAndThenFromTheFirst) {
    const ValueItems items = of({"Rossi", "Bianchi", "ROSSINI", "rosa", "Verdi"});
    EXPECT_EQ(items.FindPrefix("ros", 0), 0U);
    EXPECT_EQ(items.FindPrefix("ros", 1), 2U);
    EXPECT_EQ(items.FindPrefix("Ros", 4), 0U) << "round";
    EXPECT_EQ(items.FindPrefix("rosa", 0), 3U);
    EXPECT_EQ(items.FindPrefix("rossinio", 0), std::nullopt);
    EXPECT_EQ(items.FindPrefix("x", 0), std::nullopt);
    EXPECT_EQ(items.FindPrefix("", 0), std::nullopt);
    EXPECT_EQ(ValueItems().FindPrefix("a", 0), std::nullopt);
}

TEST(ValueItems, LettersBeyondAsciiHaveNoCaseEither) {
    const ValueItems items = of({"Èlite", "Élite", "eLite", "CITTÀ", "città nuova"});
    EXPECT_EQ(items.FindPrefix("è", 0), 0U);
    EXPECT_EQ(items.FindPrefix("É", 0), 1U);
    EXPECT_EQ(items.FindPrefix("E", 0), 2U) << "an accent is another letter";
    EXPECT_EQ(items.FindPrefix("città", 0), 3U);
    EXPECT_EQ(items.FindPrefix("CITTÀ N", 0), 4U);
}

TEST(ValueItems, AnAccentInPiecesIsTheSameLetterAndNotItsBase) {
    const ValueItems items = of({"citta\xCC\x80 vecchia", "citta"});
    EXPECT_EQ(items.FindPrefix("città", 0), 0U);
    EXPECT_EQ(items.FindPrefix("citta", 0), 1U);
    EXPECT_EQ(items.FindPrefix("citt", 1), 1U);
    EXPECT_EQ(items.FindPrefix("citt", 0), 0U);
}

TEST(ValueItems, HundredsOfThousandsAreSearchedAtOnce) {
    ValueItems items;
    for (int i = 0; i < 700000; ++i)
        items.Add("Cliente " + std::to_string(i));
    EXPECT_EQ(items.FindPrefix("cliente 699999", 0), 699999U);
    EXPECT_EQ(items.FindPrefix("cliente x", 350000), std::nullopt);
    EXPECT_EQ(items.At(123456), "Cliente 123456");
}

} // namespace
} // namespace norvel::controls
