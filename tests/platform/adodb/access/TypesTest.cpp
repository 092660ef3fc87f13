// Which types and values the columns of Access files have.
#include "tests/platform/adodb/access/AccessTest.h"

namespace norvel::adodb {
namespace {

std::string typesOf(Recordset& recordset) {
    std::string text;
    for (int i = 0; i < recordset.Fields().Count(); ++i)
        text +=
            recordset.Fields()(i).Name() + " " + std::to_string(recordset.Fields()(i).Type()) + "|";
    return text;
}

TEST(AccessTypes, AFileOfAccess2000) {
    for (const auto& connection :
         {jetProvider(fileOfAccess2000()), accessDriver(fileOfAccess2000())}) {
        const auto recordset = openOn(connection, "SELECT * FROM Monitor_Authenticate");
        EXPECT_EQ(typesOf(*recordset),
                  "ID 3|LineNumber 131|LinePassword 202|LineSpeed 131|EMail_Address 202|"
                  "Graph_Day 11|Graph_Week 11|Graph_Month 11|Graph_Year 11|Graph_EMail 11|"
                  "LastVisit 7|Comment 202|");
        EXPECT_EQ(recordset->Fields()("LinePassword").DefinedSize(), 8);
        EXPECT_EQ(recordset->Fields()("LineNumber").Precision(), 18);
        EXPECT_EQ(recordset->RecordCount(), 1);
        EXPECT_EQ(rowsOf(connection, "SELECT ID, LineNumber, LinePassword, LineSpeed, Graph_Day, "
                                     "Graph_EMail, LastVisit FROM Monitor_Authenticate"),
                  "1,1234567890,12345678,33600,True,False,17/06/2000 20.36.24|");
    }
}

TEST(AccessTypes, AFileOfAccess97) {
    const TemporaryFolder folder;
    const auto recordset = openOn(jetProvider(fileOfAccess97(folder)), "FPdev");
    EXPECT_EQ(typesOf(*recordset), "id 3|UserName 202|InstEmail 202|");
    EXPECT_EQ(recordset->RecordCount(), 8);
    recordset->SetFilter("InstEmail LIKE '*BAYNET*'");
    recordset->SetSort("UserName DESC");
    EXPECT_EQ(recordset->RecordCount(), 1);
    EXPECT_EQ(recordset->Fields()("id").Value().toI8(), 2);
    const std::string mail = recordset->Fields()("InstEmail").Value().text();
    EXPECT_TRUE(mail.ends_with(".baynet.de")) << mail;
}

TEST(AccessTypes, ATextThatLooksLikeANumberStaysAsItWasWritten) {
    const TemporaryFolder folder;
    AccessWriter writer;
    writer.table("t", {{"testo", JetType::Text, 40}, {"nota", JetType::Memo}},
                 {{"0039011", "0039011"},
                  {"3.10", "3.10"},
                  {"1e5", "1e5"},
                  {"12345678901234567890", "12345678901234567890"}});
    writer.save(folder.file("note.mdb"));
    const std::string connection = jetProvider(folder.file("note.mdb"));
    EXPECT_EQ(rowsOf(connection, "SELECT * FROM t"),
              "0039011,0039011|3.10,3.10|1e5,1e5|12345678901234567890,12345678901234567890|");
    EXPECT_EQ(rowsOf(connection, "SELECT nota FROM t WHERE nota LIKE '00%'"), "0039011|");
}

TEST(AccessTypes, EveryType) {
    const TemporaryFolder folder;
    AccessWriter writer;
    using Whole = std::int64_t;
    writer.table("t",
                 {{"vero", JetType::Boolean},
                  {"byte", JetType::Byte},
                  {"corto", JetType::Short},
                  {"lungo", JetType::Long},
                  {"prezzo", JetType::Currency},
                  {"singolo", JetType::Single},
                  {"doppio", JetType::Double},
                  {"quando", JetType::Date},
                  {"dati", JetType::Binary},
                  {"testo", JetType::Text, 20},
                  {"ole", JetType::Ole},
                  {"memo", JetType::Memo},
                  {"numero", JetType::Numeric, 2}},
                 {{true, Whole{255}, Whole{-32768}, Whole{2147483647}, Whole{-123456}, 1.5, 0.1,
                   36526.25, std::string("\x01\xFF", 2), "Perù €", std::string("\0\n", 2),
                   "\"a\",\r\nb", Whole{-12345678901}},
                  {false, JetValue(), JetValue(), JetValue(), JetValue(), JetValue(), JetValue(),
                   JetValue(), JetValue(), JetValue(), JetValue(), JetValue(), JetValue()}});
    writer.save(folder.file("tipi.mdb"));
    const auto recordset = openOn(jetProvider(folder.file("tipi.mdb")), "SELECT * FROM t");
    EXPECT_EQ(typesOf(*recordset),
              "vero 11|byte 17|corto 2|lungo 3|prezzo 6|singolo 4|doppio 5|quando 7|dati 205|"
              "testo 202|ole 205|memo 203|numero 131|");
    const auto value = [&](const char* name) { return recordset->Fields()(name).Value(); };
    EXPECT_EQ(value("vero").toDisplay(), "True");
    EXPECT_EQ(value("byte").toI8(), 255);
    EXPECT_EQ(value("corto").toI8(), -32768);
    EXPECT_EQ(value("lungo").toI8(), 2147483647);
    EXPECT_EQ(value("prezzo").toDisplay(), "-12,3456");
    EXPECT_EQ(value("singolo").toDouble(), 1.5);
    EXPECT_EQ(value("doppio").toDouble(), 0.1);
    EXPECT_EQ(value("quando").toDisplay(), "01/01/2000 06.00.00");
    EXPECT_EQ(value("dati").bytes().size(), 2U);
    EXPECT_EQ(value("testo").text(), "Perù €");
    EXPECT_EQ(value("ole").bytes().size(), 2U);
    EXPECT_EQ(value("memo").text(), "\"a\",\r\nb");
    EXPECT_EQ(value("numero").toDisplay(), "-123456789,01");
    recordset->MoveNext();
    EXPECT_EQ(value("vero").toDisplay(), "False");
    for (int i = 1; i < recordset->Fields().Count(); ++i)
        EXPECT_TRUE(recordset->Fields()(i).Value().isNull()) << i;
    recordset->MoveNext();
    EXPECT_TRUE(recordset->EOF_());
}

TEST(AccessTypes, LongNotesComeWhole) {
    const TemporaryFolder folder;
    for (const std::size_t length : {600, 3000, 10000, 90000}) {
        std::string text;
        for (std::size_t i = 0; text.size() < length; ++i)
            text += "riga " + std::to_string(i) + "\r\n";
        AccessWriter writer;
        writer.table("t", {{"note", JetType::Memo}}, {{text}, {"fine"}});
        writer.save(folder.file("note.mdb"));
        const auto recordset = openOn(jetProvider(folder.file("note.mdb")), "t");
        EXPECT_EQ(recordset->Fields()(0).Value().text(), text);
        recordset->MoveNext();
        EXPECT_EQ(recordset->Fields()(0).Value().text(), "fine");
    }
}

// mdbtools reads no more than 200,000 bytes of a note.
TEST(AccessTypes, ANoteTooLongIsMarkedWhereItIsCut) {
    const TemporaryFolder folder;
    AccessWriter writer;
    std::string text = "x";
    while (text.size() < 250000)
        text += "è";
    writer.table("t", {{"note", JetType::Memo}}, {{text}});
    writer.save(folder.file("note.mdb"));
    const std::string read =
        openOn(jetProvider(folder.file("note.mdb")), "t")->Fields()(0).Value().text();
    ASSERT_GT(read.size(), 199000U);
    const std::string whole = read.substr(0, read.size() - 3);
    EXPECT_EQ(read.substr(whole.size()), "…");
    EXPECT_TRUE(text.starts_with(whole));
}

} // namespace
} // namespace norvel::adodb
