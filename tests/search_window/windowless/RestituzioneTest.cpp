// How a choice becomes the answer: the rules, over a real recordset and no window.
#include "search_window/Restituzione.h"

#include "platform/runtime/MessageBox.h"

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

namespace norvel::search_window {
namespace {

using namespace adodb;

RecordsetRef apri(const std::string& sql) {
    auto rs = makeClientRecordset();
    rs->Open(sql, "Provider=SQLite;Data Source=:memory:", adOpenStatic, adLockReadOnly, adCmdText);
    return rs;
}

constexpr const char* cinqueClienti =
    "SELECT 1 AS codice, 'Rossi' AS nome, NULL AS nota UNION ALL SELECT 2, 'Bianchi', 'b' "
    "UNION ALL SELECT 3, 'Verdi', '' UNION ALL SELECT 4, 'Neri', NULL UNION ALL SELECT 5, 'Blu', "
    "'x'";

// The parts a hand-back needs, with what happened to them.
class RestituzioneTest : public ::testing::Test {
  protected:
    void SetUp() override {
        sessione.gCampoRicerca = "codice";
        vecchio_ = impostaGestoreMessaggi([this](const Messaggio& m) {
            messaggi.push_back(m);
            return risposta;
        });
    }
    void TearDown() override { impostaGestoreMessaggi(vecchio_); }

    Scelta scelta(const RecordsetRef& rs) {
        Scelta s;
        s.recordset = rs;
        s.selezionate = [this] { return static_cast<RowCount>(selezione.size()); };
        s.primaSelezionata = [this] { return selezione.front(); };
        s.togliPrima = [this] { selezione.pop_front(); };
        s.vaiA = [rs](const Variant& b) { rs->SetBookmark(b); };
        s.stato = [this](const std::string& t) { stati.push_back(t); };
        s.attendiRighe = [this] { return ++attese, attesaCompleta; };
        s.scarica = [this] { ++scarichi; };
        return s;
    }
    void seleziona(Recordset& rs, std::initializer_list<RowCount> righe) {
        for (const RowCount riga : righe) {
            rs.SetAbsolutePosition(riga);
            selezione.push_back(rs.Bookmark());
        }
        rs.MoveFirst();
    }

    VariabiliGlobali sessione;
    std::deque<Variant> selezione;
    std::vector<std::string> stati;
    std::vector<Messaggio> messaggi;
    BoxAnswer risposta = BoxAnswer::Ok;
    bool attesaCompleta = true;
    int attese = 0, scarichi = 0;

