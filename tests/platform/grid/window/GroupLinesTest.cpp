// The lines of groups in the real grid.
#include "tests/platform/grid/window/GroupFixture.h"

namespace norvel::tests {
namespace {

using namespace adodb;
using Texts = std::vector<std::string>;

TEST_F(GroupTest, GroupsAreClosedAtFirstAscendAndSayTheirValuesAndCounts) {
    openGroups({"citta"});
    EXPECT_EQ(lines(), (Texts{"citta: (nessun valore) (10)", "citta: (vuoto) (10)",
                              "citta: Milano (10)", "citta: roma (20)", "citta: Torino (10)"}));
    EXPECT_EQ(grid_->CurrentRow(), 4) << "the group of the current record";
    EXPECT_TRUE(grid_->IsGroupRow(4));
    EXPECT_EQ(currentCode(), 1);
    EXPECT_TRUE(grid_->HeadingRect(Citta).IsEmpty());
    EXPECT_TRUE(grid_->FilterCellRect(Citta).IsEmpty());
    EXPECT_FALSE(grid_->HeadingRect(Zona).IsEmpty());
    screenshot(*frame_, "groups_closed");
}

TEST_F(GroupTest, InnerGroupsStandInTheirOuterOnesAndRowsInTheOrderOfTheSort) {
    openGroups({"zona", "citta"});
    grid_->SetGroupOpen(1, true);
    ASSERT_EQ(lines(), (Texts{"zona: Nord (30)", "zona: Sud (30)", "citta: (nessun valore) (5)",
                              "citta: (vuoto) (5)", "citta: Milano (5)", "citta: Roma (10)",
                              "citta: Torino (5)"}));
    grid_->SetGroupOpen(4, true);
    EXPECT_EQ(grid_->LineText(4), "citta: Milano (5)");
    EXPECT_EQ(grid_->CellText(4, Codice), "");
    EXPECT_EQ(grid_->CellText(5, Codice), "4");
    EXPECT_EQ(grid_->CellText(5, Nome), "Cliente 57");
    customers_->SetSort("codice DESC");
    robot_.pump();
    EXPECT_EQ(grid_->LineText(0), "zona: Nord (30)") << "groups ascend whatever the sort";
    EXPECT_EQ(grid_->CellText(5, Codice), "52");
    EXPECT_EQ(grid_->CellText(9, Codice), "4");
    screenshot(*frame_, "groups_nested");
}

// What is painted is what was read for the picture: no text is asked for beforehand.
TEST_F(GroupTest, TheFirstGroupsRowsShowTheirTextsWhenItIsOpened) {
    openGroups({"citta"});
    grid_->SetGroupOpen(0, true);
    robot_.pump();
    for (RowCount row : {1, 2, 10}) {
        const wxImage cell = imageOf(*grid_, grid_->CellRect(row, Nome).Deflate(4));
        EXPECT_GT(cell.CountColours(), 1U) << "row " << row;
    }
}

TEST_F(GroupTest, TheBorderOfFrozenColumnsStopsAtTheLineOfAGroup) {
    openGroups({"citta"});
    grid_->SplitAt(0).FrozenColumns = 2;
    grid_->Changed();
    grid_->SetGroupOpen(0, true);
    robot_.pump();
    const int border = grid_->HeadingRect(Zona).x;
    const auto coloursAt = [&](RowCount row) {
        const int top = grid_->RecordSelectorRect(row).y;
        return imageOf(*grid_, {border - 6, top + 6, 8, 6}).CountColours();
    };
    EXPECT_GT(coloursAt(2), 1U);
    EXPECT_EQ(coloursAt(11), 1U);
    screenshot(*frame_, "groups_frozen");
}

TEST_F(GroupTest, ArrowsWalkOverGroupsAndTheRecordsetStaysUntilARowIsReached) {
    openGroups({"citta"});
    grid_->SetGroupOpen(3, true);
    robot_.press(WXK_UP); // from Torino to the last row of roma
    EXPECT_EQ(currentCode(), 57);
    robot_.press(WXK_HOME, wxMOD_CONTROL);
    EXPECT_EQ(grid_->CurrentRow(), 0);
    EXPECT_EQ(currentCode(), 57);
    robot_.press(WXK_RIGHT);
    EXPECT_TRUE(grid_->IsGroupOpen(0));
    EXPECT_EQ(grid_->CurrentRow(), 0);
    robot_.press(WXK_RIGHT);
    EXPECT_EQ(grid_->CurrentRow(), 1);
    EXPECT_EQ(currentCode(), 5);
    robot_.press(WXK_LEFT); // the first cell: to its group
    EXPECT_EQ(grid_->CurrentRow(), 0);
    robot_.press(WXK_LEFT);
    EXPECT_FALSE(grid_->IsGroupOpen(0));
    EXPECT_EQ(grid_->CurrentRow(), 0);
    EXPECT_EQ(currentCode(), 5);
}

TEST_F(GroupTest, ASelectionThatBeganInAGroupNowClosedBeginsAtTheCurrentRow) {
    openGroups({"citta"});
    grid_->SetGroupOpen(0, true);  // ten rows
    grid_->SetGroupOpen(13, true); // twenty rows, the last lines but one
    ASSERT_EQ(grid_->LineCount(), 35);
    robot_.press(WXK_END, wxMOD_CONTROL);
    robot_.click(*grid_, centre(grid_->RecordSelectorRect(32 - grid_->FirstRow())));
    ASSERT_EQ(grid_->CurrentRow(), 32);
    grid_->SetFirstRow(0);
    robot_.click(*grid_, centre(grid_->RecordSelectorRect(3)), wxMOD_SHIFT);
    ASSERT_EQ(grid_->CurrentRow(), 3);
    grid_->SetGroupOpen(13, false);
    ASSERT_EQ(grid_->LineCount(), 15);
    robot_.click(*grid_, centre(grid_->RecordSelectorRect(5)), wxMOD_SHIFT);
    EXPECT_EQ(grid_->SelBookmarks().Count(), 3);
    EXPECT_EQ(grid_->CurrentRow(), 5);
}

TEST_F(GroupTest, RowsOfAnyHeightAreSeenWhole) {
    openGroups({"citta"});
    grid_->Style().RowHeight = 1'000'000;
    grid_->Changed();
    const wxRect first = grid_->GroupRect(0);
    EXPECT_GT(first.height, grid_->GetClientSize().y / 2);
    EXPECT_LT(first.GetBottom(), grid_->GetClientSize().y);
}

TEST_F(GroupTest, ClosingTheConnectionUnderAGroupWithoutAValueEmptiesTheGrid) {
    const ConnectionRef database = makeConnection();
    database->Open("Provider=SQLite;Data Source=:memory:");
    customers_ = makeClientRecordset();
    customers_->Open("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n LIMIT 9) "
                     "SELECT i AS codice, NULL AS citta FROM n",
                     ObjectRef(database), adOpenStatic, adLockReadOnly, adCmdText);
    openOver(customers_);
    groupBy({"citta"});
    ASSERT_EQ(lines(), (Texts{"citta: (nessun valore) (9)"}));
    database->Close();
    grid_->Refresh();
    robot_.pump();
    EXPECT_EQ(grid_->LineCount(), 0);
}

TEST_F(GroupTest, EnterOnAGroupOpensAndClosesItAndIsNoChoice) {
    openGroups({"citta"});
    int asked = 0;
    grid_->OnKey = [&](int, int, grid::Area) {
        ++asked;
        return false;
    };
    robot_.press(WXK_RETURN);
    EXPECT_TRUE(grid_->IsGroupOpen(4));
    EXPECT_EQ(asked, 0);
    robot_.press(WXK_DOWN);
    EXPECT_EQ(asked, 1);
    robot_.press(WXK_RETURN);
    EXPECT_EQ(asked, 2) << "on a row it is the program's";
}

TEST_F(GroupTest, SignsOfTheNumberPadOpenAndCloseOneAndAll) {
    openGroups({"zona", "citta"});
    EXPECT_EQ(grid_->LineCount(), 2);
    robot_.press(WXK_NUMPAD_MULTIPLY);
    EXPECT_EQ(grid_->LineCount(), 2 + 10 + 60);
    robot_.press(WXK_HOME, wxMOD_CONTROL);
    robot_.press(WXK_NUMPAD_SUBTRACT);
    EXPECT_EQ(grid_->LineCount(), 1 + 1 + 5 + 30);
    robot_.press(WXK_NUMPAD_ADD);
    EXPECT_EQ(grid_->LineCount(), 72);
    robot_.press(WXK_NUMPAD_DIVIDE);
    EXPECT_EQ(grid_->LineCount(), 2);
}

// On a keyboard without a number pad they may need Shift, as * and + do on the tests' own.
TEST_F(GroupTest, SignsThatAreTypedOpenAndCloseOneAndAll) {
    openGroups({"zona", "citta"});
    robot_.press('8', wxMOD_SHIFT);
    EXPECT_EQ(grid_->LineCount(), 2 + 10 + 60);
    robot_.press(WXK_HOME, wxMOD_CONTROL);
    robot_.press('-');
    EXPECT_EQ(grid_->LineCount(), 1 + 1 + 5 + 30);
    robot_.press('=', wxMOD_SHIFT);
    EXPECT_EQ(grid_->LineCount(), 72);
    robot_.press('/');
    EXPECT_EQ(grid_->LineCount(), 2);
}

TEST_F(GroupTest, ClicksOnTheSignAndDoubleClicksOnTheLineOpenAndCloseAndChooseNothing) {
    openGroups({"citta"});
    int chosen = 0;
    grid_->OnDblClick = [&] { ++chosen; };
    robot_.click(*grid_, onSign(2));
    EXPECT_TRUE(grid_->IsGroupOpen(2));
    EXPECT_EQ(grid_->CurrentRow(), 14) << "the keyboard stays where it was";
    robot_.click(*grid_, onSign(2));
    EXPECT_FALSE(grid_->IsGroupOpen(2));
    robot_.doubleClick(*grid_, onLine(2));
    EXPECT_TRUE(grid_->IsGroupOpen(2));
    EXPECT_EQ(grid_->CurrentRow(), 2);
    EXPECT_EQ(chosen, 0);
    EXPECT_EQ(currentCode(), 1);
    robot_.doubleClick(*grid_, cellCentre(3, Codice));
    EXPECT_EQ(chosen, 1);
    EXPECT_EQ(currentCode(), 4);
    robot_.doubleClick(*grid_, onLine(2));
    EXPECT_FALSE(grid_->IsGroupOpen(2));
    EXPECT_EQ(grid_->CurrentRow(), 2);
    EXPECT_EQ(currentCode(), 4) << "the closed group hides the record, which stays";
}

TEST_F(GroupTest, TheGroupOfTheRecordOpensWhenAProgramMovesItThere) {
    openGroups({"citta"});
    customers_->MoveNext(); // roma
    robot_.pump();
    EXPECT_TRUE(grid_->IsGroupOpen(3));
    EXPECT_EQ(grid_->CellText(grid_->CurrentRow(), Codice), "2");
    customers_->MoveLast();
    robot_.pump();
    EXPECT_TRUE(grid_->IsGroupOpen(1));
    EXPECT_EQ(grid_->CellText(grid_->CurrentRow(), Codice), "60");
}

TEST_F(GroupTest, AFilterKeepsGroupsOpenByTheirValuesAndOpensNone) {
    openGroups({"citta"});
    grid_->SetGroupOpen(3, true);
    customers_->SetFilter("codice > 50 AND citta > 'N'");
    robot_.pump();
    // A group bears the name of its first row.
    EXPECT_EQ(lines(), (Texts{"citta: Roma (3)", "51", "56", "57", "citta: Torino (1)"}));
    customers_->SetFilter("codice < 0");
    robot_.pump();
    EXPECT_EQ(lines(), Texts{});
    customers_->SetFilter("");
    robot_.pump();
    EXPECT_EQ(grid_->LineCount(), 25);
    EXPECT_TRUE(grid_->IsGroupOpen(3));
    EXPECT_FALSE(grid_->IsGroupOpen(0));
}

TEST_F(GroupTest, ARequeryKeepsGroupsOpenAndOpensNone) {
    const auto rows = makeClientRecordset();
    rows->Open("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 99) "
               "SELECT i AS codice, 'Zona ' || (i % 4) AS zona FROM n",
               "Provider=SQLite;Data Source=:memory:", adOpenStatic, adLockReadOnly, -1);
    openOver(rows);
    groupBy({"zona"});
    grid_->SetGroupOpen(2, true);
    rows->Requery(-1);
    robot_.pump();
    EXPECT_EQ(grid_->LineCount(), 4 + 25);
    EXPECT_TRUE(grid_->IsGroupOpen(2));
    EXPECT_FALSE(grid_->IsGroupOpen(0));
    EXPECT_EQ(grid_->CellText(3, 0), "2");
}

TEST_F(GroupTest, EditsAndDeletesChangeGroupsAndCounts) {
    openGroups({"citta"});
    customers_->Fields()("citta").SetValue("Aosta");
    customers_->Update();
    robot_.pump();
    EXPECT_EQ(grid_->LineText(2), "citta: Aosta (1)");
    EXPECT_EQ(grid_->LineText(5), "citta: Torino (9)");
    customers_->Delete();
    robot_.pump();
    EXPECT_EQ(grid_->LineText(2), "citta: Milano (10)");
    EXPECT_EQ(grid_->LineCount(), 5);
}

TEST_F(GroupTest, SelectingOverAClosedGroupSelectsItsRows) {
    openGroups({"citta"});
    robot_.click(*grid_, onLine(2));
    robot_.click(*grid_, onLine(3), wxMOD_SHIFT);
    EXPECT_EQ(grid_->SelBookmarks().Count(), 30);
    customers_->SetBookmark(grid_->SelBookmarks().Item(0));
    EXPECT_EQ(currentCode(), 4);
    customers_->SetBookmark(grid_->SelBookmarks().Item(10));
    EXPECT_EQ(currentCode(), 2);
    robot_.press('A', wxMOD_CONTROL);
    EXPECT_EQ(grid_->SelBookmarks().Count(), 60);
    robot_.pump();
    screenshot(*frame_, "groups_selected");
    robot_.click(*grid_, centre(grid_->RecordSelectorRect(0)));
    EXPECT_EQ(grid_->SelBookmarks().Count(), 10);
}

TEST_F(GroupTest, OverRowsThatStillArriveGroupsAreMadeAnewAtTheEnd) {
    const auto rows = makeClientRecordset();
    rows->Open("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 399999) "
               "SELECT i AS codice, 'Zona ' || (i % 4) AS zona FROM n",
               "Provider=SQLite;Data Source=:memory:", adOpenStatic, adLockReadOnly,
               adAsyncFetchNonBlocking);
    openOver(rows);
    groupBy({"zona"});
    ASSERT_EQ(grid_->LineCount(), 4);
    grid_->SetGroupOpen(1, true);
    ASSERT_TRUE(robot_.waitUntil([&] { return grid_->LineCount() == 4 + 100'000; }, 20'000));
    EXPECT_EQ(rows->State(), adStateOpen);
    EXPECT_EQ(grid_->LineText(0), "zona: Zona 0 (100000)");
    EXPECT_TRUE(grid_->IsGroupOpen(1));
    EXPECT_EQ(grid_->CellText(100'001, 0), "399997");
}

// The row that was meant stands on another line once the changed one is saved.
TEST_F(GroupTest, SelectingOnFromAChangedRowReachesTheRowThatWasMeant) {
    openGroups({"zona"});
    grid_->SetGroupOpen(1, true);
    for (const int column : {Nome, Saldo})
        grid_->Columns().Item(column).Locked = false;
    grid_->SetAllowUpdate(true);
    grid_->OnBeforeUpdate = [&] { // it goes into the group that is closed
        customers_->Fields()("zona").SetValue("Nord");
        return true;
    };
    robot_.click(*grid_, cellCentre(2, Nome));
    robot_.type("x");
    robot_.press(WXK_TAB);
    robot_.press(WXK_ESCAPE);
    EXPECT_EQ(grid_->LineCount(), 2 + 30);
    robot_.press(WXK_PAGEDOWN, wxMOD_SHIFT);
    EXPECT_EQ(grid_->LineCount(), 2 + 29);
    const auto reached = currentCode();
    EXPECT_GT(reached, 3);
    const RowCount count = grid_->SelBookmarks().Count();
    ASSERT_GT(count, 0);
    customers_->SetBookmark(grid_->SelBookmarks().Item(count - 1));
    EXPECT_EQ(currentCode(), reached);
}

// --- groups made anew while rows arrive ---

// 40 rows to a zone, more of them still to come.
class GroupsArriveTest : public GroupTest {
  protected:
    void SetUp() override {
        open(GeneratedRecordset::make(
            {{.name = "codice", .type = adInteger, .value = [](RowCount r) { return r + 1; }},
             {.name = "zona", .value = [](RowCount r) { return 'A' + r / 40 % 26; }}},
            400));
        rows_->letGroup();
        rows_->beginFetch();
        groupBy({"zona"});
        grid_->SetGroupOpen(0, true);
    }
    void arrive() {
        rows_->arrive(40, true);
        robot_.pump();
        ASSERT_EQ(grid_->LineCount(), 11 + 40);
    }
};

TEST_F(GroupsArriveTest, ASelectionGoesOnFromWhereItBegan) {
    robot_.click(*grid_, cellCentre(3, 0));
    robot_.pressTimes(2, WXK_DOWN, wxMOD_SHIFT);
    EXPECT_EQ(selectedCodes(), (std::vector{3, 4, 5}));
    arrive();
    EXPECT_EQ(selectedCodes(), (std::vector{3, 4, 5}));
    robot_.press(WXK_DOWN, wxMOD_SHIFT);
    EXPECT_EQ(selectedCodes(), (std::vector{3, 4, 5, 6}));
}

TEST_F(GroupsArriveTest, ADragOverRowsGoesOnFromWhereItBegan) {
    robot_.buttonDown(*grid_, centre(grid_->RecordSelectorRect(3)));
    robot_.moveTo(*grid_, centre(grid_->RecordSelectorRect(5)));
    EXPECT_EQ(selectedCodes(), (std::vector{3, 4, 5}));
    arrive();
    robot_.moveTo(*grid_, centre(grid_->RecordSelectorRect(6)));
    robot_.buttonUp();
    EXPECT_EQ(selectedCodes(), (std::vector{3, 4, 5, 6}));
}

TEST_F(GroupsArriveTest, TheViewStaysWhereTheOperatorScrolledIt) {
    grid_->SetFirstRow(20);
    ASSERT_EQ(grid_->FirstRow(), 20);
    arrive();
    EXPECT_EQ(grid_->FirstRow(), 20);
    EXPECT_EQ(grid_->CurrentRow(), 1);
}

TEST_F(GroupTest, ASignThatIsClickedFarFromTheCurrentRowLeavesTheViewWhereItIs) {
    openGroups({"citta"});
    grid_->SetAllGroupsOpen(true);
    ASSERT_GT(grid_->FirstRow(), 0) << "the current row is in the last group";
    grid_->SetFirstRow(0);
    robot_.click(*grid_, onSign(0));
    EXPECT_FALSE(grid_->IsGroupOpen(0));
    EXPECT_EQ(grid_->FirstRow(), 0);
    robot_.click(*grid_, onSign(0));
    EXPECT_TRUE(grid_->IsGroupOpen(0));
    EXPECT_EQ(grid_->FirstRow(), 0);
}

TEST_F(GroupTest, ASignThatIsClickedWhileACellIsRefusedOpensAndClosesNothing) {
    openGroups({"citta"});
    grid_->SetGroupOpen(0, true);
    grid_->Columns().Item(Saldo).Locked = false;
    grid_->SetAllowUpdate(true);
    int refused = 0;
    grid_->OnError = [&](const Errore&) { ++refused; };
    robot_.click(*grid_, cellCentre(2, Saldo));
    robot_.type("x");
    ASSERT_EQ(grid_->focusArea(), grid::Area::CellEdit);
    robot_.click(*grid_, onSign(0));
    EXPECT_EQ(refused, 1);
    EXPECT_TRUE(grid_->IsGroupOpen(0));
    EXPECT_EQ(grid_->focusArea(), grid::Area::CellEdit);
    EXPECT_EQ(grid_->CurrentRow(), 2);
    robot_.press(WXK_ESCAPE);
    robot_.click(*grid_, onSign(0));
    EXPECT_FALSE(grid_->IsGroupOpen(0));
}

} // namespace
} // namespace norvel::tests
