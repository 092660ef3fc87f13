#include "platform/grid/print/PageContents.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace norvel::grid {
namespace {

using adodb::RowBlock;
using adodb::RowCount;

// Every character is 100 wide and 200 high.
double characters(std::string_view text) {
    return 100.0 * static_cast<double>(std::ranges::count_if(text, [](char c) {
               return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
           }));
}

class PageContentsTest : public testing::Test {
  protected:
    PageContentsTest() {
        sizes.width = [](PageFont, std::string_view text) { return characters(text); };
        sizes.lineHeight = {200, 200, 200};
        table.settings.Paper = {10000, 10000};
        table.settings.Margins = {1000, 1000, 1000, 1000};
        table.columns = {{"codice", Alignment::Right, adodb::adInteger, 1000, false},
                         {"nome", Alignment::Left, adodb::adVarWChar, 3000, false}};
    }
    PageContents page(const RowBlock& rows, RowCount number = 1, RowCount all = 0) {
        const PageLayout layout = pageLayout(table, sizes, std::max(all, rows.rows));
        return pageContents(table, layout, number, rows, sizes);
    }
    static RowBlock two() {
        RowBlock block;
        block.rows = 2;
        block.values = {{Variant(1), Variant(22)}, {Variant("Forl\xC3\xAC"), Variant::null()}};
        return block;
    }
    static std::vector<std::string> texts(const PageContents& made) {
        std::vector<std::string> all;
        for (const PageText& text : made.texts)
            all.push_back(text.text);
        return all;
    }