  private:
    BoxHandler vecchio_;
};

TEST_F(RestituzioneTest, SingleChoiceKeepsTheValuesOwnType) {
    auto rs = apri(cinqueClienti);
    rs->SetAbsolutePosition(4);
    restituisciRiga(sessione, scelta(rs));
    EXPECT_TRUE(sessione.gRisposta.isNumeric()) << "a number until the host reads it as text";
    EXPECT_EQ(sessione.gRisposta.toText(), "4");
    EXPECT_EQ(scarichi, 1);
    EXPECT_TRUE(messaggi.empty());
}

TEST_F(RestituzioneTest, SingleChoiceOnAnEmptyResultDoesNothing) {
    sessione.gRisposta = "prima";
    restituisciRiga(sessione, scelta(apri("SELECT 1 AS codice WHERE 0")));
    EXPECT_EQ(sessione.gRisposta.toText(), "prima");
    EXPECT_EQ(scarichi, 0);
    EXPECT_TRUE(messaggi.empty());
}

TEST_F(RestituzioneTest, BrowseOnlyHandsNothingBackEitherWay) {
    sessione.gSoloRicerca = true;
    sessione.gRisposta = "prima";
    auto rs = apri(cinqueClienti);
    restituisciRiga(sessione, scelta(rs));
    seleziona(*rs, {1, 2});
    restituisciSelezione(sessione, scelta(rs));
    EXPECT_EQ(sessione.gRisposta.toText(), "prima");
    EXPECT_EQ(scarichi, 0);
    EXPECT_EQ(selezione.size(), 2U);
    EXPECT_TRUE(messaggi.empty()) << "not even the question";
}

TEST_F(RestituzioneTest, DoubleClickInMultipleModeGivesTheRowAndABarAndEndsTheMode) {
    sessione.gSelezioneMultipla = true;
    auto rs = apri(cinqueClienti);
    rs->MoveLast();
    restituisciRiga(sessione, scelta(rs));
    EXPECT_EQ(sessione.gRisposta, Variant("5|"));
    EXPECT_FALSE(sessione.gSelezioneMultipla);
    EXPECT_EQ(scarichi, 1);
}

TEST_F(RestituzioneTest, SelectedRowsComeInTheOrderOfSelectionAndTheSetIsEmptyAfterwards) {
    sessione.gSelezioneMultipla = true;
    auto rs = apri(cinqueClienti);
    seleziona(*rs, {3, 1, 5});
    restituisciSelezione(sessione, scelta(rs));
    EXPECT_EQ(sessione.gRisposta, Variant("3|1|5|"));
    EXPECT_FALSE(sessione.gSelezioneMultipla);
    EXPECT_TRUE(selezione.empty());
    EXPECT_EQ(scarichi, 1);
    EXPECT_TRUE(messaggi.empty()) << "no question when rows are selected";
}

TEST_F(RestituzioneTest, NothingSelectedAsksAndYesWalksEveryRowWithTheRunningCount) {
    sessione.gSelezioneMultipla = true;
    risposta = BoxAnswer::Yes;
    auto rs = apri(cinqueClienti);
    rs->SetAbsolutePosition(4);
    restituisciSelezione(sessione, scelta(rs));
    ASSERT_EQ(messaggi.size(), 1U);
    EXPECT_EQ(messaggi[0], (Messaggio{"Inserisco tutti i record?", "Inserimento", BoxIcon::Question,
                                      BoxButtons::YesNo}));
    EXPECT_EQ(sessione.gRisposta, Variant("1|2|3|4|5|"))
        << "from the first row, not the current one";
    EXPECT_EQ(stati, (std::vector<std::string>{"Selezionati 1", "Selezionati 2", "Selezionati 3",
                                               "Selezionati 4", "Selezionati 5"}));
    EXPECT_EQ(attese, 1) << "rows may still be coming";
    EXPECT_FALSE(sessione.gSelezioneMultipla);
    EXPECT_EQ(scarichi, 1);
}

TEST_F(RestituzioneTest, NothingSelectedAndNoClosesWithAnEmptyAnswer) {
    sessione.gSelezioneMultipla = true;
    sessione.gRisposta = "prima";
    risposta = BoxAnswer::No;
    restituisciSelezione(sessione, scelta(apri(cinqueClienti)));
    EXPECT_EQ(sessione.gRisposta, Variant(""));
    EXPECT_FALSE(sessione.gSelezioneMultipla);
    EXPECT_EQ(attese, 0);
    EXPECT_EQ(scarichi, 1);
}

TEST_F(RestituzioneTest, GivingUpTheWaitForRowsHandsNothingBack) {
    sessione.gSelezioneMultipla = true;
    sessione.gRisposta = "prima";
    risposta = BoxAnswer::Yes;
    attesaCompleta = false;
    restituisciSelezione(sessione, scelta(apri(cinqueClienti)));
    EXPECT_EQ(sessione.gRisposta, Variant("prima"));
    EXPECT_TRUE(sessione.gSelezioneMultipla);
    EXPECT_EQ(scarichi, 0);
}

TEST_F(RestituzioneTest, ANullValueAddsNothingBetweenTheBars) {
    sessione.gSelezioneMultipla = true;
    sessione.gCampoRicerca = "NOTA"; // names are case-blind
    auto rs = apri(cinqueClienti);
    seleziona(*rs, {1, 2});
    restituisciSelezione(sessione, scelta(rs));
    EXPECT_EQ(sessione.gRisposta, Variant("|b|"));
}

TEST_F(RestituzioneTest, AnUnknownFieldShowsTheAssistanceBoxAndTheWindowStays) {
    sessione.gCampoRicerca = "nonesiste";
    sessione.gRisposta = "prima";
    restituisciRiga(sessione, scelta(apri(cinqueClienti)));
    ASSERT_EQ(messaggi.size(), 1U);
    EXPECT_EQ(messaggi[0].titolo, "TAMBORIN");
    EXPECT_EQ(messaggi[0].icona, BoxIcon::Information);
    EXPECT_TRUE(messaggi[0].testo.starts_with(
        "Errore nel modulo di ricerca, rivolgersi all'assistenza\r\n"));
    EXPECT_GT(messaggi[0].testo.size(),
              std::string("Errore nel modulo di ricerca, rivolgersi all'assistenza\r\n").size());
    EXPECT_EQ(sessione.gRisposta, Variant("prima"));
    EXPECT_EQ(scarichi, 0);
}

TEST_F(RestituzioneTest, AnErrorBeforeTheValueIsReadShowsTheRoutinesOwnBox) {
    auto rs = apri(cinqueClienti);
    rs->Close();
    restituisciRiga(sessione, scelta(rs));
    ASSERT_EQ(messaggi.size(), 1U);
    EXPECT_EQ(messaggi[0].titolo, "Errore");
    EXPECT_EQ(messaggi[0].icona, BoxIcon::Critical);
    EXPECT_TRUE(messaggi[0].testo.starts_with(
        "Errore nella libreria NorvelRicerche.Griglia_DblClick\r3704 - "))
        << messaggi[0].testo;
    EXPECT_EQ(scarichi, 0);
}

TEST_F(RestituzioneTest, AnUnknownFieldLeavesTheSelectionAsItWas) {
    sessione.gSelezioneMultipla = true;
    sessione.gCampoRicerca = "nonesiste";
    auto rs = apri(cinqueClienti);
    seleziona(*rs, {2, 4});
    try {
        restituisciSelezione(sessione, scelta(rs));
        FAIL() << "the error reaches the caller";
    } catch (const Errore& errore) {
        EXPECT_EQ(errore.numero(), 3265);
    }
    EXPECT_EQ(selezione.size(), 2U);
    EXPECT_TRUE(sessione.gSelezioneMultipla);
    EXPECT_EQ(scarichi, 0);
}

TEST_F(RestituzioneTest, NumbersAndDatesAreHandedBackByItalianConventions) {
    sessione.gSelezioneMultipla = true;
    sessione.gCampoRicerca = "v";
    auto rs = apri("SELECT 1234.5 AS v UNION ALL SELECT 0.25");
    seleziona(*rs, {1, 2});
    restituisciSelezione(sessione, scelta(rs));
    EXPECT_EQ(sessione.gRisposta, Variant("1234,5|0,25|"));
}

} // namespace
} // namespace norvel::search_window
