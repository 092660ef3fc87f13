// Editing cells in place, over a database, by keys and mouse.
#include "tests/platform/grid/window/GridFixture.h"
#include "tests/support/Boxes.h"

#include <wx/app.h>
#include <wx/textctrl.h>
#include <wx/weakref.h>

namespace norvel::tests {
namespace {

using namespace adodb;
using grid::Area;

enum Col { Codice, Nome, Sconto, Nascita, Attivo, Note };

class EditTest : public GridTest {
  protected:
    EditTest() {
        connection_->Open("Provider=SQLite;Data Source=:memory:");
        connection_->Execute(
            "CREATE TABLE clienti(codice INTEGER PRIMARY KEY, nome TEXT NOT NULL, sconto INTEGER "
            "CHECK(sconto <= 50), nascita DATE, attivo BOOLEAN, note TEXT)");
        connection_->Execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n LIMIT "
                             "40) INSERT INTO clienti SELECT i, 'Cliente ' || i, i, '2000-01-' || "
                             "substr('0' || (i % 28 + 1), -2), i % 2, NULL FROM n");
    }
    RecordsetRef rowsOf(LockTypeEnum lock) {
        auto rows = makeClientRecordset();
        rows->Open(
            "SELECT codice, nome, sconto, nascita, attivo, note FROM clienti ORDER BY codice",
            Variant(std::static_pointer_cast<Object>(connection_)), adOpenStatic, lock, adCmdText);
        return rows;
    }
    void openClients(LockTypeEnum lock = adLockOptimistic) {
        host_ = rowsOf(lock);
        openOver(host_);
        grid_->Columns().Item(Attivo).ValueItems = {.Translate = true, .Presentation = 4};
        for (const int column : {Nome, Sconto, Nascita, Attivo, Note})
            grid_->Columns().Item(column).Locked = false;
        grid_->SetAllowUpdate(true);
        grid_->Changed();
        robot_.pump();
    }
    // What the database holds.
    std::string stored(int code, const char* field) {
        const auto rows =
            connection_->Execute("SELECT " + std::string(field) +
                                 " FROM clienti WHERE codice = " + std::to_string(code));
        const Variant value = rows->Fields()(0).Value();
        return value.isNull() ? "(null)" : value.toDisplay();
    }
    void clickCell(int row, int column) { robot_.click(*grid_, cellCentre(row, column)); }
    // To the cell and into it.
    void enter(int row, int column) {
        clickCell(row, column);
        robot_.press(WXK_F2);
        ASSERT_EQ(grid_->focusArea(), Area::CellEdit);
    }
    static wxTextCtrl* field() { return dynamic_cast<wxTextCtrl*>(wxWindow::FindFocus()); }
    static std::string typedText() { return field() ? field()->GetValue().utf8_string() : "-"; }