    PageTextSizes sizes;
    PrintTable table;
};

TEST_F(PageContentsTest, HeadingsAndRowsStandWhereTheirColumnsStand) {
    const PageContents made = page(two());
    const std::vector<PageText> expected = {
        {"codice", {1060, 1000, 880, 305}, Alignment::Right, PageFont::Cell},
        {"1", {1060, 1305, 880, 275}, Alignment::Right, PageFont::Cell},
        {"22", {1060, 1580, 880, 275}, Alignment::Right, PageFont::Cell},
        {"nome", {2060, 1000, 2880, 305}, Alignment::Left, PageFont::Cell},
        {"Forl\xC3\xAC", {2060, 1305, 2880, 275}, Alignment::Left, PageFont::Cell},
    };
    EXPECT_EQ(made.texts, expected);
    const std::vector<PageFill> heading = {{{1000, 1000, 4000, 305}, 0x00E6E6E6}};
    EXPECT_EQ(made.fills, heading);
}

TEST_F(PageContentsTest, LinesStandAroundEveryCell) {
    const PageContents made = page(two());
    const std::vector<PageLine> expected = {
        {1000, 1000, 4000, true}, {1000, 1305, 4000, true}, {1000, 1580, 4000, true},
        {1000, 1855, 4000, true}, {1000, 1000, 855, false}, {2000, 1000, 855, false},
        {5000, 1000, 855, false},
    };
    EXPECT_EQ(made.lines, expected);
}

TEST_F(PageContentsTest, HeaderAndFooterHaveTheirFontsAndSections) {
    table.settings.PageHeader = "Clienti";
    table.settings.PageFooter = "\\tPage: \\p";
    const PageContents made = page(two(), 2, 100);
    ASSERT_GE(made.texts.size(), 2U);
    const PageText header{"Clienti", {1000, 1000, 8000, 200}, Alignment::Left, PageFont::Header};
    const PageText footer{"Page: 2", {1000, 8800, 8000, 200}, Alignment::Center, PageFont::Footer};
    EXPECT_EQ(made.texts[0], header);
    EXPECT_EQ(made.texts[1], footer);
}

TEST_F(PageContentsTest, SectionsOfAHeaderDoNotRunIntoEachOther) {
    table.settings.PageHeader = std::string(100, 'a') + "\\tcentro\\t" + std::string(100, 'b');
    const PageContents made = page(two());
    ASSERT_GE(made.texts.size(), 3U);
    EXPECT_EQ(made.texts[0].text, "centro");
    const PageText& right = made.texts[1];
    const PageText& left = made.texts[2];
    EXPECT_LE(left.box.x + characters(left.text), 5000 - 300);
    EXPECT_GE(right.box.Right() - characters(right.text), 5000 + 300);
    EXPECT_TRUE(left.text.ends_with("\xE2\x80\xA6"));
}

TEST_F(PageContentsTest, LongTextsEndWithAnEllipsisAndLongNumbersAreHashes) {
    RowBlock block;
    block.rows = 1;
    block.values = {{Variant(123456789)}, {Variant("Societ\xC3\xA0 cooperativa edile di Lugo")}};
    const PageContents made = page(block);
    EXPECT_EQ(texts(made),
              (std::vector<std::string>{"codice", "########", "nome",
                                        "Societ\xC3\xA0 cooperativa edile d\xE2\x80\xA6"}));
}

TEST_F(PageContentsTest, NoBlankStandsBeforeAnEllipsis) {
    table.columns[1].width = 120 + 1300;
    RowBlock block;
    block.rows = 1;
    block.values = {{Variant(1)}, {Variant("Cooperativa edile")}};
    EXPECT_EQ(texts(page(block)).back(), "Cooperativa\xE2\x80\xA6");
}

TEST_F(PageContentsTest, ValuesHaveItalianFormats) {
    table.columns = {{"importo", Alignment::Right, adodb::adDouble, 3000, false},
                     {"data", Alignment::Center, adodb::adDate, 3000, false}};
    RowBlock block;
    block.rows = 1;
    block.values = {{Variant(1234.5)}, {Variant(Date{40617})}};
    EXPECT_EQ(texts(page(block)),
              (std::vector<std::string>{"importo", "1234,5", "data", "15/03/2011"}));
}

TEST_F(PageContentsTest, CheckBoxesStandForYesAndNoAndNothingForNull) {
    table.columns = {{"attivo", Alignment::Center, adodb::adBoolean, 2000, true}};
    RowBlock block;
    block.rows = 5;
    block.values = {
        {Variant(true), Variant(false), Variant::null(), Variant(-1), Variant("forse")}};
    const PageContents made = page(block);
    ASSERT_EQ(made.checks.size(), 3U);
    EXPECT_TRUE(made.checks[0].checked);
    EXPECT_FALSE(made.checks[1].checked);
    EXPECT_TRUE(made.checks[2].checked);
    EXPECT_EQ(made.checks[0].box.x + made.checks[0].box.width / 2, 2000) << "centred";
    EXPECT_EQ(texts(made), (std::vector<std::string>{"attivo", "forse"}))
        << "what is neither yes nor no is shown as it is";
}

TEST_F(PageContentsTest, StripesFollowTheRowsNumberNotThePages) {
    table.stripes = true;
    table.evenRow = 0x00F7F1EB;
    const RowCount first = pageLayout(table, sizes, 100).PageAt(2).firstRow;
    const bool firstIsEven = first % 2 == 1;
    EXPECT_EQ(page(two()).fills.size(), 2U) << "the headings and the second row";
    EXPECT_EQ(page(two()).fills[1].box.y, 1580);
    const PageContents made = page(two(), 2, 100);
    ASSERT_EQ(made.fills.size(), 2U);
    EXPECT_EQ(made.fills[1].colour, 0x00F7F1EBU);
    EXPECT_EQ(made.fills[1].box.y, firstIsEven ? 1305 : 1580);
}

TEST_F(PageContentsTest, ARowsBackgroundIsPrintedLight) {
    EXPECT_EQ(printedColour(0x00FFFFFF), 0x00FFFFFFU);
    EXPECT_EQ(printedColour(0x00F7F1EB), 0x00F7F1EBU);
    EXPECT_EQ(printedColour(0x00000000), 0x00C7C7C7U);
    const std::uint32_t red = printedColour(0x000000C0);
    EXPECT_GT(red & 0xFF, red >> 8 & 0xFF) << "its tone stays";
    EXPECT_GT(red >> 8 & 0xFF, 0xB0U);
}

TEST_F(PageContentsTest, FewerRowsThanThePageHoldsLeaveItsEndEmpty) {
    const PageContents made = page(two(), 1, 100);
    EXPECT_EQ(made.texts.size(), 5U);
    EXPECT_EQ(made.lines.size(), 7U);
}

TEST_F(PageContentsTest, WithoutColumnsThePageHasHeaderAndFooterAlone) {
    table.columns.clear();
    table.settings.PageHeader = "Clienti";
    EXPECT_EQ(texts(page({})), std::vector<std::string>{"Clienti"});
}

TEST_F(PageContentsTest, TheTableOfAGridHasItsCheckBoxesStripesAndRowHeight) {
    Columns columns;
    Column active;
    active.DataField = "attivo";
    active.ValueItems = {true, presentationCheckBox};
    columns.Add(active);
    Column name;
    name.DataField = "nome";
    name.ValueItems = {false, presentationCheckBox};
    columns.Add(name);
    Column asText; // another column of the first one's field
    asText.DataField = "attivo";
    columns.Add(asText);
    Split split;
    split.AlternatingRowStyle = true;
    split.EvenRowStyle = {0x0000FF00};
    GridStyle style;
    style.RowHeight = 500;
    PrintSettings settings;
    settings.PageHeader = "x";
    const PrintTable made = printTable(exportTable(columns, style, ""), split, style, settings);
    ASSERT_EQ(made.columns.size(), 3U);
    EXPECT_TRUE(made.columns[0].checkBox);
    EXPECT_FALSE(made.columns[1].checkBox) << "not where the values are not translated";
    EXPECT_FALSE(made.columns[2].checkBox) << "not where another column of the field has them";
    EXPECT_TRUE(made.stripes);
    EXPECT_EQ(made.evenRow, 0x0000FF00U);
    EXPECT_EQ(pageHeights(made, sizes).row, 500);
    EXPECT_EQ(made.settings, settings);
}

} // namespace
} // namespace norvel::grid
