#include "platform/grid/print/PageCodes.h"

#include <gtest/gtest.h>

namespace norvel::grid {
namespace {

TEST(PageCodesTest, TheUsualFooterStandsInTheCentre) {
    EXPECT_EQ(pageSections("\\tPage: \\p", 3, 12), (PageSections{"", "Page: 3", ""}));
}

TEST(PageCodesTest, TheCounterNamesPageAndPages) {
    EXPECT_EQ(withPageNumbers("Page \\p of \\P", 1, 12), "Page 1 of 12");
}

TEST(PageCodesTest, TabCodesCutLeftCentreAndRight) {
    const struct {
        const char* text;
        PageSections sections;
    } cases[] = {
        {"", {"", "", ""}},
        {"Clienti", {"Clienti", "", ""}},
        {"a\\tb\\tc", {"a", "b", "c"}},
        {"\\t\\tc", {"", "", "c"}},
        {"a\\t\\tc", {"a", "", "c"}},
        {"a\\tb\\tc\\td", {"a", "b", "c d"}},
        {"\\p\\t\\P\\t\\p/\\P", {"7", "20", "7/20"}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(pageSections(c.text, 7, 20), c.sections) << c.text;
}

TEST(PageCodesTest, OtherBackslashesStayAndLettersKeepTheirCase) {
    EXPECT_EQ(withPageNumbers("C:\\dati\\", 1, 2), "C:\\dati\\");
    EXPECT_EQ(pageSections("a\\Tb", 1, 2).left, "a\\Tb");
    EXPECT_EQ(withPageNumbers("\\", 1, 2), "\\");
}

TEST(PageCodesTest, LineBreaksAndBadBytesOfACaptionAreShownAsInACell) {
    EXPECT_EQ(pageSections("Clienti\r\ndi Forl\xEC", 1, 1).left, "Clienti di Forl\xC3\xAC");
}

} // namespace
} // namespace norvel::grid