    ConnectionRef connection_ = makeConnection();
    RecordsetRef host_;
    Boxes boxes_;
};

TEST_F(EditTest, TypingReplacesTheCellAndEnterSavesWithoutChoosing) {
    openClients();
    int chosen = 0;
    grid_->OnKey = [&](int code, int, Area area) {
        return chosen += code == WXK_RETURN && area == Area::Data, false;
    };
    clickCell(2, Nome);
    robot_.type("Verdi");
    EXPECT_EQ(typedText(), "Verdi");
    screenshot(*frame_, "grid_edit_typed");
    EXPECT_EQ(stored(3, "nome"), "Cliente 3");
    robot_.press(WXK_RETURN);
    EXPECT_EQ(stored(3, "nome"), "Verdi");
    EXPECT_EQ(grid_->CellText(2, Nome), "Verdi");
    EXPECT_EQ(grid_->focusArea(), Area::Data);
    EXPECT_EQ(grid_->CurrentRow(), 2);
    EXPECT_EQ(chosen, 0);
    EXPECT_TRUE(boxes_.shown().empty());
}

TEST_F(EditTest, F2AndASecondClickEnterBehindTheText) {
    openClients();
    enter(2, Nome);
    robot_.type(" S.p.A.");
    robot_.press(WXK_DOWN);
    EXPECT_EQ(stored(3, "nome"), "Cliente 3 S.p.A.");
    EXPECT_EQ(grid_->CurrentRow(), 3) << "leaving the row saves";
    clickCell(5, Nome);
    EXPECT_EQ(grid_->focusArea(), Area::Data) << "the first click makes the cell current";
    clickCell(5, Nome);
    EXPECT_EQ(grid_->focusArea(), Area::CellEdit);
    robot_.type("!");
    clickCell(8, Sconto);
    EXPECT_EQ(stored(6, "nome"), "Cliente 6!");
    EXPECT_EQ(grid_->CurrentRow(), 8);
}

TEST_F(EditTest, EscapeTakesBackTheCellAndThenTheRow) {
    openClients();
    enter(2, Nome);
    robot_.type("x");
    robot_.press(WXK_TAB);
    EXPECT_EQ(typedText(), "3");
    robot_.type("44");
    robot_.press(WXK_ESCAPE);
    EXPECT_EQ(grid_->focusArea(), Area::Data);
    EXPECT_EQ(grid_->CellText(2, Sconto), "3");
    EXPECT_EQ(grid_->CellText(2, Nome), "Cliente 3x") << "shown, and not saved yet";
    EXPECT_EQ(stored(3, "nome"), "Cliente 3");
    screenshot(*frame_, "grid_edit_pending");
    robot_.press(WXK_ESCAPE);
    EXPECT_EQ(grid_->CellText(2, Nome), "Cliente 3");
    robot_.press(WXK_DOWN);
    EXPECT_EQ(stored(3, "nome"), "Cliente 3");
}

TEST_F(EditTest, TabGoesThroughTheCellsThatCanBeEditedAndSavesAtTheEndOfTheRow) {
    openClients();
    grid_->Columns().Item(Nascita).Locked = true;
    grid_->Columns().Item(Note).Locked = true;
    grid_->Changed();
    enter(2, Nome);
    robot_.press(WXK_TAB);
    robot_.type("7");
    robot_.press(WXK_TAB);
    EXPECT_EQ(grid_->CurrentColumn(), Attivo);
    robot_.press(WXK_SPACE);
    EXPECT_EQ(stored(3, "sconto"), "3");
    robot_.press(WXK_TAB);
    EXPECT_EQ(grid_->CurrentRow(), 3);
    EXPECT_EQ(grid_->CurrentColumn(), Nome);
    EXPECT_EQ(stored(3, "sconto"), "7");
    EXPECT_EQ(stored(3, "attivo"), "False");
    robot_.press(WXK_TAB, wxMOD_SHIFT);
    EXPECT_EQ(grid_->CurrentRow(), 2);
    EXPECT_EQ(grid_->CurrentColumn(), Attivo);
}

TEST_F(EditTest, AValueThatIsNoneOfTheTypeSaysWhyAndStaysWithTheCaretInIt) {
    openClients();
    enter(2, Sconto);
    robot_.type("mele");
    robot_.press(WXK_RETURN);
    ASSERT_EQ(boxes_.shown().size(), 1U);
    EXPECT_EQ(boxes_.lastText(), "«3mele» non è un numero.");
    EXPECT_EQ(typedText(), "3mele");
    clickCell(6, Nome);
    EXPECT_EQ(boxes_.shown().size(), 2U) << "it cannot be left either";
    EXPECT_EQ(grid_->CurrentRow(), 2);
    EXPECT_EQ(typedText(), "3mele");
    robot_.press(WXK_ESCAPE);
    clickCell(6, Nome);
    EXPECT_EQ(grid_->CurrentRow(), 6);
    EXPECT_EQ(boxes_.shown().size(), 2U);
    EXPECT_EQ(stored(3, "sconto"), "3");
}

TEST_F(EditTest, WhatTheDatabaseRefusesStaysToBeCorrectedOrTakenBack) {
    openClients();
    enter(2, Sconto);
    robot_.type("00");
    robot_.press(WXK_RETURN);
    ASSERT_EQ(boxes_.shown().size(), 1U);
    EXPECT_FALSE(boxes_.lastText().empty());
    EXPECT_EQ(typedText(), "300");
    screenshot(*frame_, "grid_edit_refused");
    robot_.press(WXK_BACK);
    robot_.press(WXK_RETURN);
    EXPECT_EQ(stored(3, "sconto"), "30");
    EXPECT_EQ(boxes_.shown().size(), 1U);
    robot_.press(WXK_F2);
    robot_.type("0");
    robot_.press(WXK_DOWN);
    EXPECT_EQ(boxes_.shown().size(), 2U);
    robot_.press(WXK_ESCAPE);
    EXPECT_EQ(grid_->CellText(2, Sconto), "30");
    robot_.press(WXK_DOWN);
    EXPECT_EQ(boxes_.shown().size(), 2U) << "nothing of it is left";
    EXPECT_EQ(grid_->CurrentRow(), 3);
}

TEST_F(EditTest, ARefusalOfARowBroughtBackLeadsToItsLastCell) {
    openClients();
    enter(2, Sconto);
    robot_.type("00");
    robot_.press(WXK_TAB);
    robot_.press(WXK_ESCAPE); // out of the next cell: the row holds 300, unsaved
    robot_.press(WXK_DOWN);
    ASSERT_EQ(boxes_.shown().size(), 1U);
    EXPECT_EQ(grid_->CurrentRow(), 2);
    EXPECT_EQ(grid_->focusArea(), Area::CellEdit);
    robot_.press(WXK_ESCAPE);
    robot_.press(WXK_ESCAPE);
    robot_.press(WXK_DOWN);
    EXPECT_EQ(grid_->CurrentRow(), 3);
    EXPECT_EQ(stored(3, "sconto"), "3");
}

TEST_F(EditTest, OfTwoOperatorsAtTheSameRowTheSecondOneIsTold) {
    openClients();
    enter(2, Nome);
    robot_.type("x");
    const auto other = rowsOf(adLockOptimistic);
    other->SetAbsolutePosition(3);
    other->Fields()("nome").SetValue(Variant("Neri"));
    other->Update();
    robot_.press(WXK_RETURN);
    ASSERT_EQ(boxes_.shown().size(), 1U);
    EXPECT_NE(boxes_.lastText().find("modificato"), std::string::npos) << boxes_.lastText();
    EXPECT_EQ(typedText(), "Cliente 3x");
    EXPECT_EQ(stored(3, "nome"), "Neri");
    robot_.press(WXK_ESCAPE);
    robot_.press(WXK_DOWN);
    EXPECT_EQ(grid_->CurrentRow(), 3);
    EXPECT_EQ(stored(3, "nome"), "Neri");
}

TEST_F(EditTest, DatesAndEmptyCellsAreTypedByItalianConventions) {
    openClients();
    clickCell(2, Nascita);
    robot_.type("3/5/11");
    robot_.press(WXK_RETURN);
    EXPECT_EQ(grid_->CellText(2, Nascita), "03/05/2011");
    EXPECT_EQ(stored(3, "date(nascita)"), "2011-05-03");
    enter(3, Sconto);
    robot_.press('A', wxMOD_CONTROL);
    robot_.press(WXK_DELETE);
    robot_.press(WXK_RETURN);
    EXPECT_EQ(stored(4, "sconto"), "(null)");
    EXPECT_TRUE(boxes_.shown().empty());
}

TEST_F(EditTest, ABoxIsSwitchedByAClickOnItAndSavedWhenTheRowIsLeft) {
    openClients();
    clickCell(2, Attivo);
    EXPECT_EQ(grid_->CellText(2, Attivo), "False");
    EXPECT_EQ(stored(3, "attivo"), "True");
    robot_.press(WXK_SPACE);
    EXPECT_EQ(grid_->CellText(2, Attivo), "True");
    robot_.press(WXK_SPACE);
    robot_.press(WXK_RETURN);
    EXPECT_EQ(stored(3, "attivo"), "False");
    const wxRect cell = grid_->CellRect(3, Attivo);
    robot_.click(*grid_, {cell.x + 4, cell.y + cell.height / 2});
    EXPECT_EQ(grid_->CellText(3, Attivo), "False") << "beside the box it is only made current";
    robot_.press('A');
    EXPECT_EQ(grid_->focusArea(), Area::Data) << "nothing is typed into a box";
}

TEST_F(EditTest, LockedColumnsAndAGridThatAllowsNothingTakeNoKeys) {
    openClients();
    clickCell(2, Codice);
    robot_.type("9");
    EXPECT_EQ(grid_->focusArea(), Area::Data);
    robot_.press(WXK_F2);
    EXPECT_EQ(grid_->focusArea(), Area::FilterCell) << "F2 elsewhere leads to the filter bar";
    robot_.press(WXK_DOWN);
    EXPECT_TRUE(grid_->SetAllowUpdate(false));
    clickCell(2, Nome);
    clickCell(2, Nome);
    robot_.type("x");
    robot_.press(WXK_TAB);
    EXPECT_TRUE(after_->HasFocus());
    EXPECT_EQ(stored(3, "nome"), "Cliente 3");
}

TEST_F(EditTest, DoubleClickOpensACellThatCanBeEditedAndChoosesOnAnyOther) {
    openClients();
    int chosen = 0;
    grid_->OnDblClick = [&] { ++chosen; };
    robot_.doubleClick(*grid_, cellCentre(4, Nome));
    EXPECT_EQ(chosen, 0);
    EXPECT_EQ(grid_->focusArea(), Area::CellEdit);
    robot_.press(WXK_ESCAPE);
    robot_.doubleClick(*grid_, cellCentre(6, Codice));
    EXPECT_EQ(chosen, 1);
}

TEST_F(EditTest, ReadOnlyRowsSayWhy) {
    openClients(adLockReadOnly);
    clickCell(2, Nome);
    robot_.type("x");
    ASSERT_EQ(boxes_.shown().size(), 1U);
    EXPECT_EQ(boxes_.lastText(),
              "I record di questo elenco sono di sola lettura: non si possono modificare.");
    EXPECT_EQ(grid_->focusArea(), Area::Data);
}

TEST_F(EditTest, TextsOfSeveralLinesKeepThem) {
    connection_->Execute("UPDATE clienti SET note = 'riga uno' || char(13, 10) || 'riga due' "
                         "WHERE codice = 3");
    openClients();
    enter(2, Note);
    screenshot(*frame_, "grid_edit_lines");
    robot_.press(WXK_RETURN, wxMOD_CONTROL);
    robot_.type("tre");
    robot_.press(WXK_RETURN);
    EXPECT_EQ(stored(3, "note"), "riga uno\r\nriga due\r\ntre");
}

TEST_F(EditTest, TheFocusThatGoesElsewhereInTheWindowSaves) {
    openClients();
    enter(2, Nome);
    robot_.type("x");
    robot_.click(*after_, {30, 8});
    EXPECT_TRUE(robot_.waitUntil([&] { return stored(3, "nome") == "Cliente 3x"; }));
    EXPECT_TRUE(after_->HasFocus());
    enter(4, Sconto);
    robot_.type("x");
    robot_.click(*after_, {30, 8});
    EXPECT_TRUE(robot_.waitUntil([&] { return grid_->focusArea() == Area::CellEdit; }));
    EXPECT_EQ(boxes_.lastText(), "«5x» non è un numero.");
}

TEST_F(EditTest, NobodyMovesTheRecordsetAwayFromAHalfTypedCell) {
    openClients();
    enter(2, Nome);
    host_->MoveNext();
    EXPECT_EQ(grid_->focusArea(), Area::Data) << "a cell in which nothing was typed is left";
    enter(2, Nome);
    robot_.type("x");
    EXPECT_THROW(host_->MoveFirst(), Errore);
    EXPECT_THROW(host_->Requery(), Errore);
    EXPECT_EQ(typedText(), "Cliente 3x");
    EXPECT_TRUE(grid_->EndEdit());
    host_->MoveFirst();
    EXPECT_EQ(stored(3, "nome"), "Cliente 3x");
    EXPECT_EQ(grid_->CurrentRow(), 0);
}

TEST_F(EditTest, ARowThatMovesWhenItIsSavedLeadsToTheRowThatWasAskedFor) {
    openClients();
    host_->SetSort("sconto");
    robot_.pump();
    enter(2, Sconto);
    robot_.press('A', wxMOD_CONTROL);
    robot_.type("40");
    clickCell(6, Nome); // codice 7, which stands a row higher once 3 has gone down
    EXPECT_EQ(stored(3, "sconto"), "40");
    EXPECT_EQ(host_->Fields()("codice").Value().toI4(), 7);
    EXPECT_EQ(grid_->CurrentRow(), 5);
}

TEST_F(EditTest, AHostThatIsNotReadyYetLeavesTheRowAsItIs) {
    openClients();
    bool ready = false;
    grid_->OnBeforeUpdate = [&] { return ready; };
    enter(2, Nome);
    robot_.type("x");
    robot_.press(WXK_RETURN);
    EXPECT_EQ(grid_->focusArea(), Area::CellEdit);
    EXPECT_EQ(stored(3, "nome"), "Cliente 3");
    ready = true;
    robot_.press(WXK_RETURN);
    EXPECT_EQ(stored(3, "nome"), "Cliente 3x");
    EXPECT_TRUE(boxes_.shown().empty());
}

TEST_F(EditTest, AHostThatFailsBeforeARowIsSavedLeadsBackToWhatWasTyped) {
    openClients();
    bool fails = true;
    grid_->OnBeforeUpdate = [&] {
        if (fails) throw Errore(3704, "Il recordset è chiuso.");
        return true;
    };
    enter(2, Nome);
    robot_.type("x");
    robot_.press(WXK_RETURN);
    ASSERT_EQ(boxes_.shown().size(), 1U);
    EXPECT_NE(boxes_.lastText().find("Il recordset è chiuso."), std::string::npos);
    EXPECT_EQ(grid_->focusArea(), Area::CellEdit);
    EXPECT_EQ(stored(3, "nome"), "Cliente 3");
    fails = false;
    robot_.press(WXK_RETURN);
    EXPECT_EQ(stored(3, "nome"), "Cliente 3x");
}

TEST_F(EditTest, TheWindowMayGoWhileACellIsEdited) {
    openClients();
    enter(2, Nome);
    robot_.type("x");
    const wxWeakRef<wxFrame> window(frame_);
    frame_->Destroy();
    frame_ = nullptr;
    wxTheApp->ProcessIdle(); // deletes it
    ASSERT_FALSE(window);
    robot_.pumpFor(100);
    EXPECT_EQ(stored(3, "nome"), "Cliente 3");
    EXPECT_TRUE(boxes_.shown().empty());
}

TEST_F(EditTest, ClosingTheRecordsetUnderACellEndsItsEditing) {
    openClients();
    enter(2, Nome);
    robot_.type("x");
    source_.SetRecordset(nullptr);
    robot_.pump();
    EXPECT_EQ(grid_->focusArea(), Area::Data);
    EXPECT_TRUE(grid_->EndEdit());
    EXPECT_EQ(stored(3, "nome"), "Cliente 3");
}

} // namespace
} // namespace norvel::tests
