// The commands «copiaclip» and «copia» over a selected area.
#include "tests/output/Parte.h"

#include <limits>
#include <new>

namespace norvel::output {
namespace {

class AppuntiTest : public BancoEsporta {
  protected:
    enum Colonna : int { Codice, Nome, Citta, Importo, Data, Attivo, Foto };
    using Fatti = std::vector<std::string>;
};

TEST_F(AppuntiTest, TheCopyBeginsWithAnEmptyLineAndHasNoHeading) {
    seleziona({1, 3}, Codice, Nome);
    copiaAppunti(parte());
    EXPECT_EQ(appunti, "\r\n1 Rossi \r\n3 D'Amico \r\n");
    EXPECT_EQ(fatti, (Fatti{"svuota", "scrivi"}));
    EXPECT_TRUE(boxes.shown().empty()) << "no message on success";
}

TEST_F(AppuntiTest, TheCopyWithoutAnAreaWarnsAndCopiesNothing) {
    copiaAppunti(parte());
    ASSERT_EQ(boxes.shown().size(), 1U);
    EXPECT_EQ(boxes.shown()[0], (Messaggio{"Non è stata selezionata un area?", "Copia Fallita",
                                           BoxIcon::Exclamation, BoxButtons::Ok}));
    EXPECT_EQ(appunti, "quello di prima");
}

TEST_F(AppuntiTest, TheExportHasAHeadingOfFieldNamesAndEveryLineEndsWithATab) {
    colonne.Item(Nome).Caption = "Ragione sociale";
    seleziona({1, 3}, Codice, Nome);
    esportaExcel(parte());
    EXPECT_EQ(appunti, "codice\tnome\t\r\n1\tRossi\t\r\n3\tD'Amico\t\r\n");
    ASSERT_EQ(boxes.shown().size(), 1U);
    EXPECT_EQ(boxes.shown()[0],
              (Messaggio{"La selezione di 2 x 2 celle è stata copiata nella clipboard nel formato "
                         "compatibile xls (TAB delimited format)",
                         "Esportazione Tamborin", BoxIcon::Information, BoxButtons::Ok}));
}

TEST_F(AppuntiTest, ColumnsOnShowArePassedOver) {
    colonne.Item(Nome).Visible = true;
    seleziona({1}, Codice, Citta);
    copiaAppunti(parte());
    EXPECT_EQ(appunti, "\r\n1 Roma \r\n");
    esportaExcel(parte());
    EXPECT_EQ(appunti, "codice\tcitta\t\r\n1\tRoma\t\r\n");
}

TEST_F(AppuntiTest, ARangeOfColumnsAllOnShowCopiesLineEndsOnlyAndReports0Columns) {
    colonneDa(*recordset, true);
    seleziona({1, 2, 4}, Codice, Citta);
    copiaAppunti(parte());
    EXPECT_EQ(appunti, "\r\n\r\n\r\n\r\n");
    esportaExcel(parte());
    EXPECT_EQ(appunti, "\r\n\r\n\r\n\r\n");
    EXPECT_TRUE(boxes.lastText().starts_with("La selezione di 0 x 3 celle")) << boxes.lastText();
}

TEST_F(AppuntiTest, ANullContributesItsSeparatorOnly) {
    seleziona({2}, Nome, Importo);
    copiaAppunti(parte());
    EXPECT_EQ(appunti, "\r\nBianchi   \r\n");
    esportaExcel(parte());
    EXPECT_EQ(appunti, "nome\tcitta\timporto\t\r\nBianchi\t\t\t\r\n");
}

TEST_F(AppuntiTest, ValuesAreTheDatabasesAsItalianText) {
    seleziona({1, 3}, Importo, Attivo);
    copiaAppunti(parte());
    EXPECT_EQ(appunti, "\r\n12,5 15/03/2011 True \r\n-3 31/12/2012  \r\n");
}

TEST_F(AppuntiTest, RowsComeInTheOrderOfTheSelectionWhateverTheFilterAndTheOrder) {
    recordset->SetFilter("codice > 1");
    recordset->SetSort("codice DESC");
    seleziona({3, 1, 2}, Codice, Codice);
    recordset->MoveFirst();
    copiaAppunti(parte());
    EXPECT_EQ(appunti, "\r\n3 \r\n1 \r\n2 \r\n");
    EXPECT_EQ(recordset->AbsolutePosition(), 1) << "the host's record stays";
}

TEST_F(AppuntiTest, AValueThatHasNoTextIsAnErrorAndTheClipboardStays) {
    seleziona({1}, Codice, Foto);
    copiaAppunti(parte());
    ASSERT_EQ(boxes.shown().size(), 1U);
    EXPECT_EQ(
        boxes.shown()[0],
        (Messaggio{"Si è verificato un errore durante l'operazione di esportazione\r13 - Tipo "
                   "non corrispondente",
                   "Errore esportazione!", BoxIcon::Critical, BoxButtons::Ok}));
    EXPECT_EQ(appunti, "quello di prima");
}

TEST_F(AppuntiTest, AClipboardThatIsBusyIsAnErrorAndStaysCleared) {
    seleziona({1}, Codice, Nome);
    ParteEsportazione p = parte();
    p.scriviAppunti = [](const std::string&) { throw Errore(521, "occupati"); };
    esportaExcel(p);
    EXPECT_EQ(boxes.lastText(),
              "Si è verificato un errore durante l'operazione di esportazione\r521 - occupati");
    EXPECT_EQ(appunti, "");
}

TEST_F(AppuntiTest, MemoryThatRunsOutIsAnErrorLikeAnyOther) {
    seleziona({1}, Codice, Nome);
    ParteEsportazione p = parte();
    p.esegui = [](Lavoro&) -> bool { throw std::bad_alloc(); };
    copiaAppunti(p);
    EXPECT_EQ(
        boxes.lastText(),
        "Si è verificato un errore durante l'operazione di esportazione\r7 - Memoria esaurita");
    EXPECT_EQ(appunti, "quello di prima");
}

TEST_F(AppuntiTest, WithoutARecordsetTheCommandsSayWhatTheyWouldSayFirst) {
    const std::string fallita =
        "Si è verificato un errore durante l'operazione di esportazione\r91 - Variabile oggetto o "
        "variabile del blocco With non impostata";
    recordset = nullptr;
    copiaAppunti(parte());
    EXPECT_EQ(boxes.lastText(), "Non è stata selezionata un area?");
    boxes.answer(BoxAnswer::Yes);
    esportaExcel(parte());
    ASSERT_EQ(boxes.shown().size(), 3U);
    EXPECT_EQ(boxes.shown()[1].testo,
              "Non è stata selezionata un area, esportare l'intero recordset?");
    EXPECT_EQ(boxes.lastText(), fallita);
    area.presente = true;
    copiaAppunti(parte());
    ASSERT_EQ(boxes.shown().size(), 4U);
    EXPECT_EQ(boxes.lastText(), fallita);
    EXPECT_EQ(appunti, "quello di prima");
}

TEST_F(AppuntiTest, AFieldThatTheRecordsetDoesNotHaveIsAnError) {
    colonne.Item(Nome).DataField = "manca";
    seleziona({1}, Codice, Nome);
    copiaAppunti(parte());
    EXPECT_TRUE(boxes.lastText().starts_with(
        "Si è verificato un errore durante l'operazione di esportazione\r3265 - "))
        << boxes.lastText();
}

// Neither copy quotes or cuts: what a value holds stands in the text as it is.
TEST_F(AppuntiTest, HostileValuesStandInTheTextAsTheyAre) {
    const std::vector<std::string> testi = {"=cmd|' /C calc'!A0",
                                            "due\r\nrighe",
                                            "un\ttab",
                                            "\"virgolette\"",
                                            std::string("nul\0dentro", 10),
                                            "<b>&",
                                            std::string(100'000, 'x')};
    recordset = adodb::makeClientRecordset();
    recordset->Fields().Append("testo", adodb::adLongVarWChar);
    recordset->Open();
    std::vector<adodb::RowCount> righe;
    std::string copia = "\r\n";
    std::string tabella = "testo\t\r\n";
    for (const std::string& testo : testi) {
        recordset->AddNew({Variant("testo")}, {Variant(testo)});
        righe.push_back(static_cast<adodb::RowCount>(righe.size()) + 1);
        copia += testo + " \r\n";
        tabella += testo + "\t\r\n";
    }
    recordset->Update();
    colonneDa(*recordset, false);
    seleziona(righe, 0, 0);
    copiaAppunti(parte());
    EXPECT_EQ(appunti, copia);
    esportaExcel(parte());
    EXPECT_EQ(appunti, tabella);
}

TEST_F(AppuntiTest, NumbersAndDatesThatAreNoneHaveTheirText) {
    constexpr double infinito = std::numeric_limits<double>::infinity();
    recordset = adodb::makeClientRecordset();
    recordset->Fields().Append("numero", adodb::adDouble);
    recordset->Fields().Append("data", adodb::adDate);
    recordset->Open();
    for (const double valore : {infinito, std::numeric_limits<double>::quiet_NaN(), 1e10, -100.0})
        recordset->AddNew({"numero", "data"}, {valore, Date{valore}});
    recordset->Update();
    colonneDa(*recordset, false);
    seleziona({1, 2, 3, 4}, 0, 1);
    copiaAppunti(parte());
    EXPECT_EQ(appunti, "\r\n1,#INF 1,#INF \r\n-1,#IND -1,#IND \r\n10000000000 10000000000 \r\n"
                       "-100 21/09/1899 \r\n");
}

class MolteColonne : public AppuntiTest {
  protected:
    void colonnePari(int quante) {
        colonne.Clear();
        for (int i = 0; i < quante; ++i) {
            grid::Column colonna;
            colonna.DataField = "codice";
            colonna.Visible = false;
            colonne.Add(colonna);
        }
    }
};

TEST_F(MolteColonne, TheCounterOfColumnsHolds32767) {
    colonnePari(32767);
    seleziona({}, 0, 32766);
    esportaExcel(parte());
    EXPECT_TRUE(boxes.lastText().starts_with("La selezione di 32767 x 0 celle"));
}

TEST_F(MolteColonne, OneMoreOverflows) {
    colonnePari(32768);
    seleziona({}, 0, 32767);
    esportaExcel(parte());
    EXPECT_EQ(boxes.lastText(),
              "Si è verificato un errore durante l'operazione di esportazione\r6 - Overflow");
    EXPECT_EQ(appunti, "quello di prima");
}

TEST_F(MolteColonne, TheCopyCountsNone) {
    colonnePari(32768);
    seleziona({}, 0, 32767);
    copiaAppunti(parte());
    EXPECT_TRUE(boxes.shown().empty());
    EXPECT_EQ(appunti, "\r\n");
}

TEST_F(AppuntiTest, AnOperatorWhoDoesNotWaitKeepsTheClipboard) {
    seleziona({1}, Codice, Nome);
    attende = false;
    copiaAppunti(parte());
    attende = true;
    finisce = false;
    esportaExcel(parte());
    EXPECT_EQ(appunti, "quello di prima");
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(AppuntiTest, AFetchThatBrokeOffEndsTheCommandWithItsError) {
    recordset = tabellaInterrotta();
    colonneDa(*recordset, false);
    seleziona({1}, 0, 0);
    copiaAppunti(parte());
    EXPECT_TRUE(boxes.lastText().starts_with("Si è verificato un errore durante"))
        << boxes.lastText();
    EXPECT_EQ(appunti, "quello di prima");
}

TEST_F(AppuntiTest, ManyRowsAreAllThere) {
    recordset =
        tabella("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 5000) "
                "SELECT i AS codice FROM n");
    colonneDa(*recordset, false);
    std::vector<adodb::RowCount> righe;
    std::string testo = "\r\n";
    for (int i = 5000; i > 0; --i) {
        righe.push_back(i);
        testo += std::to_string(i) + " \r\n";
    }
    seleziona(righe, 0, 0);
    copiaAppunti(parte());
    EXPECT_EQ(appunti, testo);
}

} // namespace
} // namespace norvel::output
