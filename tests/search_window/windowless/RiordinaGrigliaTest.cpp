// The re-sort of a grouped grid.
#include "search_window/RiordinaGriglia.h"

#include "platform/runtime/MessageBox.h"

#include <gtest/gtest.h>

namespace norvel::search_window {
namespace {

using namespace adodb;

class RiordinaGrigliaTest : public testing::Test {
  protected:
    RiordinaGrigliaTest()
        : prima(impostaGestoreMessaggi([this](const Messaggio& messaggio) {
              messaggi.push_back(messaggio);
              return BoxAnswer::Ok;
          })) {}
    ~RiordinaGrigliaTest() override { impostaGestoreMessaggi(prima); }

    static RecordsetRef righe() {
        auto rs = makeClientRecordset();
        rs->Open("SELECT 1 AS codice, 'Roma' AS citta, 'Lazio' AS [la regione] UNION ALL "
                 "SELECT 2, 'Milano', 'Lombardia' UNION ALL SELECT 3, 'Fondi', 'Lazio' UNION ALL "
                 "SELECT 4, 'Como', 'Lombardia'",
                 "Provider=SQLite;Data Source=:memory:");
        return rs;
    }
    static std::string codici(Recordset& rs) {
        std::string testo;
        for (rs.MoveFirst(); !rs.EOF_(); rs.MoveNext())
            testo += rs.Fields()("codice").Value().toText();
        return testo;
    }
    bool riordina(const std::vector<std::string>& campi, const RecordsetRef& rs) {
        return riordinaGriglia({campi, [&] { passi += rs ? "<" + rs->Sort() + ">" : "<>"; }, rs});
    }

    std::vector<Messaggio> messaggi;
    BoxHandler prima;
    std::string passi; // what the sort was when the grid was repainted
};

TEST_F(RiordinaGrigliaTest, TheTextNamesTheFieldsInBracketsOutermostFirst) {
    EXPECT_EQ(testoRiordino({}), "");
    EXPECT_EQ(testoRiordino({"citta"}), "[citta]");
    EXPECT_EQ(testoRiordino({"la regione", "citta", "cap"}), "[la regione], [citta], [cap]");
}

TEST_F(RiordinaGrigliaTest, RepaintsThenSortsByTheGroupColumns) {
    const auto rs = righe();
    rs->SetSort("[codice]  desc");
    EXPECT_TRUE(riordina({"la regione", "citta"}, rs));
    EXPECT_EQ(passi, "<[codice]  desc>") << "repainted before the sort";
    EXPECT_EQ(rs->Sort(), "[la regione], [citta]");
    EXPECT_EQ(codici(*rs), "3142");
    EXPECT_TRUE(messaggi.empty());
}

TEST_F(RiordinaGrigliaTest, WithoutGroupColumnsTheRowsStandInTheirOwnOrderAgain) {
    const auto rs = righe();
    rs->SetSort("[citta]");
    EXPECT_TRUE(riordina({}, rs));
    EXPECT_EQ(rs->Sort(), "");
    EXPECT_EQ(codici(*rs), "1234");
}

TEST_F(RiordinaGrigliaTest, AFieldThatIsGoneWarnsAndTheRecordsetKeepsItsSort) {
    const auto rs = righe();
    rs->SetSort("[citta]");
    EXPECT_FALSE(riordina({"citta", "provincia"}, rs));
    EXPECT_EQ(rs->Sort(), "[citta]");
    EXPECT_EQ(codici(*rs), "4321");
    ASSERT_EQ(messaggi.size(), 1U);
    const Messaggio& box = messaggi.front();
    const std::string inizio =
        "Attenzione! Si è verificato un errore nella funzione RiordinaGriglia. Disattivare dalla "
        "vista personalizzata la visualizzazione Raggruppata o modificare la query di "
        "selezione.\r3265 - ";
    EXPECT_TRUE(box.testo.starts_with(inizio) && box.testo.size() > inizio.size()) << box.testo;
    EXPECT_EQ(box.icona, BoxIcon::Exclamation);
    EXPECT_EQ(box.titolo, titoloPredefinito);
    EXPECT_EQ(box.pulsanti, BoxButtons::Ok);
}

TEST_F(RiordinaGrigliaTest, AGroupColumnWithoutAFieldWarns) {
    const auto rs = righe();
    rs->SetSort("[codice]  desc");
    EXPECT_FALSE(riordina({""}, rs));
    EXPECT_EQ(rs->Sort(), "[codice]  desc");
    EXPECT_EQ(messaggi.size(), 1U);
}

TEST_F(RiordinaGrigliaTest, WithoutARecordsetItWarnsToo) {
    EXPECT_FALSE(riordina({"citta"}, nullptr));
    EXPECT_EQ(passi, "<>");
    ASSERT_EQ(messaggi.size(), 1U);
    EXPECT_NE(messaggi.back().testo.find("\r91 - "), std::string::npos) << messaggi.back().testo;
}

} // namespace
} // namespace norvel::search_window
