// What the grid shows and where it stands.
#include "tests/platform/grid/window/GridFixture.h"

#include <wx/image.h>

namespace norvel::tests {
namespace {

using namespace adodb;

TEST_F(GridTest, ShowsOneColumnPerFieldWithTheFieldsNameAsCaption) {
    openCustomers(1000);
    ASSERT_EQ(grid_->Columns().Count(), 9);
    EXPECT_EQ(grid_->Columns().Item(1).Caption, "ragione_sociale");
    EXPECT_FALSE(grid_->Columns().Item(1).FilterCombo);
    EXPECT_EQ(grid_->CellText(0, 0), "1");
    EXPECT_EQ(grid_->CellText(999, 0), "1000");
    EXPECT_EQ(grid_->CellText(1000, 0), "");
    EXPECT_EQ(grid_->FirstRow(), 0);
    EXPECT_GT(grid_->RowsInView(), 5);
    screenshot(*frame_, "grid_customers");
}

TEST_F(GridTest, TellsOfItsFirstPaintWithRowsOnce) {
    openCustomers(0);
    int told = 0;
    int rows = 0;
    grid_->OnFirstPaint = [&](int shown) {
        ++told;
        rows = shown;
    };
    grid_->Refresh();
    robot_.pump();
    EXPECT_EQ(told, 0) << "no row was painted yet";
    rows_->arrive(5, true);
    robot_.waitUntil([&] { return told > 0; });
    grid_->Refresh();
    robot_.pump();
    EXPECT_EQ(told, 1);
    EXPECT_EQ(rows, 5);
}

TEST_F(GridTest, PaintingReadsOnlyWhatIsInViewAndNeverMovesTheRecord) {
    openCustomers(10'000'000);
    const int moves = rows_->moves();
    const auto before = rows_->rowsRead();
    grid_->SetFirstRow(6'000'000);
    robot_.pump();
    EXPECT_EQ(grid_->FirstRow(), 6'000'000);
    EXPECT_EQ(rows_->moves(), moves);
    EXPECT_LE(rows_->rowsRead() - before, 2 * 64);
    EXPECT_EQ(rows_->AbsolutePosition(), 1);
}

TEST_F(GridTest, AThousandColumnsReadOnlyThoseInView) {
    std::vector<GeneratedColumn> columns;
    columns.reserve(1000);
    for (int i = 0; i < 1000; ++i)
        columns.push_back({"campo_" + std::to_string(i), adInteger, [i](RowCount row) {
                               return Variant(static_cast<std::int32_t>(row * 1000 + i));
                           }});
    open(GeneratedRecordset::make(columns, 1'000'000));
    ASSERT_EQ(grid_->Columns().Count(), 1000);
    const auto before = rows_->valuesRead();
    grid_->SetFirstRow(500'000);
    robot_.pump();
    EXPECT_LE(rows_->valuesRead() - before, 2 * 64 * 25);
    grid_->SetCurrentColumn(999);
    robot_.pump();
    EXPECT_FALSE(grid_->CellRect(0, 999).IsEmpty());
    EXPECT_TRUE(grid_->CellRect(0, 0).IsEmpty());
    EXPECT_EQ(grid_->CellText(2, 999), "2999");
    screenshot(*frame_, "grid_thousand_columns");
}

TEST_F(GridTest, WithoutRowsWithoutFieldsOrWithoutRecordsetItIsEmptyButAlive) {
    open(GeneratedRecordset::make({}, 10));
    EXPECT_EQ(grid_->Columns().Count(), 0);
    robot_.click(*grid_, {60, 100});
    robot_.press('A', wxMOD_CONTROL);
    robot_.press(WXK_DOWN);
    robot_.press(WXK_RIGHT);
    robot_.press(WXK_F2);
    source_.SetRecordset(GeneratedRecordset::make(customerColumns(), 0));
    robot_.pump();
    EXPECT_EQ(grid_->Columns().Count(), 9);
    EXPECT_EQ(grid_->CurrentRow(), -1);
    robot_.press(WXK_DOWN);
    robot_.press('A', wxMOD_CONTROL);
    EXPECT_EQ(grid_->SelBookmarks().Count(), 0);
    screenshot(*frame_, "grid_no_rows");
    source_.SetRecordset(nullptr);
    robot_.pump();
    robot_.press(WXK_END, wxMOD_CONTROL);
    EXPECT_EQ(grid_->RowsInView(), 0);
    EXPECT_THROW(grid_->Bookmark(), Errore);
}

TEST_F(GridTest, AReadThatFailsIsSaidWhereTheRowsWouldStand) {
    openCustomers(10'000);
    rows_->failReads(Errore(-2147467259, "connessione interrotta"));
    grid_->SetFirstRow(5000);
    robot_.pump();
    screenshot(*frame_, "grid_read_error");
    rows_->healReads();
    rows_->Requery(-1);
    robot_.pump();
    grid_->SetFirstRow(5000);
    robot_.pump();
    EXPECT_EQ(grid_->CellText(5000, 0), "5001");
    screenshot(*frame_, "grid_read_error_healed");
}

TEST_F(GridTest, LongTextsLineBreaksAndBlobsStayOnOneLine) {
    std::string tenMegabytes;
    tenMegabytes.resize(10'000'000, 'm');
    open(GeneratedRecordset::make(
        {{"codice", adInteger,
          [](RowCount row) { return Variant(static_cast<std::int32_t>(row)); }},
         {"testo", adLongVarWChar,
          [tenMegabytes](RowCount row) {
              if (row == 0) return Variant(tenMegabytes);
              return Variant("prima riga\r\nseconda\triga\x02");
          }},
         {"immagine", adLongVarBinary, [](RowCount) { return Variant(Bytes(5, 1)); }},
         {"estero", adVarWChar,
          [](RowCount row) {
              return Variant(row % 3 == 0   ? "東京都 港区"
                             : row % 3 == 1 ? "שלום עולם"
                                            : "Łódź, Kraków e\xCC\x81");
          }}},
        40));
    EXPECT_LT(grid_->CellText(0, 1).size(), 2000U);
    EXPECT_EQ(grid_->CellText(1, 1), "prima riga seconda riga ");
    EXPECT_EQ(grid_->CellText(0, 2), "(binario)");
    screenshot(*frame_, "grid_awkward_texts");
}

TEST_F(GridTest, AlternatingRowsAndLoadedColumnsShowAsTheySay) {
    openCustomers(500);
    auto& columns = grid_->Columns();
    columns.Item(2).Visible = false;
    columns.Item(6).Order = -1;
    columns.Item(1).Caption = "Ragione sociale del cliente";
    columns.Item(1).Width = 3000;
    columns.Item(4).Width = 700;
    columns.Item(5).Width = 600;
    columns.Item(1).FilterCombo = columns.Item(4).FilterCombo = true;
    columns.Item(1).FilterText = "Forlì";
    grid_->SplitAt(0).AlternatingRowStyle = true;
    grid_->Changed();
    robot_.pump();
    EXPECT_TRUE(grid_->CellRect(0, 2).IsEmpty());
    EXPECT_LT(grid_->HeadingRect(6).x, grid_->HeadingRect(0).x);
    EXPECT_EQ(grid_->HeadingRect(1).width, static_cast<int>(std::lround(200 * grid_->Scale())));
    EXPECT_FALSE(grid_->FilterButtonRect(1).IsEmpty());
    EXPECT_TRUE(grid_->FilterButtonRect(0).IsEmpty());
    screenshot(*frame_, "grid_alternating");
    grid_->SplitAt(0).EvenRowStyle.BackColor = 0x00402000; // dark blue: its text turns white
    grid_->SplitAt(0).OddRowStyle.BackColor = 0x0080FFFF;
    grid_->Changed();
    robot_.pump();
    screenshot(*frame_, "grid_own_colours");
}

TEST_F(GridTest, WithoutFilterBarTheRowsComeRightBelowTheHeadings) {
    openCustomers(500);
    const int before = grid_->CellRect(0, 0).y;
    grid_->SplitAt(0).FilterBar = false;
    grid_->Changed();
    robot_.pump();
    EXPECT_EQ(grid_->CellRect(0, 0).y, grid_->HeadingRect(0).height);
    EXPECT_LT(grid_->CellRect(0, 0).y, before);
    EXPECT_TRUE(grid_->FilterCellRect(0).IsEmpty());
    robot_.press(WXK_F2);
    EXPECT_EQ(grid_->focusArea(), grid::Area::Data);
    EXPECT_THROW(grid_->SplitAt(1), Errore);
    EXPECT_EQ(grid_->SplitCount(), 1);
}

TEST_F(GridTest, AnotherRecordsetWithOtherFieldsGetsItsOwnColumns) {
    openCustomers(100);
    source_.SetRecordset(
        GeneratedRecordset::make({{"sola", adVarWChar, [](RowCount) { return Variant("x"); }}}, 3));
    EXPECT_EQ(grid_->Columns().Count(), 1);
    EXPECT_EQ(grid_->RowsInView(), 3);
}

TEST_F(GridTest, LoadedColumnsStayWhenTheRecordsetIsReplaced) {
    openCustomers(100);
    grid_->Columns().Clear();
    grid::Column city;
    city.DataField = "CITTA";
    city.Caption = "Città";
    grid::Column missing;
    missing.DataField = "non_c_e";
    missing.Order = 1;
    grid_->Columns().Add(city);
    grid_->Columns().Add(missing);
    grid_->Changed();
    source_.SetRecordset(GeneratedRecordset::make(customerColumns(), 50));
    robot_.pump();
    ASSERT_EQ(grid_->Columns().Count(), 2);
    EXPECT_NE(grid_->CellText(0, 0), "");
    EXPECT_EQ(grid_->CellText(0, 1), "");
    // A layout for the same fields gets their types.
    grid_->Columns().Clear();
    grid::Column code;
    code.DataField = "codice";
    grid_->Columns().Add(code);
    grid_->Changed();
    grid_->Columns().Clear();
    grid_->Columns().Add(code);
    grid_->Changed();
    EXPECT_EQ(grid_->Columns().Item(0).DataType, adodb::adInteger);
    EXPECT_EQ(grid_->CellText(49, 0), "50");
}

TEST_F(GridTest, ALargerFontMakesTallerRowsAndKeepsTheFirstRow) {
    openCustomers(10'000);
    grid_->SetFirstRow(5000);
    const int before = grid_->CellRect(0, 0).height;
    grid_->SetFont(grid_->GetFont().Scaled(1.6F));
    robot_.pump();
    EXPECT_GT(grid_->CellRect(0, 0).height, before);
    EXPECT_EQ(grid_->FirstRow(), 5000);
    screenshot(*frame_, "grid_large_font");
}

} // namespace
} // namespace norvel::tests
