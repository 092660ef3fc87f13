#include "platform/grid/model/DefaultColumns.h"
#include "tests/platform/grid/data/GeneratedRecordset.h"

#include <gtest/gtest.h>

namespace norvel::grid {
namespace {

using namespace adodb;
using tests::GeneratedColumn;
using tests::GeneratedRecordset;

Column named(std::string field, int order, bool visible = true) {
    Column column;
    column.DataField = std::move(field);
    column.Order = order;
    column.Visible = visible;
    return column;
}

// A hundred twips a character.
double measure(std::string_view text) {
    return 100.0 * static_cast<double>(lengthText(text));
}

Columns made(GeneratedRecordset& rows) {
    RowReader reader(rows);
    RowCache cache;
    return defaultColumns(rows.Fields(), reader, cache, measure, 200);
}

TEST(Columns, AreFoundByFieldWhateverTheCase) {
    Columns columns;
    columns.Add(named("Città", 0));
    EXPECT_EQ(columns.IndexOf("CITTÀ"), 0);
    EXPECT_EQ(columns.IndexOf("citta"), -1);
}

TEST(Columns, AreShownByOrderWithoutTheHiddenOnes) {
    Columns columns;
    columns.Add(named("a", 2));
    columns.Add(named("b", 0, false));
    columns.Add(named("c", 1));
    columns.Add(named("d", 1));
    EXPECT_EQ(columns.Shown(), (std::vector{2, 3, 0}));
}

TEST(Columns, ABadIndexIs3265) {
    Columns columns;
    for (const int bad : {-1, 0, 7}) {
        try {
            columns.Item(bad);
            ADD_FAILURE() << bad;
        } catch (const Errore& error) {
            EXPECT_EQ(error.numero(), 3265);
        }
    }
}

TEST(DefaultColumns, AreOnePerFieldWithItsNameAndNoFilterCombo) {
    auto rows = GeneratedRecordset::make(tests::customerColumns(), 100);
    const Columns columns = made(*rows);
    ASSERT_EQ(columns.Count(), 9);
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(columns.Item(i).Caption, rows->Fields()(i).Name());
        EXPECT_EQ(columns.Item(i).DataField, columns.Item(i).Caption);
        EXPECT_EQ(columns.Item(i).DataType, rows->Fields()(i).Type());
        EXPECT_FALSE(columns.Item(i).FilterCombo);
        EXPECT_EQ(columns.Item(i).Order, i);
    }
}

TEST(DefaultColumns, AlignNumbersRightDatesAndBooleansInTheMiddle) {
    auto rows = GeneratedRecordset::make(tests::customerColumns(), 10);
    const Columns columns = made(*rows);
    const auto alignment = [&](std::string_view field) {
        return alignmentOf(columns.Item(columns.IndexOf(field)));
    };
    EXPECT_EQ(alignment("codice"), Alignment::Right);
    EXPECT_EQ(alignment("fatturato"), Alignment::Right);
    EXPECT_EQ(alignment("citta"), Alignment::Left);
    EXPECT_EQ(alignment("data_nascita"), Alignment::Center);
    EXPECT_EQ(alignment("attivo"), Alignment::Center);
}

TEST(DefaultColumns, AnAlignmentThatWasSetWinsOverTheTypes) {
    Column column;
    column.DataType = adInteger;
    column.Align = Alignment::Left;
    EXPECT_EQ(alignmentOf(column), Alignment::Left);
}

TEST(DefaultColumns, AreAsWideAsTheLongestOfTheFirstCellsOrTheCaption) {
    const GeneratedColumn short_{
        "nome", adVarWChar, [](RowCount r) { return Variant(r == 5 ? "dodici lettere" : "x"); }};
    const GeneratedColumn caption{"un_nome_di_campo", adVarWChar,
                                  [](RowCount) { return Variant("y"); }};
    auto rows = GeneratedRecordset::make({short_, caption}, 20);
    const Columns columns = made(*rows);
    EXPECT_DOUBLE_EQ(columns.Item(0).Width, 14 * 100 + 200);
    EXPECT_DOUBLE_EQ(columns.Item(1).Width, 16 * 100 + 300 + 200) << "with room for an arrow";
}

TEST(DefaultColumns, NeitherAMegabyteOfTextNorNoneMakesAnAbsurdWidth) {
    const GeneratedColumn huge{"t", adLongVarWChar,
                               [](RowCount) { return Variant(std::string(1'000'000, 'x')); }};
    const GeneratedColumn empty{"u", adVarWChar, [](RowCount) { return Variant::null(); }};
    auto rows = GeneratedRecordset::make({huge, empty}, 20);
    const Columns columns = made(*rows);
    EXPECT_LE(columns.Item(0).Width, 6000);
    EXPECT_GE(columns.Item(1).Width, 480);
}

TEST(DefaultColumns, WithoutRowsFollowTypeAndSize) {
    auto rows = GeneratedRecordset::make(tests::customerColumns(), 0);
    const Columns columns = made(*rows);
    EXPECT_GT(columns.Item(columns.IndexOf("ragione_sociale")).Width,
              columns.Item(columns.IndexOf("attivo")).Width);
    EXPECT_GE(columns.Item(columns.IndexOf("data_nascita")).Width, 1200);
}

TEST(DefaultColumns, OfARecordsetWithoutFieldsAreNone) {
    auto rows = GeneratedRecordset::make({}, 5);
    EXPECT_EQ(made(*rows).Count(), 0);
}

} // namespace
} // namespace norvel::grid
