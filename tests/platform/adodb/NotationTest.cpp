// The host's neutral notation on the embedded database.
#include "platform/adodb/sqlite/AccessFunctions.h"
#include "platform/adodb/sqlite/AccessNotation.h"
#include "tests/platform/adodb/AdodbTest.h"

namespace norvel::adodb {
namespace {

TEST(Notation, DateLiteralsOfEveryForm) {
    const std::pair<const char*, const char*> cases[] = {
        {"03/15/2011", "2011-03-15"},
        {"3/5/2011", "2011-03-05"},
        {"2011-03-15", "2011-03-15"},
        {"2011/03/15", "2011-03-15"},
        {"15-03-2011", "2011-03-15"},
        {"05-03-2011", "2011-03-05"},
        {"15/03/2011", "2011-03-15"},
        {"03-15-2011", "2011-03-15"},
        {" 03/15/2011 ", "2011-03-15"},
        {"3/15/29", "2029-03-15"},
        {"3/15/30", "1930-03-15"},
        {"02/29/2012", "2012-02-29"},
        {"03/15/2011 14:30:05", "2011-03-15 14:30:05"},
        {"2011-03-15 9:05", "2011-03-15 09:05:00"},
        {"03/15/2011 12:30 AM", "2011-03-15 00:30:00"},
        {"03/15/2011 12:30 PM", "2011-03-15 12:30:00"},
        {"03/15/2011 1:30 pm", "2011-03-15 13:30:00"},
        {"14:30:05", "14:30:05"},
    };
    for (const auto& [literal, iso] : cases)
        EXPECT_EQ(isoOfDateLiteral(literal), iso) << literal;
}

TEST(Notation, WhatIsNoDateIsNoLiteral) {
    for (const char* text : {"",
                             " ",
                             "abc",
                             "02/30/2011",
                             "13/13/2011",
                             "2011-02-29",
                             "1/2",
                             "1/2/3/4",
                             "1-2/2011",
                             "03/15/2011 25:00",
                             "03/15/2011 10:61",
                             "03/15/2011 x",
                             "0/0/0",
                             "03//2011",
                             "-3/15/2011",
                             "12345/1/1",
                             "03/15/2011 13:00 PM",
                             "03/15/2011 ::",
                             "+3/1/2011",
                             "99999999999999/1/1"})
        EXPECT_FALSE(isoOfDateLiteral(text)) << text;
}

TEST(Notation, DateLiteralsBecomeTextsOutsideQuotesOnly) {
    EXPECT_EQ(translateAccessNotation("SELECT * FROM t WHERE d>=#03/15/2011#"),
              "SELECT * FROM t WHERE d>='2011-03-15' COLLATE nr_data");
    for (const char* untouched :
         {"SELECT '#03/15/2011#'", "SELECT \"#03/15/2011#\"", "SELECT [#03/15/2011#]",
          "SELECT `#03/15/2011#`", "SELECT 1 -- #03/15/2011#", "SELECT 1 /* #03/15/2011# */",
          "SELECT 'l''altro #03/15/2011#'", "SELECT '#", "SELECT [#", "SELECT /* #", "SELECT #",
          "SELECT #abc#", "SELECT #03/15/2011", "iif", "", "SELECT '''#03/15/2011#'"})
        EXPECT_EQ(translateAccessNotation(untouched), untouched);
}

TEST(Notation, AQuoteAfterALiteralStartsAText) {
    EXPECT_EQ(translateAccessNotation("a=#03/15/2011# AND b='#1/1/2000#' AND c=#2011-01-02#"),
              "a='2011-03-15' COLLATE nr_data AND b='#1/1/2000#' AND c='2011-01-02' COLLATE "
              "nr_data");
}

TEST(Notation, DefinitionsKeepPlainTexts) {
    EXPECT_EQ(translateAccessNotation("CREATE TABLE t (d DATE DEFAULT #01/01/2000#)"),
              "CREATE TABLE t (d DATE DEFAULT '2000-01-01')");
}

TEST(Notation, IifTakesBothSeparators) {
    EXPECT_EQ(translateAccessNotation("SELECT iif(a;b;c;)"), "SELECT iif(a,b,c)");
    EXPECT_EQ(translateAccessNotation("SELECT IIF (a>1; 'x;y' ; f(b) ) ;"),
              "SELECT IIF (a>1, 'x;y' , f(b) ) ;");
    EXPECT_EQ(translateAccessNotation("SELECT iif(a;iif(b;1;2;);3;)"),
              "SELECT iif(a,iif(b,1,2),3)");
    EXPECT_EQ(translateAccessNotation("SELECT iif(a,b,c)"), "SELECT iif(a,b,c)");
    EXPECT_EQ(translateAccessNotation("SELECT xiif(a;b)"), "SELECT xiif(a;b)");
}

class NotationOnData : public testing::Test {
  protected:
    NotationOnData()
        : connection(folder.database(
              "dati.db", "CREATE TABLE [Elenco Clienti] ([Nome Cliente] TEXT, nato DATE, visto "
                         "DATETIME, attivo BOOLEAN);"
                         "INSERT INTO [Elenco Clienti] VALUES"
                         "('Anna','1980-03-15','2011-03-15 00:00:00',1),"
                         "('Bruno','1990-07-01','2011-03-15 10:30:00',0),"
                         "('Carla',NULL,'2011-03-16',1),"
                         "('#03/15/2011#','2000-01-01','2011-03-15T00:00:00.000',0);")) {}

