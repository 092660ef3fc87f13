#include "platform/grid/model/RowEdit.h"

#include <gtest/gtest.h>

namespace norvel::grid {
namespace {

using namespace adodb;

// A table with a constraint, in a database of memory.
class RowEditTest : public testing::Test {
  protected:
    RowEditTest() {
        connection->Open("Provider=SQLite;Data Source=:memory:");
        connection->Execute("CREATE TABLE clienti(codice INTEGER PRIMARY KEY, nome TEXT, "
                            "sconto INTEGER CHECK(sconto <= 50))");
        connection->Execute("INSERT INTO clienti VALUES(1, 'Rossi', 10), (2, 'Bianchi', 20)");
        recordset = open();
    }
    RecordsetRef open() {
        auto rows = makeClientRecordset();
        rows->Open("SELECT codice, nome, sconto FROM clienti ORDER BY codice",
                   Variant(std::static_pointer_cast<Object>(connection)), adOpenStatic,
                   adLockOptimistic, adCmdText);
        return rows;
    }
    std::string stored(const char* field, int row = 1) {
        const auto rows = open();
        rows->SetAbsolutePosition(row);
        return rows->Fields()(field).Value().toDisplay();
    }
    void set(int field, const Variant& value) {
        edit.Begin(field);
        edit.Set(*recordset, value);
    }
    ConnectionRef connection = makeConnection();
    RecordsetRef recordset;
    RowEdit edit;
};

TEST_F(RowEditTest, ChangesAreShownAtOnceAndStoredBySaveOnly) {
    set(1, Variant("Verdi"));
    set(2, Variant(std::int32_t{15}));
    EXPECT_TRUE(edit.Pending());
    ASSERT_TRUE(edit.Text(1));
    EXPECT_EQ(*edit.Text(1), "Verdi");
    EXPECT_EQ(edit.Text(0), nullptr);
    EXPECT_EQ(stored("nome"), "Rossi");
    edit.Save(*recordset);
    EXPECT_FALSE(edit.Pending());
    EXPECT_EQ(stored("nome"), "Verdi");
    EXPECT_EQ(stored("sconto"), "15");
}

TEST_F(RowEditTest, ARefusedSaveLeavesTheChangesToBeCorrected) {
    set(1, Variant("Verdi"));
    set(2, Variant(std::int32_t{99}));
    EXPECT_THROW(edit.Save(*recordset), Errore);
    EXPECT_TRUE(edit.Pending());
    EXPECT_EQ(*edit.Text(2), "99");
    edit.Set(*recordset, Variant(std::int32_t{40}));
    edit.Save(*recordset);
    EXPECT_EQ(stored("nome"), "Verdi");
    EXPECT_EQ(stored("sconto"), "40");
}

TEST_F(RowEditTest, UndoingACellLeavesTheOtherChangesOfTheRow) {
    set(1, Variant("Verdi"));
    set(2, Variant(std::int32_t{99}));
    edit.UndoCell(*recordset);
    EXPECT_EQ(edit.Text(2), nullptr);
    EXPECT_EQ(recordset->Fields()("sconto").Value().toI4(), 10);
    EXPECT_EQ(*edit.Text(1), "Verdi");
    edit.Save(*recordset);
    EXPECT_EQ(stored("nome"), "Verdi");
    EXPECT_EQ(stored("sconto"), "10");
}

TEST_F(RowEditTest, UndoingACellEnteredAgainReturnsToItsFirstChange) {
    set(1, Variant("Verdi"));
    set(1, Variant("Neri"));
    edit.UndoCell(*recordset);
    EXPECT_EQ(*edit.Text(1), "Verdi");
    edit.Begin(2);
    edit.UndoCell(*recordset); // of a cell that nothing was put into
    EXPECT_EQ(*edit.Text(1), "Verdi");
    edit.Save(*recordset);
    EXPECT_EQ(stored("nome"), "Verdi");
}

TEST_F(RowEditTest, UndoingTheRowLeavesNothing) {
    set(1, Variant("Verdi"));
    edit.Undo(*recordset);
    EXPECT_FALSE(edit.Pending());
    EXPECT_EQ(recordset->Fields()("nome").Value(), Variant("Rossi"));
    EXPECT_EQ(recordset->EditMode(), adEditNone);
    edit.Undo(*recordset); // nothing to take back
    edit.Save(*recordset);
    EXPECT_EQ(stored("nome"), "Rossi");
}

TEST_F(RowEditTest, OfTwoOperatorsTheSecondOneIsToldAndHisChangeIsNotStored) {
    set(1, Variant("Verdi"));
    const auto other = open();
    other->Fields()("nome").SetValue(Variant("Neri"));
    other->Update();
    try {
        edit.Save(*recordset);
        ADD_FAILURE();
    } catch (const Errore& error) {
        EXPECT_NE(error.descrizione().find("modificato"), std::string::npos) << error.descrizione();
    }
    EXPECT_TRUE(edit.Pending());
    EXPECT_EQ(stored("nome"), "Neri");
    edit.Undo(*recordset);
    EXPECT_EQ(stored("nome"), "Neri");
}

TEST_F(RowEditTest, AValueThatTheFieldRefusesChangesNothing) {
    edit.Begin(2);
    EXPECT_THROW(edit.Set(*recordset, Variant("molto")), Errore);
    EXPECT_FALSE(edit.Pending());
    EXPECT_EQ(edit.Text(2), nullptr);
}

} // namespace
} // namespace norvel::grid