    // The names of the rows that the condition lets through.
    std::string names(const std::string& condition) {
        const auto rs =
            openOn(connection, "SELECT [Nome Cliente] FROM [Elenco Clienti] WHERE " + condition);
        std::string all;
        for (; !rs->EOF_(); rs->MoveNext())
            all += (all.empty() ? "" : " ") + rs->Fields()(0).Value().toText();
        return all;
    }
    std::int64_t number(const std::string& expression) {
        return current(*openOn(connection, "SELECT " + expression));
    }
    TemporaryFolder folder;
    std::string connection;
};

TEST_F(NotationOnData, DatesCompareAsDates) {
    EXPECT_EQ(names("nato=#03/15/1980#"), "Anna");
    EXPECT_EQ(names("nato>#15-03-1980#"), "Bruno #03/15/2011#");
    EXPECT_EQ(names("nato BETWEEN #01/01/1980# AND #12/31/1990#"), "Anna Bruno");
}

TEST_F(NotationOnData, AStoredMidnightEqualsItsDay) {
    EXPECT_EQ(names("visto=#03/15/2011#"), "Anna #03/15/2011#");
    EXPECT_EQ(names("visto<=#2011-03-15#"), "Anna #03/15/2011#");
    EXPECT_EQ(names("visto>#03/15/2011#"), "Bruno Carla");
    EXPECT_EQ(names("visto=#03/15/2011 10:30:00#"), "Bruno");
    EXPECT_EQ(names("visto=#03/16/2011 00:00:00#"), "Carla");
}

TEST_F(NotationOnData, QuotedTextIsLeftAlone) {
    EXPECT_EQ(names("[Nome Cliente]='#03/15/2011#'"), "#03/15/2011#");
}

TEST_F(NotationOnData, TrueAndFalseAndIif) {
    EXPECT_EQ(names("attivo=True"), "Anna Carla");
    EXPECT_EQ(names("attivo=FALSE"), "Bruno #03/15/2011#");
    EXPECT_EQ(names("iif(attivo,1,0)=1"), "Anna Carla");
    EXPECT_EQ(names("iif(attivo;1;0;)=0"), "Bruno #03/15/2011#");
}

TEST_F(NotationOnData, DatediffCountsBorders) {
    EXPECT_EQ(number("datediff('d',#03/15/2011#,#03/20/2011#)"), 5);
    EXPECT_EQ(number("DateDiff('D',#03/20/2011#,#03/15/2011#)"), -5);
    EXPECT_EQ(number("datediff('d',#03/15/2011 23:59:00#,#03/16/2011 00:01:00#)"), 1);
    EXPECT_EQ(number("datediff('d',#03/01/1880#,#03/01/1920#)"), 14609);
    EXPECT_EQ(number("datediff('yyyy',#12/31/2010#,#01/01/2011#)"), 1);
    EXPECT_EQ(number("datediff('q',#03/31/2011#,#04/01/2011#)"), 1);
    EXPECT_EQ(number("datediff('m',#01/31/2011#,#03/01/2011#)"), 2);
    EXPECT_EQ(number("datediff('y',#01/01/2011#,#01/02/2011#)"), 1);
    EXPECT_EQ(number("datediff('w',#03/01/2011#,#03/14/2011#)"), 1);
    EXPECT_EQ(number("datediff('ww',#03/19/2011#,#03/20/2011#)"), 1); // a Saturday, a Sunday
    EXPECT_EQ(number("datediff('ww',#03/20/2011#,#03/26/2011#)"), 0);
    EXPECT_EQ(number("datediff('h',#03/15/2011 10:59:00#,#03/15/2011 11:01:00#)"), 1);
    EXPECT_EQ(number("datediff('n',#03/15/2011 10:59:59#,#03/15/2011 11:00:00#)"), 1);
    EXPECT_EQ(number("datediff('s','2011-03-15 10:00:00','2011-03-15 10:01:01')"), 61);
    EXPECT_EQ(number("datediff('d','15/03/2011','2011-03-16')"), 1);
}

TEST_F(NotationOnData, DatediffOfNullIsNull) {
    const auto rs = openOn(connection, "SELECT datediff('d',NULL,#03/15/2011#)");
    EXPECT_TRUE(rs->Fields()(0).Value().isNull());
}

TEST_F(NotationOnData, DatediffOfNonsenseIsAnErrorOfTheQuery) {
    for (const char* expression : {"datediff('d','pippo','2011-01-01')",
                                   "datediff('z','2011-01-01','2011-01-02')", "datediff('d',1)"})
        EXPECT_EQ(errorOf([&] { openOn(connection, std::string("SELECT ") + expression); }),
                  dbErrorsInCommand)
            << expression;
}

TEST_F(NotationOnData, CommandTextKeepsTheHostsOwnText) {
    const std::string text = "SELECT * FROM [Elenco Clienti] WHERE nato=#03/15/1980#";
    const auto rs = openOn(connection, text);
    const auto command = std::dynamic_pointer_cast<Command>(rs->ActiveCommand().object());
    ASSERT_TRUE(command);
    EXPECT_EQ(command->CommandText(), text);
    EXPECT_EQ(rs->Source(), text);
    rs->Requery();
    EXPECT_EQ(rs->RecordCount(), 1);
}

TEST(Notation, DateTextsOrderLikeTheirMoments) {
    EXPECT_EQ(compareDateTexts("2011-03-15", "2011-03-15 00:00:00"), 0);
    EXPECT_EQ(compareDateTexts("2011-03-15T00:00", "2011-03-15 00:00:00.000"), 0);
    EXPECT_EQ(compareDateTexts("2011-03-15T10:30", "2011-03-15 10:30"), 0);
    EXPECT_LT(compareDateTexts("2011-03-15", "2011-03-15 00:00:01"), 0);
    EXPECT_LT(compareDateTexts("2011-03-15 23:59:59", "2011-03-16"), 0);
    EXPECT_GT(compareDateTexts("2011-03-16", "2011-03-15 23:59:59"), 0);
    EXPECT_LT(compareDateTexts("", "a"), 0);
    EXPECT_EQ(compareDateTexts("Roma", "Roma"), 0);
}

} // namespace
} // namespace norvel::adodb
